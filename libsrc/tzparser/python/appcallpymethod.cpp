#include "tzparser/python/appcallpymethod.h"

#include "host/python/pythonapi.h"
#include "host/python/pythonlib.h"
#include "host/python/pythreadstatelock.h"

PyObject* GetAppPyObject(int type) {
    const PyThreadStateLock lock(1000, "appcallpymethod", 13);
    if (!pythonlib_join()) return nullptr;
    const PyRef name(PyUnicode_FromString("pyapplib"));
    const PyRef module(name ? PyImport_Import(name.Get()) : nullptr);
    if (!module) return nullptr;
    PyObject* const names = PyModule_GetDict(module.Get());
    const PyRef function =
        PyRef::Share(names != nullptr ? PyDict_GetItemString(names, "GetPythonObject") : nullptr);
    if (!function) return nullptr;
    const PyRef arguments(Py_BuildValue("(i)", type));
    return arguments ? PyObject_CallObject(function.Get(), arguments.Get()) : nullptr;
}
