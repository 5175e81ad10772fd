#include "host/text/addresstext.h"

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;

TEST(AddressText, FindsAnAddressInAText) {
    const struct {
        std::string text, wanted;
    } rows[] = {
        {"", ""},
        {" 3  203.0.113.9 (core) 4 ms", "203.0.113.9"},
        {"Tracing the route to (192.0.2.1).", "192.0.2.1"},
        {"[192.0.2.1]:80", "192.0.2.1"},
        {"ip=192.0.2.1/24", "192.0.2.1"},
        {"next hop:192.0.2.1", "192.0.2.1"},
        {"gateway.......: 192.0.2.1", "192.0.2.1"},
        {"gateway.......192.0.2.1", "192.0.2.1"},
        {"1.2.3.4.5 then 192.0.2.7", "192.0.2.7"},
        {"version v1.2.3.4", ""},
        {"1.2.3.4a", ""},
        {"256.1.1.1", ""},
        {"1192.0.2.1", "" /* the octet is too big, not cut */},
        {"192.0.2", ""},
        {"192.0..2.1", ""},
        {"192.0.02.1", ""},
        {"first 198.51.100.1 second 198.51.100.2", "198.51.100.1"},
        {"2001:db8::1 but v4 first 192.0.2.1", "192.0.2.1"},
        {"hop 2001:db8::1, 3 ms", "2001:db8::1"},
        {"to 2001:DB8:0:0:0:0:0:A.", "2001:DB8:0:0:0:0:0:A"},
        {"fe80::1%eth0", "fe80::1"},
        {"Addr:2001:db8::1/64", "2001:db8::1"},
        {"2001:db8::1: unreachable", "2001:db8::1"},
        {"route 2001:db8::/32", "2001:db8::"},
        {"12:30:45 up", ""},
        {"mac 00:11:22:33:44:55", ""},
        {"std::string", ""},
        {"a :: b", ""},
        {"x\0y 192.0.2.1"s, "192.0.2.1"},
        {"192.0.2.1\0"s, "192.0.2.1"},
        {std::string(3000, ':') + std::string(3000, 'g') + ":", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(StrHasIp2(row.text), row.wanted);
    }
}

TEST(AddressText, Mac) {
    for (const char* text :
         {"00:11:22:33:44:55", "00-1A-22-33-44-ff", "00.11.22.33.44.55", "0011.22aB.4455",
          "0011-2233-4455", "0011:2233:4455", "001122-334455", "001122334455"}) {
        EXPECT_TRUE(StrIsMac(text)) << text;
    }
    for (const std::string& text :
         {""s, "00:11:22:33:44"s, "00:11:22:33:44:5g"s, "00:11:22-33:44:55"s, " 001122334455"s,
          "0011223344556"s, "00:11:22:33:44:55:66"s, "0011.2233.445\0"s}) {
        EXPECT_FALSE(StrIsMac(text)) << text;
    }
}

TEST(AddressText, WholeAddresses) {
    const struct {
        std::string text;
        bool isIpv4, isIpv6;
    } rows[] = {
        {"192.0.2.1", true, false},
        {"192.0.2.0/24", true, false},
        {"192.0.2.0/0", true, false},
        {"192.0.2.0/33", false, false},
        {"192.0.2.0/", false, false},
        {"192.0.2.0/+4", false, false},
        {"192.0.2.0/0024", false, false},
        {"192.0.2.0 \t255.255.255.0", true, false},
        {"192.0.2.0 0.0.0.0", true, false},
        {"192.0.2.0 255.0.255.0", false, false},
        {"192.0.2.0 ", false, false},
        {" 192.0.2.0", false, false},
        {"192.0.2.1\0"s, false, false},
        {"::", false, true},
        {"2001:db8::1/64", false, true},
        {"2001:db8::1/129", false, false},
        {"::ffff:192.0.2.1", false, true},
        {"2001:db8:::1", false, false},
        {std::string(200, 'a') + "::", false, false},
        {"", false, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(StrIsIpv4(row.text), row.isIpv4);
        EXPECT_EQ(StrIsIpv6(row.text), row.isIpv6);
    }
}

}  // namespace
