// Fast searching against plain searching.
#include "tzparser/pattern/appregex.h"
#include "tzparser/regex/regexjit.h"
#include "tzparser/regex/regexvalidity.h"
#include "tzparser/text/appregexbuild.h"

#include "support/regexcases.h"

#include <random>
#include <string>

#include <boost/regex.hpp>
#include <gtest/gtest.h>

namespace {

TEST(RegexDifference, GeneratedExpressionsAndTexts) {
    std::mt19937 random(20240607);
    CRegexCases cases([&](unsigned below) { return static_cast<unsigned>(random() % below); });
    for (int i = 0; i < 3000; ++i) {
        const auto expression = cases.Expression();
        const unsigned flags = i % 4 == 0 ? 0 : CAppRegex::RuleFlags;
        for (int j = 0; j < 2; ++j) {
            const auto text = cases.Text();
            SCOPED_TRACE(expression + "\n" + text);
            ASSERT_EQ(CompareSearches(expression, flags, text), "");
        }
    }
}

std::string Times(int count, const std::string& text) {
    std::string all;
    for (; count > 0; --count) all += text;
    return all;
}

struct TrickyRow {
    const char* name;
    std::string expression;
    std::string text;
};

const TrickyRow TrickyRows[] = {
    {"line ends inside", "^(\\w+)$", "ab\r\ncd\fe\n"},
    {"between return and line feed no line begins", "\\r^\\n", "a\r\nb"},
    {"behind a last line feed a line begins", "a\\n^$", "a\n"},
    {"the vertical tab is white space, not a line end", "a\\s^b|a\\sb", "a\vb"},
    {"bytes above 127 are no words and have no case", "(\\w+)\\xe9(.)", "ab\xe9\xc9"},
    {"a NUL", std::string("a\\x00(b)", 8), std::string("xa\0b", 4)},
    {"a set that takes nothing", "[^\\s\\S]a|b", "ab"},
    {"letters in a set, with case and without", "[^a](B)", "AbxB"},
    {"a range over both cases", "([Z-b]+)", "zZ[a_B"},
    {"within a word, not at the text's ends", "\\B.\\B", "ab c"},
    {"a lazy repeat with a maximum in front passes over starts", "_{0,2}?ab", "c___ab"},
    {"the same behind an anchor and a mark", "\\b(_{0,3}?)a", "____a"},
    {"a branch that took part in a former round", "(?:(a)|b)*c", "abc"},
    {"an optional group that is gone back from", "(a+)?ab", "aaab"},
    {"the first branch wins, not the longest", "(a|ab)(c|bcd)?", "abcd"},
    {"an empty branch", "x(|a)(b|)$", "xab"},
    {"rounds that take nothing", "(a*)*(b|)*c", "aabbc"},
    {"a zero repeat", "a{0}(b){0}c", "abc"},
    {"groups reset in a branch", "(?|(a)|(b))(c)", "bc"},
    {"a group by name", "(?<first>a+)\\k<first>", "aaaa"},
    {"letter case switched on the way", "a(?-i)b(?i)c", "AbC"},
    {"where the match is said to begin", "ab\\Kc", "abc"},
    {"verbs", "a(*SKIP)b|.", "aab"},
    {"a condition", "(a)?(?(1)b|c)", "ab"},
    {"recursion", "\\((?:[^()]|(?R))*\\)", "x(a(b)c)"},
    {"an atomic group", "(?>a+)ab|b", "aab"},
    {"an element of two characters", "[[.ae.]]b", "aeb"},
    {"an equivalence class", "[[=a=]]+", "aA"},
    {"many captures", std::string("((((((((((((((((((((a)))))))))))))))))))))", 41), "a"},
    {"a long string across blocks", "(0123456789abcdef0123456789)",
     std::string(50, '0') + "0123456789abcdef0123456789"},
    {"a long repeat", "x{400}(y)", std::string(500, 'x') + "y"},
    {"the empty expression", "", "a"},
    {"the empty text", "^(a*)$", ""},
    {"the empty text on which plain searching gives up", "(?:" + Times(22, "(?:|)") + "\\b|)", ""},
    {"a match that is accepted within a look-around", "(?=a(*ACCEPT))b", "a"},
    {"recursion within a look-around", "(?=(?1))(ab)c", "abc"},
    {"more columns than a block of the matcher's stack holds", Times(60, "(\\d{1,2}),") + "x",
     Times(1500, "11,") + ";" + Times(60, "1,") + "x"},
    {"more rounds than a block of the matcher's stack holds",
     "(?:[^,])*\\d[" + Times(22, "abcdefghij") + "]?~", Times(400, "1") + ",1~"},
};

TEST(RegexDifference, TrickyExpressions) {
    for (const auto& row : TrickyRows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(CompareSearches(row.expression, CAppRegex::RuleFlags, row.text), "");
        EXPECT_EQ(CompareSearches(row.expression, 0, row.text), "");
    }
}

// Their matches are the longest.
TEST(RegexDifference, OtherSyntaxesAreNotReadAsPerls) {
    for (const unsigned syntax : {boost::regex::extended, boost::regex::egrep, boost::regex::basic,
                                  boost::regex::literal}) {
        EXPECT_EQ(CompareSearches("a|ab\nabc", syntax, "abcd a|ab\nabc"), "");
        EXPECT_FALSE(ReadRegexTree(BuildRegex("a|ab", syntax)));
    }
}

struct KindRow {
    const char* expression;
    bool isSurelyValid;
    bool isCompiled;  // to machine code
};

// Keeps the ordinary statement on the fast ways: nothing else would notice if it fell off.
const KindRow KindRows[] = {
    {"^(\\S+)\\s+is\\s+(up|down),\\s+line\\s+protocol\\s+is\\s+(.+)$", true, true},
    {"(\\-?\\d+(?:\\.\\d+)?)\\s*%", true, true},
    {"^((?:\\d{1,3}\\.){3}\\d{1,3})/(\\d+)", true, true},
    {"[\\da-fA-F:]{2,17}.*?(\\w)", true, true},
    {"\\bup\\b", false, true},
    {"(?:(a)|b)+", true, false},
    {"(?:a*)*", true, false},
    {"(?=a)b", false, false},
    {"(a)\\1", false, false},
    {"a++", false, false},
    {"a{2", false, true},
    {"()", false, true},
    {"[a\\-z]", true, true},
};

TEST(RegexDifference, WhichExpressionsAreFast) {
    for (const auto& row : KindRows) {
        SCOPED_TRACE(row.expression);
        EXPECT_EQ(IsSurelyValidRegex(row.expression), row.isSurelyValid);
        const auto tree = ReadRegexTree(BuildRegex(row.expression, CAppRegex::RuleFlags));
        ASSERT_TRUE(tree);
        EXPECT_EQ(CRegexJit::Make(*tree) != nullptr, row.isCompiled);
    }
}

void ExpectCompiles(const std::string& expression) {
    if (!IsSurelyValidRegex(expression)) return;
    for (const unsigned flags : {0U, CAppRegex::RuleFlags})
        EXPECT_EQ(BuildRegex(expression, flags | boost::regex::no_except).status(), 0)
            << expression;
}

TEST(RegexDifference, WhatIsSurelyValidCompiles) {
    for (char x = ' '; x <= '~'; ++x) {
        for (char y = ' '; y <= '~'; ++y) {
            const std::string two{x, y};
            for (const auto& expression : {two, "\\" + two, "[" + two + "]", "[\\" + two + "]",
                                           std::string{'[', x, '-', y, ']'}, "(" + two + ")+"})
                ExpectCompiles(expression);
        }
    }
}

}  // namespace
