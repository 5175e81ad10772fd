#pragma once

// The way between addresses and the Python objects that hold them, for the sources of this folder.

#include "host/python/pythonapi.h"
#include "host/python/pythreadstatelock.h"
#include "tzparser/python/appcallpymethod.h"

#include <boost/python/converter/from_python.hpp>
#include <boost/python/converter/registered.hpp>

// The Address that a Python object holds; lives as long as the object. Throws
// boost::python::error_already_set, with a pending TypeError, for an object that holds none.
template <class Address>
Address* AddressIn(PyObject* object) {
    namespace converter = boost::python::converter;
    const converter::registration& registration = converter::registered<Address>::converters;
    void* const found = converter::get_lvalue_from_python(object, registration);
    if (found == nullptr) converter::throw_no_pointer_from_python(object, registration);
    return static_cast<Address*>(found);
}

// The same for an argument, which may be None: that gives null, and one reference of it is
// released, as an argument that holds nothing is taken over. A caller who only borrowed None takes
// a reference first.
template <class Address>
Address* TakeAddressObject(PyObject* object) {
    if (object != Py_None) return AddressIn<Address>(object);
    Py_DECREF(object);
    return nullptr;
}

// A new object of a type of GetAppPyObject, a new reference, after `set` has had the Address in it.
// None when there is no such object.
template <class Address, class Set>
PyObject* MakeAddressObject(int type, Set set) {
    const PyThreadStateLock lock(1000, __FILE__, __LINE__);
    PyRef object(GetAppPyObject(type));
    if (!object) {
        if (lock.IsHeld()) PyErr_Clear();
        return PyRef::Share(Py_None).Release();
    }
    if (object.Get() != Py_None) set(*AddressIn<Address>(object.Get()));
    return object.Release();
}
