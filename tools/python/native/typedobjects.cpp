#include "typedobjects.h"

#include "tzparser/variable/appdatatypehelper.h"

#include "pythonsupport.h"

namespace {

// Types of which a text can be a value; see TzP3TypeObject.
bool HasValues(int code) {
    return (code >= 1 && code <= 4) || (code >= 100 && code <= 103);
}

std::unique_ptr<TzP3TypeObject> TypeObjectOf(AppDataType_e type) {
    const int code = CAppDataTypeHelper::GetObjectTypeFromAppDataType(type);
    return std::unique_ptr<TzP3TypeObject>(HasValues(code) ? TzP3TypeObject::CreateObj(code)
                                                           : nullptr);
}

}  // namespace

CTypedObjects::CTypedObjects(AppDataType_e type) : m_type(TypeObjectOf(type)) {}

PyObject* CTypedObjects::Make(const CAppTextLet* let) const {
    if (let == nullptr || let->text.empty()) return PyRef::Share(Py_None).Release();
    if (!m_type) return TextObject(let->text).Release();
    m_type->SetText(let->text);
    PyObject* object = nullptr;
    return m_type->GetPythonObject(object) ? object : PyRef::Share(Py_None).Release();
}
