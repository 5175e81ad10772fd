#include "tzparser/pattern/appregex.h"
#include "tzparser/regex/regexautomaton.h"
#include "tzparser/text/appregexbuild.h"

#include <random>
#include <string>

#include <boost/regex.hpp>
#include <gtest/gtest.h>

namespace {

// Expressions that can fit a text in very many ways, with a text of `unit` over and over and `tail`
// behind. The plain matcher gives up on most of them. None may need it where there is no match.
struct HostileRow {
    const char* expression;
    const char* unit;
    const char* tail;
    bool isMatch;
};

const HostileRow HostileRows[] = {
    {"^(?:(?:\\S+\\s*)+)+(_)$", "ab ", "!", false},
    {"^(a+)+$", "a", "!", false},
    {"^(a|a)*$", "a", "!", false},
    {"^(a|aa)+$", "a", "!", false},
    {"(a*)*b", "a", "", false},
    {"^(\\w+\\s?)*$", "abc ", "!", false},
    {"(x+x+)+y", "x", "", false},
    {"^(([a-z])+.)+[A-Z]([a-z])+$", "a", "1", false},
    {"(.*)*x", "ab", "", false},
    {"(.*a){12}b", "a", "", false},
    {".*.*.*.*=.*", "ab", "", false},
    {"(?:.*,){11}P", "1,", "", false},
    {"^(.*?,){11}P", "1,", "", false},
    {"^([a-z0-9])(([\\-.]|[_]+)?([a-z0-9]+))*(@){1}[a-z0-9]+[.]{1}(([a-z]{2,3})|([a-z]{2,3}[.]))$",
     "a", "!", false},
    {"\\s+$", " ", "x", false},
    {"(\\s+)\\1x", " ", "", false},
    {"(a?){30}a{30}b", "a", "", false},
    {"(?:a|b|ab)*c", "ab", "", false},
    {"(\\d+)+(\\w+)+#", "1", "", false},
    {"^(?:[^,]*,?)*;$", "a,", "", false},
    {"(?=(a+))a*b\\1", "a", "", false},
    {"((a*)+)+c", "a", "", false},
    {"(\\w+\\s)+\\w+:", "w ", "", false},
    {"^(?:(?:25|2|5)+)+$", "25", "x", false},
    {"(?:\\S+\\s+)*\\S+\\s+end", "w ", "", false},
    {"([ab]*)*([bc]*)*d", "abc", "", false},
    {"(.+)+\\1z", "ab", "", false},
    {"(a|b)*a(a|b){14}c", "ab", "", false},
    {"(.*a){12}", "a", "", true},
    {"(a?){30}a{30}", "a", "", true},
    {"^(a+)+", "a", "", true},
    {"(a|aa)+$", "a", "", true},
    {"(.*)(.*)(.*)(.*)(.*)[0-9]", "ab", "1", true},
    {"(?:a+)+b", "a", "b", true},
    {"^(?:\\S+\\s*)+z$", "ab ", "z", true},
};

std::string TextOf(const HostileRow& row, std::size_t size) {
    std::string text;
    while (text.size() < size) text += row.unit;
    return text + row.tail;
}

TEST(RegexAutomaton, HostileExpressionsAreDecided) {
    for (const auto& row : HostileRows) {
        SCOPED_TRACE(row.expression);
        const CAppRegex regex(row.expression, CAppRegex::RuleFlags);
        ASSERT_TRUE(regex.IsValid());
        CAppRegexMatch match;
        EXPECT_EQ(regex.Search(TextOf(row, 1000), match),
                  row.isMatch ? AppRegexSearch_Match : AppRegexSearch_NoMatch);
        if (!row.isMatch) {
            EXPECT_EQ(regex.Search(TextOf(row, 1000000), match), AppRegexSearch_NoMatch);
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
