#pragma once

// Runs Python in the process, for tests whose rows are expressions.

#include "host/python/pythonapi.h"
#include "host/python/pythonlib.h"
#include "host/python/pythreadstatelock.h"

#include <string>

// Starts Python if need be and runs a program in `__main__`. Gives "" or the last line of the
// error.
inline std::string RunPython(const std::string& program) {
    pythonlib_init_ex(nullptr, 0, 0);
    const PyThreadStateLock lock(1000, __FILE__, __LINE__);
    PyObject* const names = PyModule_GetDict(PyImport_AddModule("__main__"));
    const PyRef result(PyRun_String(program.c_str(), Py_file_input, names, names));
    std::string error;
    last_python_error_msg(error);
    return error.substr(error.rfind('\n') + 1);
}

// The repr of an expression's value in `__main__`, or the last line of its error.
inline std::string EvalPython(const std::string& expression) {
    const std::string error = RunPython("_result = repr((" + expression + "))");
    if (!error.empty()) return error;
    const PyThreadStateLock lock(1000, __FILE__, __LINE__);
    PyObject* const names = PyModule_GetDict(PyImport_AddModule("__main__"));
    return PyObject_AsString(PyDict_GetItemString(names, "_result"));
}
