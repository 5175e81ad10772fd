#include "host/net/iplocation.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using std::string_literals::operator""s;

TEST(IpLocation, TextsOfTheRows) {
    const struct {
        std::string text, byLength, byMask;
    } rows[] = {
        {"192.0.2.7", "192.0.2.7/32", "192.0.2.7 255.255.255.255"},
        {"192.0.2.7/24", "192.0.2.7/24", "192.0.2.7 255.255.255.0"},
        {" 192.0.2.7\t 255.255.255.0 ", "192.0.2.7/24", "192.0.2.7 255.255.255.0"},
        {"192.0.2.7 /25", "192.0.2.7/25", "192.0.2.7 255.255.255.128"},
        {"192.0.2.7/255.255.0.0", "192.0.2.7/16", "192.0.2.7 255.255.0.0"},
        {"192.0.2.7 0.0.0.3", "192.0.2.7/30", "192.0.2.7 255.255.255.252"},
        {"192.0.2.7 0xffffff00", "192.0.2.7/24", "192.0.2.7 255.255.255.0"},
        {"192.0.2.7 255.0.255.0", "192.0.2.7/255.0.255.0", "192.0.2.7 255.0.255.0"},
        {"255.255.255.255/0", "255.255.255.255/0", "255.255.255.255 0.0.0.0"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const IpLocation location(row.text);
        EXPECT_EQ(location.textFormByMaskLen(), row.byLength);
        EXPECT_EQ(location.textForm(false), row.byMask);
        EXPECT_EQ(IpLocation(location.textFormByMaskLen()), location);
        EXPECT_EQ(IpLocation(location.textForm(false)), location);
    }
    EXPECT_EQ(IpLocation("192.0.2.7").textForm(true), "192.0.2.7");
    EXPECT_EQ(IpLocation("192.0.2.7/31").textForm(true), "192.0.2.7 255.255.255.254");
}

TEST(IpLocation, WhatCannotBeReadIsAddress0WithMask0) {
    for (const std::string& text :
         {""s, " "s, "192.0.2"s, "192.0.2.7.1"s, "192.0.2.256"s, "192.0.02.7"s, "192.0.2.7/"s,
          "192.0.2.7/33"s, "192.0.2.7 x"s, "192.0.2.7/24 x"s, "/24"s, "a192.0.2.7"s, "192.0.2.7\0"s,
          "2001:db8::1"s, std::string(100000, '1')}) {
        SCOPED_TRACE(text.substr(0, 40));
        EXPECT_EQ(IpLocation(text), IpLocation());
    }
}

TEST(IpLocation, AddressAndMaskApart) {
    const struct {
        std::string ip, mask;
        bool asNetwork;
        std::string wanted;
    } rows[] = {
        {"192.0.2.7", "255.255.255.0", false, "192.0.2.7/24"},
        {"192.0.2.7", "255.255.255.0", true, "192.0.2.0/24"},
        {" 192.0.2.7", " /24 ", false, "192.0.2.7/24"},
        {"192.0.2.7", "", false, "192.0.2.7/32"},
        {"192.0.2.7", "none", false, "0.0.0.0/0"},
        {"none", "24", false, "0.0.0.0/0"},
        {"0.0.0.0", "255.0.0.0", false, "0.0.0.0/8"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(IpLocation(row.ip, row.mask, row.asNetwork).textFormByMaskLen(), row.wanted)
            << row.ip << " with " << row.mask;
}

TEST(IpLocation, RelationsOfTheRows) {
    const struct {
        std::string mine, other;
        bool sameNet, summary;
    } rows[] = {
        {"192.0.2.7/24", "192.0.2.99/24", true, true},
        {"192.0.2.7/24", "198.51.100.7/24", false, false},
        {"192.0.2.7/24", "192.0.2.99", true, false},
        {"192.0.2.99", "192.0.2.7/24", true, true},
        {"192.0.2.7/24", "192.0.0.0/16", true, true},
        {"192.0.0.0/16", "192.0.2.7/24", true, false},
        {"192.0.2.7/24", "0.0.0.0/0", true, true},
        {"0.0.0.0/0", "192.0.2.7/24", true, false},
        {"192.9.2.7/255.0.255.0", "192.0.2.1/255.0.255.0", true, true},
        {"192.9.2.7/255.0.255.0", "192.9.2.1/24", true, false},
        {"192.9.2.7/24", "192.0.2.1/255.0.255.0", true, true},
        {"192.9.3.7/24", "192.0.2.1/255.0.255.0", false, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.mine + " and " + row.other);
        EXPECT_EQ(IpLocation(row.mine).inSameNet(IpLocation(row.other)), row.sameNet);
        EXPECT_EQ(IpLocation(row.other).inSameNet(IpLocation(row.mine)), row.sameNet);
        EXPECT_EQ(IpLocation(row.mine).isSummarynet(IpLocation(row.other)), row.summary);
    }
}

TEST(IpLocation, ClassesOfTheRows) {
    const struct {
        std::string text, classMask;
        bool supernet, subnet;
    } rows[] = {
        {"0.0.0.0/0", "255.0.0.0", true, false},
        {"127.255.255.255/8", "255.0.0.0", false, false},
        {"128.0.0.0/24", "255.255.0.0", false, true},
        {"191.255.255.255/15", "255.255.0.0", true, false},
        {"192.0.2.0/24", "255.255.255.0", false, false},
        {"223.255.255.255/32", "255.255.255.0", false, true},
        {"192.0.2.0/255.0.255.0", "255.255.255.0", true, false},
        {"192.0.2.0/255.0.255.255", "255.255.255.0", false, false},
        {"224.0.0.1/4", "255.255.255.255", false, false},
        {"255.255.255.255/32", "255.255.255.255", false, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const IpLocation location(row.text);
        EXPECT_EQ(location.classMask().textForm(), row.classMask);
        EXPECT_EQ(location.isSupernet(), row.supernet);
        EXPECT_EQ(location.isSubnet(), row.subnet);
    }
}

}  // namespace
