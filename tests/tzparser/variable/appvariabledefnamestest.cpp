#include "tzparser/variable/definitiontext.h"

#include <sstream>

#include <gtest/gtest.h>

namespace {

/// A chain of nodes from "name:dataType:varType" words, the root first; the last node is the one
/// asked.
struct Chain {
    explicit Chain(const std::string& words) {
        std::istringstream stream(words);
        for (std::string word; stream >> word;) {
            const std::size_t first = word.find(':');
            const std::size_t second = word.find(':', first + 1);
            auto node = std::make_unique<CAppVariableDef>(
                last, word.substr(0, first),
                static_cast<AppDataType_e>(std::stoi(word.substr(first + 1))),
                static_cast<AppVariableType_e>(std::stoi(word.substr(second + 1))), "");
            CAppVariableDef* made = node.get();
            if (last == nullptr) {
                root = std::move(node);
            } else {
                EXPECT_TRUE(last->AddChild(node.release()));
            }
            last = made;
        }
    }
    std::unique_ptr<CAppVariableDef> root;
    CAppVariableDef* last = nullptr;
};

TEST(CAppVariableDefNames, EachWalkHasItsOwnForm) {
    using Name = std::string (CAppVariableDef::*)() const;
    const Name layer = &CAppVariableDef::GetLayerName;
    const Name global = &CAppVariableDef::GetGlobalName;
    const Name tableArray = &CAppVariableDef::GetTableArrayName;
    const Name dict = &CAppVariableDef::GetDictName;
    const Name ui = &CAppVariableDef::GetUIName;
    const Name py = &CAppVariableDef::GetPyVarName;
    const Name appPy = &CAppVariableDef::GetAppPyVarName;
    const Name appUI = &CAppVariableDef::GetAppUIName;
    const Name pyTable = &CAppVariableDef::GetAppPyTableName;
    const struct {
        Name name;
        const char* chain;
        const char* wanted;
    } rows[] = {
        {layer, "parser:14:0", "parser"},
        {layer, "parser:14:0 $b:4:4 $a:4:4", "parser.$b.$a"},
        {layer, "top:1:0 out:5000:0 $b:4:4 $a:4:4", "$b.$a"},
        {layer, "out:5000:0", "out"},
        {layer, "p:0:0 :12:0 a:4:0", "p..a"},
        {global, "parser:14:0 $b:4:4 $a:4:4", "ThreadVar.parser_b_a"},
        {global, "out:5000:0 $$a:4:1", "out_a"},
        {global, "p:0:0 :12:0 a:4:8", "p_Procedure_a"},
        {global, "p:0:0 a:552:4", "p_a"},
        {tableArray, "p:0:0", ""},
        {tableArray, "p:0:0 $t:11:4 $c:10:4", "ThreadVar.p_t[\"c\"]"},
        {dict, "parser:14:0 $b:4:4 $a:4:4", "ThreadVar.parser_ParsingResult[\"b\"][\"a\"]"},
        {dict, "p:5001:0 q:14:0 $a:4:4", "ThreadVar.p_q_ParsingResult[\"a\"]"},
        {dict, "p:14:0 q:14:0 $a:4:1", "p_ParsingResultq_ParsingResult[\"a\"]"},
        {dict, "p:14:0 s:12:0 $a:4:1", "p_ParsingResults_[\"a\"]"},
        {dict, "p:1:0 $a:4:1", "p_a"},
        {dict, "p:1:0 :4:1", "p"},
        {ui, "p:1:0 d:551:0 $a:4:4", "p_d[\"a\"]"},
        {ui, "p:1:0 d:551:0", "p_d"},
        {ui, "d:551:0 e:551:0 a:4:0", "de[\"a\"]"},
        {ui, "p:1:0 a:4:4", "ThreadVar.p_a"},
        {appUI, "out:5000:0 p:1:0 d:551:0 $a:4:4", "p_dNode_Data[\"a\"]"},
        {appUI, "out:5000:0 p:1:0 u:552:4", "p_uNode_Data"},
        {appUI, "d:551:0 out:5000:0 a:4:4", "[\"a\"]"},
        {py, "p:1:0 d:551:0 $a:4:4", "p_d[\"a\"]"},
        {py, "parser:14:0 $a:4:4", "ThreadVar.parser_ParsingResult[\"a\"]"},
        {py, "parser:14:0 $t:11:4", "ThreadVar.parser_t"},
        {py, "p:1:0 u:599:4", "p_u"},
        {pyTable, "out:5000:0 $p:1:0 $t:11:1005", "PyTable(\"p$t\")"},
        {pyTable, "out:5000:0 $p:1:0 $t:11:1009", "PyTable(\"$p$$t\")"},
        {appPy, "$t:11:1006 $c:10:1011", "PyTable(\"t\").GetOneColumn(\"c\")"},
        {appPy, "$t:11:1006 $c:10:1011 $x:1:1012",
         "PyTable(\"t\").GetOneColumn(\"c\").GetAttribute(\"x\")"},
        {appPy, "d:551:0 $c:10:1011", "dNode_Data[\"c\"]"},
        {appPy, "$c:10:1011", ".GetOneColumn(\"c\")"},
        {appPy, "p:1:0 $c:10:4", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.chain);
        const Chain chain(row.chain);
        EXPECT_EQ((chain.last->*row.name)(), row.wanted);
        const std::string globalName = chain.last->GetGlobalName();
        if (chain.last == chain.root.get()) continue;
        EXPECT_EQ(chain.root->GetVarNodeFromPyVarName(globalName), chain.last);
    }
}

TEST(CAppVariableDefNames, ThePythonNameIsTrimmedOnce) {
    CAppVariableDef node;
    node.SetPyName(" \t$a b$ ");
    EXPECT_EQ(node.GetPyName(), "a b");
    EXPECT_EQ(node.GetDataTypeString(), "");
    EXPECT_TRUE(node.IsNull());
}

}  // namespace
