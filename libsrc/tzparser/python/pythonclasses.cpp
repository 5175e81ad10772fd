#include "tzparser/python/pythonclasses.h"

#include <string>

#include <boost/python/errors.hpp>
#include <boost/python/handle.hpp>
#include <boost/python/object.hpp>
#include <boost/python/scope.hpp>

namespace {

bool DefineIn(PyObject* module, void (*define)()) {
    return !boost::python::handle_exception([&] {
        const boost::python::object held{boost::python::handle<>(boost::python::borrowed(module))};
        const boost::python::scope scope(held);
        define();
    });
}

bool RunIn(PyObject* module, const char* source) {
    PyObject* const names = PyModule_GetDict(module);
    const std::string file = "<" + std::string(PyModule_GetName(module)) + ">";
    const PyRef code(Py_CompileString(source, file.c_str(), Py_file_input));
    if (!code || PyDict_SetItemString(names, "__builtins__", PyEval_GetBuiltins()) != 0)
        return false;
    return bool(PyRef(PyEval_EvalCode(code.Get(), names, names)));
}

}  // namespace

PyObject* MakePythonModule(PyModuleDef& definition, void (*define)(), const char* source) {
    PyRef module(PyModule_Create(&definition));
    const bool made = module && DefineIn(module.Get(), define) && RunIn(module.Get(), source);
    return made ? module.Release() : nullptr;
}
