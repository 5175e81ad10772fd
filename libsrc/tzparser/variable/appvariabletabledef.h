#pragma once

#include "tzparser/variable/appvariabledef.h"

#include <set>

/// The definition of a table: columns (its children, each an array), key columns, what takes part
/// in the comparison of two results, and the last result's row count and hash.
///
///     CAppVariableTableDef table(&root, "$routes", AppVariableType_Parser, "", true);
///     table.AddKey("$prefix");
///     table.GetProperties()[0]->GetName();                      // "_rowCount"
///
/// Its data type is 11. A table that is shared by parses of several threads must not be written to;
/// the setters of row count and hash write only what differs. Otherwise as `CAppVariableDef`.
///
/// XML holds the key columns and the export flag alone, and a table read from XML that doesn't tell
/// the flag is exported.
class TZPARSER_API CAppVariableTableDef : public CAppVariableDef {
public:
    CAppVariableTableDef();
    CAppVariableTableDef(CAppVariableDef* parent, const std::string& name,
                         AppVariableType_e varType, const std::string& desc, bool exportToCSV);

    /// Appends a key column; duplicates are kept.
    void AddKey(const std::string& key) { m_keys.push_back(key); }
    /// Replaces the key columns by the set's entries in their order.
    void SetKeys(const std::set<std::string>& keys) { m_keys.assign(keys.begin(), keys.end()); }
    /// The key columns in order; may be changed.
    std::vector<std::string>& GetKeys() { return m_keys; }
    const std::vector<std::string>& GetKeys() const { return m_keys; }

    /// The properties `_rowCount` and `_hashCmp`, in this order, owned by the table. They aren't
    /// children.
    const std::vector<CAppVariableDef*>& GetProperties() const { return m_properties; }

    /// The key columns for comparison, and those among them that hold interfaces.
    void AddTableKey(const std::string& key) { m_tableKeys.insert(key); }
    void SetTableKeys(const std::set<std::string>& keys) { m_tableKeys = keys; }
    std::set<std::string> GetTableKeys() const { return m_tableKeys; }
    void AddIntefTableKey(const std::string& key) { m_intfTableKeys.insert(key); }
    void SetIntefTableKeys(const std::set<std::string>& keys) { m_intfTableKeys = keys; }
    std::set<std::string> GetIntfTableKeys() const { return m_intfTableKeys; }
    /// Both sets in one.
    std::set<std::string> GetTableKeysEx() const;

    bool IsExportToCSV() const { return m_exportToCSV; }
    void SetIsExportToCSV(bool exportToCSV) { m_exportToCSV = exportToCSV; }

    /// Copies the columns that take part in the hash into `columns`; returns how many they are.
    virtual int GetTableCmpColumns(std::set<std::string>& columns) const;
    virtual void SetTableCmpColumns(const std::set<std::string>& columns);
    /// Whether rows are sorted before the hash is made.
    virtual bool IsTableCmpSort() const { return m_cmpSort; }
    virtual void SetTableCmpSort(bool sort);
    /// Row count of the last result.
    virtual int GetTableRowCount() const { return m_rowCount; }
    virtual void SetTableRowCount(int rowCount);
    /// Hash of the last result; valid until the next `SetTableHash`.
    virtual const std::string& GetTableHash() const { return m_tableHash; }
    virtual void SetTableHash(const std::string& hash);

protected:
    bool LoadVariable(const hxJson::Value& value) override;
    bool SaveVariable(hxJson::Value& value) override;
    void LoadVariableFromXml(CMarkup& xml) override;
    bool SaveVariableToXml(CMarkup& xml) const override;
    std::unique_ptr<CAppVariableDef> CloneShallow() const override;
    bool EqualSelf(const CAppVariableDef& other) const override;
    const std::vector<std::string>* KeyColumns() const override { return &m_keys; }

private:
    std::vector<std::string> m_keys;
    bool m_exportToCSV = false;
    std::set<std::string> m_tableKeys;
    std::set<std::string> m_intfTableKeys;
    std::set<std::string> m_cmpColumns;
    bool m_cmpSort = false;
    int m_rowCount = 0;
    std::string m_tableHash;
    CAppVariableDef m_rowCountProperty;
    CAppVariableDef m_hashProperty;
    std::vector<CAppVariableDef*> m_properties;
};
