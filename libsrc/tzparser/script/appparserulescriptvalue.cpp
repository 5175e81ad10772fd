// The text and type of one Python value.
#include "host/python/pythonapi.h"
#include "host/python/pythonlib.h"
#include "tzparser/script/appparserulescript.h"

#include <array>
#include <charconv>

namespace {

constexpr int AllDigits = 400;  // of the largest number there is, and more

std::string FixedText(double value) {
    std::array<char, AllDigits> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                   std::chars_format::fixed, 2);
    return std::string(digits.data(), end.ptr);
}

// A number that 64 bits can't hold reads as -1.
std::string WholeText(PyObject* object) {
    const auto value = PyLong_AsLongLong(object);
    PyErr_Clear();
    return std::to_string(value);
}

}  // namespace

// A truth value is a whole number too, and a text of a class of its own is a text, so the order
// matters. A float has a type of its own, not that of a double.
bool CAppParseRuleScript::ExtractSingleVariableInfo(PyObject* object, AppDataType_e& type,
                                                    std::string& text) {
    if (object == nullptr) return false;
    if (object == Py_None) {
        type = AppDataType_None;
        text.clear();
    } else if (PyUnicode_Check(object) != 0) {
        type = AppDataType_String;
        text = PyObject_AsString(object);
    } else if (PyBool_Check(object) != 0) {
        type = AppDataType_Bool;
        text = object == Py_True ? "True" : "False";
    } else if (PyLong_Check(object) != 0) {
        type = AppDataType_Int;
        text = WholeText(object);
    } else if (PyFloat_Check(object) != 0) {
        type = AppDataType_Float;
        text = FixedText(PyFloat_AsDouble(object));
    } else {
        return ExtractSingleObjectInfo(object, type, text);
    }
    return true;
}
