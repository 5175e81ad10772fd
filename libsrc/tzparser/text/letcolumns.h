#pragma once

#include "tzparser/text/letcolumn.h"

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// CLetColumns holds what a rule found: a column of values for each variable, by name with "$".
//
//     CLetColumns values;
//     auto& port = values.Column("$port");             // once a run
//     port.Set(7, 0, "Gi0/1");                         // once a value
//     values.HostPositions()["$port"].erase(7);        // a host's own reading and writing
//
// A copy shares the values until one of both is written, but for those that a host has. One thread
// at a time.
class TZPARSER_API CLetColumns {
public:
    using Positions = std::map<std::string, CLetColumn::Map>;
    using Columns = std::map<std::string, CLetColumn, std::less<>>;

    CLetColumns() = default;
    CLetColumns(const CLetColumns& other);
    CLetColumns& operator=(const CLetColumns& other);
    ~CLetColumns() = default;

    // All columns, by name; a column may be empty.
    const Columns& All() const;
    Columns& All();
    // The column of a name, made when there is none; valid until Clear, or until a host takes the
    // name out.
    CLetColumn& Column(const std::string& name);
    // The same by a number that the caller goes by, which finds the column without comparing names;
    // a number stands for one name until ForgetSlots.
    CLetColumn& ColumnAt(std::size_t slot, const std::string& name) {
        const bool isKnown = slot < m_slots.size() && m_slots[slot] != nullptr && !m_host;
        return isKnown ? *m_slots[slot] : FindSlot(slot, name);
    }
    void ForgetSlots() { m_slots.clear(); }
    // Null when there is no column of the name.
    const CLetColumn* Find(std::string_view name) const;
    // The same with "$" in front of the name, unless it begins with one.
    const CLetColumn* FindWithDollar(std::string_view name) const;

    // The text that is going to be parsed, for the columns there are and those to come; see
    // CLetColumn::ReadFrom. Null is none.
    void ReadFrom(const std::shared_ptr<const std::string>& text) {
        if (text != m_source) SetSource(text);
    }

    // All values as maps for a host to read and write; they stay the values themselves until this
    // object is assigned to or destroyed, and cost what maps cost.
    Positions& HostPositions();
    // A copy of all values.
    Positions ToPositions() const;
    void Clear();

private:
    void FollowHost() const;
    void SetSource(const std::shared_ptr<const std::string>& text);
    CLetColumn& FindSlot(std::size_t slot, const std::string& name);

    mutable Columns m_columns;
    std::unique_ptr<Positions> m_host;
    std::shared_ptr<const std::string> m_source;
    std::vector<CLetColumn*> m_slots;  // columns by slot; null where none was asked for
};
