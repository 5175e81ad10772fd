#include "tzparser/python/apprunnerglobalset.h"

#include <thread>

#include <gtest/gtest.h>

namespace {

TEST(CAppRunnerGlobalSet, OneContextAThread) {
    int context = 0;
    EXPECT_EQ(CAppRunnerGlobalSet::Instance(), CAppRunnerGlobalSet::Instance());
    EXPECT_TRUE(CAppRunnerGlobalSet::Instance()->SetPyFuncContext(&context));
    EXPECT_EQ(CAppRunnerGlobalSet::Instance()->GetPyFuncContext(), &context);
    std::thread([] {
        EXPECT_EQ(CAppRunnerGlobalSet::Instance()->GetPyFuncContext(), nullptr);
    }).join();
    CAppRunnerGlobalSet::Instance()->Destroy();
    EXPECT_EQ(CAppRunnerGlobalSet::Instance()->GetPyFuncContext(), nullptr);
    EXPECT_TRUE(CAppRunnerGlobalSet::Instance()->SetPyFuncContext(&context));
    CAppRunnerGlobalSet::Destroy();
    CAppRunnerGlobalSet::Destroy();
}

}  // namespace
