// The texts of errors and objects.
#include "host/python/pythonapi.h"
#include "host/python/pythonlib.h"

namespace {

constexpr std::size_t LongestMessage = 65536;

std::string BytesOf(PyObject* bytes) {
    return std::string(PyBytes_AS_STRING(bytes), static_cast<std::size_t>(PyBytes_GET_SIZE(bytes)));
}

std::string Utf8Of(PyObject* text) {
    Py_ssize_t length = 0;
    const char* const plain = PyUnicode_AsUTF8AndSize(text, &length);
    if (plain != nullptr) return std::string(plain, static_cast<std::size_t>(length));
    for (const char* const errors : {"surrogateescape", "replace"}) {
        PyErr_Clear();
        const PyRef bytes(PyUnicode_AsEncodedString(text, "utf-8", errors));
        if (bytes) return BytesOf(bytes.Get());
    }
    PyErr_Clear();
    return std::string();
}

// What Python would print: the lines that traceback.format_exception makes.
std::string FormattedError(const PyRef& error) {
    const PyRef module(PyImport_ImportModule("traceback"));
    const PyRef traceback(PyException_GetTraceback(error.Get()));
    const PyRef lines(module ? PyObject_CallMethod(module.Get(), "format_exception", "OOO",
                                                   Py_TYPE(error.Get()), error.Get(),
                                                   traceback ? traceback.Get() : Py_None)
                             : nullptr);
    const PyRef nothing(PyUnicode_FromString(""));
    const PyRef text(lines && nothing ? PyUnicode_Join(nothing.Get(), lines.Get()) : nullptr);
    if (text) return Utf8Of(text.Get());
    PyErr_Clear();
    return Py_TYPE(error.Get())->tp_name + (": " + PyObject_AsString(error.Get()));
}

void Shorten(std::string& text) {
    while (!text.empty() && text.back() == '\n') text.pop_back();
    if (text.size() <= LongestMessage) return;
    const std::string gap = "\n...\n";
    const std::size_t half = (LongestMessage - gap.size()) / 2;
    text.replace(half, text.size() - 2 * half, gap);
}

}  // namespace

bool last_python_error_msg(std::string& text) {
    text.clear();
    if (!IsPythonUsable()) return false;
    const PyRef error = TakePythonError();
    if (!error) return false;
    text = FormattedError(error);
    Shorten(text);
    return true;
}

std::string PyObject_AsString(PyObject* object) {
    if (object == nullptr) return std::string();
    if (PyBytes_Check(object)) return BytesOf(object);
    if (PyUnicode_Check(object)) return Utf8Of(object);
    const PyRef text(PyObject_Str(object));
    if (text) return Utf8Of(text.Get());
    PyErr_Clear();
    return std::string();
}
