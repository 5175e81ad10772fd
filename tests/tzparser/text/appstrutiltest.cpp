#include "host/runtime/diagnostics.h"
#include "tzparser/text/appregexbuild.h"
#include "tzparser/text/appstrutil.h"

#include <locale>
#include <random>

#include <boost/algorithm/string.hpp>
#include <boost/regex.hpp>
#include <gtest/gtest.h>

namespace {

using Strings = std::vector<std::string>;

std::string Bars(const Strings& parts) {
    return std::to_string(parts.size()) + ":" + AppStrUtil::StrJoin(parts, "|");
}

/// A random text over a few characters, so that tokens, runs and both letter cases come up.
std::string RandomText(std::mt19937& random, std::size_t maxLength) {
    static const std::string characters = "aAbB,; ";
    std::string text(random() % (maxLength + 1), ' ');
    for (char& c : text) c = characters[random() % characters.size()];
    return text;
}

TEST(AppStrUtil, SplitCutsAtEveryDelimiter) {
    const struct {
        const char* text;
        const char* delimiters;
        bool compress;
        const char* wanted;
    } rows[] = {
        {"a,,b", ",", true, "2:a|b"}, {"a,,b", ",", false, "3:a||b"},
        {",a", ",", true, "2:|a"},    {"a,", ",", true, "2:a|"},
        {",,", ",", true, "2:|"},     {"", ",", false, "0:"},
        {"", ",", true, "0:"},        {"a-b c", " -", false, "3:a|b|c"},
        {"a,b", "", false, "1:a,b"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.text) + " by " + row.delimiters);
        Strings out = {"old"};
        const int count = AppStrUtil::StrSplit(out, row.text, row.delimiters, row.compress);
        EXPECT_EQ(Bars(out), row.wanted);
        EXPECT_EQ(count, static_cast<int>(out.size()));
    }
    EXPECT_EQ(AppStrUtil::StrSplitToSet("b;a;b", ";", false), (std::set<std::string>{"a", "b"}));
}

TEST(AppStrUtil, SplitAndReplaceAgreeWithTheStringLibrary) {
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        const std::string text = RandomText(random, 12);
        const std::string search = RandomText(random, 3);
        const std::string replacement = RandomText(random, 3);
        SCOPED_TRACE("'" + text + "' '" + search + "' '" + replacement + "'");
        if (text.empty() || search.empty()) continue;
        for (const bool compress : {false, true}) {
            Strings wanted;
            boost::split(wanted, text, boost::is_any_of(search),
                         compress ? boost::token_compress_on : boost::token_compress_off);
            EXPECT_EQ(AppStrUtil::StrSplit(text, search, compress), wanted);
        }
        for (const bool ignoreCase : {false, true}) {
            for (const bool all : {false, true}) {
                const std::string wanted =
                    ignoreCase ? (all ? boost::ireplace_all_copy(text, search, replacement)
                                      : boost::ireplace_first_copy(text, search, replacement))
                               : (all ? boost::replace_all_copy(text, search, replacement)
                                      : boost::replace_first_copy(text, search, replacement));
                std::string replaced = text;
                AppStrUtil::StrReplace(replaced, search, replacement, ignoreCase, all);
                EXPECT_EQ(replaced, wanted);
            }
        }
    }
}

TEST(AppStrUtil, ReplaceOnceIgnoringCase) {
    std::string text = "aAa";
    AppStrUtil::StrReplace(text, "A", "b", true, false);
    EXPECT_EQ(text, "bAa");
    AppStrUtil::StrReplace(text, "", "x", false, true);
    EXPECT_EQ(text, "bAa");
}

TEST(AppStrUtil, ReplaceByExpression) {
    const struct {
        const char* name;
        const char* text;
        const char* pattern;
        const char* replacement;
        bool ignoreCase;
        bool all;
        const char* wanted;
    } rows[] = {
        {"first", "a1 a2", "a(\\d)", "<$1>", false, false, "<1> a2"},
        {"all", "a1 a2", "a(\\d)", "<$1>", false, true, "<1> <2>"},
        {"case kept", "a1 A2", "a", "x", false, true, "x1 A2"},
        {"case ignored", "a1 A2", "a", "x", true, true, "x1 x2"},
        {"no match", "abc", "x", "y", true, true, "abc"},
        {"escapes of the format", "ab", "b", "\\t$&$$", false, false, "a\tb$"},
        {"to nothing", "abc", ".+", "", false, true, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        std::string text = row.text;
        AppStrUtil::StrReplaceUseRegex(text, row.pattern, row.replacement, row.ignoreCase, row.all);
        EXPECT_EQ(text, row.wanted);
        std::string other = row.text;
        const boost::regex expression =
            BuildRegex(row.pattern, row.ignoreCase ? kRuleRegexFlags : 0);
        EXPECT_EQ(AppStrUtil::StrReplaceUseRegex(other, expression, row.replacement, row.all),
                  std::string(row.text) != row.wanted);
        EXPECT_EQ(other, row.wanted);
    }
}

TEST(AppStrUtil, ReplaceByABrokenExpressionThrowsAndKeepsTheText) {
    std::string text = "abc";
    EXPECT_THROW(AppStrUtil::StrReplaceUseRegex(text, "(", "x", false, false), std::exception);
    EXPECT_EQ(text, "abc");
}

TEST(AppStrUtil, TransRegexEscapesItsOwnList) {
    const struct {
        const char* text;
        bool dollar;
        bool parentheses;
        const char* wanted;
    } rows[] = {
        {"a.b(c)$", true, false, R"(a\.b(c)\$)"},
        {"a.b(c)$", false, true, R"(a\.b\(c\)$)"},
        {R"(\.+*^[]{}?|/-)", true, true, R"(\\\.\+\*\^\[\]\{\}\?|/-)"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(AppStrUtil::StrTransRegex(row.text, row.dollar, row.parentheses), row.wanted);
    }
}

TEST(AppStrUtil, IsMatchNotesWhatItCatches) {
    std::string notes;
    const auto keep = [](std::string_view text, void* sink) {
        static_cast<std::string*>(sink)->append(text).append(";");
    };
    SetDiagnosticSink(keep, &notes);
    const std::string zeroInside("b\0(", 3);
    EXPECT_TRUE(AppStrUtil::StrIsMatch("abc", "B", false));
    EXPECT_FALSE(AppStrUtil::StrIsMatch("abc", "B", true));
    EXPECT_TRUE(AppStrUtil::StrIsMatch("abc", "a.C", true));
    EXPECT_TRUE(AppStrUtil::StrIsMatch("abc", zeroInside, false));
    EXPECT_EQ(notes, "");
    EXPECT_FALSE(AppStrUtil::StrIsMatch("abc", "(", false));
    EXPECT_EQ(notes, "Catch boost::exception;");
    SetDiagnosticSink(nullptr, nullptr);
}

void ExpectTypes() {
    const struct {
        const char* text;
        const char* type;
    } rows[] = {
        {"10.0.0.1", "ip"},
        {"10.0.0.1/24", "ip"},
        {"10.0.0.1 255.255.255.0", "ip"},
        {"10.0.0.256", "string"},
        {"00:11:22:33:44:55", "mac"},
        {"50%", "percent"},
        {"12", "int"},
        {"1.5", "double"},
        {"-5", "string"},
        {"True", "string"},
        {"fe80::1", "ipv6"},
        {"", "string"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(AppStrUtil::StrCheckType(row.text), row.type);
    }
}

TEST(AppStrUtil, CheckTypeNeverAnswersBool) {
    ExpectTypes();
}

TEST(AppStrUtil, TrimWorksInPlace) {
    Strings parts = {" a ", "b", " "};
    AppStrUtil::TzStrTrim(parts, " ");
    EXPECT_EQ(Bars(parts), "3:a|b|");
}

/// A locale in which 'x' is a digit and blank and the upper case of 'a' is 'Q'.
struct OddCharacters : std::ctype<char> {
    OddCharacters() : std::ctype<char>(Table()) {}
    static const mask* Table() {
        static mask table[table_size];
        std::copy(classic_table(), classic_table() + table_size, table);
        table['x'] = digit | space;
        table['1'] = punct;
        return table;
    }
    char do_toupper(char c) const override { return c == 'a' ? 'Q' : c; }
    char do_tolower(char c) const override { return c == 'Q' ? 'a' : c; }
};

class GlobalLocale {
public:
    explicit GlobalLocale(const std::locale& locale) : m_before(std::locale::global(locale)) {}
    ~GlobalLocale() { std::locale::global(m_before); }

private:
    std::locale m_before;
};

TEST(AppStrUtil, NoResultDependsOnTheGlobalLocale) {
    const GlobalLocale guard(std::locale(std::locale::classic(), new OddCharacters));
    ASSERT_FALSE(boost::regex_match("1", boost::regex("\\d")));
    EXPECT_TRUE(AppStrUtil::StrIsMatch("1", "\\d", true));
    EXPECT_FALSE(AppStrUtil::StrIsMatch("x", "\\d|\\s", true));
    EXPECT_TRUE(AppStrUtil::StrIsMatch("A", "a", true));
    EXPECT_FALSE(AppStrUtil::StrIsMatch("Q", "a", true));
    std::string text = "QAa";
    AppStrUtil::StrReplace(text, "A", "-", true, true);
    EXPECT_EQ(text, "Q--");
    AppStrUtil::StrReplaceUseRegex(text, "q", "\\u$&1", true, true);
    EXPECT_EQ(text, "Q1--");
    EXPECT_EQ(AppStrUtil::StrSplit("1x1", "x", false).size(), 2u);
    ExpectTypes();
}

}  // namespace
