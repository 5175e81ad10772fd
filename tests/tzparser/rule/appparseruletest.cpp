// The base: tree, clones, cache, positions in joined lines.
#include "tzparser/rule/appparserule.h"

#include "support/letdump.h"
#include "support/ruletree.h"

#include <gtest/gtest.h>

namespace {

// Opens what rules keep for themselves.
class ProbeRule : public CAppParseRule {
public:
    ProbeRule(RuleType type, CAppParseRule* parent) : CAppParseRule(type, parent) {}
    bool AddToVariableTree(CAppVariableDef*) override { return true; }
    CAppParseRule* CreateObject(CAppParseRule* parent) override {
        return new ProbeRule(GetRuleType(), parent);
    }
    using CAppParseRule::GetCachedRegex;
};

ProbeRule* AddProbe(CAppParseRule& parent, RuleType type) {
    auto* rule = new ProbeRule(type, &parent);
    parent.AddChildRule(rule);
    return rule;
}

TEST(AppParseRule, LevelsFollowTheKinds) {
    CAppParseRuleSample root("");
    auto* filter = AddProbe(root, RuleType_Filter);
    auto* paragraph = AddProbe(*filter, RuleType_Paragraph);
    auto* inner = AddProbe(*paragraph, RuleType_Paragraph);
    EXPECT_EQ(root.GetRuleLevel(), 0);
    EXPECT_EQ(filter->GetRuleLevel(), 1);
    EXPECT_EQ(paragraph->GetRuleLevel(), 1);
    EXPECT_EQ(inner->GetRuleLevel(), 1);
    EXPECT_EQ(AddProbe(*inner, RuleType_KeyWord)->GetRuleLevel(), 2);
}

TEST(AppParseRule, ChildrenByPointerAndId) {
    auto root = LoadRules("{\"xxid\":\"a\"},{\"xxid\":\"b\"}");
    EXPECT_EQ(root->GetChildRuleByRuleId(""), nullptr);
    EXPECT_EQ(root->GetChildRuleByRuleId("b"), root->Children()[1].get());
    EXPECT_EQ(root->GetChildRuleByRuleId("B"), nullptr);
    AddProbe(*root->Children()[0], RuleType_Script)->AddChildRule(nullptr);
    EXPECT_TRUE(root->HasChildParser(0));
    ProbeRule foreign(RuleType_KeyWord, nullptr);
    EXPECT_TRUE(root->DelChildRule(&foreign));
    EXPECT_EQ(root->Children().size(), 2U);
    EXPECT_TRUE(root->DelChildRule(root->Children()[0].get()));
    EXPECT_EQ(root->GetChildRuleByRuleId("a"), nullptr);
}

TEST(AppParseRule, ACloneIsADeepCopy) {
    auto root = LoadRules("{\"xxid\":\"a\",\"keywords\":{\"keyword\":[\"x $a\"]}}");
    root->SetLastError("words");
    const std::unique_ptr<CAppParseRule> clone(root->Clone(nullptr));
    EXPECT_EQ(clone->GetLastError(), "");
    KeyWordAt(*clone, 0).AddKVP("y $b");
    EXPECT_EQ(KeyWordAt(*root, 0).GetKVPs().size(), 1U);
    KeyWordAt(*root, 0).UpdateKVP("x $a", "z $a");
    EXPECT_EQ(KeyWordAt(*clone, 0).GetKVPs()[0], "x $a");
    root.reset();
    ASSERT_TRUE(clone->Parse("x 1\ny 2", 0, -1, nullptr));
    EXPECT_EQ(DumpLets(clone->GetVariableValue("b")), "1:2-3 \"2\"");
    EXPECT_NE(clone->GetChildRuleByRuleId("a"), nullptr);
}

TEST(AppParseRule, CopyToAnotherKindChangesNothing) {
    CAppParseRuleSample sample("");
    ProbeRule keyword(RuleType_KeyWord, nullptr);
    AddProbe(keyword, RuleType_Text);
    EXPECT_FALSE(sample.CopyTo(&keyword));
    EXPECT_FALSE(sample.CopyTo(nullptr));
    EXPECT_EQ(keyword.Children().size(), 1U);
}

TEST(AppParseRule, ATreeSharesOneExpressionPerText) {
    CAppParseRuleSample root("");
    auto* first = AddProbe(root, RuleType_KeyWord);
    auto* second = AddProbe(root, RuleType_KeyWord);
    const auto regex = first->GetCachedRegex("a(b)", CAppRegex::RuleFlags);
    ASSERT_NE(regex, nullptr);
    EXPECT_EQ(second->GetCachedRegex("a(b)", 0), regex) << "flags are no part of the key";
    EXPECT_EQ(second->GetCachedRegex("(", CAppRegex::RuleFlags), nullptr);
    const std::unique_ptr<CAppParseRule> clone(root.Clone(nullptr));
    EXPECT_EQ(AddProbe(*clone, RuleType_KeyWord)->GetCachedRegex("a(b)", 0), regex);
    const std::unique_ptr<CAppParseRule> orphan(first->Clone(nullptr));
    EXPECT_NE(dynamic_cast<ProbeRule&>(*orphan).GetCachedRegex("a(b)", 0), regex)
        << "the root keeps them";
}

TEST(AppParseRule, StatementsBecomeExpressions) {
    std::map<std::string, std::string> memo;
    std::set<std::string> multiLine;
    EXPECT_EQ(CAppParseRule::GetRegexByLine("a.b", memo, multiLine), "a\\.b");
    EXPECT_TRUE(memo.empty()) << "a line that is no statement isn't remembered";
    EXPECT_EQ(CAppParseRule::GetRegexByLine("a $x", memo, multiLine), "a\\s+(\\S+)");
    EXPECT_EQ(CAppParseRule::GetRegexByLine("mregex:a", memo, multiLine), "a");
    EXPECT_EQ(CAppParseRule::GetRegexByLine("mline[$b]:$x", memo, multiLine),
              "mline\\[\\$b\\]:\\$x");
    EXPECT_EQ(memo.size(), 3U);
    EXPECT_EQ(multiLine, std::set<std::string>{"mregex:a"});
    memo["a $x"] = "known";
    EXPECT_EQ(CAppParseRule::GetRegexByLine("a $x", memo, multiLine), "known");
    EXPECT_TRUE(CAppParseRule::IsMultiLineSyntax("x mregex["));
    EXPECT_FALSE(CAppParseRule::IsMultiLineSyntax("regex:"));
}

TEST(AppParseRule, PositionsInJoinedLines) {
    const std::string text = "ab\ncd\n\nef";
    EXPECT_EQ(CAppParseRule::ConvertToLinePos(text, 0, 4), 4);
    EXPECT_EQ(CAppParseRule::ConvertToLinePos(text, 1, 4), 1);
    EXPECT_EQ(CAppParseRule::ConvertToLinePos(text, 3, 8), 1);
    EXPECT_EQ(CAppParseRule::ConvertToLinePos(text, 1, 2), 0) << "before the line";
    EXPECT_EQ(CAppParseRule::ConvertToLinePos(text, 9, 8), 0) << "no such line";
    EXPECT_EQ(CAppParseRule::ConvertToLinePos(text, -1, 8), 0);
    EXPECT_EQ(CAppParseRule::GetLineCountByPos(text, 6), 2);
    EXPECT_EQ(CAppParseRule::GetLineCountByPos(text, 999), 3);
    EXPECT_EQ(CAppParseRule::GetLineCountByPos(text, -1), 0);
    EXPECT_EQ(CAppParseRule::GetPosByLine(text, "", 5, true), 5);
    EXPECT_EQ(CAppParseRule::GetPosByLine(text, "cd\n\nef", 0, true), 3);
    EXPECT_EQ(CAppParseRule::GetPosByLine(text, "cd\n\nef", 0, false), 9);
    EXPECT_EQ(CAppParseRule::GetPosByLine(text, "xyz", 0, true), -1);
    EXPECT_EQ(CAppParseRule::GetPosByLine(text, "xyz", 0, false), 2) << "the length less one";
    std::string mixed = "a\r\nb\rc\n\rd";
    CAppParseRule::FormatString(mixed);
    EXPECT_EQ(mixed, "a\nb\nc\n\nd");
}

TEST(AppParseRule, AMatchOverLinesIsFoundAgainByItsText) {
    CAppParseRuleSample root("");
    auto* rule = AddProbe(root, RuleType_KeyWord);
    root.Parse("x\na\nb\nx\ny\na\nb\n", 0, -1, nullptr);
    rule->OnBeginParse(0, 8);
    int matchEnd = 0;
    EXPECT_EQ(rule->ParseMultipleLineMatch(0, 8, "a\nb", matchEnd), 1);
    EXPECT_EQ(matchEnd, 2);
    EXPECT_EQ(rule->ParseMultipleLineMatch(0, 8, "(?<=y\n)a\nb", matchEnd), 1)
        << "the earlier place counts";
    EXPECT_EQ(rule->ParseMultipleLineMatch(2, 8, "y\n", matchEnd), 4);
    EXPECT_EQ(matchEnd, 5) << "a match that ends with a line feed ends on the line behind";
    EXPECT_EQ(rule->ParseMultipleLineMatch(3, 3, "^$", matchEnd), 3)
        << "an empty range is an empty text";
    EXPECT_EQ(rule->ParseMultipleLineMatch(0, 8, "none", matchEnd), 8);
    EXPECT_EQ(rule->ParseMultipleLineMatch(0, 8, "(", matchEnd), 8);
    EXPECT_EQ(matchEnd, 8);
}

TEST(AppParseRule, PossibleTypesOfValues) {
    std::map<std::string, std::set<std::string>> values;
    values["$none"];
    values["$number"] = {"12", "x"};
    values["$mac"] = {"00:00:5e:00:53:01"};
    const auto types = CAppParseRule::GetPosibleVariableTypes(values);
    EXPECT_EQ(types.at("$none"), std::vector<std::string>{"string"});
    EXPECT_EQ(types.at("$number"), (std::vector<std::string>{"double", "float", "int", "string"}));
    EXPECT_EQ(types.at("$mac"), (std::vector<std::string>{"MAC", "string"}));
    std::set<std::string> many;
    for (int i = 0; i < 99; ++i) many.insert("a" + std::to_string(i));
    many.insert("b");
    many.insert("z12");
    values = {{"$many", many}};
    values["$many"].insert("~");
    EXPECT_EQ(CAppParseRule::GetPosibleVariableTypes(values).at("$many"),
              std::vector<std::string>{"string"});
}

}  // namespace
