#include "host/json/hxjson.h"
#include "host/xml/markup.h"
#include "tzparser/variable/definitiontext.h"

#include <algorithm>
#include <sstream>

#include <gtest/gtest.h>

namespace {

constexpr char kDeclaration[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

/// The tree's document without the line ends and indents between elements.
std::string Written(const CAppVariableDef& root) {
    CMarkup xml;
    xml.AddElem("variable");
    EXPECT_TRUE(root.SaveToXml(xml));
    std::istringstream lines(xml.GetDoc().substr(sizeof kDeclaration - 1));
    std::string text;
    for (std::string line; std::getline(lines, line);)
        text += line.substr(std::min(line.find_first_not_of(' '), line.size()));
    return text;
}

/// All fields of a tree, in one line.
std::string Json(CAppVariableDef& root) {
    hxJson::Value value;
    root.Save(value);
    return value.toString(false);
}

void Read(CAppVariableDef& root, const std::string& text) {
    CMarkup xml;
    ASSERT_TRUE(xml.SetDoc(text)) << xml.GetError();
    ASSERT_TRUE(xml.FindElem());
    EXPECT_TRUE(root.LoadFromXml(xml));
    // The cursor stands where it stood.
    EXPECT_TRUE(xml.GetParentPos() == nullptr && xml.GetElemPos() != nullptr);
}

TEST(DefinitionXml, SaveWritesTheFormAndLoadReadsItBack) {
    CAppVariableDef root(nullptr, "parser", AppDataType_Parsing, AppVariableType_Default, "a<b");
    CAppVariableTableDef* table = AddTable(root, "t");
    AddColumn(*table, "c")->SetBaseType(AppDataType_Int);
    Add(root, " $x\x01", AppDataType_Double)->SetVarType(AppVariableType_User);
    table->SetIsExportToCSV(true);
    for (const char* key : {"c", "", "c"}) table->AddKey(key);
    const char* const leaf = R"(<variable data_type="10" var_type="4"><name>c</name><desc />)"
                             R"(<base_type>1</base_type></variable>)";
    EXPECT_EQ(Written(root),
              std::string(R"(<variable data_type="14" var_type="0"><name>parser</name>)"
                          R"(<desc>a&lt;b</desc><childs><variable data_type="11" var_type="4">)"
                          R"(<name>t</name><desc /><childs>)") +
                  leaf +
                  R"(</childs><keys><key>c</key><key /><key>c</key></keys>)"
                  R"(<export_to_csv>1</export_to_csv></variable><variable data_type=")" +
                  std::to_string(AppDataType_Double) + "\" var_type=\"" +
                  std::to_string(AppVariableType_User) +
                  R"("><name> $x&#01;</name><desc /></variable></childs></variable>)");
    CMarkup xml;
    xml.AddElem("variable");
    root.SaveToXml(xml);
    CAppVariableDef loaded;
    Read(loaded, xml.GetDoc());
    EXPECT_EQ(Json(loaded), Json(root));
    EXPECT_EQ(loaded.GetChild("t")->GetChild("c")->GetParent(), loaded.GetChild("t"));
}

// On purpose XML holds less of a table than JSON does.
TEST(DefinitionXml, WhatATableLoses) {
    CAppVariableTableDef table(nullptr, "t", AppVariableType_Parser, "", false);
    table.AddKey("k");
    CAppVariableTableDef loaded(nullptr, "", AppVariableType_Default, "", false);
    loaded.AddTableKey("old");
    std::set<std::string> columns = {"c"};
    table.AddTableKey("k");
    table.SetTableCmpColumns(columns);
    table.SetTableHash("abc");
    Read(loaded, Written(table));
    EXPECT_EQ(loaded.GetKeys(), std::vector<std::string>{"k"});
    EXPECT_EQ(loaded.GetTableKeys(), std::set<std::string>{"old"});
    EXPECT_EQ(loaded.GetTableCmpColumns(columns), 0);
    EXPECT_EQ(loaded.GetTableHash(), "");
    EXPECT_FALSE(loaded.IsExportToCSV());
}

TEST(DefinitionXml, LoadTakesWhatItFinds) {
    const std::string wide = [] {
        std::string text = "<v><childs>";
        for (int index = 0; index < 40; ++index)
            text += "<variable><name>" + std::string(index % 2, '$') + "n" +
                    std::to_string(index / 2) + "</name></variable>";
        return text + "</childs></v>";
    }();
    const struct {
        const char* name;
        std::string xml;
        const char* wanted;
    } rows[] = {
        {"nothing: the fields stay", "<v/>", "old/1/8'old'"},
        {"empty elements empty", "<v><name/><desc></desc></v>", "/1/8"},
        {"numbers that are none, and unknown ones", R"(<v data_type="x" var_type="-3"/>)",
         "old/0/-3'old'"},
        {"childs that hold none", R"(<v var_type="5"><childs>5</childs></v>)", "old/1/5'old'"},
        {"childs in front, others among them",
         "<v><childs><other/><variable><name>a</name></variable>t<variable/></childs><name>n</name>"
         "<childs><variable/></childs></v>",
         "n/1/8'old'[a/0/0 /0/0]"},
        {"the first of a name stays, and nothing of a duplicate is read",
         R"(<v><childs><variable data_type="1"><name>x</name></variable><variable><name>$x</name>)"
         R"(<childs><variable/></childs></variable></childs></v>)",
         "old/1/8'old'[x/1/0]"},
        {"the class follows the type, and the document's type wins under a table",
         R"(<v><childs><variable data_type="11"><childs><variable data_type="4"><name>c</name>)"
         R"(</variable><variable data_type="10"><base_type>2x</base_type></variable></childs>)"
         R"(</variable></childs></v>)",
         "old/1/8'old'[/11/0T[c/4/0 /10/0<2>]]"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        CAppVariableDef node(nullptr, "old", AppDataType_Int, AppVariableType_GlobalOutput, "old");
        Read(node, row.xml);
        EXPECT_EQ(Dump(node), row.wanted);
    }
    CAppVariableDef node;
    Read(node, wide);
    EXPECT_EQ(node.GetChildCount(), 20u);
}

TEST(DefinitionXml, TheExportFlag) {
    const struct {
        const char* xml;
        bool wanted;
    } rows[] = {
        {"<v/>", true},  // missing gives true, whatever was set
        {"<v><export_to_csv>0</export_to_csv></v>", false},
        {"<v><export_to_csv/></v>", false},
        {"<v><export_to_csv>TRUE</export_to_csv></v>", true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.xml);
        CAppVariableTableDef table(nullptr, "t", AppVariableType_Parser, "", false);
        Read(table, row.xml);
        EXPECT_EQ(table.IsExportToCSV(), row.wanted);
    }
}

TEST(DefinitionXml, WithoutAnElementOrWithoutRoom) {
    CMarkup empty;
    CAppVariableDef root;
    EXPECT_FALSE(root.LoadFromXml(empty));
    EXPECT_FALSE(root.SaveToXml(empty));
    EXPECT_EQ(empty.GetDoc(), "");
}

// A document has room for MaxDepth levels: a node takes two, and its name one more.
TEST(DefinitionXml, TreesDeeperThanADocument) {
    constexpr int Room = CMarkup::MaxDepth / 2;
    for (const int depth : {Room - 1, Room, 20000}) {
        SCOPED_TRACE(depth);
        CAppVariableDef root;
        CAppVariableDef* last = &root;
        for (int level = 0; level < depth; ++level) last = Add(*last, "n");
        Add(root, "sibling");
        CMarkup xml;
        xml.AddElem("variable");
        EXPECT_EQ(root.SaveToXml(xml), depth < Room);
        CAppVariableDef loaded;
        Read(loaded, xml.GetDoc());
        int read = 0;
        for (const CAppVariableDef* node = &loaded; node->GetChildCount() > 0; ++read)
            node = node->GetChildAt(0);
        EXPECT_EQ(read, std::min(depth, Room - 1));
        EXPECT_NE(loaded.GetChild("sibling"), nullptr);
    }
}

}  // namespace
