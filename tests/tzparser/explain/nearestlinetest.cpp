#include "tzparser/explain/nearestline.h"
#include "tzparser/explain/statementcuts.h"
#include "tzparser/pattern/appregex.h"
#include "tzparser/pattern/parserpatternhelper.h"

#include <gtest/gtest.h>

namespace {

std::vector<NearestCandidate> Lines(const std::vector<std::string>& texts) {
    std::vector<NearestCandidate> lines;
    for (const auto& text : texts) lines.push_back({static_cast<int>(lines.size()), text});
    return lines;
}

// "line:column/statement column wish".
std::string Dump(const NearestMatch& match) {
    if (match.line < 0) return "none";
    return std::to_string(match.line) + ":" + std::to_string(match.column) + "/" +
           std::to_string(match.statementColumn) + (match.wish.empty() ? "" : " " + match.wish);
}

TEST(NearestLine, FollowsTheStatementFarthest) {
    const struct {
        const char* name;
        const char* statement;
        std::vector<std::string> lines;
        const char* wanted;
    } rows[] = {
        {"a letter is wrong",
         "Hardware is $hw, address is $mac (bia",
         {"Hardware", "  Hardware is iGbE, adress is 0000.5e00.5301", "address"},
         "1:22/19"},
        {"the first of two that come as far", "mtu $int:mtu b", {"mtu 1 k", "mtu 2 k"}, "0:6/13"},
        {"a variable wants another value",
         "mtu $int:mtu",
         {"x", "mtu auto"},
         "1:4/4 $mtu takes a whole number"},
        {"alternatives", "link $s(up|down)", {"link off"}, "0:5/5 $s takes (up|down)"},
        {"blanks fit any blanks, case doesn't count",
         "LINK  is $s on",
         {"link \tis up off"},
         "0:13/13"},
        {"the anchor at the end", "^mtu $int:mtu$", {"mtu 15 x"}, "0:6/13"},
        {"the anchor in front: a blank stands before the word",
         "^mtu $int:mtu",
         {" mtu 15"},
         "0:0/1"},
        {"an early mistake: another line follows farther, but this one has the words",
         "Queueing strategy: $q",
         {"Input queue: 0", "Queing strategy: fifo"},
         "1:3/3"},
        {"nothing in common", "mtu $int:mtu", {"", "abc", "xyz"}, "none"},
        {"one letter is no beginning", "mtu $int:mtu", {"m"}, "none"},
        {"an expression by hand",
         R"(regex[$a,$b]:^\s+(up|down)-(\d{2,3})[a-z]+ \(x\)$)",
         {"  up-100ab (y)"},
         "0:12/45"},
        {"a group is one piece", R"(regex[$a]:abc (\d+ x)? y)", {"abc 12 z"}, "0:4/22"},
        {"bars outside of groups can't be cut", "regex[$a]:abc(x)|abd(y)", {"abc"}, "none"},
        {"quoted stretches neither", R"(regex[$a]:\Qabc(\E(x))", {"abc"}, "none"},
        {"no statement: taken as it stands", "^interface eth9", {"interface eth0"}, "0:0/0"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Dump(CNearestLine().Find(row.statement, Lines(row.lines))), row.wanted);
    }
}

// All pieces together are the compiler's expression, so the two can't drift apart.
TEST(NearestLine, AllPiecesAreTheWholeExpression) {
    for (const std::string statement :
         {"^Hardware  is $hw, (bia $mac)$", "a $int:a$float:b.$mstr:c$", "$x(a|b)\t$mword:y [z]",
          R"(regex[$a]:^(\w+)\s*[^]\]x]{2,}?(?:a|b)+\(.$)", R"(mregex[$a]:a\n(b)[[:digit:]])"}) {
        SCOPED_TRACE(statement);
        CParserPatternHelper helper;
        std::string error;
        ASSERT_TRUE(helper.Parse(statement, error));
        const CStatementCuts cuts(statement);
        EXPECT_EQ(cuts.Expression(cuts.Count()), helper.GetRegex());
        EXPECT_EQ(cuts.Offset(cuts.Count()), statement.size());
    }
}

// A broken expression is no statement, and rules search for it as it stands.
TEST(NearestLine, BrokenExpressionsAreTexts) {
    for (const std::string expression : {"a\\", "a[", "a[[:", "a(", "a(\\", "a([", "*", "a)"}) {
        const auto statement = "regex:" + expression;
        EXPECT_EQ(CStatementCuts(statement).Count(), statement.size()) << statement;
    }
    EXPECT_EQ(CStatementCuts(std::string(CStatementCuts::MaxStatement + 1, 'a')).Count(), 0U);
}

// However many statements and lines there are, the work ends.
TEST(NearestLine, GivesUpAfterTooManySearches) {
    const std::vector<std::string> texts(CNearestLine::MaxLines, "interface eth0 is up");
    const auto lines = Lines(texts);
    CNearestLine nearest;
    int statements = 0;
    while (!nearest.IsExhausted() && statements < 100000) {
        nearest.Find("interface $name is down, line protocol", lines);
        ++statements;
    }
    EXPECT_GT(statements, 5);
    EXPECT_LT(statements, 1000);
    EXPECT_EQ(Dump(nearest.Find("interface $name is down", lines)), "none");
}

}  // namespace
