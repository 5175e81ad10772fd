#pragma once

#include "tzparser/text/letcolumn.h"

#include <cstddef>
#include <string_view>
#include <vector>

// CLetList is the values that a rule gives for a name: lets, or a column of which nobody has asked
// for the lets yet.
//
//     CLetList list(rule.Values().Column("$port"));     // shares the column's values
//     list.Text(0);                                     // "Gi0/1"; no let is made
//     list.Lets()[0].endCol;                            // all lets are made, the column is let go
//
// Moving costs nothing, copying what copying a column or the lets costs. Lets are made under a
// const look as well, so one thread at a time uses a list; lists that share a column may be used by
// a thread each. References and views live until the list is written, cleared or first asked for
// its lets.
class TZPARSER_API CLetList {
public:
    using Values = std::vector<CAppTextLet>;

    CLetList() = default;
    explicit CLetList(Values lets) : m_lets(std::move(lets)) {}
    // A column that works on a host's map gives copies of its values.
    explicit CLetList(const CLetColumn& column) : m_column(column) {}

    std::size_t Count() const { return m_lets.empty() ? m_column.Count() : m_lets.size(); }
    bool IsEmpty() const { return Count() == 0; }
    // The text of a value, empty when there is none; a copy of the value, a let of zeros when there
    // is none.
    std::string_view Text(std::size_t index) const;
    CAppTextLet Copy(std::size_t index) const;

    Values& Lets();
    const Values& Lets() const;
    // The lets for somebody else; the list is then empty.
    Values TakeLets();
    void Clear();

    // What the values need of memory, and the parsed text that they are places in; null when they
    // need none. Leaving it makes copies of their texts.
    std::size_t Bytes() const;
    const std::string* SourceText() const { return m_column.SourceText(); }
    void LeaveSourceText() { m_column.LeaveSourceText(); }

private:
    void MakeLets() const;

    // One of both is empty.
    mutable Values m_lets;
    mutable CLetColumn m_column;
};
