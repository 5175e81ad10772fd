// The XML form of a rule tree: which elements make rules, and what a sample keeps beside them. What
// the kinds keep is in rulekindxmltest.cpp.
#include "host/xml/markup.h"
#include "tzparser/rule/markuplists.h"

#include "support/ruletree.h"

#include <gtest/gtest.h>

namespace {

std::string DumpTypes(const CAppParseRule& rule) {
    std::string dump;
    for (const auto& child : rule.Children()) {
        dump += (dump.empty() ? "" : " ") + std::to_string(child->GetRuleType());
        if (!child->IsLeaf()) dump += "(" + DumpTypes(*child) + ")";
    }
    return dump;
}

std::string Rule(const std::string& type, const std::string& children = "") {
    const std::string below = children.empty() ? "" : "<child>" + children + "</child>";
    return "<parserule><type>" + type + "</type>" + below + "</parserule>";
}

bool LoadXml(CAppParseRuleSample& sample, const std::string& text) {
    CMarkup xml;
    EXPECT_TRUE(xml.SetDoc(text)) << xml.GetError();
    return sample.LoadFromXml(xml);
}

std::string InterfaceKeys(CAppParseRuleSample& sample) {
    hxJson::Value json;
    sample.Save(json);
    return json["parserules"]["variables"]["interfacekeys"].asString();
}

TEST(RuleXml, RulesOfTheRows) {
    struct Row {
        const char* name;
        std::string rules;
        const char* wanted;
    };
    const Row rows[] = {
        {"none", "", ""},
        {"a missing type, and texts that are no numbers, are keyword rules",
         "<parserule/>" + Rule("") + Rule("x") + Rule("-"), "0 0 0 0"},
        {"digits in front count", Rule("3x") + Rule(" 4 "), "3 4(0)"},
        {"unknown kinds are skipped with what is in them",
         Rule("77", Rule("0")) + Rule("7") + Rule("-1") + Rule("99999999999") + Rule("3"), "3"},
        {"a text rule isn't read, at the root or below", Rule("15") + Rule("1", Rule("15")),
         "1(0)"},
        {"a script is read at the root alone",
         Rule("8") + Rule("3", Rule("8")) + Rule("4", Rule("8")), "8 3 4(0)"},
        {"ping and traceroute aren't read below", Rule("3", Rule("5") + Rule("6") + Rule("0")),
         "3(0)"},
        {"the first keyword fills a default child, whatever is skipped before it",
         Rule("1", Rule("8") + Rule("0") + Rule("0")), "1(0 0)"},
        {"a keyword behind another rule is a new one", Rule("4", Rule("3") + Rule("0")),
         "4(0 3 0)"},
        {"a table has no default child", Rule("3", Rule("0") + Rule("0")), "3(0 0)"},
        {"text and other elements between", "a<b/>" + Rule("0") + "c<!-- d --><parserule2/>", "0"},
        {"only the first child element counts",
         "<parserule><type>3</type><child/><child>" + Rule("0") + "</child></parserule>", "3"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        CAppParseRuleSample sample("test");
        EXPECT_TRUE(LoadXml(sample, "<parserules>" + row.rules + "</parserules>"));
        EXPECT_EQ(DumpTypes(sample), row.wanted);
    }
}

TEST(RuleXml, ASampleIsRefusedWithoutRulesAlone) {
    CAppParseRuleSample sample("test");
    EXPECT_TRUE(LoadXml(sample, "<a/><parserules>" + Rule("0") + "</parserules>"));
    CMarkup none;
    EXPECT_FALSE(sample.LoadFromXml(none));
    EXPECT_FALSE(LoadXml(sample, "<a><parserules/></a>"));
    EXPECT_EQ(DumpTypes(sample), "0") << "nothing changed";
    EXPECT_TRUE(LoadXml(sample, "<parserules>" + Rule("3") + "</parserules>"));
    EXPECT_EQ(DumpTypes(sample), "3") << "in place of the earlier ones";
}

TEST(RuleXml, InterfaceKeysAreReadFromInsideAndWrittenBeside) {
    CAppParseRuleSample sample("test");
    EXPECT_TRUE(LoadXml(sample,
                        "<parserules><variables><interfacekeys> b,a ,,</interfacekeys>"
                        "</variables></parserules><variables><interfacekeys>x"
                        "</interfacekeys></variables>"));
    EXPECT_EQ(InterfaceKeys(sample), "a,b");
    CMarkup saved;
    EXPECT_TRUE(sample.SaveToXml(saved));
    EXPECT_EQ(saved.GetDoc(),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<parserules />\n"
              "<variables>\n  <interfacekeys>a,b</interfacekeys>\n</variables>\n");
    CAppParseRuleSample again("test");
    EXPECT_TRUE(LoadXml(again, saved.GetDoc()));
    EXPECT_EQ(InterfaceKeys(again), "") << "a saved document doesn't give them back";
}

TEST(RuleXml, TheCursorStaysOnItsLevel) {
    CMarkup xml;
    ASSERT_TRUE(xml.SetDoc("<sample><parserules>" + Rule("4", Rule("3")) +
                           "</parserules><behind/></sample>"));
    xml.FindElem("sample");
    xml.IntoElem();
    CAppParseRuleSample sample("test");
    EXPECT_TRUE(sample.LoadFromXml(xml));
    EXPECT_TRUE(xml.FindElem("behind"));
    EXPECT_TRUE(sample.SaveToXml(xml));
    EXPECT_TRUE(xml.OutOfElem());
    EXPECT_FALSE(xml.OutOfElem());
}

}  // namespace
