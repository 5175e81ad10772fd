#include "tzparser/pattern/appregex.h"
#include "tzparser/regex/regexscreen.h"
#include "tzparser/text/appregexbuild.h"

#include <string>

#include <boost/regex.hpp>
#include <gtest/gtest.h>

namespace {

CRegexScreen ScreenOf(const char* expression, unsigned flags = CAppRegex::RuleFlags) {
    return CRegexScreen(*ReadRegexTree(BuildRegex(expression, flags)));
}

struct ScreenRow {
    const char* expression;
    const char* wanted;
};

const ScreenRow ScreenRows[] = {
    {"^(\\S+)\\s+is\\s+(\\S+), Protocol", ", protocol"},
    {"a(bc)d", "abcd"},
    {"(?:abc)?de", "de"},
    {"(?:abc){2}de", "abc"},
    {"(?:abc)*|de", ""},
    {"(?:abc|abd)e", "e"},
    {"x(?=abcd)", "x"},
    {"(ab)\\1[cd]", "ab"},
    {"[Aa]b[^c]", "ab"},
    {"a.b", "b"},
    {"\\d+", ""},
    {"seventeen.letters.and more", "and more"},
    {"system|uptime", ""},
    {"abcdefghijklmnopqrstuvwxyz", "abcdefghijklmnop"},
};

TEST(RegexScreen, WhichStringIsTaken) {
    for (const auto& row : ScreenRows) {
        SCOPED_TRACE(row.expression);
        EXPECT_EQ(ScreenOf(row.expression).Text(), row.wanted);
    }
}

// Every length of text and every place in it, so that each block of places ends somewhere.
TEST(RegexScreen, FindsItWhereverItStands) {
    const auto screen = ScreenOf("k9, up");
    for (std::size_t length = 0; length < 80; ++length) {
        SCOPED_TRACE(length);
        EXPECT_FALSE(screen.Passes(std::string(length, 'k')));
        for (std::size_t at = 0; at + 6 <= length; ++at) {
            std::string text(length, 'p');
            text.replace(at, 6, "K9, uP");
            EXPECT_TRUE(screen.Passes(text)) << at;
            EXPECT_FALSE(screen.Passes(std::string_view(text).substr(at + 1))) << at;
            EXPECT_FALSE(screen.Passes(std::string_view(text).substr(0, at + 5))) << at;
        }
    }
}

TEST(RegexScreen, CaseCountsWhereTheExpressionSaysSo) {
    EXPECT_FALSE(ScreenOf("up", 0).Passes("UP"));
    EXPECT_TRUE(ScreenOf("up", 0).Passes("is up"));
    EXPECT_FALSE(ScreenOf("@").Passes("`"));
}

}  // namespace
