#include "host/python/pythonmodule.h"

#include "support/pythonrun.h"

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

std::atomic<int> TimesMade{0};

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
    ++TimesMade;
    return PyModule_Create(&definition);
}

const PythonModule Module("tzmodule", &MakeModule);

TEST(PythonFirst, ManyThreadsStartItOnce) {
    EXPECT_FALSE(pythonlib_is_inited());
    EXPECT_FALSE(pythonlib_join());
    EXPECT_FALSE(PyThreadStateLock(1000, __FILE__, __LINE__).IsHeld());
    std::string error = "old";
    EXPECT_FALSE(last_python_error_msg(error));
    EXPECT_EQ(error, "");

    constexpr int count = 8;
    std::atomic<int> waiting{count};
    std::vector<std::string> answers(count);
    std::vector<std::thread> threads;
    for (int i = 0; i < count; ++i)
        threads.emplace_back([&, i] {
            --waiting;
            while (waiting > 0) std::this_thread::yield();
            if (!pythonlib_init_ex(nullptr, 0, 0) || !pythonlib_is_inited()) return;
            const std::string own = "x" + std::to_string(i);
            RunPython("import tzmodule\n" + own + " = sum(range(1000))");
            answers[static_cast<std::size_t>(i)] = EvalPython(own);
        });
    for (std::thread& thread : threads) thread.join();
    // `_result` is shared: a thread may read what another has just written, which is the same.
    for (const std::string& answer : answers) EXPECT_EQ(answer, "499500");
    EXPECT_EQ(TimesMade, 1);
    EXPECT_EQ(PyGILState_Check(), 0);
}

}  // namespace
