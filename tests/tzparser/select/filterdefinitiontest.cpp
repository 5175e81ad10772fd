// The filter's document, its setters, its clones, its place in trees of variables.
#include "tzparser/variable/appvariabledef.h"

#include "filtersupport.h"

namespace {

const char* const Node =
    R"({"type":1,"name":"f","startline":"b","endline":"e","skiplines":[{"skipline":"s"},{}],
        "includelines":{"includeline":["i","","j"]},"excludelines":{"excludeline":"x"},
        "filterloop":true,"excludebeginline":true,
        "child":{"parserule":[{"keywords":{"keyword":["v $v"]}},
                              {"keywords":{"keyword":["w $w"]}}]}})";

// Lists are saved as plain arrays, which aren't loaded again.
TEST(FilterDefinition, SavesAnotherFormThanItLoads) {
    const auto sample = LoadRules(Node);
    hxJson::Value json;
    ASSERT_TRUE(sample->Save(json));
    auto& saved = json["parserules"]["parserule"][0];
    ASSERT_EQ(saved["child"]["parserule"].size(), 2U);
    auto own = saved;
    own.removeMember("child");
    EXPECT_EQ(own, ParseJson(R"({"type":1,"name":"f","startline":"b","endline":"e",
        "skiplines":["s",""],"includelines":["i","j"],"excludelines":["x"],"filterloop":true,
        "excludeendline":false,"excludebeginline":true,"asconfiglet":false})"))
        << own.toString();
    const auto again = LoadSample(json.toString());
    const auto& filter = FilterAt(*again, 0);
    EXPECT_EQ(filter.GetBeginLine(), "b");
    EXPECT_TRUE(filter.GetSkipLine().empty());
    EXPECT_TRUE(filter.GetIncludeLine().empty());
    EXPECT_TRUE(filter.GetExcludeLine().empty());
}

TEST(FilterDefinition, TheEndLineIsExcludedInCodeOnly) {
    CAppParseRuleSample sample("");
    EXPECT_TRUE(CAppParseRuleFilter(&sample).IsExcludeEndLine());
    EXPECT_FALSE(FilterAt(*LoadRules("{\"type\":1}"), 0).IsExcludeEndLine());
}

TEST(FilterDefinition, ClonesAreIndependent) {
    const auto sample = LoadRules(Node);
    const std::unique_ptr<CAppParseRule> clone(sample->Clone(nullptr));
    auto& filter = FilterAt(*clone, 0);
    EXPECT_EQ(filter.Children().size(), 2U);
    filter.SetBeginLine("other");
    filter.AddIncludeLine("k");
    filter.AddKVP("z $z");
    EXPECT_EQ(FilterAt(*sample, 0).GetBeginLine(), "b");
    EXPECT_EQ(FilterAt(*sample, 0).GetIncludeLine(), (std::vector<std::string>{"i", "j"}));
    EXPECT_EQ(FilterAt(*sample, 0).GetKVPs(), std::vector<std::string>{"v $v"});
    EXPECT_EQ(filter.GetKVPs(), (std::vector<std::string>{"v $v", "z $z"}));
}

TEST(FilterDefinition, EditedListsAndReset) {
    const auto sample = LoadRules(Node);
    auto& filter = FilterAt(*sample, 0);
    filter.SetSkipLine({"a", "b", "a"});
    filter.DelSkipLine("a");
    filter.AddExcludeLine("y");
    EXPECT_EQ(filter.GetSkipLine(), std::vector<std::string>{"b"});
    filter.Reset();
    EXPECT_EQ(filter.GetName() + filter.GetBeginLine() + filter.GetEndLine(), "f");
    EXPECT_TRUE(filter.GetSkipLine().empty() && filter.GetIncludeLine().empty());
    EXPECT_EQ(filter.GetExcludeLine(), (std::vector<std::string>{"x", "y"}));
    EXPECT_TRUE(filter.IsExcludeEndLine() && filter.IsFilterLoop());
    EXPECT_TRUE(filter.GetKVPs().empty());
    filter.DelChildRule(filter.Children().front().get());
    filter.DelChildRule(filter.Children().front().get());
    filter.AddKVP("a $a");
    filter.AddStatement("$a=1");
    EXPECT_TRUE(filter.GetKVPs().empty() && filter.GetStatements().empty());
}

TEST(FilterDefinition, EditingTakesEffectInTheNextParse) {
    const auto sample = LoadRules(Node);
    auto& filter = FilterAt(*sample, 0);
    filter.Reset();
    filter.SetExcludeLine({});
    filter.SetEndLine("two");
    sample->Parse("one\ntwo", 0, -1, nullptr);
    EXPECT_EQ(DumpStatus(filter.GetLineStatus()), "0");
}

TEST(FilterDefinition, ConfigletByText) {
    CAppParseRuleFilter filter(nullptr);
    for (const auto& [text, wanted] : std::map<std::string, bool>{
             {"1", true}, {"TRUE", true}, {"true", true}, {"yes", false}, {"", false}}) {
        filter.SetAsConfiglet(text);
        EXPECT_EQ(filter.AsConfiglet(), wanted) << text;
    }
}

TEST(FilterDefinition, NamesAreEdited) {
    const auto sample = LoadRules(Node);
    sample->RenameVariable("f", "g");
    EXPECT_EQ(FilterAt(*sample, 0).GetName(), "g");
    sample->DeleteVariable("$w");
    EXPECT_EQ(FilterAt(*sample, 0).Children().size(), 1U);
    sample->DeleteVariable("$v");
    EXPECT_EQ(FilterAt(*sample, 0).Children().size(), 1U);  // the default child stays
    sample->DeleteVariable("g");
    EXPECT_TRUE(sample->IsLeaf());
}

// The name stands beside the variables of the children, as a string without a Python name.
TEST(FilterDefinition, InTheVariableTrees) {
    const auto sample = LoadRules(Node);
    const std::unique_ptr<CAppVariableDef> tree(sample->GetVariableTree());
    ASSERT_NE(tree, nullptr);
    ASSERT_NE(tree->GetChild("$f"), nullptr);
    EXPECT_EQ(tree->GetChild("$f")->GetDataType(), AppDataType_Node17);
    EXPECT_NE(tree->GetChild("$v"), nullptr);
}

}  // namespace
