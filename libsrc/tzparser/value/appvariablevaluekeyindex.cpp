#include "tzparser/value/appvariablevaluekeyindex.h"

#include "tzparser/variable/appvariabletabledef.h"

#include <algorithm>
#include <limits>
#include <set>
#include <string_view>

namespace {

std::size_t Combine(std::size_t hash, std::string_view text) {
    constexpr std::size_t GoldenRatio = 0x9e3779b97f4a7c15U;
    return (hash * 31) ^ (std::hash<std::string_view>()(text) + GoldenRatio + (hash >> 2));
}

}  // namespace

CAppVariableValue::CKeyIndex::CKeyIndex(const CAppVariableValue& table,
                                        const CAppVariableValue& other) {
    CollectKeys(table, other);
    if (m_isAnswerable && !m_keys.empty()) IndexRows();
}

void CAppVariableValue::CKeyIndex::CollectKeys(const CAppVariableValue& table,
                                               const CAppVariableValue& other) {
    const auto* def = dynamic_cast<const CAppVariableTableDef*>(table.m_varDef);
    if (def == nullptr) return;
    std::set<std::string> seen;
    for (const auto& name : KeyColumnNames(*def, false)) {
        const auto* mine = table.GetValueByDef(def->GetChild(name));
        if (mine == nullptr || !seen.insert(name).second) continue;
        const auto* theirs = other.GetChildByName(name);
        if (theirs == nullptr) {
            m_isAnswerable = false;
            return;
        }
        m_keys.push_back({mine, &theirs->m_values});
    }
}

// Only rows that every key column has can be found.
void CAppVariableValue::CKeyIndex::IndexRows() {
    std::size_t rows = std::numeric_limits<int>::max();
    for (const auto& key : m_keys) rows = std::min(rows, key.theirs->Count());
    m_rows.reserve(rows);
    for (std::size_t row = 0; row < rows; ++row) {
        std::size_t hash = 0;
        for (const auto& key : m_keys) hash = Combine(hash, key.theirs->Text(row));
        auto& bucket = m_rows[hash];
        const bool isKnown = std::any_of(bucket.begin(), bucket.end(), [&](int earlier) {
            return std::all_of(m_keys.begin(), m_keys.end(), [&](const Key& key) {
                const auto& lets = *key.theirs;
                return lets.Text(static_cast<std::size_t>(earlier)) == lets.Text(row);
            });
        });
        if (!isKnown) bucket.push_back(static_cast<int>(row));
    }
}

std::string_view CAppVariableValue::CKeyIndex::MyText(const Key& key, std::size_t row) {
    return key.mine->m_values.Text(key.mine->GetDataType() == AppDataType_Array ? row : 0);
}

int CAppVariableValue::CKeyIndex::Find(std::size_t row) const {
    if (!m_isAnswerable) return -1;
    if (m_keys.empty()) return 0;
    std::size_t hash = 0;
    for (const auto& key : m_keys) hash = Combine(hash, MyText(key, row));
    const auto bucket = m_rows.find(hash);
    if (bucket == m_rows.end()) return -1;
    for (const int candidate : bucket->second) {
        const bool fits = std::all_of(m_keys.begin(), m_keys.end(), [&](const Key& key) {
            return key.theirs->Text(static_cast<std::size_t>(candidate)) == MyText(key, row);
        });
        if (fits) return candidate;
    }
    return -1;
}
