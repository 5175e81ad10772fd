#include "tzparser/script/scriptsyntax.h"

#include "host/python/pythonapi.h"
#include "host/python/pythonlib.h"
#include "host/python/pythreadstatelock.h"
#include "tzparser/script/scriptcode.h"

#include <algorithm>

namespace {

PyRef Attribute(PyObject* object, const char* name) {
    PyRef value(PyObject_GetAttrString(object, name));
    PyErr_Clear();
    return value;
}

int NumberOf(PyObject* error, const char* name) {
    const auto value = Attribute(error, name);
    if (!value || PyLong_Check(value.Get()) == 0) return 0;
    const auto number = PyLong_AsLong(value.Get());
    PyErr_Clear();
    return number > 0 && number < 1000000000 ? static_cast<int>(number) : 0;
}

std::string TextOf(PyObject* error, const char* name) {
    const auto value = Attribute(error, name);
    return value && value.Get() != Py_None ? PyObject_AsString(value.Get()) : std::string();
}

}  // namespace

ScriptFault ScriptFault::Of(const std::string& script) {
    ScriptFault fault;
    if (!pythonlib_init_ex(nullptr, 0, 0)) return fault;
    const PyThreadStateLock lock(1000, "scriptsyntax", __LINE__);
    if (!lock.IsHeld() || CompileProgram(AsTokenized(WithPresentImports(script) + "\n")))
        return fault;
    const auto error = TakePythonError();
    if (!error) return fault;
    fault.reason = TextOf(error.Get(), "msg");
    if (fault.reason.empty()) fault.reason = PyObject_AsString(error.Get());
    fault.line = NumberOf(error.Get(), "lineno");
    fault.column = NumberOf(error.Get(), "offset");
    fault.source = TextOf(error.Get(), "text");
    fault.source.resize(std::min(fault.source.find('\n'), fault.source.size()));
    return fault;
}
