#pragma once

// Rows of one table by the key texts of another's, for the sources of this folder.

#include "tzparser/value/appvariablevalue.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

class CAppVariableTableDef;

// The names of a table's key columns: its keys, or its table keys and interface keys; those of all
// columns when it has none.
std::vector<std::string> KeyColumnNames(const CAppVariableTableDef& table, bool extendTableKeys);

// CKeyIndex pairs the rows of a table with those of another as asking the row's keys by
// GetVariableValue and the other's row by GetVariableIndex does, without going through the other's
// rows each time.
//
//     const CAppVariableValue::CKeyIndex index(table, other);
//     const int otherRow = index.Find(row);      // -1: no row has these keys
//
// Holds pointers into both tables, which must not change while it is used.
class CAppVariableValue::CKeyIndex {
public:
    CKeyIndex(const CAppVariableValue& table, const CAppVariableValue& other);

    // The other's first row with the key texts of this row; 0 when there are no keys.
    int Find(std::size_t row) const;

private:
    struct Key {
        const CAppVariableValue* mine;
        const CLetList* theirs;
    };

    static std::string_view MyText(const Key& key, std::size_t row);
    void CollectKeys(const CAppVariableValue& table, const CAppVariableValue& other);
    void IndexRows();

    std::vector<Key> m_keys;
    bool m_isAnswerable = true;                                // each key is a column of the other
    std::unordered_map<std::size_t, std::vector<int>> m_rows;  // by hash, the first of equal ones
};
