#include "tzparser/rule/applinestatus.h"

#include <algorithm>
#include <random>
#include <string>

#include <gtest/gtest.h>

namespace {

std::string Dump(const CAppLineStatus& status) {
    std::string dump;
    for (int line = 0; line < status.Count(); ++line) dump += status.IsOpen(line) ? '1' : '0';
    return dump;
}

TEST(AppLineStatus, CopiesDoNotSeeEachOther) {
    auto status = CAppLineStatus::AllOpen(8);
    status.Close(3, 5);
    auto copy = status;
    copy.Close(0, 2);
    copy.Close(5, 6);
    copy.Open(4);
    EXPECT_EQ(Dump(status), "11100111");
    EXPECT_EQ(Dump(copy), "00101011");
}

TEST(AppLineStatus, AHostsBitsHoldAndAreNotShared) {
    auto status = CAppLineStatus::AllOpen(6);
    status.Close(0, 2);
    auto& bits = status.HostBits();
    auto copy = status;
    bits.set(0);
    bits.reset(4);
    status.Close(5, 6);
    EXPECT_EQ(Dump(status), "101100");
    EXPECT_EQ(Dump(copy), "001111");
    EXPECT_EQ(&bits, &status.HostBits());
    EXPECT_FALSE(bits[5]);
}

// The plain form is one bit a line; every step has to agree with it, whatever is shared on the way.
TEST(AppLineStatus, AgreesWithOneBitALine) {
    std::mt19937 random(7);
    const auto draw = [&random](int below) {
        return static_cast<int>(random() % static_cast<unsigned>(below));
    };
    for (int round = 0; round < 300; ++round) {
        const int count = draw(70);
        auto status = CAppLineStatus::AllOpen(count);
        AppLineStatus plain(static_cast<std::size_t>(count));
        plain.set();
        CAppLineStatus kept;
        for (int step = 0; step < 12; ++step) {
            const int first = draw(80) - 5;
            const int last = draw(80) - 5;
            switch (draw(5)) {
                case 0:
                    kept = status;
                    break;
                case 1:
                    status.Open(first);
                    if (first >= 0 && first < count) plain.set(static_cast<std::size_t>(first));
                    break;
                case 2:
                    status.HostBits();
                    break;
                default:
                    status.Close(first, last);
                    for (int line = std::max(first, 0); line < std::min(last, count); ++line)
                        plain.reset(static_cast<std::size_t>(line));
            }
            ASSERT_EQ(status.ToBits(), plain) << "round " << round << " step " << step;
            ASSERT_EQ(status.HasOpen(), plain.any());
            int previous = std::min(first, count - 1);
            while (previous >= 0 && !plain[static_cast<std::size_t>(previous)]) --previous;
            ASSERT_EQ(status.PreviousOpen(first), std::max(previous, -1)) << first;
        }
    }
}

}  // namespace
