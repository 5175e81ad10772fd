#pragma once

#include "host/runtime/tzexport.h"
#include "tzparser/text/apptextlet.h"

#include <map>
#include <string>
#include <vector>

// CTableValues holds the cells of a table rule over all its runs, and takes out the lines without
// any text.
//
//     CTableValues values;
//     auto& column = values.Column("$port");                      // once a run
//     values.Store(column, 7, CAppTextLet(7, 0, 7, 5, "Gi0/1"));  // once a cell
//     values.Store("$port", 9, CAppTextLet(9, 0, 9, 0, ""));
//     values.RemoveEmptyRows();                                   // line 9 goes
//
// A run costs what it stores, however much is stored already. One thread at a time uses an object.
class TZPARSER_API CTableValues {
public:
    // Variable name with "$", line, cell.
    using Cells = std::map<int, CAppTextLet>;
    using VariablePositions = std::map<std::string, Cells>;

    const VariablePositions& Positions() const { return m_positions; }
    // The map for a host to read and write, now or later: from now on all lines are looked at.
    VariablePositions& HostPositions();

    // The cells of a variable, an empty map at first; valid until Clear, or until a host takes the
    // variable out.
    Cells& Column(const std::string& name) { return m_positions[name]; }
    // Stores a cell in the place of one that stood there. Ascending lines are stored in constant
    // time.
    void Store(Cells& column, int line, CAppTextLet&& let);
    void Store(const std::string& name, int line, CAppTextLet&& let);

    // Takes out of all variables each line without a cell that has a text and a span. Variables
    // stay, with no cell if need be.
    void RemoveEmptyRows();
    void Clear();

private:
    bool HasText(int line) const;
    void RemoveRow(int line);
    std::vector<int> AllLines() const;

    VariablePositions m_positions;
    std::vector<int> m_unchecked;  // lines stored to since they were last looked at
    bool m_isHosted = false;
};
