// The variable tree. All samples fill one tree, so that a value tree has the same shape whatever
// sample was chosen. Rules that yield the same name share one node, and the first in sample order
// decides its type.
#include "tzparser/engine/tzparser.h"
#include "tzparser/engine/tzparsersample.h"
#include "tzparser/keyword/appparserulekeyword.h"
#include "tzparser/paragraph/appparseruleparagraph.h"
#include "tzparser/pattern/parserpatternhelper.h"
#include "tzparser/select/appparseruledifffilter.h"
#include "tzparser/select/appparserulelineselector.h"
#include "tzparser/variable/appvariablearraydef.h"

#include <string_view>

namespace {

constexpr const char* RootName = "parser";
constexpr std::string_view NoPythonName = " ~!@#$%^&*()[]{}<>-+=.,?'|/\\\t\n\r\":;";

}  // namespace

std::string CTzParser::WithoutDollars(const std::string& name) {
    const auto begin = name.find_first_not_of('$');
    return begin == std::string::npos ? std::string() : name.substr(begin);
}

std::unique_ptr<CAppVariableDef> CTzParser::MakeVariable(CAppVariableDef& parent,
                                                         const std::string& name,
                                                         AppDataType_e type, bool inTable) {
    if (!inTable)
        return std::make_unique<CAppVariableDef>(&parent, name, type, AppVariableType_Parser, "");
    auto column = std::make_unique<CAppVariableArrayDef>(&parent, name, AppVariableType_Parser, "");
    column->SetBaseType(type);
    return column;
}

std::shared_ptr<CAppVariableDef> CTzParser::CreateVarTree() const {
    auto root = std::make_shared<CAppVariableDef>(nullptr, RootName, AppDataType_Parsing,
                                                  AppVariableType_Default, "");
    if (m_extendedAccess) root->InitBuiltInProperties();
    for (const auto& sample : m_samples) CreateVarTree(&sample->GetRule(), root.get(), false);
    return root;
}

void CTzParser::CreateVarTree(CAppParseRule* rule, CAppVariableDef* def, bool inTable) const {
    struct Kind {
        RuleType type;
        void (CTzParser::*add)(CAppParseRule&, CAppVariableDef&, bool) const;
    };
    static constexpr Kind kinds[] = {
        {RuleType_Sample, &CTzParser::AddSampleVariables},
        {RuleType_KeyWord, &CTzParser::AddKeyWordVariables},
        {RuleType_Filter, &CTzParser::AddFilterVariables<CAppParseRuleLineSelector>},
        {RuleType_DesignReader, &CTzParser::AddFilterVariables<CAppParseRuleLineSelector>},
        {RuleType_DiffFilter, &CTzParser::AddFilterVariables<CAppParseRuleDiffFilter>},
        {RuleType_Table, &CTzParser::AddTableVariables},
        {RuleType_Paragraph, &CTzParser::AddParagraphVariables},
        {RuleType_Ping, &CTzParser::AddKeyWordVariables},
        {RuleType_TraceRoute, &CTzParser::AddKeyWordVariables},
        {RuleType_Script, &CTzParser::AddOwnVariables},
        {RuleType_Text, &CTzParser::AddOwnVariables},
    };
    rule->SetSaveExBuiltInInfo(m_extendedAccess);
    for (const auto& kind : kinds)
        if (kind.type == rule->GetRuleType()) (this->*kind.add)(*rule, *def, inTable);
}

void CTzParser::AddSampleVariables(CAppParseRule& rule, CAppVariableDef& def, bool) const {
    for (const auto& child : rule.Children()) CreateVarTree(child.get(), &def, false);
}

void CTzParser::AddKeyWordVariables(CAppParseRule& rule, CAppVariableDef& def, bool inTable) const {
    auto& keyword = dynamic_cast<CAppParseRuleKeyWord&>(rule);
    for (const auto& variable : keyword.GetVariableNames()) {
        const auto name = WithoutDollars(variable);
        if (def.GetChild(name) != nullptr) continue;
        const auto type = CParserPatternHelper::GetDataType(keyword.GetVariableType(variable));
        auto node = MakeVariable(def, name, type, inTable);
        node->SetPyName(GeneratePythonName(name));
        if (def.AddChild(node.get())) node.release();
    }
}

// The lines of a filter, design reader or diff filter stand beside, not above, the variables of its
// children. The name is taken as it is, and a Python name is made of a design reader's alone.
template <class Filter>
void CTzParser::AddFilterVariables(CAppParseRule& rule, CAppVariableDef& def, bool inTable) const {
    const auto& name = dynamic_cast<Filter&>(rule).GetName();
    if (def.GetChild(name) == nullptr) {
        auto node = MakeVariable(def, name, AppDataType_String, inTable);
        if (rule.GetRuleType() == RuleType_DesignReader) node->SetPyName(GeneratePythonName(name));
        if (def.AddChild(node.get())) node.release();
    }
    for (const auto& child : rule.Children()) CreateVarTree(child.get(), &def, inTable);
}

// The first paragraph of a name decides what compares the table; others add columns. The name is
// taken as it is, and no Python name is made of it.
void CTzParser::AddParagraphVariables(CAppParseRule& rule, CAppVariableDef& def, bool) const {
    const auto& paragraph = dynamic_cast<CAppParseRuleParagraph&>(rule);
    auto& table = AddTable(def, {paragraph.GetName(), paragraph.GetKeyVars(), rule, false});
    for (const auto& child : rule.Children()) CreateVarTree(child.get(), &table, true);
}

// The kinds that name and type their variables themselves, wherever they stand.
void CTzParser::AddOwnVariables(CAppParseRule& rule, CAppVariableDef& def, bool) const {
    rule.AddToVariableTree(&def);
}

// As long as the name, byte for byte. A digit in front stays, and two names may come out alike.
std::string CTzParser::GeneratePythonName(const std::string& name) {
    std::string pythonName = name;
    for (char& c : pythonName) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte >= 0x7F || NoPythonName.find(c) != std::string_view::npos) c = '_';
    }
    return pythonName;
}
