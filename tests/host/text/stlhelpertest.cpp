#include "host/text/asciicase.h"
#include "host/text/stlhelper.h"

#include <locale>

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;

TEST(StlHelper, Trimming) {
    const struct {
        std::string text, chars, both, left, right;
    } rows[] = {
        {" a b ", " ", "a b", "a b ", " a b"},
        {"\t\n a\r", " \t\r\n", "a", "a\r", "\t\n a"},
        {"   ", " ", "", "", ""},
        {"", " ", "", "", ""},
        {" a ", "", " a ", " a ", " a "},
        {"\0a\0"s, "\0"s, "a", "a\0"s, "\0a"s},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        std::string text = row.text;
        EXPECT_EQ(&StlHelper::trim(text, row.chars), &text);
        EXPECT_EQ(text, row.both);
        EXPECT_EQ(StlHelper::trimLeft(text = row.text, row.chars), row.left);
        EXPECT_EQ(StlHelper::trimRight(text = row.text, row.chars), row.right);
    }
    EXPECT_EQ(StlHelper::trump(" \t\r\na b\v\n"), "a b\v");
    EXPECT_EQ(StlHelper::trump(" \t\r\n"), "");
}

TEST(StlHelper, OnlyAsciiLettersHaveCase) {
    EXPECT_EQ(StlHelper::toLower("AZ[`\xC4\0Q"s), "az[`\xC4\0q"s);
    EXPECT_TRUE(StlHelper::equalIgnoreCase("Vlan10", "VLAN10"));
    EXPECT_FALSE(StlHelper::equalIgnoreCase("\xC4", "\xE4"));
    EXPECT_FALSE(StlHelper::equalIgnoreCase("a", "a\0"s));
    EXPECT_FALSE(StlHelper::equalIgnoreCase("@", "`"));
    std::string text = "mixed Case \xE4";
    ToUpperInPlace(text);
    EXPECT_EQ(text, "MIXED CASE \xE4");
}

TEST(StlHelper, FindIgnoreCase) {
    constexpr size_t none = std::string::npos;
    const struct {
        std::string text, needle;
        size_t start, wanted;
    } rows[] = {
        {"Traceroute TO 1", "traceroute to", 0, 0},
        {"aAaB", "AB", 0, 2},
        {"abab", "AB", 1, 2},
        {"abab", "ab", 3, none},
        {"ab", "abc", 0, none},
        {"ab", "", 2, 2},
        {"ab", "", 3, none},
        {"ab", "b", none, none},
        {"x\0Y"s, "\0y"s, 0, 1},
        {"5 [x]", "[X]", 0, 2},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text + "/" + row.needle);
        EXPECT_EQ(StlHelper::findIgnoreCase(row.text, row.needle, row.start), row.wanted);
    }
}

TEST(StlHelper, ReplaceString) {
    const struct {
        const char *text, *from, *to, *wanted;
        bool isChanged;
    } rows[] = {
        {"a.b.c", ".", "::", "a::b::c", true},
        {"aaa", "aa", "a", "aa", true},
        {"abc", "b", "", "ac", true},
        {"abc", "x", "y", "abc", false},
        {"abc", "", "y", "abc", false},
        {"abc", "b", "b", "abc", false},
        {"", "a", "b", "", false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        std::string text = row.text;
        EXPECT_EQ(StlHelper::replaceString(text, row.from, row.to), row.isChanged);
        EXPECT_EQ(text, row.wanted);
    }
}

TEST(StlHelper, SplitAtTheFirst) {
    std::string head = "h";
    std::string rest = "r";
    EXPECT_FALSE(StlHelper::splitString("abc", ":", head, rest));
    EXPECT_FALSE(StlHelper::splitString("abc", "", head, rest));
    EXPECT_EQ(head + rest, "hr");
    EXPECT_TRUE(StlHelper::splitString("key: a: b", ": ", head, rest));
    EXPECT_EQ(head + "|" + rest, "key|a: b");
    EXPECT_TRUE(StlHelper::splitString(rest, ":", head, rest));
    EXPECT_EQ(head + "|" + rest, "a| b");
}

TEST(StlHelper, SplitIntoAllPieces) {
    const struct {
        const char *text, *delimiter;
        std::vector<std::string> wanted;
    } rows[] = {
        {"a;b", ";", {"a", "b"}}, {";a;;", ";", {"", "a", "", ""}}, {"", ";", {""}},
        {"a;b", "", {"a;b"}},     {"a<>b<c", "<>", {"a", "b<c"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        std::vector<std::string> pieces = {"old"};
        std::list<std::string> list = {"old"};
        StlHelper::splitString(row.text, row.delimiter, pieces);
        StlHelper::splitString(row.text, row.delimiter, list);
        EXPECT_EQ(pieces, row.wanted);
        EXPECT_EQ(std::vector<std::string>(list.begin(), list.end()), row.wanted);
    }
}

TEST(StlHelper, RegexEscapeTouchesMetacharactersOnly) {
    std::string all;
    std::string wanted;
    for (int i = 0; i < 256; ++i) {
        const char c = static_cast<char>(i);
        all.push_back(c);
        if ("\\^$.|?*+()[]{}"s.find(c) != std::string::npos) wanted.push_back('\\');
        wanted.push_back(c);
    }
    EXPECT_EQ(StlHelper::RegexEscape(all), wanted);
    EXPECT_EQ(StlHelper::RegexEscape("#ph1000hp# \t-/a"), "#ph1000hp# \t-/a");
}

}  // namespace
