#include "tzparser/pattern/patternscan.h"
#include "tzparser/text/appregexbuild.h"

#include <chrono>
#include <random>
#include <string>

#include <boost/regex.hpp>
#include <gtest/gtest.h>

namespace {

std::string DumpScan(const std::string& text) {
    std::string dump;
    CPatternScan scan(text);
    while (scan.Next())
        dump.append(std::to_string(scan.Begin()))
            .append(":")
            .append(scan.Type())
            .append("|")
            .append(scan.Name())
            .append("|")
            .append(scan.Alternatives())
            .append("\n");
    return dump;
}

// What the expression finds, each search beginning where the last match ended.
std::string DumpExpression(const std::string& text) {
    static const auto expression = BuildRegex(PatternVariableRegex, kRuleRegexFlags);
    std::string dump;
    boost::smatch match;
    auto at = text.cbegin();
    while (boost::regex_search(at, text.cend(), match, expression)) {
        dump += std::to_string(match[0].first - text.cbegin()) + ":" + match[1].str() + "|" +
                match[2].str() + "|" + match[3].str() + "\n";
        at = match[0].second;
    }
    return dump;
}

TEST(PatternScan, FindsWhatTheExpressionFinds) {
    const std::string pieces[] = {"$",  "int:", "INT:", "mstr", "mstring:", "x", "_1",
                                  "9",  "(",    ")",    "|",    "a|b",      ":", " ",
                                  "\n", "\\",   "é",    "$$",   "string:x", "()"};
    std::mt19937 random(20261121);
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        for (auto count = random() % 12; count > 0; --count)
            text += pieces[random() % std::size(pieces)];
        ASSERT_EQ(DumpScan(text), DumpExpression(text)) << text;
    }
}

// Each of these variables has a parenthesis that never closes: looking for its end anew each time
// would be quadratic.
TEST(PatternScan, IsLinearInHostileStatements) {
    std::string text;
    for (int i = 0; i < 300000; ++i) text += "$a($b|";
    CPatternScan scan(text);
    std::size_t count = 0;
    while (scan.Next()) ++count;
    EXPECT_EQ(count, 600000U);
}

}  // namespace
