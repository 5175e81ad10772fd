#include "tzparser/pattern/appregex.h"
#include "tzparser/regex/regexcost.h"
#include "tzparser/text/appregexbuild.h"

#include <string>

#include <boost/regex.hpp>
#include <gtest/gtest.h>

namespace {

struct TrustRow {
    const char* expression;
    bool isTrusted;          // on a line of 45 bytes whatever it holds
    bool isTrustedOrdinary;  // on one with few blanks in a row
    bool isForOneLine;
};

const TrustRow TrustRows[] = {
    {"^(\\S+)\\s+is\\s+(\\S+),\\s+line\\s+protocol\\s+is\\s+(.*)", true, true, true},
    {"System\\s+image\\s+file\\s+is\\s+\"(\\S+)\"", true, true, false},
    {"^\\s+(\\d+)\\s+input\\s+errors,\\s+(\\d+)\\s+CRC", true, true, true},
    {"^(\\S+)\\s+(\\S+)\\s+(\\S+)\\s+(.*?)\\s+(up|down)\\s*$", false, true, true},
    {"(?:\\d+\\.){3}\\d+ is", true, true, false},
    {"^(?:[a-z]+,)*;", true, true, true},
    {"^(a+)+$", false, false, true},
    {"^(?:a|ab|b)*c", false, false, true},
    {".*.*.*.*x", false, false, false},
    {"^(?:(\\d+) (\\w+) (\\w+);){10}$", true, true, true},
    {"(?:a?){30}b", false, false, false},
};

TEST(RegexCost, WhatIsTrusted) {
    constexpr std::size_t line = 45;
    for (const auto& row : TrustRows) {
        SCOPED_TRACE(row.expression);
        const auto trust =
            TrustOfRegex(*ReadRegexTree(BuildRegex(row.expression, CAppRegex::RuleFlags)));
        EXPECT_EQ(trust.length >= line, row.isTrusted) << trust.length;
        EXPECT_EQ(trust.lengthWithFewBlanks >= line, row.isTrustedOrdinary)
            << trust.lengthWithFewBlanks;
        EXPECT_EQ(trust.isForOneLine, row.isForOneLine);
    }
}

struct WorstRow {
    const char* expression;
    const char* unit;  // the text is made of it, as long as is trusted
};

// Texts that make the plain matcher go back as often as it can.
const WorstRow WorstRows[] = {
    {"(\\d+)\\s+(\\d+)x", "1 "},
    {"(\\d+)(\\w*)x", "1"},
    {".*a.*b", "a"},
    {"(.*),(.*);", ","},
    {"(?:a,)*b", "a,"},
    {"(?:a+,)*b", "aa,"},
    {"(a|b)(a|b)(a|b)*c", "ab"},
    {"(?:a|b|c){3,8}d", "abc"},
    {"(\\w+?)(\\w+?)-", "w"},
    {"\\s+(\\S+)\\s+:", "a "},
    {"^(\\S*)(\\s*)(.*?)end$", "a "},
};

TEST(RegexCost, OnTrustedTextsPlainSearchingNeverGivesUp) {
    constexpr std::size_t longest = 20000;
    for (const auto& row : WorstRows) {
        SCOPED_TRACE(row.expression);
        const auto trust =
            TrustOfRegex(*ReadRegexTree(BuildRegex(row.expression, CAppRegex::RuleFlags)));
        EXPECT_GT(trust.length, 0U);
        std::string text;
        while (text.size() < std::min(trust.length, longest)) text += row.unit;
        text.resize(std::min(trust.length, longest));
        CAppRegexMatch match;
        EXPECT_EQ(CAppRegex(row.expression, CAppRegex::RuleFlags).SearchPlain(text, match),
                  AppRegexSearch_NoMatch);
    }
}

}  // namespace
