// The rule as a definition: its fields and their setters, copying, and what compares tables.
#include "tzparser/table/appparseruletable.h"

#include "tzparser/table/tableplan.h"
#include "tzparser/table/tabletext.h"
#include "tzparser/text/appstrutil.h"

#include <algorithm>

CAppParseRuleTable::CAppParseRuleTable(CAppParseRule* parent)
    : CAppParseRule(RuleType_Table, parent) {
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
        other->m_isHeaderHosted = m_isHeaderHosted;
        other->m_beginLine = m_beginLine;
        other->m_endLine = m_endLine;
        other->m_values = m_values;
        other->m_layout = m_layout;
        other->m_runPlan = m_runPlan;
        other->m_slotPlan = nullptr;
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

void CAppParseRuleTable::Reset() {
    Definition fresh;
    fresh.name = m_definition->name;
    fresh.endCond = m_definition->endCond;
    fresh.excludeLines = m_definition->excludeLines;
    fresh.tableInterfaceKeys = m_definition->tableInterfaceKeys;
    EditDefinition() = std::move(fresh);
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

// Keys are the sample's: handing them down is no change of the rule.
void CAppParseRuleTable::AddTableKey(const std::string& key) {
    m_definition.Edit().tableKeys.insert(key);
}

void CAppParseRuleTable::AddTableInterfaceKey(const std::string& key) {
    m_definition.Edit().tableInterfaceKeys.insert(key);
}

void CAppParseRuleTable::GetTableKeys(std::set<std::string>& keys) const {
    if (&keys != &m_definition->tableKeys) keys = m_definition->tableKeys;
}

void CAppParseRuleTable::GetTableInterfaceKeys(std::set<std::string>& keys) const {
    if (&keys != &m_definition->tableInterfaceKeys) keys = m_definition->tableInterfaceKeys;
}

int CAppParseRuleTable::GetTableCmpColumns(std::set<std::string>& columns) const {
    if (&columns != &m_definition->tableCmpColumns) columns = m_definition->tableCmpColumns;
    return static_cast<int>(m_definition->tableCmpColumns.size());
}

void CAppParseRuleTable::SetTableCmpColumns(std::set<std::string>& columns) {
    SetOther(&Definition::tableCmpColumns, columns);
}

void CAppParseRuleTable::SetTableCmpSort(bool sort) {
    SetOther(&Definition::tableCmpSort, sort);
}

void CAppParseRuleTable::SetTableRowCount(int count) {
    SetOther(&Definition::tableRowCount, count);
}

void CAppParseRuleTable::SetTableHash(const std::string& hash) {
    SetOther(&Definition::tableHash, hash);
}
