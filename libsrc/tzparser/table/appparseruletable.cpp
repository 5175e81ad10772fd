// The rule as a definition: its fields and their setters, and copying.
#include "tzparser/table/appparseruletable.h"

#include "tzparser/table/tableplan.h"
#include "tzparser/table/tabletext.h"
#include "tzparser/text/appstrutil.h"

#include <algorithm>

CAppParseRuleTable::CAppParseRuleTable(CAppParseRule* parent)
    : CAppParseRuleKeyed(RuleType_Table, parent) {
    Reset();
}

CAppParseRuleTable::~CAppParseRuleTable() = default;

CAppParseRule* CAppParseRuleTable::CreateObject(CAppParseRule* parent) {
    return new CAppParseRuleTable(parent);
}

bool CAppParseRuleTable::OnCopyTo(CAppParseRule* target) {
    auto* other = dynamic_cast<CAppParseRuleTable*>(target);
    if (other == nullptr) return false;
    if (other != this) {
        other->m_definition = m_definition;
        CopyComparisonTo(*other);
        other->m_beginLine = m_beginLine;
        other->m_endLine = m_endLine;
        other->m_values = m_values;
        other->m_layout = m_layout;
        other->m_runPlan = m_runPlan;
        other->m_slotPlan = nullptr;
        if (m_isHeaderHosted) other->LeaveHostedHeaders();
    }
    other->SetRuleModify();
    return true;
}

CAppParseRuleTable::Definition& CAppParseRuleTable::EditDefinition() {
    auto& definition = m_definition.Edit();
    definition.plan.reset();
    m_runPlan.reset();
    m_slotPlan = nullptr;
    return definition;
}

// The copy gets a definition of its own, so that a host that goes on writing to the source's
// headers doesn't write to it too.
void CAppParseRuleTable::LeaveHostedHeaders() {
    m_isHeaderHosted = false;
    EditDefinition();
}

void CAppParseRuleTable::Reset() {
    Definition fresh;
    fresh.name = m_definition->name;
    fresh.endCond = m_definition->endCond;
    fresh.excludeLines = m_definition->excludeLines;
    EditDefinition() = std::move(fresh);
    ResetComparison();
    m_beginLine = -1;
    m_endLine = -1;
    m_values.Clear();
    m_layout = {};
    SetRuleModify();
}

template <class T>
void CAppParseRuleTable::Set(T Definition::*field, const T& value) {
    EditDefinition().*field = value;
    SetRuleModify();
}

template <class T>
void CAppParseRuleTable::SetOther(T Definition::*field, const T& value) {
    if ((*m_definition).*field != value) Set(field, value);
}

void CAppParseRuleTable::SetName(const std::string& name) {
    Set(&Definition::name, name);
}

void CAppParseRuleTable::SetHeader(const std::string& headers) {
    auto& pieces = EditDefinition().headers;
    pieces = AppStrUtil::StrSplit(headers, ";", false);
    AppStrUtil::TzStrTrim(pieces, std::string(TableText::SpaceCharacters));
    SetRuleModify();
}

std::vector<std::string>& CAppParseRuleTable::GetHeader() {
    m_isHeaderHosted = true;
    return EditDefinition().headers;
}

void CAppParseRuleTable::SetEndCond(const std::string& statement) {
    Set(&Definition::endCond, statement);
}

void CAppParseRuleTable::SetSkipLine(int count) {
    SetOther(&Definition::skipLine, count);
}

void CAppParseRuleTable::SetSkipLine(const std::string& count) {
    SetSkipLine(TableText::LeadingNumber(count));
}

void CAppParseRuleTable::SetIsSkipLine(bool skip) {
    Set(&Definition::isSkipLine, skip);
}

void CAppParseRuleTable::SetAlign(int align) {
    SetOther(&Definition::align, align);
}

void CAppParseRuleTable::SetAlign(const std::string& align) {
    SetAlign(TableText::LeadingNumber(align));
}

void CAppParseRuleTable::SetAlignRange(const std::string& range) {
    Set(&Definition::alignRange, range);
}

void CAppParseRuleTable::SetAlignLeft(bool left) {
    Set(&Definition::alignLeft, left);
}

void CAppParseRuleTable::SetIsUsePreVars(bool use) {
    Set(&Definition::isUsePreVars, use);
}

void CAppParseRuleTable::AddFollowVar(const std::string& name) {
    EditDefinition().followVars.insert(name);
    SetRuleModify();
}

void CAppParseRuleTable::DelFollowVar(const std::string& name) {
    EditDefinition().followVars.erase(name);
    SetRuleModify();
}

void CAppParseRuleTable::AddKeyVar(const std::string& name) {
    EditDefinition().keyVars.insert(name);
    SetRuleModify();
}

void CAppParseRuleTable::DelKeyVar(const std::string& name) {
    EditDefinition().keyVars.erase(name);
    SetRuleModify();
}

void CAppParseRuleTable::AddStatement(const std::string& statement) {
    EditDefinition().statements.push_back(statement);
    SetRuleModify();
}

void CAppParseRuleTable::DelStatement(const std::string& statement) {
    const auto& known = m_definition->statements;
    const auto at = std::find(known.begin(), known.end(), statement);
    if (at == known.end()) return;
    const auto index = at - known.begin();
    auto& statements = EditDefinition().statements;
    statements.erase(statements.begin() + index);
    SetRuleModify();
}
