// Rows by their keys.
#include "tzparser/value/appvariablevaluekeyindex.h"
#include "tzparser/variable/appvariabletabledef.h"

#include <utility>

namespace {

std::vector<std::string> AllColumns(const CAppVariableDef& table) {
    std::vector<std::string> names;
    for (const auto& child : table.GetChildren()) names.push_back(child->GetName());
    return names;
}

}  // namespace

std::vector<std::string> KeyColumnNames(const CAppVariableTableDef& table, bool extendTableKeys) {
    if (!extendTableKeys) return table.GetKeys().empty() ? AllColumns(table) : table.GetKeys();
    const auto keys = table.GetTableKeysEx();
    return keys.empty() ? AllColumns(table) : std::vector<std::string>(keys.begin(), keys.end());
}

CAppTextLet* CAppVariableValue::GetVariableValue(int index,
                                                 std::map<std::string, std::string>& keys) {
    FillKeys(index, keys, false);
    return GetVariableValue(index);
}

CAppTextLet* CAppVariableValue::GetVarValueExtendTableKey(
    int index, std::map<std::string, std::string>& keys) {
    FillKeys(index, keys, true);
    return GetVariableValue(index);
}

void CAppVariableValue::FillKeys(int index, std::map<std::string, std::string>& keys,
                                 bool extendTableKeys) const {
    const auto* node = GetDataType() == AppDataType_Array ? m_parentValue : this;
    if (node == nullptr || node->GetDataType() != AppDataType_Table) return;
    const auto* table = dynamic_cast<const CAppVariableTableDef*>(node->m_varDef);
    if (table == nullptr) return;
    for (const auto& name : KeyColumnNames(*table, extendTableKeys)) {
        const auto* column = GetValueByDef(table->GetChild(name));
        if (column == nullptr) continue;
        keys[name] = std::string(column->GetVariableText(index).value_or(std::string_view()));
    }
}

int CAppVariableValue::GetVariableIndex(const std::map<std::string, std::string>& keys) const {
    if (GetDataType() != AppDataType_Array || m_parentValue == nullptr ||
        m_parentValue->GetDataType() != AppDataType_Table)
        return -1;
    std::vector<std::pair<const CLetList*, const std::string*>> wanted;
    for (const auto& [name, text] : keys) {
        const auto* column = m_parentValue->GetChildByName(name);
        if (column == nullptr) return -1;
        wanted.emplace_back(&column->m_values, &text);
    }
    for (std::size_t row = 0;; ++row) {
        bool fits = true;
        for (const auto& [cells, text] : wanted) {
            if (row >= cells->Count()) return -1;
            fits = fits && cells->Text(row) == *text;
        }
        if (fits) return static_cast<int>(row);
    }
}
