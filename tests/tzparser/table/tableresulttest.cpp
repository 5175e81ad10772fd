// What a table answers after a parse, and its place in the variable tree.
#include "host/xml/markup.h"
#include "tzparser/engine/tzparser.h"
#include "tzparser/variable/appvariablearraydef.h"
#include "tzparser/variable/appvariabletabledef.h"

#include "support/letdump.h"
#include "tablesupport.h"

#include <gtest/gtest.h>

namespace {

const char* const Text = "AA  BB  CC\nx   y   z\nx2";

std::unique_ptr<CAppParseRuleSample> ParsedSample(const std::string& keys = "") {
    auto sample = LoadRules(TableNode(keys));
    sample->Parse(Text, 0, -1, nullptr);
    return sample;
}

struct NameRow {
    const char* name;
    const char* wanted;
};

TEST(TableResult, ValuesByName) {
    const auto sample = ParsedSample();
    const NameRow rows[] = {
        {"$a", "1:0-1 \"x\"; 2:0-2 \"x2\""},
        {"t.a", "1:0-1 \"x\"; 2:0-2 \"x2\""},
        {"$t.$a", "1:0-1 \"x\"; 2:0-2 \"x2\""},
        {"t.$b", "1:4-5 \"y\"; 2:2-2 \"\""},
        {"a", ""},
        {"x.a", ""},
        {"", ""},
        // Without a dot a name that begins with the rule's loses one character more.
        {"tree_a", ""},
        {"t_a", "1:0-1 \"x\"; 2:0-2 \"x2\""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(DumpLets(TableAt(*sample, 0).GetVariableValue(row.name)), row.wanted) << row.name;
}

TEST(TableResult, OwnersByName) {
    const auto sample = ParsedSample(
        R"("variabletypes":[{"variabletype":"$typed:int"}],"headers":"AA;BB;CC",
           "headertovariables":"AA:$a;XX:$x",
           "child":{"parserule":[{"type":1,"startline":"none","child":{"parserule":[
             {"type":0,"keywords":{"keyword":["q $q"]}}]}}]})");
    auto& table = TableAt(*sample, 0);
    for (const char* name : {"t", "$t", "t.a", "$t.$a", "t.$a", "t.typed"})
        EXPECT_EQ(table.GetChildRuleByVariableName(name), &table) << name;
    for (const char* name : {"a", "t.x", "t.y", "tt"})
        EXPECT_EQ(table.GetChildRuleByVariableName(name), nullptr) << name;
    EXPECT_NE(table.GetChildRuleByVariableName("q"), nullptr);
}

TEST(TableResult, ATableWithoutANameOwnsTheEmptyName) {
    CAppParseRuleTable table(nullptr);
    for (const auto* name : {"a", "$a", "t.a"})
        EXPECT_EQ(table.GetChildRuleByVariableName(name), nullptr) << name;
    EXPECT_EQ(table.GetChildRuleByVariableName(""), &table);
}

// A name that ends in ".end" asks for the header line: the test for it looks at the name's begin.
TEST(TableResult, LinesOfNames) {
    const auto sample = LoadRules(TableNode(R"("endline":"Total")"));
    auto& table = TableAt(*sample, 0);
    int line = 7;
    EXPECT_FALSE(table.GetVariableLine("t.start", line));
    EXPECT_EQ(line, -1);
    sample->Parse("q\nAA  BB  CC\nx\nTotal", 0, -1, nullptr);
    const std::pair<const char*, int> rows[] = {{"t.start", 1}, {"t.end", 1},  {"$a", 1},
                                                {".end", 1},    {".start", 3}, {".start.end", 3}};
    for (const auto& [name, wanted] : rows) {
        EXPECT_TRUE(table.GetVariableLine(name, line)) << name;
        EXPECT_EQ(line, wanted) << name;
    }
    EXPECT_FALSE(table.GetVariableLine("", line));
}

TEST(TableResult, Documents) {
    const auto sample = ParsedSample(R"("headers":"AA;BB;CC","headertovariables":"CC:$int:c",
        "child":{"parserule":[{"type":1,"name":"f","startline":"none"}]})");
    hxJson::Value json;
    EXPECT_TRUE(TableAt(*sample, 0).SaveResultAsJson(json));
    EXPECT_EQ(json["parseResult"]["childs"].size(), 1U);
    json["parseResult"].removeMember("childs");
    EXPECT_EQ(json, ParseJson(R"({"parseResult":{"parserName":"t","parserType":3,"variables":[
        {"name":"$c","valueType":"int","details":[
          {"beginRow":1,"beginCol":8,"endRow":1,"endCol":9,"text":"z"}]}]}})"));
    CMarkup xml;
    TableAt(*sample, 0).SaveResultAsXML(xml);
    const auto text = xml.GetDoc();
    EXPECT_NE(text.find("<parserName>t</parserName>"), std::string::npos) << text;
    EXPECT_NE(text.find("<valueType>int</valueType>"), std::string::npos) << text;
    EXPECT_NE(text.find("<parseresult>"), std::string::npos) << text;
}

TEST(TableResult, EmptySpansCountAsMissing) {
    EXPECT_TRUE(TableAt(*ParsedSample(), 0).IsNoneExist());
    EXPECT_FALSE(TableAt(*LoadRules(TableNode("")), 0).IsNoneExist());
}

std::string Edited(bool (*edit)(CAppParseRuleSample&)) {
    const auto sample = ParsedSample();
    EXPECT_TRUE(edit(*sample));
    if (sample->IsLeaf()) return "no rule";
    const auto& table = TableAt(*sample, 0);
    std::string dump = table.GetName();
    for (const auto& [header, variable] : table.GetHeaderVars())
        dump += " " + header + "=" + variable + ":" + table.GetVariableType(variable);
    return dump;
}

TEST(TableResult, EditsByName) {
    EXPECT_EQ(Edited([](auto& sample) { return sample.DeleteVariable("$t"); }), "no rule");
    EXPECT_EQ(Edited([](auto& sample) { return sample.DeleteVariable("$t.$b"); }),
              "t AA=$a:string CC=$c:string");
    EXPECT_EQ(Edited([](auto& sample) { return sample.RenameVariable("$t.$b", "$t.$n"); }),
              "t AA=$a:string BB=$n:string CC=$c:string");
    EXPECT_EQ(Edited([](auto& sample) {
                  TableAt(sample, 0).AddHeaderVar("BB", "$int:b");
                  return sample.RenameVariable("t.b", "n");
              }),
              "t AA=$a:string BB=$n:int CC=$c:string");
    EXPECT_EQ(Edited([](auto& sample) { return sample.RenameVariable("$t", "$ports"); }),
              "ports AA=$a:string BB=$b:string CC=$c:string");
    EXPECT_EQ(Edited([](auto& sample) { return sample.RenameVariable("$t", ""); }),
              "t AA=$a:string BB=$b:string CC=$c:string");
}

TEST(TableResult, KeysOfATable) {
    const auto keys = [](const char* key, bool interfaceKeysOnly) {
        const auto sample = LoadSample(std::string("{\"parserules\":{\"parserule\":[") +
                                       TableNode("") + "]}," + key + "}");
        std::string dump;
        for (const auto& name : TableAt(*sample, 0).GetTableKeysEx(interfaceKeysOnly))
            dump += name + " ";
        return dump;
    };
    EXPECT_EQ(keys(R"("tableKeys":["t.$a","x.t.b"])", false), "a b ");
    EXPECT_EQ(keys(R"("tableKeys":["t.a"])", true), "");
    EXPECT_EQ(keys(R"("tableKeys":["t.a"],"interfaceKeys":["t.b"])", false), "b ");
}

TEST(TableResult, AStandAloneTreeHasTexts) {
    const auto sample =
        LoadRules(TableNode(R"("headers":"AA;BB","headertovariables":"AA:$int:a;BB:$b")"));
    const std::unique_ptr<CAppVariableDef> tree(sample->GetVariableTree());
    const auto* table = tree->GetChild("$t");
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->GetDataType(), AppDataType_Node19);
    ASSERT_EQ(table->GetChildCount(), 2U);
    EXPECT_EQ(table->GetChildAt(0)->GetName(), "$a");
    EXPECT_EQ(table->GetChildAt(0)->GetDataType(), AppDataType_String);
}

const char* const Slots =
    "slot 1\n"
    "AA  BB  CC\n"
    "x   y   z\n"
    "x2  y   z\n"
    "slot 2\n"
    "AA  BB  CC\n"
    "x3  y   z\n";

std::unique_ptr<CAppParseRuleSample> SlotSample(const std::string& children) {
    return LoadSample(R"({"tableKeys":["slots.$slot","t.$a"],"interfaceKeys":["slots.$slot"],
        "parserules":{"parserule":[{"type":4,"name":"slots","startline":"slot $int:slot",
        "child":{"parserule":[{"type":0},)" +
                      children + "]}}]}}");
}

// Each row gets the value of its paragraph.
TEST(TableResult, BelowAParagraph) {
    const auto sample = SlotSample(TableNode(""));
    sample->Parse(Slots, 0, -1, nullptr);
    auto& table = TableAt(*sample->Children().at(0), 1);
    EXPECT_EQ(DumpCells(table.VariablePos()),
              "$a 2:0-1 'x' 3:0-2 'x2' 6:0-2 'x3'\n$b 2:4-5 'y' 3:4-5 'y' 6:4-5 'y'\n"
              "$c 2:8-9 'z' 3:8-9 'z' 6:8-9 'z'\n");
    EXPECT_EQ(DumpLets(table.GetVariableValue("t.slot")), "0:5-6 \"1\"; 0:5-6 \"1\"; 4:5-6 \"2\"");
    EXPECT_EQ(table.GetVariableType("slot"), "int");
    EXPECT_EQ(table.GetVariableNames(), (std::vector<std::string>{"$a", "$b", "$c", "$slot"}));
    EXPECT_EQ(table.GetTableKeysEx(false), (std::set<std::string>{"a", "slot"}));
    EXPECT_EQ(table.GetTableKeysEx(true), std::set<std::string>{"slot"});
}

// Filters between are passed over. Below a filter later runs see only the first paragraph.
TEST(TableResult, BelowAFilterBelowAParagraph) {
    const auto sample = SlotSample(R"({"type":1,"name":"f","child":{"parserule":[{"type":0},)" +
                                   TableNode("") + "]}}");
    sample->Parse(Slots, 0, -1, nullptr);
    auto& table = TableAt(*sample->Children().at(0)->Children().at(1), 1);
    EXPECT_EQ(DumpLets(table.GetVariableValue("$slot")), "0:5-6 \"1\"; 0:5-6 \"1\"");
    EXPECT_EQ(table.GetVariableType("$slot"), "int");
    // The key of the column doesn't reach the table: a paragraph doesn't look for names below
    // filters.
    EXPECT_EQ(table.GetTableKeysEx(false), std::set<std::string>{"slot"});
}

std::string DumpTable(const CAppVariableTableDef& table) {
    std::string dump = table.GetName() + "/" + table.GetPyName();
    for (const auto& child : table.GetChildren()) {
        const auto& column = dynamic_cast<const CAppVariableArrayDef&>(*child);
        dump += " " + column.GetName() + "/" + column.GetPyName() + ":" +
                std::to_string(column.GetBaseType());
    }
    for (const auto& key : table.GetKeys()) dump += " key " + key;
    for (const auto& key : table.GetTableKeys()) dump += " table key " + key;
    for (const auto& key : table.GetIntfTableKeys()) dump += " interface key " + key;
    std::set<std::string> columns;
    table.GetTableCmpColumns(columns);
    for (const auto& column : columns) dump += " hash " + column;
    return dump + (table.IsTableCmpSort() ? " sorted" : "");
}

TEST(TableResult, StandsAtTheParsingRoot) {
    const std::string rule = TableNode(R"("headers":"AA;BB;CC",
        "headertovariables":"AA:$a;BB:$int:b-x;CC:$c","keyvariables":"$a;$",
        "hashcolumns":["$a","b"],"hashsort":true)");
    const std::string other = TableNode(R"("headers":"AA;DD","keyvariables":"$d",
        "headertovariables":"AA:$int:a;DD:$d")");
    CTzParser parser;
    parser.SetParser(ParseJson(R"({"samples":[{"index":0,"tableKeys":["t.$a"],
        "interfaceKeys":["t.$c"],"parserRules":{"parserule":[{"type":1,"name":"f",
          "child":{"parserule":[)" +
                               rule + R"(]}}]}},
        {"index":1,"parserRules":{"parserule":[)" +
                               other + "]}}],\"sequences\":[0]}"));
    const auto tree = parser.GetVariableTree();
    ASSERT_NE(tree, nullptr);
    const auto* table = dynamic_cast<const CAppVariableTableDef*>(tree->GetChild("t"));
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(DumpTable(*table),
              "t/t a/a:4 b/b:1 c/c:4 d/d:4 key a table key a interface key c hash $a hash b "
              "sorted");
}

}  // namespace
