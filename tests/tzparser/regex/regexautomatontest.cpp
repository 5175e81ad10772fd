#include "tzparser/pattern/appregex.h"
#include "tzparser/regex/regexautomaton.h"
#include "tzparser/text/appregexbuild.h"

#include "support/badpatterns.h"

#include <random>
#include <string>

#include <boost/regex.hpp>
#include <gtest/gtest.h>

namespace {

TEST(RegexAutomaton, BadPatternsAreDecided) {
    for (const auto& row : BadPatterns()) {
        SCOPED_TRACE(row.expression);
        const CAppRegex regex(row.expression, CAppRegex::RuleFlags);
        ASSERT_TRUE(regex.IsValid());
        CAppRegexMatch match;
        EXPECT_EQ(regex.Search(BadText(row, 1000), match),
                  row.isMatch ? AppRegexSearch_Match : AppRegexSearch_NoMatch);
        if (!row.isMatch) {
            EXPECT_EQ(regex.Search(BadText(row, 1000000), match), AppRegexSearch_NoMatch);
        }
    }
}

struct AutomatonRow {
    const char* expression;
    const char* text;
    bool anywhere;
    bool whole;
};

const AutomatonRow AutomatonRows[] = {
    {"b", "abc", true, false},         {"abc", "abc", true, true},
    {"^b", "a\nb", true, false},       {"^b", "a\rb", true, false},
    {"\\r^\\n", "\r\n", false, false}, {"a$\\n", "a\n", true, true},
    {"a$\\r\\n", "a\r\n", true, true}, {"\\r$\\n", "\r\n", false, false},
    {"\\bb", "ab", false, false},      {"\\bb", "a b", true, false},
    {"a\\B", "a", false, false},       {"\\<a\\>", "ba a", true, false},
    {"\\Ab", "ab", false, false},      {"a\\z", "a\n", false, false},
    {"a\\Z", "a\n", true, false},      {"a{3}", "aa", false, false},
    {"a{2,3}b", "aaaab", true, false}, {"(?:ab){2}", "abab", true, true},
    {"a{2,}$", "ba", false, false},    {"", "a", true, false},
    {"a|^$", "", true, true},          {"a{0}b", "b", true, true},
};

TEST(RegexAutomaton, RulesOutExactlyWhatDoesNotMatch) {
    for (const auto& row : AutomatonRows) {
        SCOPED_TRACE(std::string(row.expression) + " on " + row.text);
        const auto tree = ReadRegexTree(BuildRegex(row.expression, CAppRegex::RuleFlags));
        ASSERT_TRUE(tree);
        EXPECT_EQ(CRegexAutomaton(*tree, RegexRange_Anywhere).CanMatch(row.text), row.anywhere);
        EXPECT_EQ(CRegexAutomaton(*tree, RegexRange_WholeText).CanMatch(row.text), row.whole);
    }
}

// More states than are kept: the answers are the same without keeping.
TEST(RegexAutomaton, GoesOnWhenItHasNoRoomLeft) {
    const auto tree = ReadRegexTree(BuildRegex("^(?:a|b)*a(?:a|b){18}c", CAppRegex::RuleFlags));
    const CRegexAutomaton automaton(*tree, RegexRange_Anywhere);
    std::mt19937 random(7);
    std::string text;
    for (int i = 0; i < 20000; ++i) text += random() % 2 == 0 ? 'a' : 'b';
    EXPECT_FALSE(automaton.CanMatch(text));
    text[text.size() - 19] = 'b';
    EXPECT_FALSE(automaton.CanMatch(text + "c"));
    text[text.size() - 19] = 'a';
    EXPECT_TRUE(automaton.CanMatch(text + "c"));
}

// Between lines that don't begin as wanted only line ends are looked for.
TEST(RegexAutomaton, SkipsToTheNextLine) {
    const auto tree = ReadRegexTree(BuildRegex("^ab(?:c|d)$", CAppRegex::RuleFlags));
    const CRegexAutomaton automaton(*tree, RegexRange_Anywhere);
    for (const char* end : {"\n", "\r", "\f", "\r\n"}) {
        std::string text;
        for (int i = 0; i < 50; ++i) text += std::string(static_cast<std::size_t>(i), 'x') + end;
        SCOPED_TRACE(testing::PrintToString(end));
        EXPECT_FALSE(automaton.CanMatch(text + "xabc" + end));
        EXPECT_TRUE(automaton.CanMatch(text + "abd" + end));
        EXPECT_TRUE(automaton.CanMatch(text + "abc"));
    }
}

// Counted repeats too long to be written out count as unbounded.
TEST(RegexAutomaton, LongCountsAreWidened) {
    const auto tree = ReadRegexTree(BuildRegex("x(?:ab){1000,2000}y", CAppRegex::RuleFlags));
    const CRegexAutomaton automaton(*tree, RegexRange_Anywhere);
    std::string rounds;
    for (int i = 0; i < 1500; ++i) rounds += "ab";
    EXPECT_TRUE(automaton.CanMatch("x" + rounds + "y"));
    EXPECT_FALSE(automaton.CanMatch("x" + rounds + "ay"));
    EXPECT_FALSE(automaton.CanMatch("xy"));
}

}  // namespace
