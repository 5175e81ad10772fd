#include "tzparser/variable/appvariabletabledef.h"

#include "host/json/hxjson.h"
#include "tzparser/variable/definitionkeys.h"

namespace {

/// Replaces a list of the document by the texts; no texts leave the key null.
template <class Texts>
void SaveTexts(hxJson::Value& list, const Texts& texts) {
    list = hxJson::Value();
    for (const std::string& text : texts) list.append(text);
}

/// Inserts the texts of a list behind or among those that are there.
template <class Texts>
void LoadTexts(const hxJson::Value& list, Texts& texts) {
    for (const hxJson::Value& text : list) texts.insert(texts.end(), text.asString());
}

}  // namespace

CAppVariableTableDef::CAppVariableTableDef()
    : CAppVariableTableDef(nullptr, std::string(), AppVariableType_Default, std::string(), false) {}

CAppVariableTableDef::CAppVariableTableDef(CAppVariableDef* parent, const std::string& name,
                                           AppVariableType_e varType, const std::string& desc,
                                           bool exportToCSV)
    : CAppVariableDef(parent, name, AppDataType_Table, varType, desc),
      m_exportToCSV(exportToCSV),
      m_rowCountProperty(this, "_rowCount", AppDataType_Int, AppVariableType_Attr, std::string()),
      m_hashProperty(this, "_hashCmp", AppDataType_String, AppVariableType_Attr, std::string()),
      m_properties{&m_rowCountProperty, &m_hashProperty} {}

std::set<std::string> CAppVariableTableDef::GetTableKeysEx() const {
    std::set<std::string> keys = m_intfTableKeys;
    keys.insert(m_tableKeys.begin(), m_tableKeys.end());
    return keys;
}

int CAppVariableTableDef::GetTableCmpColumns(std::set<std::string>& columns) const {
    if (&columns != &m_cmpColumns) columns = m_cmpColumns;
    return static_cast<int>(m_cmpColumns.size());
}

void CAppVariableTableDef::SetTableCmpColumns(const std::set<std::string>& columns) {
    if (m_cmpColumns != columns) m_cmpColumns = columns;
}

void CAppVariableTableDef::SetTableCmpSort(bool sort) {
    if (m_cmpSort != sort) m_cmpSort = sort;
}

void CAppVariableTableDef::SetTableRowCount(int rowCount) {
    if (m_rowCount != rowCount) m_rowCount = rowCount;
}

void CAppVariableTableDef::SetTableHash(const std::string& hash) {
    if (m_tableHash != hash) m_tableHash = hash;
}

bool CAppVariableTableDef::LoadVariable(const hxJson::Value& value) {
    const hxJson::Value& keys = value[DefinitionKeys::kKeys];
    // Whether "keys" is a list decides over both lists: on purpose "tablekey" has no test of its
    // own, and without "keys" it isn't read.
    if (keys.isArray()) {
        LoadTexts(keys, m_keys);
        LoadTexts(value[DefinitionKeys::kTableKey], m_tableKeys);
    }
    const hxJson::Value& hashColumns = value[DefinitionKeys::kHashColumns];
    if (hashColumns.isArray()) LoadTexts(hashColumns, m_cmpColumns);
    m_tableHash = value[DefinitionKeys::kHashSort].asString();
    m_exportToCSV = value[DefinitionKeys::kExportToCsv].asBool();
    return true;
}

bool CAppVariableTableDef::SaveVariable(hxJson::Value& value) {
    SaveTexts(value[DefinitionKeys::kKeys], m_keys);
    SaveTexts(value[DefinitionKeys::kTableKey], m_tableKeys);
    SaveTexts(value[DefinitionKeys::kHashColumns], m_cmpColumns);
    value[DefinitionKeys::kHashSort] = m_tableHash;
    value[DefinitionKeys::kExportToCsv] = m_exportToCSV;
    return true;
}

std::unique_ptr<CAppVariableDef> CAppVariableTableDef::CloneShallow() const {
    auto copy = std::make_unique<CAppVariableTableDef>();
    CopyFieldsTo(*copy);
    copy->m_keys = m_keys;
    copy->m_exportToCSV = m_exportToCSV;
    copy->m_tableKeys = m_tableKeys;
    copy->m_intfTableKeys = m_intfTableKeys;
    copy->m_cmpColumns = m_cmpColumns;
    copy->m_cmpSort = m_cmpSort;
    copy->m_rowCount = m_rowCount;
    copy->m_tableHash = m_tableHash;
    return copy;
}

bool CAppVariableTableDef::EqualSelf(const CAppVariableDef& other) const {
    const auto* table = dynamic_cast<const CAppVariableTableDef*>(&other);
    return table != nullptr && m_keys == table->m_keys && m_tableKeys == table->m_tableKeys &&
           m_cmpColumns == table->m_cmpColumns && m_cmpSort == table->m_cmpSort &&
           m_rowCount == table->m_rowCount && m_tableHash == table->m_tableHash &&
           CAppVariableDef::EqualSelf(other);
}
