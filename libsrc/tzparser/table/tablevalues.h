#pragma once

#include "tzparser/text/letcolumns.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// CTableValues holds the cells of a table rule over all its runs, and takes out the lines without
// any text.
//
//     CTableValues values;
//     auto& column = values.Column("$port");                      // once a run
//     values.Store(column, 7, 0, "Gi0/1");                        // once a cell
//     values.Store("$port", 9, CAppTextLet(9, 0, 9, 0, ""));
//     values.RemoveEmptyRows();                                   // line 9 goes
//
// A run costs what it stores, however much is stored already. One thread at a time uses an object.
class TZPARSER_API CTableValues {
public:
    // Variable name with "$", then the cells by line.
    const CLetColumns& Columns() const { return m_columns; }
    // The maps for a host to read and write, now or later: from now on all lines are looked at.
    CLetColumns::Positions& HostPositions();
    bool IsHosted() const { return m_isHosted; }

    // The text whose lines are going to be cut; see CLetColumns::ReadFrom.
    void ReadFrom(const std::shared_ptr<const std::string>& text) { m_columns.ReadFrom(text); }
    // The cells of a variable, none at first; valid until Clear, or until a host takes the variable
    // out.
    CLetColumn& Column(const std::string& name) { return m_columns.Column(name); }
    // The same by a number that the caller goes by; see CLetColumns::ColumnAt.
    CLetColumn& ColumnAt(std::size_t slot, const std::string& name) {
        return m_columns.ColumnAt(slot, name);
    }
    void ForgetSlots() { m_columns.ForgetSlots(); }
    // Stores a cell in the place of one that stood there.
    void Store(CLetColumn& column, std::int32_t line, std::int32_t begin, std::string_view text);
    void Store(const std::string& name, std::int32_t line, const CAppTextLet& let);

    // Takes out of all variables each line without a cell that has a text and a span. Variables
    // stay, with no cell if need be.
    void RemoveEmptyRows();
    void Clear();

private:
    static constexpr std::int32_t NoLine = -1;

    bool HasText(std::int32_t line) const;
    std::vector<std::int32_t> AllLines() const;

    CLetColumns m_columns;
    // Lines that may be without text: those stored to without one since they were last looked at.
    std::vector<std::int32_t> m_unchecked;
    std::int32_t m_lineWithText = NoLine;  // the last line that a text was stored to
    bool m_isHosted = false;
};
