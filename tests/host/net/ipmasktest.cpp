#include "host/net/ipmask.h"

#include <string_view>

#include <gtest/gtest.h>

namespace {

TEST(IpMask, NotationsOfTheRows) {
    const struct {
        std::string_view text;
        std::uint32_t wanted;
        int length;
        bool contiguous;
    } rows[] = {
        {"0", 0, 0, true},
        {"24", 0xffffff00, 24, true},
        {"32", 0xffffffff, 32, true},
        {"255.255.255.0", 0xffffff00, 24, true},
        {"255.0.255.0", 0xff00ff00, 16, false},
        {"0.0.0.0", 0, 0, true},
        {"255.255.255.255", 0xffffffff, 32, true},
        {"0.0.0.255", 0xffffff00, 24, true},
        {"0.0.0.1", 0xfffffffe, 31, true},
        {"127.255.255.255", 0x80000000, 1, true},
        {"0.0.255.0", 0x0000ff00, 8, false},  // set bits in the middle: no wildcard either
        {"0xffffff00", 0xffffff00, 24, true},
        {"0XFF00FF00", 0xff00ff00, 16, false},
        {"fffffe00", 0xfffffe00, 23, true},
        {"00000000", 0, 0, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        std::uint32_t mask = 1;
        ASSERT_TRUE(ReadIpMask(row.text, mask));
        EXPECT_EQ(mask, row.wanted);
        EXPECT_EQ(IpMaskLength(mask), row.length);
        EXPECT_EQ(IpMaskIsContiguous(mask), row.contiguous);
        if (row.contiguous) {
            EXPECT_EQ(IpMaskOfLength(row.length), mask);
        }
    }
}

TEST(IpMask, RefusesWhatIsNoMask) {
    for (const std::string_view text :
         {"", "33", "-1", "+8", "024", "8 ", "255.255.255", "255.255.255.256", "0x", "0xfffffff00",
          "ffff00ff", "fffffe0", "0xgg", "12345678"}) {
        SCOPED_TRACE(text);
        std::uint32_t mask = 77;
        EXPECT_FALSE(ReadIpMask(text, mask));
        EXPECT_EQ(mask, 77U);
    }
}

}  // namespace
