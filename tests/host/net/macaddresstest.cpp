#include "host/net/macaddress.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using std::string_literals::operator""s;

TEST(MacAddress, EveryNotationIsTheSameAddress) {
    for (const std::string text :
         {"00:00:5e:00:53:af", "00-00-5E-00-53-AF", "00.00.5e.00.53.af", "0000.5e00.53af",
          "0000-5e00-53af", "0000:5e00:53af", "00005e-0053af", "00005e:0053af", "00005e.0053af",
          "00005E0053AF", " \t0000.5e00.53af\r\n"})
        EXPECT_EQ(MacAddress(text), MacAddress(0x00005e0053af)) << text;
}

TEST(MacAddress, LongAddresses) {
    for (const std::string text :
         {"02:00:5e:ff:fe:00:53:01", "02-00-5E-FF-FE-00-53-01", "0200.5eff.fe00.5301",
          "0200:5eff:fe00:5301", "02005efffe005301"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(MacAddress(text).Value(), 0x02005efffe005301);
        EXPECT_EQ(MacAddress(text).TextForm(4), "0200.5eff.fe00.5301");
    }
}

TEST(MacAddress, WhatCannotBeReadIsNoAddress) {
    for (const std::string& text :
         {""s, " "s, "0000.5e00.53"s, "0000.5e00.53afx"s, "0000.5e00-53af"s, "00:00:5e:00:53"s,
          "0000.5e00.53ag"s, "00 00 5e 00 53 af"s, "0000.5e00.53af\0"s,
          // A long address with two leading zero bytes would read as a short one.
          "00:00:5e:ff:fe:00:53:01"s, "02:00:5e:ff:fe:00:53-01"s, "02005efffe00530"s,
          "0200.5eff.fe00:5301"s, std::string(100000, 'a')})
        EXPECT_EQ(MacAddress(text), MacAddress()) << text.substr(0, 40);
}

TEST(MacAddress, FormatsOfTheRows) {
    const struct {
        int format;
        std::string shortText, longText, none;
    } rows[] = {
        {1, "00005e0053af", "02005efffe005301", "000000000000"},
        {2, "00-00-5e-00-53-af", "02-00-5e-ff-fe-00-53-01", "00-00-00-00-00-00"},
        {3, "00:00:5e:00:53:af", "02:00:5e:ff:fe:00:53:01", "00:00:00:00:00:00"},
        {4, "0000.5e00.53af", "0200.5eff.fe00.5301", "0000.0000.0000"},
        {5, "0000-5e00-53af", "0200-5eff-fe00-5301", "0000-0000-0000"},
        {0, "0000.5e00.53af", "0200.5eff.fe00.5301", "0000.0000.0000"},
        {-9, "0000.5e00.53af", "0200.5eff.fe00.5301", "0000.0000.0000"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.format);
        std::string out = "old";
        MacAddress(0x00005e0053af).TextForm(out, row.format);
        EXPECT_EQ(out, row.shortText);
        EXPECT_EQ(MacAddress(0x02005efffe005301).TextForm(row.format), row.longText);
        EXPECT_EQ(MacAddress().TextForm(row.format), row.none);
    }
}

}  // namespace
