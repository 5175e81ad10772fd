#include "host/python/pythonmodule.h"

#include "support/pythonrun.h"

#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

PyObject* MakeModule() {
    static PyModuleDef definition{PyModuleDef_HEAD_INIT,
                                  "tzmodule",
                                  nullptr,
                                  -1,
                                  nullptr,
                                  nullptr,
                                  nullptr,
                                  nullptr,
                                  nullptr};
    // Gives other threads the interpreter in the middle of the making.
    Py_BEGIN_ALLOW_THREADS;
    std::this_thread::yield();
    Py_END_ALLOW_THREADS;
    PyObject* const module = PyModule_Create(&definition);
    static long made = 0;
    PyModule_AddIntConstant(module, "made", ++made);
    return module;
}

PyObject* MakeNothing() {
    PyErr_SetString(PyExc_ImportError, "this module can't be made");
    return nullptr;
}

const PythonModule Module("tzmodule", &MakeModule);
const PythonModule Broken("tzbroken", &MakeNothing);
const PythonModule Taken("tztaken", &MakeModule);

TEST(PythonRunning, TheHostsInterpreterIsUsed) {
    Py_InitializeEx(0);
    PyRun_SimpleString(
        "import sys, types\nhost = 1\nsys.modules['tztaken'] = types.ModuleType('own')");
    EXPECT_FALSE(pythonlib_is_inited()) << "the library's modules aren't there yet";
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i)
        threads.emplace_back([] { EXPECT_TRUE(pythonlib_init_ex(nullptr, 0, 0)); });
    // The host holds the interpreter while the threads come, and then asks itself.
    EXPECT_TRUE(pythonlib_join());
    EXPECT_TRUE(pythonlib_is_inited());
    EXPECT_EQ(PyGILState_Check(), 1);
    PyThreadState* const state = PyEval_SaveThread();
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(EvalPython("host"), "1");
    EXPECT_EQ(EvalPython("__import__('tzmodule').made"), "1");
    EXPECT_EQ(EvalPython("__import__('tztaken').__name__"), "'own'");
    EXPECT_EQ(EvalPython("__import__('tzbroken')"),
              "ModuleNotFoundError: No module named 'tzbroken'");
    PyEval_RestoreThread(state);
}

}  // namespace
