#include "tzparser/rule/appparserulesample.h"
#include "tzparser/variable/appvariabledef.h"

#include "support/letdump.h"
#include "support/ruletree.h"

#include <gtest/gtest.h>

namespace {

// Notes what it was asked, and answers as it was told.
class AnswerRule : public CAppParseRule {
public:
    AnswerRule(CAppParseRule* parent, bool result, const char* error)
        : CAppParseRule(RuleType_Table, parent), m_result(result), m_error(error) {}
    bool Parse(const std::string&, int startLine, int endLine, IAppVariableCallback*) override {
        m_range = std::to_string(startLine) + "-" + std::to_string(endLine);
        SetLastError(m_error);
        return m_result;
    }
    bool AddToVariableTree(CAppVariableDef*) override { return true; }
    CAppParseRule* CreateObject(CAppParseRule* parent) override {
        return new AnswerRule(parent, m_result, m_error);
    }
    CAppParseRule* GetChildRuleByVariableName(const std::string& name) override {
        return name == "x" || name == "b.x" ? this : nullptr;
    }
    void AddTableKey(const std::string& key) override { m_keys += "key " + key + ";"; }
    void AddTableInterfaceKey(const std::string& key) override {
        m_keys += "interface " + key + ";";
    }

    std::string m_range;
    std::string m_keys;

private:
    bool m_result;
    const char* m_error;
};

AnswerRule* AddAnswer(CAppParseRule& parent, bool result, const char* error) {
    auto* rule = new AnswerRule(&parent, result, error);
    parent.AddChildRule(rule);
    return rule;
}

TEST(AppParseRuleSample, TheResultIsThatOfAnyChild) {
    CAppParseRuleSample sample("s");
    EXPECT_FALSE(sample.Parse("a", 0, -1, nullptr)) << "no child";
    auto* first = AddAnswer(sample, false, "first");
    EXPECT_FALSE(sample.Parse("", 0, -1, nullptr));
    EXPECT_EQ(first->m_range, "0-1") << "an empty text has one line";
    AddAnswer(sample, true, "");
    EXPECT_TRUE(sample.Parse("a\nb", 1, 9, nullptr));
    EXPECT_EQ(first->m_range, "1-9");
    EXPECT_EQ(sample.GetLastError(), "first");
    AddAnswer(sample, false, "last");
    sample.Parse("a", 0, -1, nullptr);
    EXPECT_EQ(sample.GetLastError(), "last") << "the last child with an error";
}

TEST(AppParseRuleSample, TheSameTextIsParsedAgain) {
    auto sample = LoadRules("{\"keywords\":{\"keyword\":[\"x $a\"]}}");
    sample->Parse("x 1", 0, -1, nullptr);
    EXPECT_FALSE(sample->IsRuleModify());
    KeyWordAt(*sample, 0).GetVariablePos().clear();
    sample->Parse("x 1", 0, -1, nullptr);
    EXPECT_EQ(DumpLets(sample->GetVariableValue("a")), "0:2-3 \"1\"");
}

TEST(AppParseRuleSample, GroupsOpenLines) {
    CAppParseRuleSample sample("");
    sample.Parse("a\nb\nc", 0, -1, nullptr);
    AppLineStatus status(3);
    status.set();
    status.reset(1);
    std::vector<int> numbers;
    EXPECT_EQ(sample.GroupMultiLine(0, 3, status, numbers, {}), "a\n\nc");
    EXPECT_EQ(numbers, (std::vector<int>{0, 2}));
    EXPECT_EQ(sample.GroupMultiLine(-5, 1000000000, status, numbers, {}), "a\n\nc");
    EXPECT_EQ(sample.GroupMultiLine(2, 2, status, numbers, {}), "");
    EXPECT_TRUE(numbers.empty());
}

TEST(AppParseRuleSample, KeysReachTheTables) {
    const std::pair<const char*, const char*> rows[] = {
        {"\"tableKeys\":[\"x.y\"]", "key y;"},
        {"\"tableKeys\":[\"a.x.y\",\"$q.$x.$z\"]", "key z;key y;"},
        {"\"tableKeys\":[\"$_original_result.$x.$y\"]", "key y;"},
        {"\"tableKeys\":[\"a.b.x.y\"]", "key y;"},
        {"\"tableKeys\":[\"x\"]", "key x;"},
        {"\"interfaceKeys\":[\"x.y\"]", "interface y;"},
        {"\"variables\":{\"interfacekeys\":\" x.y , x.z ,\"}", "interface y;interface z;"},
    };
    for (const auto& [keys, wanted] : rows) {
        SCOPED_TRACE(keys);
        CAppParseRuleSample sample("");
        auto* table = AddAnswer(sample, true, "");
        sample.Load(ParseJson(std::string("{") + keys + "}"));
        EXPECT_EQ(table->m_keys, wanted);
    }
}

TEST(AppParseRuleSample, TheOriginalResultIsTheRootItself) {
    auto sample = LoadRules("{\"keywords\":{\"keyword\":[\"x $a\"]}}");
    EXPECT_EQ(sample->GetChildRuleByVariableName("$_original_result"), sample.get());
    EXPECT_EQ(sample->GetChildRuleByVariableName("a"), sample->Children()[0].get());
    EXPECT_EQ(DumpLets(sample->GetVariableValue("$_original_result.x")), "0:0-0 \"\"");
    EXPECT_TRUE(sample->GetVariableValue("x_original_result").empty());
    const std::unique_ptr<CAppVariableDef> tree(sample->GetVariableTree());
    EXPECT_EQ(tree->GetName(), "$test");
    ASSERT_EQ(tree->GetChildCount(), 2U);
    EXPECT_EQ(tree->GetChildAt(0)->GetDesc(), "Original Result");
    EXPECT_EQ(tree->GetChildAt(1)->GetName(), "$a");
}

TEST(AppParseRuleSample, DeletesAndRenamesKeywordVariables) {
    const auto load = [] {
        return LoadRules(
            "{\"keywords\":{\"keyword\":[\"x $a and $b\",\"y "
            "$c\"]}},{\"keywords\":{\"keyword\":[\"z $d\"]}}");
    };
    auto sample = load();
    sample->DeleteVariable("$a");
    EXPECT_EQ(KeyWordAt(*sample, 0).GetKVPs()[0], "x $_dummy and $b");
    sample->DeleteVariable("d");
    EXPECT_EQ(sample->Children().size(), 1U) << "a keyword rule without variables goes";
    sample->DeleteVariable("nobody");
    sample->DeleteVariable("c");
    EXPECT_EQ(KeyWordAt(*sample, 0).GetKVPs().size(), 1U);
    sample = load();
    sample->RenameVariable("$a", "parser.$alpha");
    EXPECT_EQ(KeyWordAt(*sample, 0).GetKVPs()[0], "x $alpha and $b");
    sample->Parse("x 1 and 2", 0, -1, nullptr);
    EXPECT_EQ(DumpLets(sample->GetVariableValue("alpha")), "0:2-3 \"1\"");
}

}  // namespace
