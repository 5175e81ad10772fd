#include "host/json/hxjson.h"
#include "tzparser/variable/definitiontext.h"

#include <gtest/gtest.h>

namespace {

hxJson::Value Parse(const std::string& json) {
    hxJson::Value value;
    EXPECT_TRUE(hxJson::Reader().parse(json, value, true)) << json;
    return value;
}

TEST(DefinitionDocument, SaveWritesEveryKeyAndLoadReadsThemBack) {
    CAppVariableDef root(nullptr, "parser", AppDataType_Parsing, AppVariableType_Default, "d\"1");
    CAppVariableTableDef* table = AddTable(root, "t");
    AddColumn(*table, "c")->SetBaseType(AppDataType_Int);
    hxJson::Value value;
    EXPECT_TRUE(root.Save(value));
    EXPECT_TRUE(root.Save(value));
    EXPECT_EQ(value.toString(false),
              R"({"@data_type":14,"@var_type":0,"childs":[{"variable":{"@data_type":11,)"
              R"("@var_type":4,"childs":[{"variable":{"@data_type":10,"@var_type":4,)"
              R"("base_type":1,"childs":null,"desc":"","name":"c"}}],"desc":"",)"
              R"("export_to_csv":false,"hashcolumns":null,"hashsort":"","keys":null,"name":"t",)"
              R"("tablekey":null}}],"desc":"d\"1","name":"parser"})");
    CAppVariableDef loaded;
    EXPECT_TRUE(loaded.Load(value));
    EXPECT_EQ(Dump(loaded), Dump(root));
    EXPECT_TRUE(loaded.EqualTo(&root, true) && root.EqualTo(&loaded, true));
    EXPECT_EQ(loaded.GetChild("t")->GetParent(), &loaded);
}

TEST(DefinitionDocument, LoadTakesWhatItFinds) {
    const struct {
        const char* name;
        const char* json;
        const char* wanted;
    } rows[] = {
        {"nothing", "{}", "/0/0"},
        {"not an object", "[]", "/0/0"},
        {"unknown numbers are kept", R"({"@data_type":7777,"@var_type":-3})", "/7777/-3"},
        {"childs that are no list", R"({"childs":{"variable":{}}})", "/0/0"},
        {"an element without a variable", R"({"childs":[5,{}]})", "/0/0[/0/0 /0/0]"},
        {"the first of a name stays",
         R"({"childs":[{"variable":{"name":"x","@data_type":1}},{"variable":{"name":"$x"}}]})",
         "/0/0[x/1/0]"},
        {"nothing of a duplicate is read",
         R"({"childs":[{"variable":{"name":"x"}},
            {"variable":{"name":"x","childs":[{"variable":{"name":"y"}}]}}]})",
         "/0/0[x/0/0]"},
        {"the document's type wins under a table",
         R"({"@data_type":11,"childs":[{"variable":{"name":"c","@data_type":4}}]})",
         "/11/0[c/4/0]"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        CAppVariableDef node(nullptr, "old", AppDataType_Int, AppVariableType_User, "old");
        EXPECT_TRUE(node.Load(Parse(row.json)));
        EXPECT_EQ(Dump(node), row.wanted);
    }
}

TEST(DefinitionDocument, WideNodesRefuseTheSameNamesAsNarrowOnes) {
    for (const int count : {4, 60}) {
        SCOPED_TRACE(count);
        hxJson::Value value;
        for (int index = 0; index < count; ++index) {
            for (const char* dollars : {"", "$", "$$"}) {
                value["childs"].append(hxJson::Value())["variable"]["name"] =
                    dollars + std::string("n") + std::to_string(index);
            }
        }
        CAppVariableDef added;
        for (const hxJson::Value& element : value["childs"]) {
            Add(added, element["variable"]["name"].asString());
        }
        CAppVariableDef loaded;
        EXPECT_TRUE(loaded.Load(value));
        ASSERT_EQ(loaded.GetChildCount(), added.GetChildCount());
        for (std::size_t index = 0; index < added.GetChildCount(); ++index) {
            EXPECT_EQ(loaded.GetChildAt(index)->GetName(), added.GetChildAt(index)->GetName());
        }
        EXPECT_TRUE(loaded.Load(value));
        EXPECT_EQ(loaded.GetChildCount(), added.GetChildCount());
    }
}

TEST(DefinitionDocument, TheClassFollowsTheType) {
    for (const int type : {0, 4, 10, 11, 19}) {
        const std::unique_ptr<CAppVariableDef> node(
            CAppVariableDef::CreateVariableDefByType(static_cast<AppDataType_e>(type)));
        const std::string wanted = type == 10 ? "/10/0<0>" : type == 11 ? "/11/0T" : "/0/0";
        EXPECT_EQ(Dump(*node), wanted);
    }
}

}  // namespace
