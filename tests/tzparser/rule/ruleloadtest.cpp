// Rule documents: which rules a "parserule" makes.
#include "tzparser/rule/rulefactory.h"

#include "support/ruletree.h"

#include <gtest/gtest.h>

namespace {

// A kind with a default keyword child, as filters and paragraphs have.
class BlockRule : public CAppParseRule {
public:
    explicit BlockRule(CAppParseRule* parent) : CAppParseRule(RuleType_Filter, parent) {
        AddChildRule(new CAppParseRuleKeyWord(this));
    }
    bool AddToVariableTree(CAppVariableDef*) override { return true; }
    CAppParseRule* CreateObject(CAppParseRule* parent) override { return new BlockRule(parent); }
};

std::string DumpRules(const CAppParseRule& rule) {
    std::string dump;
    for (const auto& child : rule.Children()) {
        dump += dump.empty() ? "" : " ";
        dump += child->GetRuleGuid() + "/" + std::to_string(child->GetRuleType());
        if (!child->IsLeaf()) dump += "(" + DumpRules(*child) + ")";
    }
    return dump;
}

TEST(RuleLoad, RulesOfTheRows) {
    struct Row {
        const char* name;
        const char* rules;
        const char* wanted;
    };
    const Row rows[] = {
        {"no parserule", "{}", ""},
        {"not a list", "{\"parserule\":5}", ""},
        {"an empty list", "{\"parserule\":[]}", ""},
        {"one by itself", "{\"parserule\":{\"xxid\":\"a\",\"type\":0}}", "a/0"},
        {"a type as text", "{\"parserule\":[{\"xxid\":\"a\",\"type\":\"0\"}]}", "a/0"},
        {"any text that is no number", "{\"parserule\":[{\"xxid\":\"a\",\"type\":\"x\"}]}", "a/0"},
        {"an unknown type drops its siblings behind",
         "{\"parserule\":[{\"xxid\":\"a\"},{\"type\":77},{\"xxid\":\"c\"}]}", "a/0"},
        {"a root is never made of a node", "{\"parserule\":[{\"type\":7}]}", ""},
        {"nodes that are no objects", "{\"parserule\":[5,\"x\",null]}", "/0 /0 /0"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(DumpRules(*LoadSample(std::string("{\"parserules\":") + row.rules + "}")),
                  row.wanted);
    }
}

TEST(RuleLoad, TheFirstKeywordNodeFillsTheDefaultChild) {
    BlockRule block(nullptr);
    block.Load(ParseJson("{\"child\":{\"parserule\":[{\"xxid\":\"a\"},{\"xxid\":\"b\"}]}}"));
    EXPECT_EQ(DumpRules(block), "a/0 b/0");
    const std::unique_ptr<CAppParseRule> clone(block.Clone(nullptr));
    EXPECT_EQ(DumpRules(*clone), "a/0 b/0") << "not one more";
}

TEST(RuleLoad, SavesTheArrayFormWithoutTheEnvelope) {
    auto sample = LoadRules(
        "{\"xxid\":\"a\",\"keywords\":{\"keyword\":[\"x $int:a\"]},\"nistart\":{\"type\":2}}");
    hxJson::Value saved;
    sample->Save(saved);
    EXPECT_EQ(saved.toString(),
              "{\"parserules\":{\"parserule\":[{\"keywords\":{\"keyword\":[\"x "
              "$int:a\"]},\"statements\":{\"statement\":[]},"
              "\"type\":0,\"variabletypes\":{\"variabletype\":[\"$a:int\"]}}],\"variables\":{"
              "\"interfacekeys\":\"\"}}}");
}

TEST(RuleLoad, ADocumentAsDeepAsTheReaderAllows) {
    std::string text = "{\"xxid\":\"leaf\"}";
    for (int i = 0; i < 300; ++i) text = "{\"child\":{\"parserule\":" + text + "}}";
    auto sample = LoadRules(text);
    int depth = 0;
    for (const CAppParseRule* rule = sample.get(); !rule->IsLeaf();
         rule = rule->Children()[0].get())
        ++depth;
    EXPECT_EQ(depth, 301);
    const std::unique_ptr<CAppParseRule> clone(sample->Clone(nullptr));
    EXPECT_TRUE(clone->Parse("a", 0, -1, nullptr));
}

}  // namespace
