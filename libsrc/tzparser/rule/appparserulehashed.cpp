#include "tzparser/rule/appparserulehashed.h"

template <class T>
void CAppParseRuleHashed::SetOther(T Hashing::*field, const T& value) {
    if ((*m_hashing).*field == value) return;
    m_hashing.Edit().*field = value;
    SetRuleModify();
}

int CAppParseRuleHashed::GetTableCmpColumns(std::set<std::string>& columns) const {
    columns = m_hashing->columns;
    return static_cast<int>(columns.size());
}

void CAppParseRuleHashed::SetTableCmpColumns(std::set<std::string>& columns) {
    SetOther(&Hashing::columns, columns);
}

void CAppParseRuleHashed::SetTableCmpSort(bool sort) {
    SetOther(&Hashing::sort, sort);
}

void CAppParseRuleHashed::SetTableRowCount(int count) {
    SetOther(&Hashing::rowCount, count);
}

void CAppParseRuleHashed::SetTableHash(const std::string& hash) {
    SetOther(&Hashing::hash, hash);
}
