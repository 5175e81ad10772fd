// Search and replace, seen through the lines that a rule's children read.
#include "support/ruletree.h"

#include <gtest/gtest.h>

namespace {

struct ReplaceRow {
    const char* name;
    const char* operations;  // of the sample
    const char* text;
    const char* wanted;  // the wrapped lines, joined by "|"
};

const ReplaceRow ReplaceRows[] = {
    {"replace all", R"([{"originalstr":"x","replacestr":"y","isreplaceall":true}])", "xx\nx",
     "yy|y"},
    {"once in the whole range", R"([{"originalstr":"x","replacestr":"y"}])", "a\nxx\nx", "a|yx|x"},
    {"case counts",
     R"([{"originalstr":"X","replacestr":"y","iscasesensetive":true,"isreplaceall":true}])", "x\nX",
     "x|y"},
    {"one after the other",
     R"([{"originalstr":"a","replacestr":"b","isreplaceall":true},{"originalstr":"b","replacestr":"c","isreplaceall":true}])",
     "ab", "cc"},
    {"a whole word is taken literally",
     R"([{"originalstr":"a.b","replacestr":"-","iswholeword":true,"isreplaceall":true}])",
     "xa.b a.b acb", "xa.b - acb"},
    {"the bar of a whole word is still an alternation",
     R"([{"originalstr":"a|b","replacestr":"-","iswholeword":true,"isreplaceall":true}])",
     "a b a|b", "- - -|-"},
    {"an expression with groups",
     R"([{"originalstr":"(\\d+)ms","replacestr":"$1","isregex":true,"isreplaceall":true}])",
     "12ms 3ms", "12 3"},
    {"nothing to search for", R"([{"originalstr":"","replacestr":"y","isreplaceall":true}])", "a",
     "a"},
    {"a line replaced by nothing falls back", R"([{"originalstr":"abc","replacestr":""}])",
     "abc\nabcd", "abc|abcd"},
};

TEST(RuleReplace, LinesOfTheRows) {
    for (const auto& row : ReplaceRows) {
        SCOPED_TRACE(row.name);
        auto sample = LoadSample(std::string("{\"operations\":") + row.operations +
                                 ",\"parserules\":{\"parserule\":[{}]}}");
        ASSERT_TRUE(sample->Parse(row.text, 0, -1, nullptr));
        std::string lines;
        for (int i = 0; i < sample->GetLines().Count(); ++i) {
            lines += (i == 0 ? "" : "|") + sample->Children()[0]->GetWrappedLine(i);
            EXPECT_EQ(sample->Children()[0]->WrappedLineView(i),
                      sample->Children()[0]->GetWrappedLine(i));
        }
        EXPECT_EQ(lines, row.wanted);
    }
}

TEST(RuleReplace, ARuleSeesItsParentsLinesAndNotItsSiblings) {
    auto sample = LoadSample(
        "{\"operations\":[{\"originalstr\":\"one\",\"replacestr\":\"two\"}],\"parserules\":{"
        "\"parserule\":["
        "{\"keywords\":{\"keyword\":[\"line "
        "$a\"]},\"operations\":[{\"originalstr\":\"two\",\"replacestr\":\"three\"}]},"
        "{\"keywords\":{\"keyword\":[\"line $b\"]}}]}}");
    ASSERT_TRUE(sample->Parse("line one", 0, -1, nullptr));
    EXPECT_EQ(sample->GetVariableValue("a").at(0).text, "three");
    EXPECT_EQ(sample->GetVariableValue("b").at(0).text, "two");
    std::string text;
    EXPECT_TRUE(sample->Children()[0]->GetSearchReplaceLine(0, text));
    EXPECT_EQ(text, "line three");
    EXPECT_EQ(sample->GetOriginalLine(0), "line one");
}

TEST(RuleReplace, ABrokenExpressionThrowsWhenItIsUsed) {
    auto sample = LoadSample(
        "{\"operations\":[{\"originalstr\":\"(\",\"isregex\":true}],\"parserules\":{\"parserule\":["
        "{}]}}");
    EXPECT_THROW(sample->Parse("a", 0, -1, nullptr), std::exception);
}

}  // namespace
