#include "support/pythonrun.h"

#include <atomic>
#include <cstdlib>
#include <string>
#include <thread>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// An object that threads still use when the process ends, as classes of the interpreter are.
struct Shared {
    std::atomic<long> value{0};
    ~Shared() { value = -1; }
};
Shared Used;

PyObject* Use(PyObject*, PyObject*) {
    if (++Used.value <= 0) _exit(3);
    Py_RETURN_NONE;
}

// Ends a process while threads run Python.
void EndWhileThreadsRun() {
    static PyMethodDef method{"use", &Use, METH_NOARGS, nullptr};
    pythonlib_init_ex(nullptr, 0, 0);
    {
        const PyThreadStateLock lock(1000, __FILE__, __LINE__);
        const PyRef function(PyCFunction_New(&method, nullptr));
        PyObject_SetAttrString(PyImport_AddModule("__main__"), "use", function.Get());
    }
    for (int i = 0; i < 4; ++i) std::thread([] { RunPython("while True: use()"); }).detach();
    while (Used.value < 1000) std::this_thread::yield();
    std::exit(0);
}

TEST(PythonExit, ThreadsThatRunScriptsDontDisturbTheEnd) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    for (int i = 0; i < 5; ++i) EXPECT_EXIT(EndWhileThreadsRun(), testing::ExitedWithCode(0), "");
}

// A child has the interpreter's lock as it was: held by a thread that the child doesn't have.
TEST(PythonExit, AForkedChildEndsWithoutWaiting) {
    ASSERT_TRUE(pythonlib_init_ex(nullptr, 0, 0));
    std::atomic<bool> held{false};
    std::atomic<bool> done{false};
    std::thread holder([&] {
        const PyThreadStateLock lock(1000, __FILE__, __LINE__);
        held = true;
        while (!done) std::this_thread::yield();
    });
    while (!held) std::this_thread::yield();
    const pid_t child = fork();
    if (child == 0) {
        alarm(20);
        std::exit(0);
    }
    int status = -1;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    done = true;
    holder.join();
}

}  // namespace
