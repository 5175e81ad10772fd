// What a table's definition says: documents, setters, variables of columns, copies.
#include "tablesupport.h"

#include <gtest/gtest.h>

namespace {

std::string Join(const std::vector<std::string>& texts) {
    std::string joined;
    for (const auto& text : texts) joined += "[" + text + "]";
    return joined;
}

std::string DumpColumns(const CAppParseRuleTable& table) {
    std::string dump;
    for (const auto& [header, variable] : table.GetHeaderVars())
        dump += header + "=" + variable + ":" + table.GetVariableType(variable) + " ";
    return dump;
}

struct ColumnRow {
    const char* name;
    const char* headerToVariables;
    const char* wanted;
};

const ColumnRow ColumnRows[] = {
    {"one variable", "VLAN:$int:vlan", "VLAN=$vlan:int "},
    {"a string", "Port:$port", "Port=$port:string "},
    {"without a colon the entry is both", "$Port;Port", "$Port=$Port:string "},
    {"text around the variable goes", "Port:<$port>", "Port=$port:string "},
    {"two variables feed none", "Port:$a $b", ""},
    {"nor does an expression", "Port:regex[$a]", "Port=$a:string "},
    {"nor one with a bracket", "Port:regex[$a]:(.)", ""},
    {"nor a text without a variable", "Port:port;;:", ""},
    {"a refused pattern loses the first stray character alone", "Port:regex:($int:na)m)e x",
     "Port=$nam)e:int "},
    {"a refused pattern without a type", "Port:mline[$lines", "Port=$lines:string "},
    {"a name that begins with a digit is refused, and taken", "Port:$1st", "Port=$1st:string "},
    {"nothing but a dollar", "Port:$", "Port=$:string "},
    {"the later entry of a header holds", "Port:$a;Port:$b", "Port=$b:string "},
};

TEST(TableDefinition, VariablesOfColumns) {
    for (const auto& row : ColumnRows) {
        SCOPED_TRACE(row.name);
        const auto sample = LoadRules(TableNode("\"headers\":\"\",\"headertovariables\":\"" +
                                                std::string(row.headerToVariables) + "\""));
        EXPECT_EQ(DumpColumns(TableAt(*sample, 0)), row.wanted);
    }
}

const char* const Full = R"("headers":" Port\t; ;VLAN","endline":"Total","isskipline":true,
    "skipline":" 2x","headertovariables":"Port:$port;VLAN:$int:vlan","leftalign":true,
    "aligntype":"2","alignrange":"0;9","keyvariables":"$port;$vlan","isuseprevars":"7",
    "useprevars":"$port","hashcolumns":["$port"],"hashsort":true,"enableexcludelines":true,
    "excludelines":{"excludeline":["x",""]})";

TEST(TableDefinition, Loads) {
    const auto sample = LoadRules(TableNode(Full));
    const auto& table = TableAt(*sample, 0);
    EXPECT_EQ(table.GetName(), "t");
    EXPECT_EQ(Join(table.Headers()), "[Port][][VLAN]");
    EXPECT_EQ(table.GetEndCond(), "Total");
    EXPECT_TRUE(table.IsSkipLine());
    EXPECT_EQ(table.GetSkipLine(), 2);
    EXPECT_TRUE(table.IsAlignLeft());
    EXPECT_EQ(table.GetAlign(), 2);
    EXPECT_EQ(table.GetAlignRange(), "0;9");
    EXPECT_EQ(table.GetKeyVars(), (std::set<std::string>{"$port", "$vlan"}));
    EXPECT_TRUE(table.IsUsePreVars());
    EXPECT_EQ(table.GetUsePreVars(), std::set<std::string>{"$port"});
    EXPECT_TRUE(table.IsTableCmpSort());
    EXPECT_EQ(Join(table.GetExcludeLines()), "[x]");
    EXPECT_EQ(Join(table.GetVariableNames()), "[$port][$vlan]");
    EXPECT_EQ(table.GetVariableType("vlan"), "int");
    EXPECT_EQ(table.GetVariableType("x"), "");
}

TEST(TableDefinition, TypesOfTheDocumentReplaceThoseOfThePatterns) {
    const auto sample = LoadRules(TableNode(
        R"("headers":"A","headertovariables":"A:$int:a",
           "variabletypes":[{"variabletype":"$b:ip:x"},{"variabletype":"c"},"$d:int"])"));
    EXPECT_EQ(TableAt(*sample, 0).GetVariableTypeDefine(),
              (std::map<std::string, std::string>{{"$b", "ip:x"}}));
}

// What is saved and loaded again has lost its alignment, hash settings, exclude lines and types:
// documents in use were saved so, and their rules read tables with what is left.
TEST(TableDefinition, SavingLosesWhatItAlwaysLost) {
    const auto sample = LoadRules(TableNode(Full));
    hxJson::Value saved;
    TableAt(*sample, 0).Save(saved);
    EXPECT_EQ(saved, ParseJson(R"({"name":"t","headers":"Port;;VLAN","endline":"Total",
        "isskipline":true,"skipline":2,"headertovariables":"Port:$string:port;VLAN:$int:vlan",
        "leftalign":"0;9","keyvariables":"$port;$vlan","useprevars":"$port","isuseprevars":true,
        "variabletypes":["$port:string","$vlan:int"]})"));
    CAppParseRuleTable loaded(nullptr);
    loaded.Load(saved);
    EXPECT_EQ(loaded.GetAlign(), 0);
    EXPECT_EQ(loaded.GetAlignRange(), "");
    EXPECT_EQ(loaded.GetSkipLine(), 2);
    EXPECT_FALSE(loaded.IsUsePreVars());
    EXPECT_FALSE(loaded.IsTableCmpSort());
    EXPECT_TRUE(loaded.GetExcludeLines().empty());
    EXPECT_EQ(DumpColumns(loaded), "Port=$port: VLAN=$vlan: ");
}

struct SetterRow {
    const char* name;
    void (*set)(CAppParseRuleTable&);
    bool isTold;
};

// "Equal" rows set what the rule of Full has already.
const SetterRow SetterRows[] = {
    {"skip lines", [](CAppParseRuleTable& t) { t.SetSkipLine(3); }, true},
    {"equal skip lines", [](CAppParseRuleTable& t) { t.SetSkipLine("2"); }, false},
    {"alignment", [](CAppParseRuleTable& t) { t.SetAlign("1"); }, true},
    {"equal alignment", [](CAppParseRuleTable& t) { t.SetAlign(2); }, false},
    {"equal end condition", [](CAppParseRuleTable& t) { t.SetEndCond("Total"); }, true},
    {"a header's variable", [](CAppParseRuleTable& t) { t.AddHeaderVar("VLAN", "$v"); }, false},
    {"no header's variable", [](CAppParseRuleTable& t) { t.DelHeaderVar("VLAN"); }, false},
    {"a statement", [](CAppParseRuleTable& t) { t.AddStatement("s"); }, true},
    {"no such statement", [](CAppParseRuleTable& t) { t.DelStatement("x"); }, false},
    {"a key", [](CAppParseRuleTable& t) { t.AddTableKey("k"); }, false},
    {"an interface key", [](CAppParseRuleTable& t) { t.AddTableInterfaceKey("k"); }, false},
    {"a key variable", [](CAppParseRuleTable& t) { t.AddKeyVar("$port"); }, true},
    {"equal hash columns",
     [](CAppParseRuleTable& t) {
         std::set<std::string> columns{"$port"};
         t.SetTableCmpColumns(columns);
     },
     false},
    {"one more hash column",
     [](CAppParseRuleTable& t) {
         std::set<std::string> columns{"$port", "$vlan"};
         t.SetTableCmpColumns(columns);
     },
     true},
    {"equal sorting", [](CAppParseRuleTable& t) { t.SetTableCmpSort(true); }, false},
    {"a hash", [](CAppParseRuleTable& t) { t.SetTableHash("h"); }, true},
    {"an equal row count", [](CAppParseRuleTable& t) { t.SetTableRowCount(0); }, false},
    {"reset", [](CAppParseRuleTable& t) { t.Reset(); }, true},
};

TEST(TableDefinition, SettersTellTheRoot) {
    for (const auto& row : SetterRows) {
        SCOPED_TRACE(row.name);
        const auto sample = LoadRules(TableNode(Full));
        sample->Parse("", 0, -1, nullptr);
        ASSERT_FALSE(sample->IsRuleModify());
        row.set(TableAt(*sample, 0));
        EXPECT_EQ(sample->IsRuleModify(), row.isTold);
    }
}

TEST(TableDefinition, ResetKeepsSomeFields) {
    const auto sample = LoadRules(TableNode(Full));
    auto& table = TableAt(*sample, 0);
    table.AddTableKey("k");
    table.AddTableInterfaceKey("i");
    table.SetAlignLeft(false);
    table.Reset();
    EXPECT_EQ(table.GetName() + table.GetEndCond() + Join(table.GetExcludeLines()), "tTotal[x]");
    std::set<std::string> keys;
    table.GetTableInterfaceKeys(keys);
    EXPECT_EQ(keys, std::set<std::string>{"i"});
    table.GetTableKeys(keys);
    EXPECT_TRUE(keys.empty());
    EXPECT_TRUE(table.IsAlignLeft());
    EXPECT_TRUE(table.Headers().empty());
}

TEST(TableDefinition, CopiesAreIndependent) {
    const std::string text = "AA  BB  CC\nx   y   z";
    const auto sample = LoadRules(TableNode(""));
    sample->Parse(text, 0, -1, nullptr);
    const std::unique_ptr<CAppParseRule> clone(sample->Clone(nullptr));
    auto& copy = TableAt(*clone, 0);
    EXPECT_EQ(DumpCells(copy.VariablePos()), DumpCells(TableAt(*sample, 0).VariablePos()));
    EXPECT_EQ(copy.GetBeginLine(), 0);
    copy.SetHeader("AA;CC");
    clone->Parse(text, 0, -1, nullptr);
    EXPECT_EQ(copy.VariablePos().at("$a").at(1).text, "x");
    EXPECT_EQ(TableAt(*sample, 0).Headers().size(), 3U);
    CAppParseRuleTable other(nullptr);
    EXPECT_TRUE(copy.CopyTo(&other));
    EXPECT_EQ(other.Headers().size(), 2U);
}

TEST(TableDefinition, HeadersMayBeWritten) {
    const auto sample = LoadRules(TableNode(""));
    auto& table = TableAt(*sample, 0);
    auto& headers = table.GetHeader();
    sample->Parse("AA  BB  CC\nx   y   z", 0, -1, nullptr);
    headers.pop_back();
    sample->Parse("AA  BB\nx2", 0, -1, nullptr);
    EXPECT_EQ(table.VariablePos().at("$a").at(1).text, "x2");
}

TEST(TableDefinition, HelpersForTools) {
    EXPECT_EQ(CAppParseRuleTable::GetDefaultColumnVariableName("Port Name-1"), "$port_name_1");
    const std::pair<const char*, const char*> lines[] = {
        {"", ""},
        {"Port  Port Name \tVLAN ", "Port;Port Name;VLAN"},
        {"  a;b;;c \t", "a;b;c"},
        {"a  ", "a"},
        {"a ", "a"},
    };
    for (const auto& [line, wanted] : lines)
        EXPECT_EQ(CAppParseRuleTable::GetHeaderByALineText(line), wanted) << line;
}

}  // namespace
