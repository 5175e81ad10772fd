// The C++ part of the module "pyconfiglet". What else the class does in Python is in
// pyconfiglet.py.
#include "host/python/pythonlib.h"
#include "host/python/pythonmodule.h"
#include "tzparser/python/appconfiglet.h"
#include "tzparser/python/pythonclasses.h"

#include <memory>

#include <boost/python/class.hpp>
#include <boost/python/docstring_options.hpp>
#include <boost/python/handle.hpp>
#include <boost/python/init.hpp>
#include <boost/python/make_constructor.hpp>
#include <boost/python/object.hpp>

namespace {

namespace py = boost::python;

// Texts may hold bytes that aren't UTF-8, which only our own conversions carry through.
std::shared_ptr<CAppConfigLet> MakeOfText(const py::object& text) {
    return std::make_shared<CAppConfigLet>(PyObject_AsString(text.ptr()));
}

py::object GetStrValue(const CAppConfigLet& let) {
    return py::object(py::handle<>(PythonTextOfBytes(let.GetStrValue())));
}

void DefineClasses() {
    py::docstring_options options(true, true, false);
    py::class_<CAppConfigLet, std::shared_ptr<CAppConfigLet>>("PyConfigLet", py::init<>())
        .def("__init__", py::make_constructor(&MakeOfText))
        .def("GetStrValue", &GetStrValue, "The text of the fragment.");
}

PyObject* MakePyconfiglet() {
    static PyModuleDef definition = PlainModule("pyconfiglet");
    return MakePythonModule(definition, &DefineClasses, PyconfigletSource);
}

const PythonModule Module("pyconfiglet", &MakePyconfiglet);

}  // namespace
