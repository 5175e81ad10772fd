#pragma once

#include <boost/python/object.hpp>

// Puts a callable in force as the design reader of the process; None takes the present one away.
// It is called with name, code and text of a rule's run as str, by any thread that parses, and
// returns the bytes of the selected lines. What it raises goes to sys.unraisablehook, but Ctrl-C,
// which is raised in the main thread again, and selects nothing. Throws
// boost::python::error_already_set, with a pending TypeError, for what can't be called.
void SetDesignReaderObject(const boost::python::object& reader);
