#pragma once

// The interpreter's own interface, and the few places where its versions differ. Sources that talk
// to the interpreter include this and never <Python.h>; everything here works from 3.7 on and uses
// nothing that 3.13 has dropped. For sources of the library alone.

#define PY_SSIZE_T_CLEAN
#include <string>

#include <Python.h>

// PyRef owns one reference of a Python object, or none.
//
//     const PyRef name(PyUnicode_FromString("pyapplib"));
//     if (!name) return nullptr;
//     return PyRef(PyImport_Import(name.Get())).Release();
//
// Whoever makes, changes or destroys one that isn't empty holds the interpreter.
class PyRef {
public:
    PyRef() = default;
    // Takes over a reference; null is none.
    explicit PyRef(PyObject* owned) noexcept : m_object(owned) {}
    PyRef(PyRef&& other) noexcept : m_object(other.Release()) {}
    PyRef& operator=(PyRef&& other) noexcept {
        PyObject* const old = m_object;
        m_object = other.Release();
        Py_XDECREF(old);
        return *this;
    }
    PyRef(const PyRef&) = delete;
    PyRef& operator=(const PyRef&) = delete;
    ~PyRef() { Py_XDECREF(m_object); }

    // A further reference of an object that somebody else owns.
    static PyRef Share(PyObject* borrowed) noexcept {
        Py_XINCREF(borrowed);
        return PyRef(borrowed);
    }

    PyObject* Get() const { return m_object; }
    explicit operator bool() const { return m_object != nullptr; }
    // Hands the reference to the caller.
    PyObject* Release() noexcept {
        PyObject* const object = m_object;
        m_object = nullptr;
        return object;
    }

private:
    PyObject* m_object = nullptr;
};

// How to start the interpreter; see pythonlib_init_ex.
struct PythonStart {
    const char* m_home;
    bool m_installsSignalHandlers;
    bool m_isIsolated;
};

// Starts the interpreter in the calling thread, which then holds it. Changes neither the process's
// locale nor its standard streams. On failure false, and a start mustn't be tried again.
bool StartPython(const PythonStart& start);

// Whether the interpreter runs and isn't being stopped.
bool IsPythonUsable();

// The pending error as an exception with its traceback, which is then pending no more; none when
// there is no error.
PyRef TakePythonError();

// A new reference of a text whose bytes are UTF-8 or not: a byte that isn't becomes the surrogate
// that "surrogateescape" makes of it, so that PyObject_AsString gives the same bytes back. Null
// with a pending error for want of memory.
PyObject* PythonTextOfBytes(const std::string& bytes);
