#pragma once

#include "tzparser/text/letcolumn.h"

#include <map>
#include <memory>
#include <string>

// CLetColumns holds what a rule found: a column of values for each variable, by name with "$".
//
//     CLetColumns values;
//     auto& port = values.Column("$port");             // once a run
//     port.Set(7, 0, "Gi0/1");                         // once a value
//     values.HostPositions()["$port"].erase(7);        // a host's own reading and writing
//
// A copy has values of its own. One thread at a time.
class TZPARSER_API CLetColumns {
public:
    using Positions = std::map<std::string, CLetColumn::Map>;

    CLetColumns() = default;
    CLetColumns(const CLetColumns& other);
    CLetColumns& operator=(const CLetColumns& other);
    ~CLetColumns() = default;

    // All columns, by name; a column may be empty.
    const std::map<std::string, CLetColumn>& All() const;
    std::map<std::string, CLetColumn>& All();
    // The column of a name, made when there is none; valid until Clear, or until a host takes the
    // name out.
    CLetColumn& Column(const std::string& name);
    // Null when there is no column of the name.
    const CLetColumn* Find(const std::string& name) const;

    // All values as maps for a host to read and write; they stay the values themselves until this
    // object is assigned to or destroyed, and cost what maps cost.
    Positions& HostPositions();
    // A copy of all values.
    Positions ToPositions() const;
    void Clear();

private:
    void FollowHost() const;

    mutable std::map<std::string, CLetColumn> m_columns;
    std::unique_ptr<Positions> m_host;
};
