// Setters and the lists of the first child.
#include "tzparser/keyword/appparserulekeyword.h"
#include "tzparser/paragraph/appparseruleparagraph.h"

namespace {

const std::vector<std::string>& NoTexts() {
    static const std::vector<std::string> none;
    return none;
}

}  // namespace

template <class T>
void CAppParseRuleParagraph::Assign(T Definition::*field, const T& value) {
    EditDefinition().*field = value;
    SetRuleModify();
}

// Alone among the setters this one leaves the root's mark of a changed definition as it is.
void CAppParseRuleParagraph::SetName(const std::string& name) {
    m_definition.Edit().name = name;
}

void CAppParseRuleParagraph::SetStartExpr(const std::string& pattern) {
    Assign(&Definition::startExpr, pattern);
}

void CAppParseRuleParagraph::SetEndExpr(const std::string& pattern) {
    Assign(&Definition::endExpr, pattern);
}

void CAppParseRuleParagraph::SetLineAsParagraph(int count) {
    Assign(&Definition::lineAsParagraph, count);
}

void CAppParseRuleParagraph::SetIsLineAsParagraph(bool isLineMode) {
    Assign(&Definition::isLineAsParagraph, isLineMode);
}

void CAppParseRuleParagraph::SetIsExcludeEndLine(bool exclude) {
    Assign(&Definition::isExcludeEndLine, exclude);
}

void CAppParseRuleParagraph::SetIsUsePreVars(bool use) {
    Assign(&Definition::isUsePreVars, use);
}

void CAppParseRuleParagraph::AddKeyVar(const std::string& name) {
    m_definition.Edit().keyVars.insert(name);
    SetRuleModify();
}

void CAppParseRuleParagraph::DelKeyVar(const std::string& name) {
    m_definition.Edit().keyVars.erase(name);
    SetRuleModify();
}

void CAppParseRuleParagraph::AddFollowVar(const std::string& name) {
    m_definition.Edit().followVars.insert(name);
    SetRuleModify();
}

void CAppParseRuleParagraph::DelFollowVar(const std::string& name) {
    m_definition.Edit().followVars.erase(name);
    SetRuleModify();
}

void CAppParseRuleParagraph::AddKVP(const std::string& kvp) {
    if (auto* keyword = GetFirstKeywordRule()) keyword->AddKVP(kvp);
}

void CAppParseRuleParagraph::AddStatement(const std::string& statement) {
    if (auto* keyword = GetFirstKeywordRule()) keyword->AddStatement(statement);
}

const std::vector<std::string>& CAppParseRuleParagraph::GetKVPs() const {
    const auto* keyword = GetFirstKeywordRule();
    return keyword != nullptr ? keyword->GetKVPs() : NoTexts();
}

const std::vector<std::string>& CAppParseRuleParagraph::GetStatements() const {
    const auto* keyword = GetFirstKeywordRule();
    return keyword != nullptr ? keyword->GetStatements() : NoTexts();
}

// Id lines, parent line and interface keys belong to what is kept.
void CAppParseRuleParagraph::Reset() {
    const auto old = m_definition;
    Definition empty;
    empty.name = old->name;
    empty.idLines = old->idLines;
    empty.parentLine = old->parentLine;
    EditDefinition() = std::move(empty);
    ResetComparison();
    m_ranges.Clear();
    if (auto* keyword = GetFirstKeywordRule()) keyword->Reset();
    SetRuleModify();
}
