// Texts and definitions that come with bad intent or by accident.
#include "tzparser/engine/tzparser.h"

#include "paragraphsupport.h"

namespace {

// Each level has two keyword rules; were each to ask all above it, this would never end.
TEST(ParagraphHostile, TwoHundredNestedLevels) {
    constexpr int levels = 200;
    std::string node;
    std::string text;
    for (int level = levels; level > 0; --level) {
        const auto number = std::to_string(level);
        node = ParagraphNode(
            "\"name\":\"p" + number + "\",\"startline\":\"^level$v" + number + "\"", "",
            ",{\"type\":0,\"keywords\":{\"keyword\":[\"x $w" + number + "\"]}}" +
                (node.empty() ? "" : "," + node));
    }
    for (int level = 1; level <= levels + 3; ++level)
        text += "level" + std::to_string(level) + "\n";
    auto sample = LoadRules(node);
    EXPECT_TRUE(sample->Parse(text, 0, -1, nullptr));
    CAppParseRule* rule = sample.get();
    for (int level = 1; level <= levels; ++level)
        rule = rule->Children().at(level == 1 ? 0 : 2).get();
    auto& deepest = KeyWordAt(*rule, 0);
    EXPECT_EQ(deepest.GetVariableNames().size(), 2U * levels - 1);
    EXPECT_EQ(deepest.GetVariableNames().at(2), "$v198");
    EXPECT_EQ(deepest.GetVariableType("v1"), "string");
    EXPECT_EQ(deepest.GetVariableType("none"), "");
}

TEST(ParagraphHostile, TextsOfTheRows) {
    const struct {
        const char* name;
        const char* keys;
        std::string text;
        const char* wanted;
    } rows[] = {
        {"no text", R"("startline":"regex:.*")", "", "|"},
        {"line ends alone", R"("startline":"regex:.*")", "\n\n\n", "|"},
        {"NUL bytes", R"("startline":"^port $n","endline":"regex:^!","excludeendline":true)",
         std::string("port a\0b\n\0\n!\nport c", 19), "0 3 | 2 4"},
        // The text looked for ends at the NUL, so the first "a" counts.
        {"NUL bytes in a match", R"("startline":"mregex:a.b")", std::string("a\na\0b\nx", 7),
         "0 1 | 1 3"},
        {"a start that fits nothing but all", R"("startline":"regex:x*")", "a\n\nb", "0 2 | 2 3"},
        {"an empty match over lines", R"-("startline":"mregex:(x*)")-", "a\nb", "0 1 | 1 2"},
        {"an empty match with a variable", R"-("startline":"mregex[$a]:(x*)")-", "a\nx", "0 | 2"},
        {"an empty parent match", R"-("startline":"^port $n","parentline":"mregex[$a]:(x*)")-",
         "port a", "0 | 1"},
        {"an end that fits all", R"("startline":"^port $n","endline":"regex:x*")",
         "port a\nb\nport b", "0 2 | 2 3"},
    };
    for (const auto& row : rows) {
        auto sample = LoadRules(ParagraphNode(row.keys));
        EXPECT_TRUE(sample->Parse(row.text, 0, -1, nullptr)) << row.name;
        EXPECT_EQ(DumpRanges(ParagraphAt(*sample, 0)), row.wanted) << row.name;
    }
}

// The matcher gives up, which is no match: no paragraph, no end, and no failure.
TEST(ParagraphHostile, PatternsThatExplode) {
    const std::string bad(40, 'a');
    auto sample = LoadRules(
        ParagraphNode(R"-("startline":"regex:^(a+)+$|^port","endline":"regex:^(a+)+$",)-"
                      R"-("idlines":["regex:^(a+)+$"],"parentline":"regex[$p]:^((a+)+)$")-"));
    EXPECT_TRUE(sample->Parse("port\n" + bad + "!\n" + bad + "!", 0, -1, nullptr));
    EXPECT_FALSE(ParagraphAt(*sample, 0).GetEndLines().empty());
}

TEST(ParagraphHostile, RangesBeyondTheText) {
    auto sample = LoadRules(ParagraphNode(R"("startline":"^port $n")"));
    EXPECT_TRUE(sample->Parse("port a\nx", -5, 1000000, nullptr));
    EXPECT_EQ(DumpRanges(ParagraphAt(*sample, 0)), "0 | 2");
}

}  // namespace
