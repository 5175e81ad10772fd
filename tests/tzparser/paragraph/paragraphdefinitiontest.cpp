// The rule as a definition: its document, its defaults, its editing.
#include "tzparser/variable/appvariabledef.h"

#include "paragraphsupport.h"

namespace {

const char* const Keys =
    R"("name":"p","keyvariables":"$a;;$b","startline":"^port $n","endline":"regex:^!",)"
    R"("islineasparagraph":true,"lineasparagraph":3,"hashcolumns":["$x","$y"],"hashsort":true,)"
    R"("isuseprevars":true,"useprevars":"$s","idlines":["","mtu $m"],"parentline":"slot $k")";

TEST(ParagraphDefinition, LoadsItsKeys) {
    auto sample = LoadRules(ParagraphNode(Keys, R"("speed $s","mtu $m")"));
    auto& rule = ParagraphAt(*sample, 0);
    EXPECT_EQ(rule.GetKeyVars(), (std::set<std::string>{"", "$a", "$b"}));
    EXPECT_EQ(rule.GetUsePreVars(), std::set<std::string>{"$s"});
    EXPECT_TRUE(rule.IsUsePreVars() && rule.IsLineAsParagraph() && rule.IsTableCmpSort());
    EXPECT_EQ(rule.GetLineAsParagraph(), 1);
    EXPECT_EQ(rule.GetIDLines(), (std::vector<std::string>{"^port $n", "mtu $m"}));
    EXPECT_EQ(rule.GetParentLine(), "slot $k");
    std::set<std::string> columns;
    EXPECT_EQ(rule.GetTableCmpColumns(columns), 2);
    std::vector<std::string> names;
    EXPECT_TRUE(rule.GetVariableNames(names));
    EXPECT_EQ(names, (std::vector<std::string>{"$k", "$n", "$m", "$s"}));
    rule.SetStartExpr("");
    EXPECT_EQ(rule.GetIDLines(), std::vector<std::string>{"mtu $m"});
}

// Made in code the rule leaves the end line out, but a document without the key takes it in.
TEST(ParagraphDefinition, TheEndLineIsExcludedInCodeOnly) {
    EXPECT_TRUE(CAppParseRuleParagraph(nullptr).IsExcludeEndLine());
    auto sample = LoadRules(ParagraphNode(R"("startline":"a")"));
    EXPECT_FALSE(ParagraphAt(*sample, 0).IsExcludeEndLine());
}

// "isuseprevars" gets the flag of the end line; hash columns, id lines and parent line are lost.
TEST(ParagraphDefinition, SavesLessThanItLoads) {
    auto sample = LoadRules(ParagraphNode(Keys));
    hxJson::Value saved;
    sample->Children()[0]->Save(saved);
    saved.removeMember("child");
    EXPECT_EQ(saved, ParseJson(R"({"name":"p","keyvariables":";$a;$b","startline":"^port $n",
        "endline":"regex:^!","islineasparagraph":true,"lineasparagraph":1,"isuseprevars":false,
        "useprevars":"$s"})"));
}

TEST(ParagraphDefinition, ResetKeepsNameIdLinesAndParentLine) {
    auto sample = LoadRules(ParagraphNode(Keys, R"("speed $s")", R"(,{"type":0})"));
    auto& rule = ParagraphAt(*sample, 0);
    rule.AddTableKey("a");
    rule.AddTableInterfaceKey("b");
    sample->Parse("a\nb", 0, -1, nullptr);
    rule.Reset();
    EXPECT_EQ(rule.GetName() + rule.GetStartExpr() + rule.GetEndExpr(), "p");
    EXPECT_EQ(rule.GetIDLines(), std::vector<std::string>{"mtu $m"});
    EXPECT_EQ(rule.GetParentLine(), "slot $k");
    EXPECT_TRUE(rule.IsExcludeEndLine());
    EXPECT_EQ(rule.GetTableKeysEx(false), std::set<std::string>{"b"});
    EXPECT_TRUE(rule.GetKVPs().empty() && rule.GetBeginLines().empty());
    EXPECT_EQ(rule.Children().size(), 2U);
}

TEST(ParagraphDefinition, ListsOfTheFirstChild) {
    CAppParseRuleParagraph rule(nullptr);
    rule.AddKVP("a $a");
    rule.AddStatement("$b=1");
    EXPECT_EQ(rule.GetKVPs(), std::vector<std::string>{"a $a"});
    EXPECT_EQ(rule.GetStatements(), std::vector<std::string>{"$b=1"});
    EXPECT_TRUE(rule.HasVariables());
    rule.DelChildRule(rule.GetFirstKeywordRule());
    rule.AddKVP("a $a");
    EXPECT_TRUE(rule.GetKVPs().empty() && rule.GetStatements().empty());
    EXPECT_EQ(rule.GetFirstKeywordRule(), nullptr);
    EXPECT_FALSE(rule.HasVariables());
}

// All setters mark the definition but the one of the name.
TEST(ParagraphDefinition, OnlyTheNameChangesWithoutAMark) {
    CAppParseRuleSample sample("");
    auto* rule = new CAppParseRuleParagraph(&sample);
    sample.AddChildRule(rule);
    sample.Parse("", 0, -1, nullptr);
    rule->SetName("x");
    rule->AddTableKey("k");
    rule->SetTableCmpSort(false);
    EXPECT_FALSE(sample.IsRuleModify());
    rule->DelKeyVar("none");
    EXPECT_TRUE(sample.IsRuleModify());
}

TEST(ParagraphDefinition, ClonesShareUntilOneIsEdited) {
    auto sample = LoadRules(ParagraphNode(R"("name":"p","startline":"^port $n")"));
    sample->Parse("port a", 0, -1, nullptr);
    const std::unique_ptr<CAppParseRule> clone(sample->Clone(nullptr));
    EXPECT_EQ(DumpRanges(ParagraphAt(*clone, 0)), "0 | 1");
    EXPECT_EQ(ParagraphAt(*clone, 0).Children().size(), 1U);
    ParagraphAt(*clone, 0).SetStartExpr("^slot $k");
    for (auto* root : {clone.get(), static_cast<CAppParseRule*>(sample.get())})
        root->Parse("port a\nslot b", 0, -1, nullptr);
    EXPECT_EQ(DumpRanges(ParagraphAt(*clone, 0)), "1 | 2");
    EXPECT_EQ(DumpLets(ParagraphAt(*clone, 0).GetVariableValue("p.k")), "1:5-6 \"b\"");
    EXPECT_EQ(DumpRanges(ParagraphAt(*sample, 0)), "0 | 2");
}

// A start line that lost one of its variables begins nothing until it is saved and loaded again;
// one that lost its only variable is compiled anew.
TEST(ParagraphDefinition, DeletingAVariableEditsTheStartLine) {
    const char* const text = "port a vlan 1\nport b vlan 2";
    auto sample = LoadRules(ParagraphNode(R"("name":"p","startline":"^port $n vlan $v")"));
    auto& rule = ParagraphAt(*sample, 0);
    sample->DeleteVariable("p.n");
    EXPECT_EQ(rule.GetStartExpr(), "^port $_dummy vlan $v");
    sample->Parse(text, 0, -1, nullptr);
    EXPECT_EQ(DumpRanges(rule), "|");
    sample->DeleteVariable("p.v");
    EXPECT_EQ(rule.GetStartExpr(), "^port $_dummy vlan $_dummy");
    sample->Parse(text, 0, -1, nullptr);
    EXPECT_EQ(DumpRanges(rule), "0 1 | 1 2");
    sample->RenameVariable("p", "ports");
    EXPECT_EQ(rule.GetName(), "ports");
    sample->DeleteVariable("ports");
    EXPECT_TRUE(sample->IsLeaf());
}

TEST(ParagraphDefinition, AddsANodeToTheTree) {
    auto sample = LoadRules(ParagraphNode(R"("name":"p","startline":"^port $n")", R"("mtu $m")"));
    CAppVariableDef def(nullptr, "root", AppDataType_Parsing, AppVariableType_Default, "");
    EXPECT_TRUE(sample->Children()[0]->AddToVariableTree(&def));
    ASSERT_NE(def.GetChild("$p"), nullptr);
    EXPECT_EQ(def.GetChild("$p")->GetDataType(), AppDataType_Node18);
    EXPECT_NE(def.GetChild("$p")->GetChild("$m"), nullptr);
}

}  // namespace
