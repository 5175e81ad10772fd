// Keyword rules as definitions: documents, compiling, editing.
#include "tzparser/variable/appvariabledef.h"

#include "support/letdump.h"
#include "support/ruletree.h"

#include <gtest/gtest.h>

namespace {

std::string Join(const std::vector<std::string>& texts) {
    std::string joined;
    for (const auto& text : texts) joined += (joined.empty() ? "" : " | ") + text;
    return joined;
}

std::unique_ptr<CAppParseRuleSample> LoadKvps(const std::string& kvps,
                                              const std::string& more = "") {
    return LoadRules("{\"keywords\":{\"keyword\":[" + kvps + "]}" + more + "}");
}

TEST(KeyWordDefinition, ACompiledKvpOverridesTheDeclaredType) {
    auto sample = LoadKvps(
        "\"x $a $int:b\"",
        ",\"variabletypes\":{\"variabletype\":[\"$a:ip\",\"$c:ip\",\"$c:mac\",\"nocolon\"]}");
    auto& rule = KeyWordAt(*sample, 0);
    EXPECT_EQ(rule.GetVariableType("$a"), "string");
    EXPECT_EQ(rule.GetVariableType("b"), "int") << "a name without its dollar";
    EXPECT_EQ(rule.GetVariableType("$c"), "ip") << "the first of two entries";
    EXPECT_EQ(rule.GetVariableType("nocolon"), "");
    EXPECT_EQ(Join(rule.GetVariableNames()), "$a | $b");
}

TEST(KeyWordDefinition, LoadingTwiceDoublesTheKvps) {
    CAppParseRuleKeyWord rule(nullptr);
    const auto node = ParseJson(
        "{\"keywords\":{\"keyword\":[\"x $a\"]},\"statements\":{\"statement\":[\"$b=1\"]}}");
    rule.Load(node);
    rule.Load(node);
    EXPECT_EQ(Join(rule.GetKVPs()), "x $a | x $a");
    EXPECT_EQ(Join(rule.GetStatements()), "$b=1 | $b=1");
    rule.Reset();
    EXPECT_TRUE(rule.GetKVPs().empty());
    EXPECT_EQ(rule.GetVariableType("$a"), "");
}

TEST(KeyWordDefinition, SavesWhatItLoads) {
    const std::string text =
        "{\"keywords\":{\"keyword\":[\"x "
        "$int:a\",\"(broken\"]},\"statements\":{\"statement\":[\"$int:x=1+1\"]},"
        "\"variabletypes\":{\"variabletype\":[\"$a:int\",\"$z:mac\"]}}";
    CAppParseRuleKeyWord rule(nullptr);
    rule.Load(ParseJson(text));
    hxJson::Value saved;
    rule.Save(saved);
    EXPECT_EQ(saved.toString(), text);
}

TEST(KeyWordDefinition, DeclaresItsVariablesAndStatements) {
    auto sample = LoadKvps("\"x $int:a\",\"\",\"y $a $b $_dummy\"",
                           ",\"statements\":{\"statement\":[\"$int:s=1+1\",\"abc\",\"$b=x=y\"]}");
    CAppVariableDef root(nullptr, "root", AppDataType_Parsing, AppVariableType_Default, "");
    EXPECT_TRUE(sample->AddToVariableTree(&root));
    std::string dump;
    for (const auto& child : root.GetChildren())
        dump += child->GetName() + ":" + std::to_string(child->GetDataType()) + "/" +
                std::to_string(child->GetVarType()) + " ";
    EXPECT_EQ(dump, "$a:4/4 $b:4/4 $s:9/4 abc:9/4 ")
        << "the later KVP's type of $a, and a number of their own";
}

struct EditRow {
    const char* name;
    void (*edit)(CAppParseRuleKeyWord&);
    const char* kvps;
    const char* parsedAgain;  // after saving and loading
};

// Two KVPs: "x $a and $int:b" and "y $c".
const EditRow EditRows[] = {
    {"an update leaves the old variable's type",
     [](CAppParseRuleKeyWord& rule) { rule.UpdateKVP("y $c", "y $d"); }, "x $a and $int:b | y $d",
     "$a 0: 0:2-3 \"1\";\n$b 0: 0:8-9 \"2\";\n$c 0: 0:0-0 \"\";\n$d 1: 1:2-3 \"3\";\n"},
    {"update by nothing deletes", [](CAppParseRuleKeyWord& rule) { rule.UpdateKVP("y $c", ""); },
     "x $a and $int:b", "$a 0: 0:2-3 \"1\";\n$b 0: 0:8-9 \"2\";\n"},
    {"update of nothing appends", [](CAppParseRuleKeyWord& rule) { rule.UpdateKVP("?", "z $d"); },
     "x $a and $int:b | y $c | z $d",
     "$a 0: 0:2-3 \"1\";\n$b 0: 0:8-9 \"2\";\n$c 1: 1:2-3 \"3\";\n$d 0: 0:0-0 \"\";\n"},
    {"update of nothing by nothing", [](CAppParseRuleKeyWord& rule) { rule.UpdateKVP("?", ""); },
     "x $a and $int:b | y $c", "$a 0: 0:2-3 \"1\";\n$b 0: 0:8-9 \"2\";\n$c 1: 1:2-3 \"3\";\n"},
    {"the only variable takes its KVP along",
     [](CAppParseRuleKeyWord& rule) { rule.DeleteVariable("$c"); }, "x $a and $int:b",
     "$a 0: 0:2-3 \"1\";\n$b 0: 0:8-9 \"2\";\n"},
    {"one of two leaves a dummy", [](CAppParseRuleKeyWord& rule) { rule.DeleteVariable("$a"); },
     "x $_dummy and $int:b | y $c", "$b 0: 0:8-9 \"2\";\n$c 1: 1:2-3 \"3\";\n"},
    {"one written with its type", [](CAppParseRuleKeyWord& rule) { rule.DeleteVariable("$b"); },
     "x $a and $_dummy | y $c", "$a 0: 0:2-3 \"1\";\n$c 1: 1:2-3 \"3\";\n"},
    {"one that isn't there", [](CAppParseRuleKeyWord& rule) { rule.DeleteVariable("$x"); },
     "x $a and $int:b | y $c", "$a 0: 0:2-3 \"1\";\n$b 0: 0:8-9 \"2\";\n$c 1: 1:2-3 \"3\";\n"},
    {"deleting a KVP drops its types",
     [](CAppParseRuleKeyWord& rule) { rule.DelKVP("x $a and $int:b"); }, "y $c",
     "$c 1: 1:2-3 \"3\";\n"},
};

TEST(KeyWordDefinition, EditsAsTheRowsSay) {
    for (const auto& row : EditRows) {
        SCOPED_TRACE(row.name);
        auto sample = LoadKvps("\"x $a and $int:b\",\"y $c\"");
        const std::unique_ptr<CAppParseRule> untouched(sample->Clone(nullptr));
        row.edit(KeyWordAt(*sample, 0));
        EXPECT_TRUE(sample->IsRuleModify());
        EXPECT_EQ(Join(KeyWordAt(*sample, 0).GetKVPs()), row.kvps);
        EXPECT_EQ(Join(KeyWordAt(*untouched, 0).GetKVPs()), "x $a and $int:b | y $c");
        hxJson::Value saved;
        sample->Save(saved);
        CAppParseRuleSample again("");
        again.Load(saved);
        again.Parse("x 1 and 2\ny 3", 0, -1, nullptr);
        EXPECT_EQ(DumpPositions(KeyWordAt(again, 0).GetVariablePos()), row.parsedAgain);
    }
}

TEST(KeyWordDefinition, AnEditedKvpYieldsNothingUntilItIsLoadedAgain) {
    auto sample = LoadKvps("\"x $a and $b\"");
    KeyWordAt(*sample, 0).DeleteVariable("$a");
    sample->Parse("x 1 and 2", 0, -1, nullptr);
    EXPECT_EQ(DumpPositions(KeyWordAt(*sample, 0).GetVariablePos()), "$b 0: 0:0-0 \"\";\n");
}

TEST(KeyWordDefinition, ReplacesTheFirstOccurrenceEvenInALongerName) {
    CAppParseRuleKeyWord rule(nullptr);
    std::string text = "$abc $ab";
    rule.ReplaceDummyVariable(text, "$ab", "$x");
    EXPECT_EQ(text, "$xc $ab");
    rule.ReplaceDummyVariable(text, "$ab", "");
    EXPECT_EQ(text, "$xc $_dummy");
    rule.ReplaceDummyVariable(text, "$none", "");
    EXPECT_EQ(text, "$xc $_dummy");
}

TEST(KeyWordDefinition, KvpsAddedByHandAreCompiledAtTheirFirstUse) {
    CAppParseRuleSample sample("");
    auto* rule = new CAppParseRuleKeyWord(&sample);
    sample.AddChildRule(rule);
    rule->AddKVP("x $a");
    rule->AddKVP("y $b");
    EXPECT_EQ(rule->GetKVPRegex("x $a"), "");
    sample.Parse("x 1", 0, -1, nullptr);
    EXPECT_EQ(DumpPositions(rule->GetVariablePos()), "$a 0: 0:2-3 \"1\";\n")
        << "no stand-by value for $b yet";
    EXPECT_EQ(rule->GetKVPRegex("x $a"), "x\\s+(\\S+)");
    sample.Parse("x 1", 0, -1, nullptr);
    EXPECT_EQ(DumpPositions(rule->GetVariablePos()), "$a 0: 0:2-3 \"1\";\n$b 0: 0:0-0 \"\";\n");
}

}  // namespace
