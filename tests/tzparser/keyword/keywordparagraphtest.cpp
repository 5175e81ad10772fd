// Keyword rules below a paragraph, which runs them once a block: here a stand-in with blocks given
// by hand.
#include "tzparser/rule/paragraphscope.h"

#include "support/letdump.h"
#include "support/ruletree.h"

#include <gtest/gtest.h>

namespace {

class BlockRule : public CAppParseRule, public IParagraphScope {
public:
    explicit BlockRule(CAppParseRule* parent) : CAppParseRule(RuleType_Paragraph, parent) {
        AddChildRule(new CAppParseRuleKeyWord(this));
    }
    bool Parse(const std::string& text, int startLine, int endLine,
               IAppVariableCallback* callback) override {
        if (!OnBeginParse(startLine, endLine)) return false;
        for (std::size_t i = 0; i < m_begins.size(); ++i)
            for (const auto& child : Children())
                child->Parse(text, m_begins[i], m_ends[i], callback);
        return true;
    }
    bool AddToVariableTree(CAppVariableDef*) override { return true; }
    CAppParseRule* CreateObject(CAppParseRule* parent) override { return new BlockRule(parent); }
    IParagraphScope* AsParagraphScope() override { return this; }
    const IParagraphScope* AsParagraphScope() const override { return this; }
    std::vector<std::string> GetIDLines() const override {
        return m_startLine.empty() ? std::vector<std::string>()
                                   : std::vector<std::string>{m_startLine};
    }
    const std::string& GetParentLine() const override { return m_parentLine; }
    const std::string& GetStartLine() const override { return m_startLine; }
    void SetStartLine(const std::string& statement) override { m_startLine = statement; }
    bool IsUsePreVars() const override { return !m_usePre.empty(); }
    const std::set<std::string>& GetUsePreVars() const override { return m_usePre; }
    const std::vector<int>& GetBeginLines() const override { return m_begins; }
    const std::vector<int>& GetEndLines() const override { return m_ends; }

    CAppParseRuleKeyWord& First() { return KeyWordAt(*this, 0); }

    std::string m_startLine;
    std::string m_parentLine;
    std::set<std::string> m_usePre;
    std::vector<int> m_begins;
    std::vector<int> m_ends;
};

BlockRule* AddBlock(CAppParseRule& parent, std::vector<int> begins, std::vector<int> ends) {
    auto* block = new BlockRule(&parent);
    block->m_begins = std::move(begins);
    block->m_ends = std::move(ends);
    parent.AddChildRule(block);
    return block;
}

const char* const Text = "interface A\n speed 10\ninterface B\n mtu 5\ninterface C\n speed 30";

struct Fixture {
    CAppParseRuleSample sample{""};
    BlockRule* block = AddBlock(sample, {0, 2, 4}, {2, 4, 6});

    std::string Run() {
        for (const auto& child : block->Children()) {
            std::vector<std::string> names =
                dynamic_cast<CAppParseRuleKeyWord&>(*child).GetVariableNames();
        }
        sample.Parse(Text, 0, -1, nullptr);
        return DumpPositions(block->First().GetVariablePos());
    }
};

TEST(KeyWordParagraph, KeepsTheValuesOfAllBlocks) {
    Fixture fixture;
    fixture.block->First().AddKVP("speed $s");
    EXPECT_FALSE(fixture.block->First().IsSingle());
    EXPECT_EQ(fixture.Run(), "$s 1: 1:7-9 \"10\"; 2: 2:0-0 \"\"; 5: 5:7-9 \"30\";\n");
}

TEST(KeyWordParagraph, TheFirstChildReadsTheStartLineToo) {
    Fixture fixture;
    fixture.block->m_startLine = "interface $name";
    fixture.block->m_parentLine = "slot $slot";
    fixture.block->First().AddKVP("speed $s");
    auto* second = new CAppParseRuleKeyWord(fixture.block);
    second->AddKVP("mtu $m");
    fixture.block->AddChildRule(second);
    EXPECT_EQ(fixture.block->First().GetVariableNames(),
              (std::vector<std::string>{"$slot", "$name", "$s"}));
    EXPECT_EQ(second->GetVariableNames(), std::vector<std::string>{"$m"});
    EXPECT_EQ(fixture.Run(),
              "$name 0: 0:10-11 \"A\"; 2: 2:10-11 \"B\"; 4: 4:10-11 \"C\";\n"
              "$s 1: 1:7-9 \"10\"; 2: 2:0-0 \"\"; 5: 5:7-9 \"30\";\n"
              "$slot 0: 0:0-0 \"\"; 2: 2:0-0 \"\"; 4: 4:0-0 \"\";\n");
    EXPECT_EQ(DumpPositions(second->GetVariablePos()),
              "$m 0: 0:0-0 \"\"; 3: 3:5-6 \"5\"; 4: 4:0-0 \"\";\n");
}

TEST(KeyWordParagraph, NamedVariablesCarryTheirTextOver) {
    Fixture fixture;
    fixture.block->m_usePre = {"$s"};
    fixture.block->First().AddKVP("speed $s");
    EXPECT_EQ(fixture.Run(), "$s 1: 1:7-9 \"10\"; 2: 2:0-0 \"10\"; 5: 5:7-9 \"30\";\n");
}

// In a single line an empty group stores nothing for such a variable, so its old text stays; over
// several lines the old text even beats a new one.
TEST(KeyWordParagraph, CarriedTextAndEmptyOrNewGroups) {
    Fixture fixture;
    fixture.block->m_usePre = {"$s"};
    fixture.block->First().AddKVP("regex[$s]:[A-C]$|speed (\\d+)|mtu ()");
    EXPECT_EQ(fixture.Run(), "$s 0: 0:0-0 \"\"; 2: 2:0-0 \"\"; 4: 4:0-0 \"\";\n");
    Fixture lines;
    lines.block->m_usePre = {"$s"};
    lines.block->First().AddKVP("mregex[$s]:speed (\\d+)");
    EXPECT_EQ(lines.Run(), "$s 1: 1:7-9 \"10\"; 2: 2:0-0 \"10\"; 5: 5:7-9 \"10\";\n");
}

TEST(KeyWordParagraph, ValuesOfParentLinesOverwriteThoseBelow) {
    Fixture fixture;
    fixture.block->First().AddKVP("speed $s");
    fixture.Run();
    const CAppTextLet first(0, 0, 0, 1, "I");
    const CAppTextLet second(2, 0, 2, 1, "J");
    fixture.block->First().SetVariableValueOfParentLine(
        {{"$s", {first, second}}, {"$none", {first}}});
    EXPECT_EQ(DumpPositions(fixture.block->First().GetVariablePos()),
              "$s 1: 0:0-1 \"I\"; 2: 0:0-1 \"I\"; 5: 2:0-1 \"J\";\n");
}

TEST(KeyWordParagraph, OuterValuesRepeatForInnerBlocks) {
    CAppParseRuleSample sample("");
    auto* outer = AddBlock(sample, {0, 4}, {4, 6});
    outer->First().AddKVP("interface $name");
    auto* inner = AddBlock(*outer, {}, {});
    inner->First().AddKVP("speed $s");
    inner->First().AddKVP("mtu $s");
    inner->First().GetVariableNames();
    sample.Parse(Text, 0, -1, nullptr);
    inner->First().ParseKeywordVariable(1, 2);
    inner->First().ParseKeywordVariable(3, 4);
    inner->First().ParseKeywordVariable(5, 6);
    EXPECT_EQ(DumpLets(inner->First().GetVariableValue("name")),
              "0:10-11 \"A\"; 0:10-11 \"A\"; 4:10-11 \"C\"");
    EXPECT_EQ(inner->First().GetVariableNames(), (std::vector<std::string>{"$s", "$name"}));
    EXPECT_EQ(inner->First().GetVariableType("name"), "string");
}

TEST(KeyWordParagraph, DeletingAVariableEditsTheStartLine) {
    Fixture fixture;
    fixture.block->m_startLine = "interface $name of $slot";
    fixture.block->First().DeleteVariable("$name");
    EXPECT_EQ(fixture.block->m_startLine, "interface $_dummy of $slot");
}

}  // namespace
