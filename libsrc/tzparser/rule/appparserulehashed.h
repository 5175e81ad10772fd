#pragma once

#include "tzparser/rule/appparserule.h"

#include <set>
#include <string>

// CAppParseRuleHashed is a rule that says how a table is compared with that of another run: the
// columns that take part in its hash, whether the rows are sorted for it, and the row count and the
// hash that a caller keeps with the rule. A parse doesn't read any of it; the variable tree takes
// columns and sorting over from tables and paragraphs.
//
//     rule.SetTableCmpColumns(columns);     // marks the definition as changed
//     rule.SetTableCmpColumns(columns);     // equal: does nothing
//
// Clones share what is set until one of them is edited. One thread at a time uses a rule.
class TZPARSER_API CAppParseRuleHashed : public CAppParseRule {
public:
    using CAppParseRule::CAppParseRule;

    // Replaces `columns`; returns their number.
    int GetTableCmpColumns(std::set<std::string>& columns) const override;
    void SetTableCmpColumns(std::set<std::string>& columns) override;
    bool IsTableCmpSort() const override { return m_hashing->sort; }
    void SetTableCmpSort(bool sort) override;
    int GetTableRowCount() const override { return m_hashing->rowCount; }
    void SetTableRowCount(int count) override;
    // Lives until the rule is next edited.
    const std::string& GetTableHash() const override { return m_hashing->hash; }
    void SetTableHash(const std::string& hash) override;

protected:
    void ResetHashing() { m_hashing = {}; }
    void CopyHashingTo(CAppParseRuleHashed& target) const { target.m_hashing = m_hashing; }

private:
    struct Hashing {
        std::set<std::string> columns;
        bool sort = false;
        int rowCount = 0;
        std::string hash;
    };

    template <class T>
    void SetOther(T Hashing::*field, const T& value);

    CCopyOnWrite<Hashing> m_hashing;
};
