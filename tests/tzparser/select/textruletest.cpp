// Text rules: which lines they find, what they answer for them, their documents.
#include "host/xml/markup.h"
#include "tzparser/select/appparseruletext.h"
#include "tzparser/variable/appvariabledef.h"

#include "filtersupport.h"

#include <random>

namespace {

CAppParseRuleText& TextAt(CAppParseRule& parent, std::size_t index) {
    return dynamic_cast<CAppParseRuleText&>(*parent.Children().at(index));
}

// Line and row of each record found, `2>7 5>9`.
std::string DumpMapping(const std::vector<std::pair<int, int>>& mapping) {
    std::string dump;
    for (const auto& [line, row] : mapping)
        dump += (dump.empty() ? "" : " ") + std::to_string(line) + ">" + std::to_string(row);
    return dump;
}

// The node of a text rule whose records are texts, numbered from 10.
std::string NodeOf(const std::vector<std::string>& records, const std::string& keys = "") {
    hxJson::Value lines(hxJson::arrayValue, false);
    int row = 10;
    for (const auto& record : records) {
        auto& line = lines.append(hxJson::Value());
        line["row"] = row++;
        line["text"] = record;
    }
    return R"({"type":15,"name":"t",)" + keys + "\"lines\":" + lines.toString() + "}";
}

struct Row {
    const char* name;
    std::vector<std::string> records;
    const char* text;
    const char* wanted;
};

TEST(TextRule, FindsTheRecordsOfTheRows) {
    const Row rows[] = {
        {"behind one another", {"a", "b"}, "b\na\nb", "1>10 2>11"},
        {"in their order", {"b", "a"}, "b\na\nb", "0>10 1>11"},
        {"a record that isn't there stops none", {"x", "a", "y", "b"}, "a\nb", "0>11 1>13"},
        {"a record that stands in front only is passed over",
         {"b", "a", "b"},
         "a\nb\na",
         "1>10 2>11"},
        {"once a line", {"a", "a", "a"}, "a\na", "0>10 1>11"},
        {"blanks count", {"a ", " a", "a"}, "a\n a\na ", "2>10"},
        {"case counts", {"A"}, "a", ""},
        {"an empty record is an empty line", {"", "a"}, "a\n\r\n\na", "1>10 3>11"},
        {"without line ends", {"a\r", "a"}, "a\r\n", "0>11"},
        {"no records", {}, "a", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto sample = LoadRules(NodeOf(row.records));
        EXPECT_TRUE(sample->Parse(row.text, 0, -1, nullptr));
        EXPECT_EQ(DumpMapping(TextAt(*sample, 0).GetLineMapping()), row.wanted);
        // A clone takes the records and not what was found; a second parse begins afresh.
        const std::unique_ptr<CAppParseRule> clone(sample->Clone(nullptr));
        EXPECT_TRUE(TextAt(*clone, 0).GetLineMapping().empty());
        clone->Parse(row.text, 0, -1, nullptr);
        clone->Parse(row.text, 0, -1, nullptr);
        EXPECT_EQ(DumpMapping(TextAt(*clone, 0).GetLineMapping()), row.wanted);
    }
}

// Every record looks at every line behind the last one found.
std::string FindPlainly(const std::vector<std::string>& records,
                        const std::vector<std::string>& lines) {
    std::vector<std::pair<int, int>> mapping;
    std::size_t cursor = 0;
    for (std::size_t i = 0; i < records.size(); ++i)
        for (std::size_t line = cursor; line < lines.size(); ++line) {
            if (lines[line] != records[i]) continue;
            mapping.emplace_back(static_cast<int>(line), static_cast<int>(i) + 10);
            cursor = line + 1;
            break;
        }
    return DumpMapping(mapping);
}

TEST(TextRule, FindsAsThePlainSearchDoes) {
    std::mt19937 random(7);
    const auto below = [&random](unsigned limit) { return random() % limit; };
    for (int round = 0; round < 500; ++round) {
        SCOPED_TRACE(round);
        const auto words = [&](std::size_t count, unsigned kinds) {
            std::vector<std::string> texts(count);
            for (auto& text : texts) text = std::string(1, static_cast<char>('a' + below(kinds)));
            return texts;
        };
        const auto records = words(below(12), 8);
        const auto lines = words(1 + below(20), 6);
        std::string text;
        for (const auto& line : lines) text += (text.empty() ? "" : "\n") + line;
        const auto sample = LoadRules(NodeOf(records));
        sample->Parse(text, 0, -1, nullptr);
        EXPECT_EQ(DumpMapping(TextAt(*sample, 0).GetLineMapping()), FindPlainly(records, lines));
    }
}

// The range limits the search, the status doesn't; rules below never run, replacements don't count.
TEST(TextRule, LooksAtAllLinesOfItsRange) {
    const auto bounded = [](const char* bounds) { return LoadRules(NodeOf({"a", "b"}, bounds)); };
    auto sample = bounded(
        R"("nistart":{"type":2,"pattern":"from"},"niend":{"type":2,"pattern":"to","skip":1},)");
    EXPECT_TRUE(sample->Parse("a\nfrom\na\nto\nb", 0, -1, nullptr));
    EXPECT_EQ(DumpMapping(TextAt(*sample, 0).GetLineMapping()), "2>10");
    EXPECT_FALSE(sample->Parse("a\nb", 0, -1, nullptr));
    EXPECT_EQ(DumpMapping(TextAt(*sample, 0).GetLineMapping()), "2>10");  // of the run before
    EXPECT_FALSE(bounded(R"("nistart":{"type":1},)")->Parse("a", 0, -1, nullptr));

    const std::string child = R"("child":{"parserule":[{"keywords":{"keyword":["b$v"]}}]},)";
    sample = LoadRules(R"({"type":1,"startline":"nowhere","child":{"parserule":[)" +
                       NodeOf({"a", "b1"}, child) + "]}}");
    sample->Parse("a\nb1", 0, -1, nullptr);
    auto& text = TextAt(*sample->Children()[0], 1);
    EXPECT_EQ(DumpMapping(text.GetLineMapping()), "0>10 1>11");
    EXPECT_EQ(DumpLets(sample->GetVariableValue("v")), "");

    sample = LoadRules(NodeOf({"a"}, R"("operations":[{"originalstr":"x","replacestr":"a"}],)"));
    sample->Parse("x", 0, -1, nullptr);
    EXPECT_TRUE(TextAt(*sample, 0).GetLineMapping().empty());
    EXPECT_TRUE(TextAt(*sample, 0).Parse("", -5, 1000, nullptr));
}

TEST(TextRule, AnswersForItsName) {
    const auto sample = LoadRules(NodeOf({"", "a", "", ""}));
    auto& rule = TextAt(*sample, 0);
    EXPECT_EQ(DumpLets(sample->GetVariableValue("t")), "");
    sample->Parse("\nx\na\n\n", 0, -1, nullptr);
    for (const char* name : {"t", "$t"})
        EXPECT_EQ(DumpLets(rule.GetVariableValue(name)), "0:0-0 \"\\na\"") << name;
    for (const char* name : {"", "$", "$$t", ".t", "tt"})
        EXPECT_EQ(DumpLets(rule.GetVariableValue(name)), "") << name;
    sample->Parse("\n", 0, -1, nullptr);
    EXPECT_EQ(DumpLets(rule.GetVariableValue("t")), "0:0-0 \"\"");
}

TEST(TextRule, Documents) {
    const auto sample = LoadRules(
        R"({"type":15,"name":"t","lines":[{"row":7,"text":"b"},5,{"text":"c"},{"row":-1}],
            "child":{"parserule":[{"keywords":{"keyword":["x $v"]}}]}},
           {"type":15,"name":"u","lines":"b"})");
    sample->Parse("a\nb\nc", 0, -1, nullptr);
    hxJson::Value json;
    ASSERT_TRUE(sample->Save(json));
    auto own = json["parserules"]["parserule"][0];
    own.removeMember("child");
    EXPECT_EQ(own, ParseJson(R"({"type":15,"name":"t","lines":[{"row":7,"text":"b"},
        {"row":0,"text":"c"},{"row":-1,"text":""}]})"))
        << own.toString();
    EXPECT_EQ(json["parserules"]["parserule"][1],
              ParseJson(R"({"type":15,"name":"u","lines":[]})"));
    EXPECT_EQ(TextAt(*LoadSample(json.toString()), 0).GetRecords().size(), 3U);

    hxJson::Value result;
    EXPECT_TRUE(sample->SaveResultAsJson(result));
    EXPECT_EQ(result, ParseJson(R"({"_original_result":[{"parseResult":{"parserName":"t",
        "parserType":15,"valueType":"string","lines":[1,2],
        "childs":[{"parseResult":{"parserType":0,"variables":[]}}]}},
        {"parseResult":{"parserName":"u","parserType":15,"valueType":"string","lines":[]}}],
        "error":["",""]})"))
        << result.toString();
    CMarkup xml;
    sample->SaveResultAsXML(xml);
    EXPECT_EQ(xml.GetDoc().find("parserName"), std::string::npos);
    EXPECT_EQ(xml.GetDoc().find("child"), std::string::npos);
    std::set<int> lines;
    std::set<int> around;
    sample->GetOriTextInfo(lines, around);
    EXPECT_EQ(lines, (std::set<int>{1, 2}));
    EXPECT_TRUE(around.empty());
}

TEST(TextRule, InVariableTreesAndDocumentForms) {
    const std::string node =
        R"({"type":15,"name":"t","child":{"parserule":[{"keywords":{"keyword":["x $v"]}}]}})";
    const auto sample = LoadRules(node);
    const std::unique_ptr<CAppVariableDef> tree(sample->GetVariableTree());
    const auto* variable = tree->GetChild("$t");
    ASSERT_NE(variable, nullptr);
    EXPECT_EQ(variable->GetDataType(), AppDataType_String);
    EXPECT_NE(variable->GetChild("$v"), nullptr);
    EXPECT_TRUE(LoadSample("{\"parserules\":{\"parserule\":" + node + "}}")->IsLeaf());
}

}  // namespace
