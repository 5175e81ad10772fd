// What a definition or a device may bring: a result or a clear failure, without much time or
// memory.
#include "tzparser/engine/tzparser.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

namespace {

// The checkers keep memory of their own and make a search many times slower.
#if defined(__SANITIZE_THREAD__) || defined(__SANITIZE_ADDRESS__)
constexpr bool IsChecked = true;
#else
constexpr bool IsChecked = false;
#endif

CTzParser& WithKeyWords(CTzParser& parser, const std::vector<std::string>& kvps) {
    hxJson::Value rules;
    for (const auto& kvp : kvps) rules["parserule"]["keywords"]["keyword"].append(kvp);
    hxJson::Value definition;
    hxJson::Value sample;
    sample["parserRules"] = rules;
    definition["samples"].append(sample);
    EXPECT_TRUE(parser.SetParser(definition));
    return parser;
}

std::string Value(CTzParser& parser, const std::string& text, const char* name) {
    std::string error;
    const auto root = parser.Parse(text, error);
    if (!root) return "failed: " + error;
    return root->GetChildValueByName(name)->GetVariableValue(0)->text;
}

long PeakKilobytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

TEST(Hostile, OneLineOfTenMegabytes) {
    CTzParser parser;
    WithKeyWords(parser, {"end $x", "mregex[$y]:end (\\d+)", "$nothere $int:z never"});
    std::string text(10U << 20U, 'a');
    text += " end 7";
    EXPECT_EQ(Value(parser, text, "x"), "7");
    EXPECT_EQ(Value(parser, text, "y"), "7");
}

TEST(Hostile, AMillionEmptyLinesInLittleMemory) {
    CTzParser parser;
    WithKeyWords(parser, {"end $x", "regex[$y]:^(.*)$"});
    const std::string text = std::string(1000000, '\n') + "end 7";
    const long before = PeakKilobytes();
    EXPECT_EQ(Value(parser, text, "x"), "7");
    EXPECT_LT(PeakKilobytes() - before, (IsChecked ? 200 : 20) * 1000) << "20 times the text";
}

TEST(Hostile, NestedRepeatsOverALongLine) {
    CTzParser parser;
    WithKeyWords(parser, {"regex[$x]:^((a+)+)+$", "regex[$y]:(([ab]*)*)*c(d)"});
    const auto text = std::string(IsChecked ? 4000U : 1U << 20U, 'a') + "!\nab";
    EXPECT_EQ(Value(parser, text, "x"), "") << "a search that gives up is no match";
}

TEST(Hostile, StatementsOfAMegabyte) {
    std::string variables;
    while (variables.size() < (1U << 20U)) variables += "$a(x|y) $int:b $c($d|";
    CTzParser parser;
    WithKeyWords(parser, {variables, std::string(1U << 20U, '$') + "x", "ok $v"});
    EXPECT_EQ(Value(parser, "ok 1", "v"), "1");
}

TEST(Hostile, BytesOfAllKinds) {
    CTzParser parser;
    WithKeyWords(parser, {std::string("a\0b $x", 6), "\xff\xfe $y", "z $z"});
    const std::string text("a\0b 1\n\xff\xfe \xc0\x80\nz \0", 15);
    EXPECT_EQ(Value(parser, text, "x"), "1");
    EXPECT_EQ(Value(parser, text, "y"), "\xc0\x80");
    EXPECT_EQ(Value(parser, text, "z"), std::string("\0", 1));
}

}  // namespace
