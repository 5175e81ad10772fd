// What the built-in forms share. Each parse replaces a form's lines by those of the syntax that it
// finds in the text. The lines never change, so they are compiled once, and a rule takes them over
// by sharing one definition.
#include "tzparser/keyword/appparserulekeyword.h"

namespace {

constexpr const char* ResultType = "bool";

}  // namespace

CAppParseRuleKeyWord::CBuiltInLines::CBuiltInLines(Texts kvps, std::string statement,
                                                   std::map<std::string, std::string> types) {
    auto& definition = m_definition.Edit();
    definition.kvps = std::move(kvps);
    definition.statements = {std::move(statement)};
    definition.variableTypes = std::move(types);
}

// The plan knows the variables of the lines alone: the result has no stand-by value.
CAppParseRuleKeyWord::CBuiltInLines::CBuiltInLines(const Texts& kvps, const std::string& statement,
                                                   std::string result)
    : m_result(std::move(result)) {
    CAppParseRuleKeyWord compiler(nullptr);
    for (const auto& kvp : kvps) compiler.AddKVP(kvp);
    compiler.AddStatement(statement);
    compiler.PreparePlan();
    m_definition = compiler.m_definition;
    m_withResult = m_definition;
    m_withResult.Edit().variableTypes[m_result] = ResultType;
}

CAppParseRuleKeyWord::CAppParseRuleKeyWord(RuleType ruleType, CAppParseRule* parent,
                                           const CBuiltInLines& lines)
    : CAppParseRuleKeyWord(ruleType, parent) {
    Install(lines);
}

void CAppParseRuleKeyWord::Install(const CBuiltInLines& lines) {
    auto mlines = m_definition->mlineDefine;
    m_definition = lines.m_definition;
    if (!mlines.empty()) m_definition.Edit().mlineDefine = std::move(mlines);
    m_runPlan.reset();
    m_values.Clear();
    SetRuleModify();
}

void CAppParseRuleKeyWord::StoreResult(const CBuiltInLines& lines, bool result) {
    if (m_definition.SharesWith(lines.m_definition))
        m_definition = lines.m_withResult;
    else
        SetVariableType(lines.m_result, ResultType);
    StoreComputed(lines.m_result, result ? "True" : "False");
}

void CAppParseRuleKeyWord::StoreComputed(const std::string& name, std::string text) {
    AddVariablePosInfo(name, 0, CAppTextLet(0, 0, 0, 0, std::move(text)));
}

void CAppParseRuleKeyWord::SetVariableType(const std::string& name, const std::string& type) {
    const auto known = m_definition->variableTypes.find(name);
    if (known != m_definition->variableTypes.end() && known->second == type) return;
    EditDefinition().variableTypes[name] = type;
}
