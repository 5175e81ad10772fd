#include "support/pythonrun.h"

#include <gtest/gtest.h>

namespace {

TEST(PythonStopped, AnInterpreterThatTheHostStoppedStaysStopped) {
    ASSERT_TRUE(pythonlib_init_ex(nullptr, 0, 0));
    PyGILState_Ensure();
    EXPECT_EQ(Py_FinalizeEx(), 0);
    EXPECT_FALSE(pythonlib_is_inited());
    EXPECT_FALSE(pythonlib_init_ex(nullptr, 0, 0));
    EXPECT_FALSE(PyThreadStateLock(1000, __FILE__, __LINE__).IsHeld());
    Py_InitializeEx(0);
    EXPECT_FALSE(pythonlib_join()) << "classes don't outlive their interpreter";
    Py_FinalizeEx();
}

}  // namespace
