#pragma once

// The way between Python objects and texts, for the sources of the module.

#include "host/python/pythonapi.h"

#include <string_view>

// CPythonReleased lets other threads have the interpreter while this thread doesn't need it.
//
//     const CPythonReleased released;
//     parser.Parse(text, error);          // no Python object may be touched here
//
// The thread holds the interpreter before and afterwards.
class CPythonReleased {
public:
    CPythonReleased() : m_state(PyEval_SaveThread()) {}
    ~CPythonReleased() { PyEval_RestoreThread(m_state); }
    CPythonReleased(const CPythonReleased&) = delete;
    CPythonReleased& operator=(const CPythonReleased&) = delete;

    // Takes the interpreter for a moment to run handlers of signals. False, with a pending error,
    // when one of them raised (Ctrl-C does).
    bool CheckSignals() {
        PyEval_RestoreThread(m_state);
        const bool goesOn = PyErr_CheckSignals() == 0;
        m_state = PyEval_SaveThread();
        return goesOn;
    }

private:
    PyThreadState* m_state;
};

// A new str of bytes that are UTF-8 or not; what isn't becomes surrogates, as "surrogateescape" has
// it. Throws boost::python::error_already_set for want of memory.
PyRef TextObject(std::string_view bytes);

// The bytes of a bytes object, valid as long as it lives. Throws boost::python::error_already_set,
// with a pending TypeError, for any other object.
std::string_view BytesOf(PyObject* object);
