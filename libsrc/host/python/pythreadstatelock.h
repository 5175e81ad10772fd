#pragma once

#include "host/runtime/tzexport.h"

// PyThreadStateLock holds the interpreter for the calling thread, from its making to its end.
//
//     {
//         const PyThreadStateLock lock(1000, __FILE__, __LINE__);
//         if (lock.IsHeld()) ...    // Python objects may be touched
//     }
//
// Any thread may make one, also a thread that Python has never seen, and also while it holds the
// interpreter already: locks nest. It waits until the interpreter is free. It belongs to the thread
// that made it.
class TZPARSER_API PyThreadStateLock {
public:
    // None of the arguments changes anything: they are the time in milliseconds and the place in a
    // source by which hosts tell locks apart. Without an interpreter nothing is held.
    PyThreadStateLock(int milliseconds, const char* file, int line);
    ~PyThreadStateLock();
    PyThreadStateLock(const PyThreadStateLock&) = delete;
    PyThreadStateLock& operator=(const PyThreadStateLock&) = delete;

    bool IsHeld() const { return m_isHeld; }

private:
    bool m_isHeld;
    int m_state = 0;  // what has to be handed back
};

// PySubInterpreter is an interpreter of its own for one piece of work: its modules, `__main__`
// among them, are empty at first and gone at the end. The calling thread holds it meanwhile.
//
//     const PySubInterpreter interpreter;
//     if (interpreter.IsRunning()) PyRun_SimpleString("x = 1");
//
// The thread must not hold the interpreter when it makes one, and none of its objects may be kept.
class TZPARSER_API PySubInterpreter {
public:
    PySubInterpreter();
    ~PySubInterpreter();
    PySubInterpreter(const PySubInterpreter&) = delete;
    PySubInterpreter& operator=(const PySubInterpreter&) = delete;

    // False when no interpreter runs or a further one can't be made.
    bool IsRunning() const { return m_own != nullptr; }

private:
    PyThreadStateLock m_lock;
    void* m_outer = nullptr;  // the states of the thread in the two interpreters
    void* m_own = nullptr;
};
