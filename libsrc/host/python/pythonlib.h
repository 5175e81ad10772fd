#pragma once

// The Python interpreter of the process: started when it is first needed, or the one that the host
// already runs.
//
//     if (!pythonlib_is_inited()) pythonlib_init_ex(nullptr, 0, 0);
//     if (!pythonlib_is_inited()) return "no Python";
//     const PyThreadStateLock lock(1000, __FILE__, __LINE__);
//     ...
//
// Nothing of this throws. Both operations of the start may be called by any number of threads at
// once, with or without the interpreter held; the first that comes starts it and the others wait.
// The thread that started it doesn't hold it afterwards.
//
// The interpreter is never stopped by the library. When a process ends whose interpreter the
// library started, threads that run scripts are stopped where they next would take the interpreter,
// before static objects are destroyed; the end of the process waits for that a second at most.

#include "host/runtime/tzexport.h"

#include <string>

struct _object;

// Whether an interpreter runs that has the library's modules.
TZPARSER_API bool pythonlib_is_inited();

// Starts the interpreter, or takes over the one that runs, and makes the library's modules
// importable there; a module of the same name that the host already has stays, and one that can't
// be made is missing. Does nothing when that was done. The arguments count for a start only: the
// folder above Python's own library or null for the default, whether Python's handlers of signals
// are installed (0: the host's stay), and whether Python's environment variables and the user's own
// modules are left aside (0: they count).
//
// False when the interpreter can't be started, now or in an earlier call, or has been stopped by
// the host: classes of the library don't outlive their interpreter, so there is no second start.
TZPARSER_API bool pythonlib_init_ex(const char* home, int installSignalHandlers, int isolated);

// Makes the library's modules importable when an interpreter runs, but doesn't start one. For
// operations whose caller may hold an interpreter that the library has not met yet.
TZPARSER_API bool pythonlib_join();

// Takes the pending error of the calling thread: its traceback and message, as Python would print
// them, without the last line feed. A text over 64 KiB loses its middle. No error is pending
// afterwards. False, with an empty text, when there was none. The caller holds the interpreter.
TZPARSER_API bool last_python_error_msg(std::string& text);

// str() of an object, as UTF-8; of bytes, the bytes as they stand. Bytes that came as surrogates
// (see PythonTextOfBytes) come out as themselves, other lone surrogates as "?". "" for null and
// when str() fails, whose error is dropped. The caller holds the interpreter.
TZPARSER_API std::string PyObject_AsString(_object* object);
