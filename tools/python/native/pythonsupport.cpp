#include "pythonsupport.h"

#include <boost/python/errors.hpp>

PyRef TextObject(std::string_view bytes) {
    PyRef text(PyUnicode_DecodeUTF8(bytes.data(), static_cast<Py_ssize_t>(bytes.size()),
                                    "surrogateescape"));
    if (!text) boost::python::throw_error_already_set();
    return text;
}

std::string_view BytesOf(PyObject* object) {
    char* data = nullptr;
    Py_ssize_t size = 0;
    if (PyBytes_AsStringAndSize(object, &data, &size) != 0)
        boost::python::throw_error_already_set();
    return {data, static_cast<std::size_t>(size)};
}
