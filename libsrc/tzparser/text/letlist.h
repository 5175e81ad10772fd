#pragma once

#include "tzparser/text/letcolumn.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

// CLetList is the values that a rule gives for a name: lets, or a column of which nobody has asked
// for the lets yet, or values of a column picked by their indexes.
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

    // The column's values at these indexes, which may come more than once.
    CLetList(const CLetColumn& column, std::vector<std::uint32_t> picks);

    // Puts the values of another list behind those here.
    void Append(CLetList other);

    std::size_t Count() const {
        if (!m_lets.empty()) return m_lets.size();
        return m_isPicked ? m_picks.size() : m_column.Count();
    }
    bool IsEmpty() const { return Count() == 0; }
    // The text of a value, empty when there is none; a copy of the value, a let of zeros when there
    // is none.
    std::string_view Text(std::size_t index) const {
        if (index < m_lets.size()) return m_lets[index].text;
        return m_lets.empty() ? m_column.TextAtIndex(IndexOf(index)) : std::string_view();
    }
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
    std::size_t IndexOf(std::size_t index) const;
    void MakeLets() const;
    void LeaveColumn() const;

    // Lets or a column, the other is empty.
    mutable Values m_lets;
    mutable CLetColumn m_column;
    mutable std::vector<std::uint32_t> m_picks;  // in the column, when not all of it is meant
    mutable bool m_isPicked = false;
};
