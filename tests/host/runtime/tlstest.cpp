#include "host/runtime/tls.h"

#include <memory>
#include <thread>

#include <gtest/gtest.h>

namespace {

TEST(CTls, OnePointerAThread) {
    CTls slot;
    CTls other;
    int mine = 0;
    EXPECT_EQ(slot.GetValue(), nullptr);
    EXPECT_TRUE(slot.SetValue(&mine));
    EXPECT_EQ(slot.GetValue(), &mine);
    EXPECT_EQ(other.GetValue(), nullptr);
    std::thread([&] {
        EXPECT_EQ(slot.GetValue(), nullptr);
        int theirs = 0;
        EXPECT_TRUE(slot.SetValue(&theirs));
        EXPECT_EQ(slot.GetValue(), &theirs);
    }).join();
    EXPECT_EQ(slot.GetValue(), &mine);
}

TEST(CTls, ASlotMadeAnewIsEmpty) {
    int value = 0;
    for (int i = 0; i < 5000; ++i) {
        CTls slot;
        ASSERT_EQ(slot.GetValue(), nullptr) << i;
        ASSERT_TRUE(slot.SetValue(&value)) << i;
    }
}

}  // namespace
