#include "host/python/pythonlib.h"

#include <cstdlib>

#include <gtest/gtest.h>

namespace {

TEST(PythonRefused, AStartThatFailsEndsNothingAndIsNotTriedAgain) {
    EXPECT_FALSE(pythonlib_init_ex("/nowhere", 0, 0));
    EXPECT_FALSE(pythonlib_is_inited());
    EXPECT_FALSE(pythonlib_init_ex(nullptr, 0, 0));
    EXPECT_FALSE(pythonlib_join());
}

}  // namespace
