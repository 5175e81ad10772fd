#include "tzparser/rule/appparserule.h"
#include "tzparser/value/appvariablevalue.h"
#include "tzparser/variable/appvariablearraydef.h"
#include "tzparser/variable/appvariabletabledef.h"

#include "support/letdump.h"

#include <gtest/gtest.h>

namespace {

// Answers by full name: "name" gives the lets "name0", "name1", ... as many as it was told.
class AnswerRule : public CAppParseRule {
public:
    explicit AnswerRule(std::map<std::string, int> counts)
        : CAppParseRule(RuleType_KeyWord, nullptr), m_counts(std::move(counts)) {}
    bool AddToVariableTree(CAppVariableDef*) override { return true; }
    CAppParseRule* CreateObject(CAppParseRule*) override { return nullptr; }
    std::vector<CAppTextLet> GetVariableValue(const std::string& name) override {
        m_asked += name + ",";
        std::vector<CAppTextLet> lets;
        for (int i = 0; i < m_counts[name]; ++i)
            lets.emplace_back(i, 0, i, 1, name + std::to_string(i));
        return lets;
    }
    std::string m_asked;

private:
    std::map<std::string, int> m_counts;
};

CAppVariableDef* Add(CAppVariableDef& parent, CAppVariableDef* child) {
    child->SetParent(&parent);
    EXPECT_TRUE(parent.AddChild(child));
    return child;
}

// parser: $plain, table t with the columns $a, b, c.
struct Tree {
    CAppVariableDef def{nullptr, "parser", AppDataType_Parsing, AppVariableType_Default, ""};
    CAppVariableTableDef* table;

    Tree() {
        Add(def,
            new CAppVariableDef(nullptr, "$plain", AppDataType_Int, AppVariableType_Parser, ""));
        table = new CAppVariableTableDef(nullptr, "t", AppVariableType_Parser, "", false);
        Add(def, table);
        for (const char* name : {"$a", "b", "c"})
            Add(*table, new CAppVariableArrayDef(nullptr, name, AppVariableType_Parser, ""));
    }
};

std::string DumpTree(const CAppVariableValue& value, const std::string& indent = "") {
    std::string dump = indent + value.GetName() + "/" + std::to_string(value.GetDataType()) + " " +
                       std::to_string(value.GetRowCountLimitForHash());
    for (const auto& let : value.GetValues()) dump += " " + let.text;
    dump += "\n";
    for (const auto* child : value.GetChildValues()) dump += DumpTree(*child, indent + " ");
    return dump;
}

std::string DumpKeys(const std::map<std::string, std::string>& keys) {
    std::string dump;
    for (const auto& [name, text] : keys) dump.append(name).append("=").append(text).append(" ");
    return dump;
}

TEST(AppVariableValue, AsksTheRulesByFullName) {
    Tree tree;
    AnswerRule rule({{"plain", 2}, {"t.b", 3}, {"t.c", 1}, {"t", 9}});
    const CAppVariableValue root(&tree.def, true, &rule, nullptr, 10);
    EXPECT_EQ(DumpTree(root),
              "parser/14 10\n"
              " $plain/1 5000 plain0 plain1\n"
              " t/11 5000\n"
              "  $a/10 5000\n"
              "  b/10 5000 t.b0 t.b1 t.b2\n"
              "  c/10 5000 t.c0\n");
    EXPECT_EQ(rule.m_asked.find("t,"), std::string::npos) << "a table asks no rule";
    EXPECT_EQ(root.GetVariableFullName(), "");
}

TEST(AppVariableValue, TheTreeOutlivesItsDefinition) {
    auto tree = std::make_unique<Tree>();
    AnswerRule rule({{"plain", 1}});
    CAppVariableValue root(&tree->def, true, &rule, nullptr, 10);
    tree->def.SetName("changed");
    tree.reset();
    EXPECT_EQ(root.GetName(), "parser");
    EXPECT_EQ(root.GetChildValueByName("$plain")->GetVariableValue(0)->text, "plain0");
}

TEST(AppVariableValue, CellsByIndex) {
    Tree tree;
    AnswerRule rule({{"plain", 2}, {"t.b", 3}, {"t.c", 1}});
    CAppVariableValue root(&tree.def, true, &rule, nullptr, 10);
    auto* plain = root.GetChildValueByName("$plain");
    auto* column = root.GetChildValueByName("t.b");
    for (const int index : {-1, 0, 5})
        EXPECT_EQ(plain->GetVariableValue(index)->text, "plain0") << index;
    EXPECT_EQ(column->GetVariableValue(2)->text, "t.b2");
    EXPECT_EQ(column->GetVariableValue(-1), nullptr);
    EXPECT_EQ(column->GetVariableValue(3), nullptr);
    EXPECT_EQ(root.GetChildValueByName("t")->GetValueCount(), 3)
        << "the first column with any value";
    EXPECT_EQ(plain->GetValueCount(), 2);
}

TEST(AppVariableValue, RowsByKeys) {
    Tree tree;
    tree.table->AddTableKey("c");
    AnswerRule rule({{"t.a", 3}, {"t.b", 3}, {"t.c", 1}});
    CAppVariableValue all(&tree.def, true, &rule, nullptr, 10);
    std::map<std::string, std::string> keys;
    EXPECT_EQ(all.GetChildValueByName("t.b")->GetVariableValue(1, keys)->text, "t.b1");
    EXPECT_EQ(DumpKeys(keys), "$a=t.a1 b=t.b1 c= ") << "all columns, a short one without text";
    keys.clear();
    EXPECT_EQ(all.GetChildValueByName("t")->GetVarValueExtendTableKey(0, keys), nullptr);
    EXPECT_EQ(DumpKeys(keys), "c=t.c0 ");
    keys.clear();
    all.GetChildValueByName("$plain")->GetVariableValue(0, keys);
    EXPECT_EQ(DumpKeys(keys), "");
    tree.table->AddKey("b");
    tree.table->AddKey("nothere");
    CAppVariableValue keyed(&tree.def, true, &rule, nullptr, 10);
    keyed.GetChildValueByName("t.c")->GetVariableValue(2, keys);
    EXPECT_EQ(DumpKeys(keys), "b=t.b2 ");

    struct Row {
        const char* name;
        std::map<std::string, std::string> keys;
        int wanted;
    };
    const Row rows[] = {
        {"no keys", {}, 0},
        {"the row", {{"$a", "t.a2"}, {"b", "t.b2"}}, 2},
        {"texts of two rows", {{"$a", "t.a1"}, {"b", "t.b2"}}, -1},
        {"a short column ends the search", {{"c", "t.c1"}}, -1},
        {"a name without its dollar is no column", {{"a", "t.a1"}}, -1},
    };
    for (const auto& row : rows)
        EXPECT_EQ(all.GetChildValueByName("t.b")->GetVariableIndex(row.keys), row.wanted)
            << row.name;
    EXPECT_EQ(all.GetVariableIndex({}), -1);
}

TEST(AppVariableValue, LooksUpByName) {
    Tree tree;
    CAppVariableValue root(&tree.def, true, nullptr, nullptr, 10);
    const std::pair<const char*, bool> children[] = {
        {"", true},    {"t.$a", true},   {"t.a", false},  {"t.", false},
        {".t", false}, {"$plain", true}, {"plain", false}};
    for (const auto& [name, found] : children)
        EXPECT_EQ(root.GetChildValueByName(name) != nullptr, found) << name;
    EXPECT_EQ(root.GetValueByName("parser.t.b"), root.GetChildValueByName("t.b"));
    EXPECT_EQ(root.GetValueByName("parser"), &root);
    EXPECT_EQ(root.GetValueByName("t.b"), nullptr);
    EXPECT_EQ(root.GetValueByName("parserx.t"), nullptr);
}

TEST(AppVariableValue, ACopyStandsAlone) {
    Tree tree;
    AnswerRule rule({{"plain", 1}, {"t.b", 2}});
    auto source = std::make_unique<CAppVariableValue>(&tree.def, true, &rule, nullptr, 10);
    CAppVariableValue copy(source.get());
    EXPECT_EQ(DumpTree(copy), DumpTree(*source));
    source->ClearValue(true);
    EXPECT_EQ(DumpTree(*source).find("plain0"), std::string::npos);
    source.reset();
    std::map<std::string, std::string> keys;
    EXPECT_EQ(copy.GetChildValueByName("t.b")->GetVariableValue(1, keys)->text, "t.b1");
    EXPECT_EQ(DumpKeys(keys), "$a= b=t.b1 c= ");
}

TEST(AppVariableValue, AMillionLevelsNeedNoStack) {
    auto root = std::make_unique<CAppVariableDef>(nullptr, "", AppDataType_Parsing,
                                                  AppVariableType_Default, "");
    auto* node = root.get();
    for (int i = 0; i < 1000000; ++i)
        node = Add(*node, new CAppVariableDef(nullptr, "", AppDataType_Parsing,
                                              AppVariableType_Default, ""));
    const auto value = std::make_unique<CAppVariableValue>(
        std::shared_ptr<const CAppVariableDef>(std::move(root)), nullptr, 0);
    EXPECT_EQ(value->GetChildValues().size(), 1U);
}

}  // namespace
