// Two texts line by line: how lines are counted, which of several are paired, both forms of the
// result.
#include "host/diff/tzdifflib.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;

std::string Dump(const CommonLines& lines) {
    std::string dump;
    for (const auto& [first, second] : lines)
        dump += (dump.empty() ? "" : " ") + std::to_string(first) + ":" + std::to_string(second);
    return dump;
}

struct Row {
    const char* name;
    std::string first;
    std::string second;
    std::string wanted;
};

const Row Rows[] = {
    {"two empty texts have one line", "", "", "0:0"},
    {"nothing in common", "a\nb", "c\nd", ""},
    {"line behind the last line end", "a\n", "b\n", "1:1"},
    {"line ends don't count", "a\r\nb\n\rc\rd\n", "a\nb\nc\nd\r", "0:0 1:1 2:2 3:3 4:4"},
    {"a pair is one line end", "a\n\r\nb", "a\n\nb", "0:0 1:1 2:2"},
    {"NUL and bytes of no character", "\0a\n\xFF\n"s, "\xFF\n\0a\0"s, "1:0"},
    {"NUL does not end a line", "a\0b"s, "a\0c"s, ""},
    {"a prefix is another line", "ab\nabc", "abc\nabcd", "1:0"},
    {"inserted, removed, changed", "a\nb\nc\nd\ne", "a\nx\nb\nd\ny", "0:0 1:2 3:3"},
    {"repeated lines are the first of their like", "a\n!\nb\n!\nc\n!", "a\n!\nc\n!",
     "0:0 1:1 4:2 5:3"},
    {"moved up in both", "x\nx\nx", "y\nx\nz\nx", "0:1 1:3"},
};

TEST(DiffLines, CommonLinesOfTheRows) {
    for (const auto& row : Rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Dump(TzDiffLib::CompareLines(row.first, row.second)), row.wanted);
    }
}

TEST(DiffLines, TheFormOfPointersOutlivesItsResult) {
    const auto lines = TzDiffLib().Compare("a\nb\nc", "b\nc")->GetCommonLines();
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0]->GetLineNum1(), 1);
    EXPECT_EQ(lines[0]->GetLineNum2(), 0);
    EXPECT_EQ(lines[1]->GetLineNum1(), 2);
    EXPECT_EQ(lines[1]->GetLineNum2(), 1);
    EXPECT_TRUE(TzDiffLib().Compare("a", "b")->GetCommonLines().empty());
}

// Enough lines to make the table of lines grow, with a second text that leaves the order expected.
TEST(DiffLines, OneFirstTextServesMany) {
    std::string text;
    for (int i = 0; i < 1000; ++i) text += "line " + std::to_string(i) + "\n";
    const auto middle = text.find("line 500\n");
    const auto moved = text.substr(middle) + text.substr(0, middle);
    const CDiffLines lines(text);
    EXPECT_EQ(lines.Count(), 1001U);
    EXPECT_EQ(lines.Line(999), "line 999");
    EXPECT_EQ(Dump(lines.Compare("line 999\nline 7\nline 8\nnew\nline 9\nline 1000")),
              "7:1 8:2 9:4");
    EXPECT_EQ(lines.Compare(moved).size(), 501U);
    EXPECT_EQ(lines.Compare(text).size(), 1001U);
}

}  // namespace
