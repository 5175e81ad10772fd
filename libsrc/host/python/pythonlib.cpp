// The lock of the start is only waited for by threads that hold the interpreter when it runs
// already, and whoever has the lock takes the interpreter only by starting it. So the two can't
// wait for each other.
#include "host/python/pythonlib.h"

#include "host/python/pythonapi.h"
#include "host/python/pythonmodule.h"
#include "host/python/pythreadstatelock.h"
#include "host/runtime/diagnostics.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <exception>
#include <mutex>
#include <thread>

#include <unistd.h>

const PythonModule* PythonModule::First = nullptr;

namespace {

std::mutex StartLock;
bool IsRefused = false;  // under StartLock: no start any more
std::mutex AddLock;
std::atomic<bool> HasModules{false};
std::atomic<pid_t> Watcher{0};  // the process that set up its end

void OnPythonStopped() {
    HasModules.store(false);
    const std::lock_guard<std::mutex> lock(StartLock);
    IsRefused = true;
}

// Takes the interpreter for good, so that no thread runs Python while static objects go. A thread
// of its own does it, as there is no waiting for the interpreter that ends after a time.
void HoldPython() {
    struct Held {
        std::mutex lock;
        std::condition_variable changed;
        bool isHeld = false;
    };
    static Held* const held = new Held;  // lives on, as the thread may come late
    std::thread([] {
        PyGILState_Ensure();
        const std::lock_guard<std::mutex> lock(held->lock);
        held->isHeld = true;
        held->changed.notify_all();
    }).detach();
    std::unique_lock<std::mutex> lock(held->lock);
    held->changed.wait_for(lock, std::chrono::seconds(1), [] { return held->isHeld; });
}

// A child that the process forked has only the thread that forked, and another one may have held
// the interpreter: it ends without.
void OnExit() {
    if (Watcher.load() != getpid() || !IsPythonUsable() || PyGILState_Check() != 0) return;
    try {
        HoldPython();
    } catch (const std::exception&) {
        DiagnosticOutput("No thread for stopping Python");
    }
}

// For an interpreter of our own. A host that started it may want to stop it at the end as well, and
// could not once it is held for good.
void WatchExit() {
    Watcher.store(getpid());
    std::atexit(&OnExit);
}

bool AnnounceModules() {
    for (const PythonModule* m = PythonModule::Head(); m != nullptr; m = m->Next())
        if (PyImport_AppendInittab(m->Name(), m->Maker()) != 0) return false;
    return true;
}

// False when there is no interpreter afterwards.
bool StartOnce(const PythonStart& start) {
    const std::lock_guard<std::mutex> lock(StartLock);
    if (IsRefused) return false;
    if (Py_IsInitialized() != 0) return true;
    if (!AnnounceModules() || !StartPython(start)) {
        IsRefused = true;
        return false;
    }
    WatchExit();
    Py_AtExit(&OnPythonStopped);
    HasModules.store(true);
    PyEval_SaveThread();
    return true;
}

bool AddModule(const PythonModule& module) {
    PyObject* const modules = PyImport_GetModuleDict();
    if (PyDict_GetItemString(modules, module.Name()) != nullptr) return true;
    const PyRef made(module.Maker()());
    return made && PyDict_SetItemString(modules, module.Name(), made.Get()) == 0;
}

// Waits for the lock without the interpreter, which whoever has the lock may need.
std::unique_lock<std::mutex> LockOutsidePython(std::mutex& mutex) {
    PyThreadState* const state = PyEval_SaveThread();
    std::unique_lock<std::mutex> lock(mutex);
    PyEval_RestoreThread(state);
    return lock;
}

// Adds the modules to an interpreter that somebody else started. One that can't be made is missing
// there, as it would be in an interpreter of our own.
void AddModules() {
    if (HasModules.load()) return;
    const PyThreadStateLock python(0, __FILE__, __LINE__);
    if (!python.IsHeld()) return;
    const std::unique_lock<std::mutex> lock = LockOutsidePython(AddLock);
    if (HasModules.load()) return;
    for (const PythonModule* m = PythonModule::Head(); m != nullptr; m = m->Next())
        if (!AddModule(*m)) PyErr_Clear();
    Py_AtExit(&OnPythonStopped);
    HasModules.store(true);
}

}  // namespace

bool pythonlib_is_inited() {
    return HasModules.load() && IsPythonUsable();
}

bool pythonlib_init_ex(const char* home, int installSignalHandlers, int isolated) {
    if (pythonlib_is_inited()) return true;
    if (!StartOnce({home, installSignalHandlers != 0, isolated != 0})) return false;
    AddModules();
    return pythonlib_is_inited();
}

bool pythonlib_join() {
    if (pythonlib_is_inited()) return true;
    return IsPythonUsable() && pythonlib_init_ex(nullptr, 0, 0);
}
