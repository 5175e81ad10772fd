// The rule's document, its lists, its copies, its place in trees of variables.
#include "tzparser/variable/appvariablearraydef.h"
#include "tzparser/variable/appvariabletabledef.h"

#include "scriptsupport.h"
#include "support/ruletree.h"

namespace {

const char* const Node = R"({"type":8,"script":"def ParseText(t): return {}",
    "variabletypes":{"variabletype":[{"name":"$a","type":"int"},{"name":"$a","type":"string"},
                                     {"name":"b","type":"IP"},{"name":"c"},{"type":"int"},7]},
    "tablevariabletypes":{"tablevariabletype":[
        {"name":"$Ifs","variabletypes":{
            "variabletype":[{"name":"$n","type":"string"},{"name":"$m","type":"int"},
                            {"name":"$z","type":"bool"}],
            "tablecolumns":["$z","","$none","$n"]}},
        {"name":"$Ifs","variabletypes":{"variabletype":{"name":"$later","type":"int"}}},
        {"name":"$empty"}]},
    "hashcolumns":{"ifs":["$n","m$"],"Ifs":["x"]},"hashsort":{"ifs":true},
    "interfacekey":{"ifs":"$n"},"tablekeys":{"ifs":["$m","$z"]}})";

CAppParseRuleScript& ScriptAt(CAppParseRule& parent, std::size_t index) {
    return dynamic_cast<CAppParseRuleScript&>(*parent.Children().at(index));
}

std::string Join(const std::vector<std::string>& names) {
    std::string text;
    for (const auto& name : names) text += name + " ";
    return text;
}

std::string Join(const std::set<std::string>& names) {
    return Join(std::vector<std::string>(names.begin(), names.end()));
}

TEST(ScriptDefinition, LoadsItsLists) {
    const auto sample = LoadRules(Node);
    auto& rule = ScriptAt(*sample, 0);
    EXPECT_EQ(rule.GetScript(), "def ParseText(t): return {}");
    EXPECT_EQ(Join(rule.GetVariableNames()), "$a b ");
    EXPECT_EQ(rule.GetVariableType("$a") + rule.GetVariableType("x"), "int");
    EXPECT_EQ(Join(rule.GetTableNames()), "$Ifs ");
    EXPECT_EQ(Join(rule.GetTableVariableNames("$Ifs")), "$z $n $m ");
    EXPECT_EQ(rule.GetTableVariableType("$Ifs", "$m"), "int");
    EXPECT_EQ(rule.GetTableVariableType("$Ifs", "$later"), "");
    EXPECT_EQ(Join(rule.GetTableVariableNames("$unknown")), "");
    hxJson::Value saved;
    ASSERT_TRUE(rule.Save(saved));
    EXPECT_TRUE(saved.isNull()) << "a script rule writes nothing of its own";
}

// One object stands for an array of one.
TEST(ScriptDefinition, LoadsOneEntryWithoutAnArray) {
    const auto sample = LoadRules(
        R"({"type":8,"variabletypes":{"variabletype":{"name":"$a","type":"int"}},
            "tablevariabletypes":{"tablevariabletype":{"name":"t","variabletypes":
                {"variabletype":{"name":"$c","type":"odd word"}}}}})");
    EXPECT_EQ(DumpResult(ScriptAt(*sample, 0)), "$a int\nt\n  $c odd word\n");
}

// Members are looked up by the name in small letters, so "Ifs" is never found.
TEST(ScriptDefinition, KeysGoByNamesInSmallLetters) {
    const auto sample = LoadRules(Node);
    const auto& rule = ScriptAt(*sample, 0);
    std::set<std::string> columns{"stays"};
    rule.GetTableKeys("$none", columns);
    EXPECT_EQ(Join(columns), "stays ");
    rule.GetTableCmpColumnsByTable("$$Ifs", columns);
    EXPECT_EQ(Join(columns), "m n ");
    rule.GetTableKeys("Ifs", columns);
    EXPECT_EQ(Join(columns), "m z ");
    columns.clear();
    rule.GetTableKeysEx("$Ifs", columns);
    EXPECT_EQ(Join(columns), "m n z ");
    EXPECT_TRUE(rule.IsTableCmpSort("$Ifs"));
    EXPECT_FALSE(rule.IsTableCmpSort("$ifs"));
    CAppParseRuleScript::ColumnSetMap all;
    rule.GetTableCmpColumns(all);
    EXPECT_EQ(all.size(), 1U);
}

// What runs is a copy; what is asked for keys is the definition.
TEST(ScriptDefinition, CopiesHaveNoKeys) {
    const auto sample = LoadRules(Node);
    const std::unique_ptr<CAppParseRule> clone(sample->Clone(nullptr));
    auto& rule = ScriptAt(*clone, 0);
    EXPECT_EQ(Join(rule.GetVariableNames()), "$a b ");
    std::set<std::string> keys;
    rule.GetTableKeysEx("$Ifs", keys);
    EXPECT_TRUE(keys.empty());
    rule.SetScript("other");
    rule.Reset();
    EXPECT_EQ(rule.GetScript() + Join(rule.GetVariableNames()) + Join(rule.GetTableNames()), "");
    EXPECT_EQ(Join(ScriptAt(*sample, 0).GetVariableNames()), "$a b ");
    auto& original = ScriptAt(*sample, 0);
    original.Reset();
    original.GetTableKeysEx("$Ifs", keys);
    EXPECT_EQ(Join(keys), "m n z ") << "keys stay at a reset";
}

TEST(ScriptDefinition, InTheVariableTree) {
    const auto sample = LoadRules(Node);
    const std::unique_ptr<CAppVariableDef> tree(sample->GetVariableTree());
    ASSERT_NE(tree->GetChild("b"), nullptr);
    EXPECT_EQ(tree->GetChild("b")->GetDataType(), AppDataType_IP);
    const auto* table = dynamic_cast<const CAppVariableTableDef*>(tree->GetChild("$Ifs"));
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->GetName(), "$Ifs");
    std::string columns;
    for (const auto& child : table->GetChildren()) {
        const auto& column = dynamic_cast<const CAppVariableArrayDef&>(*child);
        columns += column.GetName() + "/" + column.GetPyName() + "/" +
                   std::to_string(column.GetBaseType()) + " ";
    }
    EXPECT_EQ(columns, "$z/z/3 $n/n/4 $m/m/1 ");
    EXPECT_EQ(Join(table->GetTableKeys()) + "| " + Join(table->GetIntfTableKeys()), "m z | n ");
    std::set<std::string> hash;
    table->GetTableCmpColumns(hash);
    EXPECT_EQ(Join(hash), "m n ");
    EXPECT_TRUE(table->IsTableCmpSort());
}

}  // namespace
