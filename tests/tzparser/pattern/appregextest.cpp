#include "host/runtime/diagnostics.h"
#include "tzparser/pattern/appregex.h"

#include <atomic>
#include <locale>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

struct SearchRow {
    const char* name;
    std::string expression;
    std::string text;
    AppRegexSearch_e result;
    std::ptrdiff_t position;  // of group 1, -1: took no part
    std::string group;
};

const SearchRow SearchRows[] = {
    {"anywhere in the text", "b(\\d+)", "a B12 c", AppRegexSearch_Match, 3, "12"},
    {"no match", "b(\\d+)", "a c", AppRegexSearch_NoMatch, 0, ""},
    {"a group that takes no part", "x(y)?z", "xz", AppRegexSearch_Match, -1, ""},
    {"an empty group", "x(y*)z", "xz", AppRegexSearch_Match, 1, ""},
    {"a dot takes a line feed", "a(.)b", "a\nb", AppRegexSearch_Match, 1, "\n"},
    {"anchors at embedded line ends", "^(b)$", "a\nb\rc", AppRegexSearch_Match, 2, "b"},
    {"a NUL is a byte", "a(.)b", std::string("a\0b", 3), AppRegexSearch_Match, 1,
     std::string("\0", 1)},
    {"a high byte is no letter", "(\\w+)", "\xe9t\xe9", AppRegexSearch_Match, 1, "t"},
    {"an empty text", "^()$", "", AppRegexSearch_Match, 0, ""},
    {"an expression that doesn't compile", "(", "(", AppRegexSearch_NoMatch, 0, ""},
    {"a search that would give up", "^(a+)+$", std::string(200, 'a') + "!", AppRegexSearch_NoMatch,
     0, ""},
    {"one that has to and does", "(a|aa)+$", std::string(60, 'a') + "!\na", AppRegexSearch_GaveUp,
     0, ""},
};

void CheckSearchRows() {
    for (const auto& row : SearchRows) {
        SCOPED_TRACE(row.name);
        CAppRegexMatch match;
        const CAppRegex regex(row.expression, CAppRegex::RuleFlags);
        ASSERT_EQ(regex.Search(row.text, match), row.result);
        if (row.result != AppRegexSearch_Match) continue;
        EXPECT_EQ(match.GroupCount(), 1);
        EXPECT_EQ(match.Position(1), row.position);
        EXPECT_EQ(match.Text(1), row.group);
        EXPECT_EQ(match.Position(7), -1);
    }
}

TEST(AppRegex, SearchesAsTheRowsSay) {
    CheckSearchRows();
}

// The matcher's own compiler wouldn't end on those that are told to be invalid.
TEST(AppRegex, CommentsBehindPossessiveRepeats) {
    struct Row {
        const char* expression;
        bool isValid;
    };
    const Row rows[] = {
        {"a++(?#x)b", false},       {"a*+(?#x)(?#y)b", false}, {"a{2,3}+(?#x)b", false},
        {"(?x)a?+ (?#x) b", false}, {"a++(?#x)", true},        {"a++(?#x)(b)", true},
        {"a++ (?#x)b", true},       {"\\++(?#x)b", true},      {"a+(?#x)b", true},
        {"b}+(?#x)b", true},        {"a++(?#x)+", false},      {"a++b(?#x)c", true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.expression);
        EXPECT_EQ(CAppRegex(row.expression, CAppRegex::RuleFlags).IsValid(), row.isValid);
        std::string reason;
        std::size_t offset = 0;
        EXPECT_EQ(CAppRegex::Diagnose(row.expression, reason, offset), !row.isValid);
    }
}

// Letters and digits of this locale are the other way round: every high byte is a letter, no digit
// is a digit.
class OddCtype : public std::ctype<char> {
public:
    OddCtype() : std::ctype<char>(MakeTable()) {}

private:
    static const mask* MakeTable() {
        static mask table[table_size];
        for (std::size_t i = 0; i < table_size; ++i)
            table[i] = i >= 0x80 ? static_cast<mask>(alpha | upper) : static_cast<mask>(punct);
        return table;
    }
    char do_tolower(char) const override { return 'x'; }
    const char* do_tolower(char* begin, const char* end) const override {
        std::fill(begin, const_cast<char*>(end), 'x');
        return end;
    }
};

TEST(AppRegex, TheLocaleOfTheProcessChangesNothing) {
    const std::locale before =
        std::locale::global(std::locale(std::locale::classic(), new OddCtype));
    CheckSearchRows();
    std::locale::global(before);
}

TEST(AppRegex, TellsOnTheDebuggerOutputThatItGaveUp) {
    std::string notes;
    SetDiagnosticSink(
        [](std::string_view text, void* all) { static_cast<std::string*>(all)->append(text); },
        &notes);
    const CAppRegex regex("^(a+)+$", CAppRegex::RuleFlags);
    const auto text = std::string(200, 'a') + "!";
    CAppRegexMatch match;
    EXPECT_EQ(regex.Search(text, match), AppRegexSearch_NoMatch);
    EXPECT_EQ(notes, "");
    EXPECT_EQ(regex.SearchTelling(text, match), AppRegexSearch_GaveUp);
    SetDiagnosticSink(nullptr, nullptr);
    EXPECT_EQ(notes, "Catch any exception");
}

// What searches need is made by whichever thread first needs it.
TEST(AppRegex, ThreadsShareOne) {
    const CAppRegex plain("(a)\\1(b)", CAppRegex::RuleFlags);
    const CAppRegex quick("(\\d+) errors", CAppRegex::RuleFlags);
    const CAppRegex hostile("^(?:(\\w+)\\s*)+:$", CAppRegex::RuleFlags);
    std::atomic<int> found{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 6; ++i) {
        threads.emplace_back([&] {
            CAppRegexMatch match;
            for (int round = 0; round < 100; ++round) {
                const auto digits = std::to_string(round * 1000);
                if (plain.Search("xaab", match) == AppRegexSearch_Match && match.Position(2) == 3 &&
                    quick.Search("of " + digits + " errors", match) == AppRegexSearch_Match &&
                    match.Text(1) == digits &&
                    hostile.Search("a b c d e" + digits + ";", match) == AppRegexSearch_NoMatch)
                    ++found;
            }
        });
    }
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(found, 600);
}

TEST(AppRegex, ReplaceThrowsForAnExpressionThatDoesNotCompile) {
    std::string text = "abc";
    EXPECT_THROW(CAppRegex("(", CAppRegex::RuleFlags).Replace(text, "x", true), std::exception);
    EXPECT_EQ(text, "abc");
    EXPECT_TRUE(CAppRegex("(b)", CAppRegex::RuleFlags).Replace(text, "<$1>", true));
    EXPECT_EQ(text, "a<b>c");
}

TEST(AppRegex, DiagnoseNamesThePlace) {
    std::string reason;
    std::size_t offset = 0;
    EXPECT_FALSE(CAppRegex::Diagnose("a(b)", reason, offset));
    ASSERT_TRUE(CAppRegex::Diagnose("ab[c", reason, offset));
    EXPECT_GE(offset, 2U);
    EXPECT_LE(offset, 4U);
    EXPECT_NE(reason, "");
}

}  // namespace
