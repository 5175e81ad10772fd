#include "tzparser/variable/appvariabledef.h"
#include "tzparser/variable/definitiontext.h"

#include <gtest/gtest.h>

namespace {

std::string NameOf(const CAppVariableDef* node) {
    return node == nullptr ? "none" : node->GetName();
}

class CAppVariableDefTest : public ::testing::Test {
protected:
    CAppVariableDef root{nullptr, "parser", AppDataType_Parsing, AppVariableType_Default, ""};
};

TEST_F(CAppVariableDefTest, GetChildFindsANameAndItsAlternative) {
    const struct {
        const char* child;
        const char* asked;
        bool found;
    } rows[] = {
        {"x", "x", true},     {"$x", "x", true},   {"x", "$x", true},    {"x", "$$x", true},
        {"$$x", "$x", false}, {"$$x", "x", false}, {"$x", "$$x", false}, {"x", "", false},
        {"", "", false},      {"", "$", true},     {"$", "$", true},     {"xy", "x", false},
        {"X", "x", false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.child) + " asked by " + row.asked);
        CAppVariableDef node;
        Add(node, row.child);
        EXPECT_EQ(node.GetChild(row.asked) != nullptr, row.found);
    }
}

TEST_F(CAppVariableDefTest, AddChildRefusesATakenNameAndLeavesTheChildToTheCaller) {
    Add(root, "x");
    CAppVariableDef second(&root, "$x", AppDataType_Int, AppVariableType_Parser, "");
    EXPECT_FALSE(root.AddChild(&second));
    EXPECT_FALSE(root.AddChildFront(&second));
    EXPECT_FALSE(root.AddChild(nullptr));
    EXPECT_EQ(Dump(root), "parser/14/0[x/4/4]");
    EXPECT_FALSE(root.RemoveChild(&second));
    std::unique_ptr<CAppVariableDef> removed(root.GetChild("x"));
    EXPECT_TRUE(root.RemoveChild(removed.get()));
    EXPECT_TRUE(root.AddChildFront(removed.release()));
    EXPECT_NE(Add(root, ""), nullptr);
    EXPECT_NE(Add(root, ""), nullptr);
    EXPECT_EQ(Dump(root), "parser/14/0[x/4/4 /4/4 /4/4]");
}

TEST_F(CAppVariableDefTest, EveryChildAddedToATableIsAColumn) {
    CAppVariableTableDef* table = AddTable(root, "t");
    Add(*table, "a", AppDataType_String);
    auto front =
        std::make_unique<CAppVariableDef>(table, "b", AppDataType_Int, AppVariableType_Parser, "");
    EXPECT_TRUE(table->AddChildFront(front.release()));
    EXPECT_EQ(Dump(*table), "t/11/4T[b/1/4 a/10/4]");
}

TEST_F(CAppVariableDefTest, BuiltInPropertiesOutliveTheChildren) {
    Add(root, "a");
    root.InitBuiltInProperties();
    root.ClearTree();
    EXPECT_EQ(Dump(root),
              "parser/14/0{__allPosInfo}{__allOriInfo}{__allOriText}{__allOriTextLineNums}"
              "{__allExtendLineNums}");
    const CAppVariableDef* property = root.GetBuiltInProperties()[0];
    EXPECT_EQ(Dump(*property), "__allPosInfo/4/3");
    EXPECT_EQ(property->GetParent(), &root);
}

TEST_F(CAppVariableDefTest, PredicatesOfThePlace) {
    CAppVariableDef* a = Add(root, "a", AppDataType_Table);
    CAppVariableDef* column = Add(*a, "c", AppDataType_Array, AppVariableType_Column);
    CAppVariableDef* below = Add(*column, "b", AppDataType_Node19, AppVariableType_Attr);
    EXPECT_TRUE(a->IsCmdParsingVar() && a->IsCmdParsingTable() && below->IsCmdParsingTable());
    EXPECT_FALSE(root.IsCmdParsingVar() || column->IsCmdParsingTable());
    EXPECT_TRUE(below->IsUnderColumn());
    EXPECT_FALSE(column->IsUnderColumn() || below->IsUnderAttr());
    EXPECT_TRUE(below->IsThreadVar());
    root.SetDataType(AppDataType_Dlg);
    EXPECT_TRUE(below->UnderDlg() && below->IsGlobalVar() && root.IsGlobalVar());
    EXPECT_FALSE(root.UnderDlg() || below->IsCmdParsingVar());
    EXPECT_TRUE(root.IsUISupportedFunction("Reset"));
    EXPECT_FALSE(root.IsUISupportedFunction("Set"));
    EXPECT_TRUE(root.IsUISupportedVariable("any"));
    EXPECT_EQ(below->GetParentVar(AppDataType_Table), a);
    EXPECT_EQ(below->GetParentVar(AppDataType_Node19), below);
    EXPECT_EQ(below->GetParentVar(AppDataType_IP), nullptr);
}

TEST_F(CAppVariableDefTest, OnlyANonKeyColumnOfATableWithKeysIsComparedByKey) {
    CAppVariableTableDef* table = AddTable(root, "t");
    CAppVariableArrayDef* key = AddColumn(*table, "$k");
    CAppVariableArrayDef* value = AddColumn(*table, "$v");
    EXPECT_FALSE(value->CanComaparebyKey());
    table->AddKey("$k");
    EXPECT_TRUE(value->CanComaparebyKey());
    EXPECT_FALSE(key->CanComaparebyKey());
    value->SetDataType(AppDataType_Int);
    EXPECT_FALSE(value->CanComaparebyKey());
    EXPECT_FALSE(CAppVariableArrayDef().CanComaparebyKey());
}

TEST_F(CAppVariableDefTest, StepNodes) {
    CAppVariableDef* node = Add(root, "n");
    Add(*node, "plain");
    Add(*node, "s1", 13);
    Add(*node, "mid");
    Add(*node, "s2", 14);
    EXPECT_EQ(NameOf(root.GetFirstStepOverNode({"n"})), "s1");
    EXPECT_EQ(NameOf(root.GetFirstStepOverNode({"x"})), "none");
    EXPECT_EQ(NameOf(root.GetFirstStepOverNode({})), "none");
    EXPECT_EQ(NameOf(root.GetNextStepOverNode({"n", "s1"})), "s2");
    EXPECT_EQ(NameOf(root.GetNextStepOverNode({"n", "s2"})), "none");
    EXPECT_EQ(NameOf(root.GetNextStepOverNode({"n", "mid"})), "none");
    EXPECT_EQ(NameOf(root.GetNextStepOverNode({"n", "absent"})), "none");
    EXPECT_EQ(NameOf(root.GetNextStepOverNode({})), "none");
}

TEST_F(CAppVariableDefTest, LookUpByPathAndByScriptName) {
    CAppVariableDef* a = Add(root, "$a");
    Add(*a, "$b");
    EXPECT_EQ(NameOf(root.GetVarNodeFromLayerName("a.b")), "$b");
    EXPECT_EQ(NameOf(root.GetVarNodeFromLayerName("a.b.")), "none");
    EXPECT_EQ(NameOf(root.GetVarNodeFromLayerName("")), "none");
    EXPECT_EQ(root.FindVarNodeFromLayerName({}), &root);
    EXPECT_EQ(NameOf(root.GetVarNodeFromPyVarName("ThreadVar.parser_a_b")), "$b");
    EXPECT_EQ(NameOf(root.GetVarNodeFromPyVarName("ThreadVar.parser")), "none");
    for (const char* wrong : {"parser_a_b", "x_parser_a_b", "a_b", "_b", ""}) {
        EXPECT_EQ(NameOf(root.GetVarNodeFromPyVarName(wrong)), "none") << wrong;
    }
    a->SetVarType(AppVariableType_Global1);
    EXPECT_EQ(NameOf(root.GetVarNodeFromPyVarName("parser_a")), "$a");
}

TEST_F(CAppVariableDefTest, CompletionOffersByBeginning) {
    Add(root, "Cpu");
    Add(root, "$cpu2");
    Add(root, "hidden", AppDataType_Int, AppVariableType_Hidden);
    Add(root, "$$x");
    const struct {
        const char* filter;
        const char* wanted;
    } rows[] = {
        {"", "Cpu $cpu2 $$x "},
        {"CP", "Cpu $cpu2 "},
        {"$c", "Cpu $cpu2 "},
        {"$", "Cpu $cpu2 $cpu2 $$x $$x "},
        {"hid", ""},
    };
    for (const auto& row : rows) {
        std::string offered;
        for (const auto* child : root.GetIntellisenseChilds(row.filter)) {
            offered += child->GetName() + " ";
        }
        EXPECT_EQ(offered, row.wanted) << row.filter;
    }
}

TEST_F(CAppVariableDefTest, EqualToComparesWhatItsDepthAsksFor) {
    CAppVariableDef other(nullptr, "parser", AppDataType_Parsing, AppVariableType_Default, "");
    Add(other, "b");
    CAppVariableDef* a = Add(other, "a");
    EXPECT_TRUE(root.EqualTo(&other, true));
    EXPECT_TRUE(root.EqualTo(&root, true));
    EXPECT_FALSE(root.EqualTo(nullptr, false));
    CAppVariableDef* mine = Add(root, "a");
    EXPECT_TRUE(root.EqualTo(&other, true));
    EXPECT_FALSE(other.EqualTo(&root, true));
    Add(*mine, "deep");
    EXPECT_FALSE(root.EqualTo(&other, true));
    EXPECT_TRUE(root.EqualTo(&other, false));
    Add(*a, "deep");
    EXPECT_TRUE(root.EqualTo(&other, true));
    a->SetDataType(AppDataType_Int);
    EXPECT_FALSE(root.EqualTo(&other, true));
}

TEST_F(CAppVariableDefTest, AChildOfANameThatComesTwiceMayFindEitherOfThem) {
    CAppVariableDef other(nullptr, "parser", AppDataType_Parsing, AppVariableType_Default, "");
    Add(*Add(other, ""), "x");
    Add(*Add(other, ""), "y");
    CAppVariableDef* mine = Add(root, "");
    Add(*mine, "y");
    EXPECT_TRUE(root.EqualTo(&other, true));
    Add(*mine, "x");
    EXPECT_FALSE(root.EqualTo(&other, true));
}

TEST_F(CAppVariableDefTest, CopyTakesChildrenOnlyWhenDeep) {
    root.InitBuiltInProperties();
    Add(*root.GetBuiltInProperties()[0], "under");
    CAppVariableTableDef* table = AddTable(root, "t");
    AddColumn(*table, "c")->SetBaseType(AppDataType_IP);
    table->SetPyName("py");
    table->SetInitExpression("1");
    Add(root, "renamed")->SetName("t");
    const std::unique_ptr<CAppVariableDef> deep(root.Copy(true));
    const std::string properties =
        "{__allPosInfo}{__allOriInfo}{__allOriText}{__allOriTextLineNums}{__allExtendLineNums}";
    EXPECT_EQ(Dump(*deep), "parser/14/0[t/11/4T[c/10/4<5>]]" + properties);
    CAppVariableDef* copied = deep->GetChild("t");
    EXPECT_EQ(copied->GetParent(), deep.get());
    EXPECT_EQ(copied->GetPyName() + copied->GetInitexpression(), "");
    EXPECT_EQ(deep->GetParent(), nullptr);
    CAppVariableDef* property = deep->GetBuiltInProperties()[0];
    EXPECT_EQ(property->GetParent(), nullptr);
    EXPECT_EQ(Dump(*property), "__allPosInfo/4/3[under/4/4]");
    const std::unique_ptr<CAppVariableDef> flat(root.Copy(false));
    EXPECT_EQ(Dump(*flat), "parser/14/0" + properties);
}

}  // namespace
