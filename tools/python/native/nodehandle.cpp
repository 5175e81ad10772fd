#include "nodehandle.h"

#include "tzparser/variable/appdatatypehelper.h"
#include "tzparser/variable/appvariablearraydef.h"

#include "typedobjects.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>
#include <utility>

#include <boost/python/extract.hpp>

namespace py = boost::python;

namespace {

py::object Owned(PyRef object) {
    return py::object(py::handle<>(object.Release()));
}

PyObject* NewNone() {
    return PyRef::Share(Py_None).Release();
}

PyRef NameObject(const CAppVariableValue& node) {
    std::string_view name = node.GetName();
    name.remove_prefix(std::min(name.find_first_not_of('$'), name.size()));
    return TextObject(name);
}

bool HasParts(const CAppVariableValue& node) {
    return node.GetDataType() == AppDataType_Parsing || node.GetVarDef()->IsNode() ||
           !node.GetChildValues().empty();
}

AppDataType_e TypeOfElements(const CAppVariableValue& node) {
    const auto* const array = dynamic_cast<const CAppVariableArrayDef*>(node.GetVarDef());
    return array != nullptr ? array->GetBaseType() : node.GetDataType();
}

bool IsFoundLet(const CAppTextLet& let) {
    return !let.IsEmpty() || !let.text.empty();
}

PyObject* MakeSpan(const CAppTextLet* let) {
    if (let == nullptr || let->IsEmpty()) return NewNone();
    return Py_BuildValue("((ii)(ii))", let->beginRow, let->beginCol, let->endRow, let->endCol);
}

PyObject* MakeText(const CAppTextLet* let) {
    return TextObject(let != nullptr ? std::string_view(let->text) : std::string_view()).Release();
}

std::size_t RowCount(const std::vector<CAppVariableValue*>& columns) {
    std::size_t rows = 0;
    for (const auto* column : columns) rows = std::max(rows, column->GetLetCount());
    return rows;
}

// A list of the first `count` lets of a node, each made an object; behind the last let of null.
template <class Make>
py::list ListOf(const CAppVariableValue::Lets& lets, std::size_t count, Make make) {
    PyRef list(PyList_New(static_cast<Py_ssize_t>(count)));
    if (!list) py::throw_error_already_set();
    for (std::size_t i = 0; i < count; ++i) {
        PyObject* const object = make(i < lets.size() ? &lets[i] : nullptr);
        if (object == nullptr) py::throw_error_already_set();
        PyList_SET_ITEM(list.Get(), static_cast<Py_ssize_t>(i), object);
    }
    return py::list(py::detail::new_reference(list.Release()));
}

// One column of a table while its rows are made.
struct RowPart {
    explicit RowPart(const CAppVariableValue& column)
        : name(NameObject(column)), objects(TypeOfElements(column)), lets(column.GetValues()) {}

    PyRef ObjectAt(std::size_t row) const {
        return PyRef(objects.Make(row < lets.size() ? &lets[row] : nullptr));
    }

    PyRef name;
    CTypedObjects objects;
    const CAppVariableValue::Lets& lets;
};

PyRef MakeRow(const std::vector<RowPart>& parts, std::size_t row) {
    PyRef dict(PyDict_New());
    if (!dict) py::throw_error_already_set();
    for (const auto& part : parts) {
        const PyRef object = part.ObjectAt(row);
        if (!object || PyDict_SetItem(dict.Get(), part.name.Get(), object.Get()) != 0)
            py::throw_error_already_set();
    }
    return dict;
}

}  // namespace

CNodeHandle::CNodeHandle(std::shared_ptr<CResultTree> tree, CAppVariableValue& node)
    : m_tree(std::move(tree)), m_node(&node) {}

py::object CNodeHandle::Name() const {
    return Owned(NameObject(*m_node));
}

const char* CNodeHandle::Kind() const {
    if (m_node->GetDataType() == AppDataType_Table) return "table";
    if (HasParts(*m_node)) return "group";
    return m_node->GetDataType() == AppDataType_Array ? "column" : "value";
}

std::string CNodeHandle::Type() const {
    return CAppDataTypeHelper::GetDataTypeStr(ElementType());
}

std::size_t CNodeHandle::Count() const {
    if (m_node->GetDataType() == AppDataType_Table) return RowCount(m_node->GetChildValues());
    return m_node->GetLetCount();
}

py::list CNodeHandle::Children() const {
    py::list children;
    for (auto* const child : m_node->GetChildValues()) children.append(CNodeHandle(m_tree, *child));
    return children;
}

py::object CNodeHandle::Text(std::size_t index) const {
    return Owned(PyRef(MakeText(LetAt(index))));
}

py::object CNodeHandle::Span(std::size_t index) const {
    return Owned(PyRef(MakeSpan(LetAt(index))));
}

py::tuple CNodeHandle::Lines(std::size_t index) const {
    py::list lines;
    if (const auto* const let = LetAt(index))
        for (const auto line : let->lines) lines.append(line);
    return py::tuple(lines);
}

py::object CNodeHandle::Value(std::size_t index) const {
    return Owned(PyRef(CTypedObjects(ElementType()).Make(LetAt(index))));
}

bool CNodeHandle::IsFound(std::size_t index) const {
    const auto* const let = LetAt(index);
    return let != nullptr && IsFoundLet(*let);
}

py::list CNodeHandle::Texts(std::size_t count) const {
    return ListOf(m_node->GetValues(), count, &MakeText);
}

py::list CNodeHandle::Values(std::size_t count) const {
    const CTypedObjects objects(ElementType());
    return ListOf(m_node->GetValues(), count,
                  [&objects](const CAppTextLet* let) { return objects.Make(let); });
}

py::list CNodeHandle::Spans(std::size_t count) const {
    return ListOf(m_node->GetValues(), count, &MakeSpan);
}

py::list CNodeHandle::Rows() const {
    const auto columns = m_node->GetChildValues();
    std::vector<RowPart> parts;
    parts.reserve(columns.size());
    for (const auto* column : columns) parts.emplace_back(*column);
    const auto count = RowCount(columns);
    PyRef list(PyList_New(static_cast<Py_ssize_t>(count)));
    if (!list) py::throw_error_already_set();
    for (std::size_t row = 0; row < count; ++row)
        PyList_SET_ITEM(list.Get(), static_cast<Py_ssize_t>(row), MakeRow(parts, row).Release());
    return py::list(py::detail::new_reference(list.Release()));
}

py::dict CNodeHandle::BuiltIns() const {
    py::dict properties;
    for (const auto& [name, text] : m_tree->BuiltIns())
        properties[Owned(TextObject(name))] = Owned(TextObject(text));
    return properties;
}

py::list CNodeHandle::Path() const {
    py::list path;
    const CAppVariableValue* node = m_node;
    for (const auto* parent = node->GetParentValue(); parent != nullptr;
         node = parent, parent = node->GetParentValue()) {
        const auto siblings = parent->GetChildValues();
        path.append(std::find(siblings.begin(), siblings.end(), node) - siblings.begin());
    }
    path.reverse();
    return path;
}

py::tuple CNodeHandle::State() const {
    const std::string values = m_tree->SaveValues();
    const py::object bytes(py::handle<>(
        PyBytes_FromStringAndSize(values.data(), static_cast<Py_ssize_t>(values.size()))));
    const py::object document(py::handle<>(py::borrowed(m_tree->Document())));
    return py::make_tuple(document, bytes, py::tuple(Path()));
}

CNodeHandle CNodeHandle::Restore(const py::object& document, const py::object& values,
                                 const py::object& path) {
    const auto tree = CResultTree::Restore(document.ptr(), BytesOf(values.ptr()));
    auto* node = &tree->Root();
    for (Py_ssize_t i = 0; i < py::len(path); ++i) {
        const auto children = node->GetChildValues();
        const std::size_t number = py::extract<std::size_t>(path[i]);
        if (number >= children.size()) throw std::invalid_argument("not a path in a result");
        node = children[number];
    }
    return CNodeHandle(tree, *node);
}

const CAppTextLet* CNodeHandle::LetAt(std::size_t index) const {
    const auto& lets = m_node->GetValues();
    return index < lets.size() ? &lets[index] : nullptr;
}

AppDataType_e CNodeHandle::ElementType() const {
    return TypeOfElements(*m_node);
}
