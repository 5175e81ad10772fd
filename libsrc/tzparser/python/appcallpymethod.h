#pragma once

#include "host/runtime/tzexport.h"

struct _object;

// A new object of one of the Python types that stand for addresses, as the function
// "GetPythonObject" of the module "pyapplib" makes it: 3 is a PyIP, 4 a PyMac, both without an
// address.
//
//     PyObject* ip = GetAppPyObject(3);    // a new reference
//
// Null when no interpreter runs, when the module or the function isn't there, or when it failed;
// then, but for a missing function, its error is pending for a caller who holds the interpreter.
// Takes the interpreter for itself, so it may be called with and without holding it.
TZPARSER_API _object* GetAppPyObject(int type);
