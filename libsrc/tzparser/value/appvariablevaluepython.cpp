// Python forms. Dicts are filled by a loop over the nodes still to do, since the depth of a tree is
// foreign input: a node's dict stands in its parent's, still empty, before its turn comes.
#include "host/python/pythonapi.h"
#include "host/python/tzp3typeobject.h"
#include "tzparser/value/appvariablevalue.h"
#include "tzparser/variable/appdatatypehelper.h"
#include "tzparser/variable/appvariablearraydef.h"
#include "tzparser/variable/appvariabledef.h"

#include <memory>
#include <utility>

namespace {

PyObject* NewNone() {
    return PyRef::Share(Py_None).Release();
}

// What isn't there, for want of memory too, is None.
PyObject* OrNone(PyObject* owned) {
    if (owned != nullptr) return owned;
    PyErr_Clear();
    return NewNone();
}

std::unique_ptr<TzP3TypeObject> TypeObjectOf(AppDataType_e type) {
    const int code = CAppDataTypeHelper::GetObjectTypeFromAppDataType(type);
    return std::unique_ptr<TzP3TypeObject>(code < 0 ? nullptr : TzP3TypeObject::CreateObj(code));
}

PyObject* ObjectOfText(const std::string& text, TzP3TypeObject* type) {
    type->SetText(text);
    PyObject* object = nullptr;
    return type->GetPythonObject(object) ? object : NewNone();
}

PyObject* ObjectOf(const CAppTextLet* let, TzP3TypeObject* type) {
    if (let == nullptr || type == nullptr) return NewNone();
    if (let->text.empty() && !let->IsModifyByOutSide()) return NewNone();
    return ObjectOfText(let->text, type);
}

// The same for a value of a list, without making lets for it: what has no text may be marked all
// the same.
PyObject* ObjectAt(const CLetList& values, std::size_t index, TzP3TypeObject* type) {
    if (index >= values.Count() || type == nullptr) return NewNone();
    const auto text = values.Text(index);
    if (text.empty() && !values.Copy(index).IsModifyByOutSide()) return NewNone();
    return ObjectOfText(std::string(text), type);
}

// Puts an object under a name; takes over the reference.
void PutItem(PyObject* dict, const std::string& name, PyObject* owned) {
    const PyRef object(owned);
    const PyRef key(PythonTextOfBytes(name));
    if (!key || PyDict_SetItem(dict, key.Get(), object.Get()) != 0) PyErr_Clear();
}

}  // namespace

bool CAppVariableValue::IsPythonDict() const {
    return GetDataType() == AppDataType_Parsing || GetDataType() == AppDataType_Table;
}

AppDataType_e CAppVariableValue::GetElementType() const {
    if (GetDataType() != AppDataType_Array) return GetDataType();
    const auto* const column = dynamic_cast<const CAppVariableArrayDef*>(m_varDef);
    return column != nullptr ? column->GetBaseType() : AppDataType_None;
}

PyObject* CAppVariableValue::GetPyObjectByText(const CAppTextLet* let, AppDataType_e type) {
    return ObjectOf(let, TypeObjectOf(type).get());
}

PyObject* CAppVariableValue::GetPyVariableValue(int index) {
    return GetPyObjectByText(GetVariableValue(index), GetElementType());
}

PyObject* CAppVariableValue::MakePythonList() const {
    const auto* const table = m_parentValue != nullptr ? m_parentValue : this;
    const auto count = static_cast<std::size_t>(table->GetValueCount());
    const auto type = TypeObjectOf(GetElementType());
    PyRef list(PyList_New(static_cast<Py_ssize_t>(count)));
    for (std::size_t i = 0; list && i < count; ++i) {
        PyList_SET_ITEM(list.Get(), static_cast<Py_ssize_t>(i), ObjectAt(m_values, i, type.get()));
    }
    return OrNone(list.Release());
}

PyObject* CAppVariableValue::MakePythonLeaf() {
    return GetDataType() == AppDataType_Array ? MakePythonList() : GetPyVariableValue(0);
}

PyObject* CAppVariableValue::GetPythonObject() {
    if (!IsPythonDict()) return MakePythonLeaf();
    PyRef root(PyDict_New());
    std::vector<std::pair<const CAppVariableValue*, PyRef>> pending;
    if (root) pending.emplace_back(this, PyRef::Share(root.Get()));
    while (!pending.empty()) {
        const auto [node, dict] = std::move(pending.back());
        pending.pop_back();
        for (const auto& child : node->m_childValues) {
            PyRef object(OrNone(child->IsPythonDict() ? PyDict_New() : child->MakePythonLeaf()));
            if (PyDict_CheckExact(object.Get()) && child->IsPythonDict())
                pending.emplace_back(child.get(), PyRef::Share(object.Get()));
            PutItem(dict.Get(), child->GetName(), object.Release());
        }
    }
    return OrNone(root.Release());
}
