// The module "_tzparser" under the Python package "tzparser", which is what users see: it gives
// names, types and errors to what is here.
#include "host/python/pythonlib.h"
#include "tzparser/check/definitioncheck.h"

#include "designreaderhandle.h"
#include "nodehandle.h"
#include "parserhandle.h"

#include <stdexcept>

#include <boost/python/class.hpp>
#include <boost/python/def.hpp>
#include <boost/python/docstring_options.hpp>
#include <boost/python/init.hpp>
#include <boost/python/module.hpp>

namespace {

namespace py = boost::python;

py::object Text(std::string_view bytes) {
    return py::object(py::handle<>(TextObject(bytes).Release()));
}

py::tuple FindingTuple(const DefinitionFinding& finding) {
    const bool hasCaret = finding.caret != DefinitionFinding::NoCaret;
    return py::make_tuple(Text(finding.where), finding.line, finding.column, Text(finding.message),
                          Text(finding.statement),
                          hasCaret ? py::object(finding.caret) : py::object(),
                          Text(CTzDefinitionCheck::Format(finding)));
}

py::list Check(const py::object& definition) {
    const std::string copy(BytesOf(definition.ptr()));
    std::vector<DefinitionFinding> findings;
    {
        const CPythonReleased released;
        findings = CTzDefinitionCheck::Check(copy);
    }
    py::list list;
    for (const auto& finding : findings) list.append(FindingTuple(finding));
    return list;
}

void DefineNode() {
    py::class_<CNodeHandle>("Node", py::no_init)
        .add_property("name", &CNodeHandle::Name)
        .add_property("kind", &CNodeHandle::Kind)
        .add_property("type", &CNodeHandle::Type)
        .def("__len__", &CNodeHandle::Count)
        .def("children", &CNodeHandle::Children)
        .def("text", &CNodeHandle::Text)
        .def("span", &CNodeHandle::Span)
        .def("lines", &CNodeHandle::Lines)
        .def("value", &CNodeHandle::Value)
        .def("is_found", &CNodeHandle::IsFound)
        .def("texts", &CNodeHandle::Texts)
        .def("values", &CNodeHandle::Values)
        .def("spans", &CNodeHandle::Spans)
        .def("rows", &CNodeHandle::Rows)
        .def("builtins", &CNodeHandle::BuiltIns)
        .def("state", &CNodeHandle::State);
    py::def("restore", &CNodeHandle::Restore);
}

void DefineDefinition() {
    py::class_<CParserHandle, boost::noncopyable>("Definition", py::init<py::object, int>())
        .def("parse", &CParserHandle::Parse)
        .def("parse_many", &CParserHandle::ParseMany)
        .def("identify", &CParserHandle::Identify)
        .def("schema", &CParserHandle::Schema);
    py::def("check", &Check);
}

}  // namespace

BOOST_PYTHON_MODULE(_tzparser) {
    if (!pythonlib_join()) throw std::runtime_error("the classes of values can't be made");
    const py::docstring_options options(false, false, false);
    DefineNode();
    DefineDefinition();
    py::def("set_design_reader", &SetDesignReaderObject);
}
