// The forms in which the command line prints values, over trees made by hand: they have what no
// rule of this version yields yet.
#include "tzparser/value/appvariablevalue.h"
#include "tzparser/variable/appvariablearraydef.h"
#include "tzparser/variable/appvariabletabledef.h"

#include "jsonlayout.h"
#include "outputwriter.h"
#include "scalarjson.h"
#include "treeformat.h"
#include "valueformat.h"

#include <memory>

#include <gtest/gtest.h>

namespace {

TEST(TzparseScalar, ByType) {
    const std::string manyDigits(309, '9');
    const struct {
        AppDataType_e type;
        std::string text;
        std::string wanted;
    } rows[] = {
        {AppDataType_Int, "12", "12"},
        {AppDataType_Int, "-12", "-12"},
        {AppDataType_Int, "+5", "5"},
        {AppDataType_Int, "007", "7"},
        {AppDataType_Int, "-00", "-0"},
        {AppDataType_Int, "9223372036854775808", "9223372036854775808"},
        {AppDataType_Int, "18446744073709551615", "18446744073709551615"},
        {AppDataType_Int, "18446744073709551616", "\"18446744073709551616\""},
        {AppDataType_Int, "-9223372036854775808", "-9223372036854775808"},
        {AppDataType_Int, "-9223372036854775809", "\"-9223372036854775809\""},
        {AppDataType_Int, "1.0", "\"1.0\""},
        {AppDataType_Int, " 1", "\" 1\""},
        {AppDataType_Int, "-", "\"-\""},
        {AppDataType_Int, "0x1", "\"0x1\""},
        {AppDataType_Double, "1.50", "1.50"},
        {AppDataType_Double, "41", "41.0"},
        {AppDataType_Float, "-00.5", "-0.5"},
        {AppDataType_Float, ".5", "0.5"},
        {AppDataType_Double, "5.", "\"5.\""},
        {AppDataType_Double, "1,5", "\"1,5\""},
        {AppDataType_Double, "1.2.3", "\"1.2.3\""},
        {AppDataType_Double, "1e5", "\"1e5\""},
        {AppDataType_Double, "nan", "\"nan\""},
        {AppDataType_Double, manyDigits, "\"" + manyDigits + "\""},
        {AppDataType_Bool, "1", "true"},
        {AppDataType_Bool, "TRUE", "true"},
        {AppDataType_Bool, "0", "false"},
        {AppDataType_Bool, "False", "false"},
        {AppDataType_Bool, "yes", "\"yes\""},
        {AppDataType_String, "12", "\"12\""},
        {AppDataType_ConfigLet, std::string("a\0\xE9\n", 4), "\"a\\u0000\\u00e9\\n\""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        std::string out;
        AppendScalar(out, row.type,
                     CAppTextLet(3, 2, 3, 2 + static_cast<int>(row.text.size()), row.text));
        EXPECT_EQ(out, row.wanted);
    }
}

TEST(TzparseScalar, NoValue) {
    const struct {
        const char* name;
        std::vector<CAppTextLet> values;
        const char* wanted;
    } rows[] = {
        {"no let", {}, "null"},
        {"stand-by value", {CAppTextLet(4, 0, 4, 0, "")}, "null"},
        {"a group that took no part", {CAppTextLet(4, -1, 4, -1, "")}, "null"},
        {"a text without a span", {CAppTextLet("x")}, "\"x\""},
        {"a span without text", {CAppTextLet(4, 0, 5, 0, "")}, "\"\""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        std::string out;
        AppendScalarAt(out, AppDataType_Int, row.values, 0);
        EXPECT_EQ(out, row.wanted);
    }
}

void Add(CAppVariableDef& parent, std::unique_ptr<CAppVariableDef> child) {
    if (parent.AddChild(child.get())) child.release();
}

std::unique_ptr<CAppVariableDef> Plain(CAppVariableDef& parent, const char* name,
                                       AppDataType_e type) {
    return std::make_unique<CAppVariableDef>(&parent, name, type, AppVariableType_Parser, "");
}

std::unique_ptr<CAppVariableArrayDef> Array(CAppVariableDef& parent, const char* name,
                                            AppDataType_e baseType) {
    auto array = std::make_unique<CAppVariableArrayDef>(&parent, name, AppVariableType_Parser, "");
    array->SetBaseType(baseType);
    return array;
}

// A plain variable, a table with two columns, an array and a container.
std::unique_ptr<CAppVariableValue> MakeTree() {
    auto root = std::make_unique<CAppVariableDef>(nullptr, "parser", AppDataType_Parsing,
                                                  AppVariableType_Default, "");
    Add(*root, Plain(*root, "$up", AppDataType_Int));
    auto table = std::make_unique<CAppVariableTableDef>(root.get(), "$ports",
                                                        AppVariableType_Parser, "", false);
    Add(*table, Array(*table, "$name", AppDataType_String));
    Add(*table, Array(*table, "$vlan", AppDataType_Int));
    Add(*root, std::move(table));
    Add(*root, Array(*root, "ids", AppDataType_Int));
    auto box = Plain(*root, "box", AppDataType_Node17);
    Add(*box, Plain(*box, "ok", AppDataType_Bool));
    Add(*root, std::move(box));
    Add(*root, Plain(*root, "nothing", AppDataType_Node18));

    auto values = std::make_unique<CAppVariableValue>(root.get(), true, nullptr, nullptr, 5000);
    const auto give = [&values](const char* name, std::initializer_list<const char*> texts) {
        auto& lets = values->GetChildValueByName(name)->GetValues();
        for (const auto* text : texts)
            lets.emplace_back(0, 0, 0, static_cast<int>(std::string_view(text).size()), text);
    };
    give("$up", {"5", "6"});
    give("$ports.$name", {"Gi1", "Gi2"});
    give("$ports.$vlan", {"10", "20", "x"});
    give("ids", {"7", ""});
    give("box.ok", {"1"});
    values->GetChildValueByName("ids")->GetValues().front().lines = {3, 4};
    return values;
}

using Write = void (*)(const CAppVariableValue&, COutputWriter&);

std::string Written(Write write, const CAppVariableValue& root) {
    COutputWriter out(-1);
    write(root, out);
    return out.Buffer();
}

TEST(TzparseFormats, Values) {
    EXPECT_EQ(Written(&WriteValues, *MakeTree()), R"({
  "up": 5,
  "ports": [
    {
      "name": "Gi1",
      "vlan": 10
    },
    {
      "name": "Gi2",
      "vlan": 20
    },
    {
      "name": null,
      "vlan": "x"
    }
  ],
  "ids": [
    7,
    null
  ],
  "box": {
    "ok": true
  },
  "nothing": {}
}
)");
}

TEST(TzparseFormats, Tree) {
    const auto tree = MakeTree();
    const auto written = Written(&WriteTree, *tree->GetChildValueByName("$ports")) +
                         Written(&WriteTree, *tree->GetChildValueByName("ids")) +
                         Written(&WriteTree, *tree->GetChildValueByName("nothing"));
    EXPECT_EQ(written, R"({
  "name": "$ports",
  "type": 11,
  "children": [
    {
      "name": "$name",
      "type": 10,
      "baseType": 4,
      "values": [
        {"beginRow": 0, "beginCol": 0, "endRow": 0, "endCol": 3, "text": "Gi1"},
        {"beginRow": 0, "beginCol": 0, "endRow": 0, "endCol": 3, "text": "Gi2"}
      ]
    },
    {
      "name": "$vlan",
      "type": 10,
      "baseType": 1,
      "values": [
        {"beginRow": 0, "beginCol": 0, "endRow": 0, "endCol": 2, "text": "10"},
        {"beginRow": 0, "beginCol": 0, "endRow": 0, "endCol": 2, "text": "20"},
        {"beginRow": 0, "beginCol": 0, "endRow": 0, "endCol": 1, "text": "x"}
      ]
    }
  ]
}
{
  "name": "ids",
  "type": 10,
  "baseType": 1,
  "values": [
    {"beginRow": 0, "beginCol": 0, "endRow": 0, "endCol": 1, "text": "7", "lines": [3, 4]},
    {"beginRow": 0, "beginCol": 0, "endRow": 0, "endCol": 0, "text": ""}
  ]
}
{
  "name": "nothing",
  "type": 18
}
)");
}

// Both walks keep their stack on the heap.
TEST(TzparseFormats, DeepTrees) {
    constexpr int depth = 20000;
    CAppVariableDef root(nullptr, "parser", AppDataType_Parsing, AppVariableType_Default, "");
    auto* parent = &root;
    for (int i = 0; i < depth; ++i) {
        Add(*parent, Plain(*parent, "n", AppDataType_Node17));
        parent = parent->GetChildAt(0);
    }
    // Without a rule to ask, the names of the nodes aren't put together.
    const CAppVariableValue values(&root, false, nullptr, nullptr, 5000);
    COutputWriter toNowhere(-1);
    EXPECT_THROW(WriteValues(values, toNowhere), std::exception);
    EXPECT_THROW(WriteTree(values, toNowhere), std::exception);
}

}  // namespace
