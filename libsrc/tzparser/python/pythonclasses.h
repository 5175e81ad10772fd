#pragma once

// How the modules of this folder are made: a C++ part that defines classes around values, and a
// Python part, a source of this folder that is built in, that gives them what Python people expect.

#include "host/python/pythonapi.h"

// The definition of a module with that name and nothing else.
constexpr PyModuleDef PlainModule(const char* name) {
    return {PyModuleDef_HEAD_INIT, name, nullptr, -1, nullptr, nullptr, nullptr, nullptr, nullptr};
}

// Makes a module: `define` adds the classes to it, then the Python part runs in its names. A new
// reference, or null with a pending error. The interpreter keeps the definition.
//
//     static PyModuleDef definition = PlainModule("pyapplib");
//     return MakePythonModule(definition, &DefineClasses, PyapplibSource);
//
PyObject* MakePythonModule(PyModuleDef& definition, void (*define)(), const char* source);

// The Python parts, made by the build from the files of the same names.
extern const char* const PyapplibSource;
extern const char* const PyconfigletSource;
