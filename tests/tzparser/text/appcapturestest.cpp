#include "tzparser/text/appcaptures.h"
#include "tzparser/text/appregexbuild.h"

#include <string>

#include <boost/regex.hpp>
#include <gtest/gtest.h>

namespace {

boost::regex Build(AppCapture_e capture) {
    return BuildRegex(GetAppCapture(capture), kRuleRegexFlags);
}

TEST(AppCaptures, EveryRowCompilesWithOneGroup) {
    for (const AppCaptureRow& row : GetAppCaptures()) {
        SCOPED_TRACE(row.name);
        const boost::regex expression = BuildRegex(row.expression, kRuleRegexFlags);
        ASSERT_EQ(expression.status(), 0);
        EXPECT_EQ(expression.mark_count(), 1u);
    }
}

TEST(AppCaptures, WhatIsCutOutOfALine) {
    const struct {
        AppCapture_e capture;
        const char* line;
        const char* wanted;  // the captured text
    } rows[] = {
        {AppCapture_Bool, "is FALSE", "FALSE"},
        {AppCapture_Int, "at -15.5", "-15"},
        {AppCapture_Double, "at -15.5 C", "-15.5"},
        {AppCapture_IP, "ip 192.0.2.1/24 x", "192.0.2.1/24"},
        {AppCapture_IP, "ip 192.0.2.1 255.255.255.0 x", "192.0.2.1 255.255.255.0"},
        {AppCapture_IP, "ip 192.0.2.1  0.0.0.0", "192.0.2.1  0.0.0.0"},
        {AppCapture_IP, "ip 192.0.2.1 255.0.255.0", "192.0.2.1"},
        {AppCapture_IPv6, "at 2001:db8::1/64 x", "2001:db8::1/64"},
        {AppCapture_IPv6, "at ::192.0.2.1 x", "::192.0.2.1"},
        {AppCapture_IPv6, "at 2001:db8:0:0:0:0:0:1", "2001:db8:0:0:0:0:0:1"},
        {AppCapture_IPv6, "none", "no match"},
        {AppCapture_Mac, "a 00:00:5e:00:53:01 b", "00:00:5e:00:53:01"},
        {AppCapture_Mac, "a 0000.5e00.5301 b", "0000.5e00.5301"},
        {AppCapture_Mac, "a 00005e-005301 b", "00005e-005301"},
        {AppCapture_Percent, "cpu -1.5%/2%", "-1.5%"},
        {AppCapture_String, " Gi0/1, up", "Gi0/1,"},
        {AppCapture_ConfigLet, " Gi0/1, up", "Gi0/1,"},
        {AppCapture_MString, "a b, c", "a b, c"},
        {AppCapture_MWord, " a b, c", "a b"},
        {AppCapture_MWord, "; a", "a"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        boost::cmatch match;
        const bool found = boost::regex_search(row.line, match, Build(row.capture));
        EXPECT_EQ(found ? match.str(1) : "no match", row.wanted);
    }
}

}  // namespace
