#include "host/json/hxjson.h"
#include "tzparser/variable/appvariabletabledef.h"
#include "tzparser/variable/definitiontext.h"

#include <gtest/gtest.h>

namespace {

using Set = std::set<std::string>;

std::string Join(const std::vector<std::string>& texts) {
    std::string joined;
    for (const std::string& text : texts) joined += text + ",";
    return joined;
}

std::string Join(const Set& texts) {
    return Join(std::vector<std::string>(texts.begin(), texts.end()));
}

std::string DumpTable(const CAppVariableTableDef& table) {
    Set columns;
    table.GetTableCmpColumns(columns);
    return "keys=" + Join(table.GetKeys()) + " table=" + Join(table.GetTableKeys()) +
           " intf=" + Join(table.GetIntfTableKeys()) + " columns=" + Join(columns) +
           " sort=" + std::to_string(table.IsTableCmpSort()) +
           " rows=" + std::to_string(table.GetTableRowCount()) + " hash=" + table.GetTableHash() +
           " csv=" + std::to_string(table.IsExportToCSV());
}

void Fill(CAppVariableTableDef& table) {
    table.AddKey("k");
    table.AddKey("k");
    table.AddTableKey("t");
    table.AddIntefTableKey("i");
    table.SetTableCmpColumns({"b", "a"});
    table.SetTableCmpSort(true);
    table.SetTableRowCount(7);
    table.SetTableHash("abc");
    table.SetIsExportToCSV(true);
}

TEST(CAppVariableTableDef, ANewTableHasTwoPropertiesAndNoChildren) {
    const CAppVariableTableDef table(nullptr, "t", AppVariableType_Parser, "", false);
    EXPECT_EQ(table.GetChildCount(), 0u);
    ASSERT_EQ(table.GetProperties().size(), 2u);
    EXPECT_EQ(Dump(*table.GetProperties()[0]), "_rowCount/1/1012");
    EXPECT_EQ(Dump(*table.GetProperties()[1]), "_hashCmp/4/1012");
    EXPECT_EQ(table.GetProperties()[0]->GetParent(), &table);
    EXPECT_EQ(table.GetChild("_rowCount"), nullptr);
    EXPECT_EQ(DumpTable(table), "keys= table= intf= columns= sort=0 rows=0 hash= csv=0");
}

TEST(CAppVariableTableDef, KeysAndTheirSets) {
    CAppVariableTableDef table;
    table.SetKeys({"b", "a"});
    EXPECT_EQ(Join(table.GetKeys()), "a,b,");
    table.SetIntefTableKeys({"i"});
    EXPECT_EQ(Join(table.GetTableKeysEx()), "i,");
    table.SetTableKeys({"i", "h"});
    EXPECT_EQ(Join(table.GetTableKeysEx()), "h,i,");
    Set columns = {"old"};
    EXPECT_EQ(table.GetTableCmpColumns(columns), 0);
    EXPECT_TRUE(columns.empty());
}

TEST(CAppVariableTableDef, DocumentsCarryAllButTheUnsavedFields) {
    CAppVariableTableDef table;
    Fill(table);
    hxJson::Value value;
    EXPECT_TRUE(table.Save(value));
    EXPECT_EQ(value["hashsort"].asString(), "abc");
    CAppVariableTableDef loaded;
    EXPECT_TRUE(loaded.Load(value));
    EXPECT_EQ(DumpTable(loaded),
              "keys=k,k, table=t, intf= columns=a,b, sort=0 rows=0 hash=abc csv=1");
}

TEST(CAppVariableTableDef, TableKeysAreReadOnlyBesideAListOfKeys) {
    const struct {
        const char* json;
        const char* wanted;
    } rows[] = {
        {R"({"tablekey":["t"]})", "keys= table="},
        {R"({"keys":null,"tablekey":["t"]})", "keys= table="},
        {R"({"keys":"k","tablekey":["t"]})", "keys= table="},
        {R"({"keys":[],"tablekey":["t"]})", "keys= table=t,"},
        {R"({"keys":["k"],"tablekey":{"x":"t"}})", "keys=k, table=t,"},
        {R"({"keys":{"x":"k"},"tablekey":["t"]})", "keys= table="},
    };
    for (const auto& row : rows) {
        hxJson::Value value;
        ASSERT_TRUE(hxJson::Reader().parse(row.json, value, true));
        CAppVariableTableDef table;
        EXPECT_TRUE(table.Load(value));
        EXPECT_EQ(DumpTable(table).substr(0, DumpTable(table).find(" intf")), row.wanted);
    }
}

TEST(CAppVariableTableDef, CopyKeepsEveryFieldAndNoChildren) {
    CAppVariableTableDef table;
    Fill(table);
    AddColumn(table, "c");
    const std::unique_ptr<CAppVariableDef> copy(table.Copy(false));
    const auto* tableCopy = dynamic_cast<const CAppVariableTableDef*>(copy.get());
    ASSERT_NE(tableCopy, nullptr);
    EXPECT_EQ(DumpTable(*tableCopy), DumpTable(table));
    EXPECT_EQ(copy->GetChildCount(), 0u);
    EXPECT_EQ(tableCopy->GetProperties()[1]->GetParent(), copy.get());
}

TEST(CAppVariableTableDef, EqualityLeavesOutExportAndInterfaceKeys) {
    using Change = void (*)(CAppVariableTableDef&);
    const struct {
        const char* name;
        Change change;
        bool equal;
    } rows[] = {
        {"export", [](CAppVariableTableDef& t) { t.SetIsExportToCSV(false); }, true},
        {"interface keys", [](CAppVariableTableDef& t) { t.AddIntefTableKey("x"); }, true},
        {"keys", [](CAppVariableTableDef& t) { t.AddKey("x"); }, false},
        {"table keys", [](CAppVariableTableDef& t) { t.AddTableKey("x"); }, false},
        {"columns", [](CAppVariableTableDef& t) { t.SetTableCmpColumns({}); }, false},
        {"sort", [](CAppVariableTableDef& t) { t.SetTableCmpSort(false); }, false},
        {"rows", [](CAppVariableTableDef& t) { t.SetTableRowCount(0); }, false},
        {"hash", [](CAppVariableTableDef& t) { t.SetTableHash(""); }, false},
        {"name", [](CAppVariableTableDef& t) { t.SetName("x"); }, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        CAppVariableTableDef table;
        CAppVariableTableDef other;
        Fill(table);
        Fill(other);
        row.change(other);
        EXPECT_EQ(table.EqualTo(&other, false), row.equal);
    }
    CAppVariableTableDef table;
    CAppVariableDef plain;
    plain.SetDataType(AppDataType_Table);
    EXPECT_FALSE(table.EqualTo(&plain, false));
    EXPECT_TRUE(plain.EqualTo(&table, false));
    CAppVariableArrayDef array;
    CAppVariableArrayDef other;
    EXPECT_TRUE(array.EqualTo(&other, false));
    other.SetBaseType(AppDataType_Int);
    EXPECT_FALSE(array.EqualTo(&other, false));
}

}  // namespace
