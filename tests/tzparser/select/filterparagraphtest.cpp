// Filters below a paragraph, which runs them once a block: here a stand-in with blocks given by
// hand.
#include "tzparser/variable/appvariabledef.h"

#include "filtersupport.h"

namespace {

class BlockRule : public CAppParseRule {
public:
    explicit BlockRule(CAppParseRule* parent) : CAppParseRule(RuleType_Paragraph, parent) {}
    bool Parse(const std::string& text, int startLine, int endLine,
               IAppVariableCallback* callback) override {
        if (!OnBeginParse(startLine, endLine)) return false;
        for (int line = startLine; line < endLine; line += 3)
            for (const auto& child : Children()) child->Parse(text, line, line + 3, callback);
        return true;
    }
    bool AddToVariableTree(CAppVariableDef*) override { return true; }
    CAppParseRule* CreateObject(CAppParseRule* parent) override { return new BlockRule(parent); }
};

struct Fixture {
    CAppParseRuleSample sample{""};
    CAppParseRuleFilter* filter;

    Fixture() {
        auto* block = new BlockRule(&sample);
        sample.AddChildRule(block);
        filter = new CAppParseRuleFilter(block);
        block->AddChildRule(filter);
        filter->SetName("f");
        filter->SetBeginLine("begin");
        filter->AddKVP("v $v");
        filter->GetChildRuleByVariableName("v");
        dynamic_cast<CAppParseRuleKeyWord&>(*filter->Children().front()).GetVariableNames();
    }
    void Run() { sample.Parse("begin\nv 1\nx\ny\nbegin\nv 2", 0, -1, nullptr); }
};

TEST(FilterParagraph, KeepsTheStatusOfEachRun) {
    Fixture fixture;
    fixture.Run();
    std::vector<AppLineStatus> statuses;
    ASSERT_EQ(fixture.filter->GetLineStatus(statuses), 2);
    EXPECT_EQ(DumpStatus(statuses[0]), "0 1 2");
    EXPECT_EQ(DumpStatus(statuses[1]), "4 5");
    EXPECT_EQ(DumpLets(fixture.filter->GetVariableValue("f")),
              "0:0-0 \"begin\r\\nv 1\r\\nx\"; 0:0-0 \"begin\r\\nv 2\"");
    hxJson::Value json;
    EXPECT_TRUE(fixture.filter->SaveResultAsJson(json));
    EXPECT_EQ(json["parseResult"]["lines"], ParseJson("[[0,1,2],[4,5]]"));
    fixture.filter->ClearVariablePosition();
    EXPECT_EQ(fixture.filter->GetLineStatus(statuses), 0);
}

// The children of the second run ask for the filter's status and get that of the first run, in
// which the lines of the second are closed: "v 2" isn't seen. A keyword rule directly below a
// filter keeps the values of its last run alone.
TEST(FilterParagraph, LaterRunsHandTheFirstStatusDown) {
    Fixture fixture;
    fixture.Run();
    EXPECT_EQ(DumpStatus(fixture.filter->GetLineStatus()), "0 1 2");
    EXPECT_EQ(DumpLets(fixture.filter->GetVariableValue("v")), "4:0-0 \"\"");
}

TEST(FilterParagraph, AddsItsNameAloneToTheTree) {
    Fixture fixture;
    CAppVariableDef def(nullptr, "root", AppDataType_Parsing, AppVariableType_Default, "");
    EXPECT_TRUE(fixture.filter->AddToVariableTree(&def));
    ASSERT_NE(def.GetChild("$f"), nullptr);
    EXPECT_EQ(def.GetChild("$f")->GetDataType(), AppDataType_Node17);
    EXPECT_EQ(def.GetChild("$v"), nullptr);
}

}  // namespace
