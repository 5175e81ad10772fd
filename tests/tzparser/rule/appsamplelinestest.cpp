#include "tzparser/rule/appsamplelines.h"

#include <random>
#include <string>

#include <boost/algorithm/string/regex.hpp>
#include <gtest/gtest.h>

namespace {

std::vector<std::string> SplitByExpression(const std::string& text) {
    std::vector<std::string> lines;
    boost::algorithm::split_regex(lines, text, boost::regex("\r\n|\n\r|\r|\n"));
    return lines;
}

std::vector<std::string> Split(const std::string& text) {
    CAppSampleLines lines;
    EXPECT_TRUE(lines.Assign(text));
    std::vector<std::string> result;
    for (int i = 0; i < lines.Count(); ++i) {
        result.emplace_back(lines.View(i));
        EXPECT_EQ(lines.String(i), lines.View(i));
    }
    return result;
}

TEST(AppSampleLines, SplitsAsTheExpressionForLineEndsDoes) {
    const std::string pieces[] = {"\r", "\n", "\r\n", "\n\r", "a", "bc", "\f", std::string(1, '\0'),
                                  " "};
    std::mt19937 random(7);
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        for (auto count = random() % 10; count > 0; --count)
            text += pieces[random() % std::size(pieces)];
        ASSERT_EQ(Split(text), SplitByExpression(text));
    }
}

TEST(AppSampleLines, NumbersThatAreNoLinesAreEmpty) {
    CAppSampleLines lines;
    EXPECT_EQ(lines.Count(), 0);
    lines.Assign("a\nb");
    for (const int line : {-1, 2, 1 << 30}) {
        EXPECT_EQ(lines.View(line), "");
        EXPECT_EQ(lines.String(line), "");
    }
}

TEST(AppSampleLines, StringsStayWhileOthersAreMade) {
    CAppSampleLines lines;
    lines.Assign(std::string(1000, '\n') + "last");
    const auto& last = lines.String(1000);
    for (int i = 0; i < 1000; ++i) lines.String(i);
    EXPECT_EQ(last, "last");
}

}  // namespace
