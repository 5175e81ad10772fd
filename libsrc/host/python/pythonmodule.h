#pragma once

// What floors above this one bring into the interpreter. Each is a constant of a source, which
// enters itself into a list while the library is loaded; the lists are complete before anything
// can ask for them, and never change afterwards.

struct _object;

// PythonModule is a module that is part of the library, so that scripts can import it.
//
//     const PythonModule Module("pyapplib", &MakeModule);
//
class PythonModule {
public:
    // Makes the module: a new reference, or null with a pending error. Called with the interpreter
    // held, at most once.
    using Make = _object* (*)();

    // `name` lives as long as the process.
    PythonModule(const char* name, Make make) noexcept : m_name(name), m_make(make), m_next(First) {
        First = this;
    }
    PythonModule(const PythonModule&) = delete;
    PythonModule& operator=(const PythonModule&) = delete;

    const char* Name() const { return m_name; }
    Make Maker() const { return m_make; }
    const PythonModule* Next() const { return m_next; }
    // The first module of the list; null when there is none.
    static const PythonModule* Head() { return First; }

private:
    static const PythonModule* First;

    const char* m_name;
    Make m_make;
    const PythonModule* m_next;
};
