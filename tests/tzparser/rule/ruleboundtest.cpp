// Bounds by variable and by pattern.
#include "support/letdump.h"
#include "support/ruletree.h"

#include <gtest/gtest.h>

namespace {

struct BoundRow {
    const char* name;
    const char* start;
    const char* end;
    const char* wanted;  // the range, or the last error of a rule that failed
};

// Rule "first" gives $at the line 2, rule "second" has the bounds of the row.
const char* const BoundText = "zero\nmark\nat 7\nmark\nlast";

const BoundRow BoundRows[] = {
    {"none", "{\"type\":0,\"skip\":9}", "{}", "0-5"},
    {"by pattern", "{\"type\":2,\"pattern\":\"mark\"}", "{\"type\":2,\"pattern\":\"last\"}", "1-5"},
    {"the end is inclusive", "{}", "{\"type\":2,\"pattern\":\"mark\"}", "0-2"},
    {"skip moves inward", "{\"type\":2,\"pattern\":\"mark\",\"skip\":2}",
     "{\"type\":2,\"pattern\":\"last\",\"skip\":1}", "3-4"},
    {"a negative skip doesn't count", "{\"type\":2,\"pattern\":\"mark\",\"skip\":-5}", "{}", "1-5"},
    {"a huge skip", "{\"type\":2,\"pattern\":\"mark\",\"skip\":2147483647}",
     "{\"type\":2,\"pattern\":\"mark\",\"skip\":2147483647}", "2147483647--2147483645"},
    {"by expression", "{\"type\":2,\"pattern\":\"regex:^a\"}", "{}", "2-5"},
    {"over several lines", "{\"type\":2,\"pattern\":\"mregex:7\\nmark\"}", "{}", "2-5"},
    {"several lines not found", "{\"type\":2,\"pattern\":\"mregex:7\\nlast\"}", "{}", "error: "},
    {"not found", "{\"type\":2,\"pattern\":\"nowhere\"}", "{}", "error: "},
    {"a pattern that doesn't compile", "{\"type\":2,\"pattern\":\"$x(a|b[)\"}", "{}", "error: "},
    {"by variable", "{\"type\":1,\"text\":\"$at\",\"xxid\":\"first\"}", "{}", "2-5"},
    {"the variable needs its dollar", "{\"type\":1,\"text\":\"at\",\"xxid\":\"first\"}", "{}",
     "error: "},
    {"no variable named", "{\"type\":1,\"xxid\":\"first\"}", "{}", "error: variable is empty."},
    {"no such rule", "{\"type\":1,\"text\":\"$at\",\"xxid\":\"f\"}", "{}",
     "error: can not find parse rule. guild:f"},
    {"a rule further down isn't found", "{\"type\":1,\"text\":\"$at\",\"xxid\":\"deep\"}", "{}",
     "error: can not find parse rule. guild:deep"},
    {"no such bound", "{\"type\":3}", "{}", "error: not support start end line type."},
};

TEST(RuleBound, RangesOfTheRows) {
    for (const auto& row : BoundRows) {
        SCOPED_TRACE(row.name);
        auto sample =
            LoadRules(std::string("{\"xxid\":\"first\",\"keywords\":{\"keyword\":[\"at $at\"]},"
                                  "\"child\":{\"parserule\":[{\"xxid\":\"deep\"}]}},{\"xxid\":"
                                  "\"second\",\"nistart\":") +
                      row.start + ",\"niend\":" + row.end + "}");
        ASSERT_TRUE(sample->Parse(BoundText, 0, -1, nullptr)) << "one rule ran";
        auto& rule = *sample->Children()[1];
        const bool ran = rule.Parse(BoundText, 0, 5, nullptr);
        EXPECT_EQ(
            ran ? std::to_string(rule.GetNIStartLine()) + "-" + std::to_string(rule.GetNIEndLine())
                : "error: " + rule.GetLastError(),
            row.wanted);
    }
}

TEST(RuleBound, AVariableWithoutALineFailsWithoutWords) {
    auto sample = LoadRules(
        "{\"xxid\":\"first\"},{\"nistart\":{\"type\":1,\"text\":\"$none\",\"xxid\":\"first\"}}");
    auto& rule = *sample->Children()[1];
    rule.SetLastError("words of an earlier parse");
    sample->Parse("a", 0, -1, nullptr);
    EXPECT_EQ(rule.GetLastError(), "");
}

TEST(RuleBound, AGivenUpSearchLeavesWordsAndGoesOn) {
    auto sample = LoadRules(
        "{\"nistart\":{\"type\":2,\"pattern\":\"regex:^(a+)+$\"},\"keywords\":{\"keyword\":[\"$x\"]"
        "}}");
    ASSERT_TRUE(sample->Parse(std::string(200, 'a') + "!\naaa", 0, -1, nullptr));
    EXPECT_EQ(sample->GetLastError(), "Catch any exception");
    EXPECT_EQ(DumpLets(sample->GetVariableValue("x")), "1:0-3 \"aaa\"");
}

TEST(RuleBound, BothEndsAreSearchedInTheWholeRange) {
    auto sample = LoadRules(
        "{\"nistart\":{\"type\":2,\"pattern\":\"b\"},\"niend\":{\"type\":2,\"pattern\":\"a\"}}");
    auto& rule = *sample->Children()[0];
    ASSERT_TRUE(sample->Parse("a\nb\nc", 0, -1, nullptr));
    EXPECT_EQ(rule.GetNIStartLine(), 1);
    EXPECT_EQ(rule.GetNIEndLine(), 1);
    int start = 0;
    int end = 3;
    EXPECT_TRUE(rule.GetNIStartEndLineNumber(start, end));
    EXPECT_EQ(start, 1);
    EXPECT_EQ(end, 0);
}

}  // namespace
