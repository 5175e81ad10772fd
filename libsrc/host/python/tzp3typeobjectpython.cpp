// The Python objects of values.
#include "host/python/pythonapi.h"
#include "host/python/pythonform.h"
#include "host/python/tzp3typeobject.h"
#include "host/text/asciicase.h"

const PythonForm* PythonForm::First = nullptr;

namespace {

using Maker = PyObject* (*)(const TzP3TypeObject& type, const std::string& text);

PyObject* MakeText(const TzP3TypeObject&, const std::string& text) {
    return PythonTextOfBytes(text);
}

// Counters of devices have 64 bits without a sign and more, so any number of digits will do here.
PyObject* MakeInt(const TzP3TypeObject&, const std::string& text) {
    const std::size_t sign = !text.empty() && (text[0] == '+' || text[0] == '-') ? 1 : 0;
    if (text.size() == sign) return nullptr;
    for (std::size_t i = sign; i < text.size(); ++i)
        if (!AsciiIsDigit(text[i])) return nullptr;
    return PyLong_FromString(text.c_str(), nullptr, 10);
}

PyObject* MakeFloat(const TzP3TypeObject& type, const std::string& text) {
    if (!type.Check(text)) return nullptr;
    const PyRef digits(PythonTextOfBytes(text));
    return digits ? PyFloat_FromString(digits.Get()) : nullptr;
}

PyObject* MakeBool(const TzP3TypeObject& type, const std::string& text) {
    if (!type.Check(text)) return nullptr;
    return PyBool_FromLong(text == "1" || AsciiEqualIgnoreCase(text, "true") ? 1 : 0);
}

constexpr struct {
    int m_code;
    Maker m_make;
} PlainRows[] = {{100, MakeText}, {101, MakeInt}, {102, MakeFloat}, {103, MakeBool}};

PyObject* Make(const TzP3TypeObject& type, const std::string& text) {
    for (const auto& row : PlainRows)
        if (row.m_code == type.GetCode()) return row.m_make(type, text);
    const PythonForm::Make make = PythonForm::Find(type.GetCode());
    return make != nullptr ? make(text) : nullptr;
}

}  // namespace

bool TzP3TypeObject::GetPythonObject(PyObject*& object) const {
    object = Make(*this, m_text);
    if (object == nullptr) PyErr_Clear();
    return object != nullptr;
}
