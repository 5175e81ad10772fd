#include "host/python/pythreadstatelock.h"

#include "host/python/pythonapi.h"

PyThreadStateLock::PyThreadStateLock(int, const char*, int) : m_isHeld(IsPythonUsable()) {
    if (m_isHeld) m_state = static_cast<int>(PyGILState_Ensure());
}

PyThreadStateLock::~PyThreadStateLock() {
    if (m_isHeld) PyGILState_Release(static_cast<PyGILState_STATE>(m_state));
}

PySubInterpreter::PySubInterpreter() : m_lock(0, __FILE__, __LINE__) {
    if (!m_lock.IsHeld()) return;
    m_outer = PyThreadState_Get();
    m_own = Py_NewInterpreter();
    if (m_own == nullptr) PyThreadState_Swap(static_cast<PyThreadState*>(m_outer));
}

PySubInterpreter::~PySubInterpreter() {
    if (m_own == nullptr) return;
    Py_EndInterpreter(static_cast<PyThreadState*>(m_own));
    PyThreadState_Swap(static_cast<PyThreadState*>(m_outer));
}
