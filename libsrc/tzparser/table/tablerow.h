#pragma once

#include "tzparser/table/tablelayout.h"
#include "tzparser/table/tabletext.h"

#include <cstddef>
#include <string_view>
#include <vector>

// Where the columns of a table lie.
struct TableGrid {
    int align = TableAlign_Left;
    // Where each column begins, TableText::None for a header without a place; with
    // TableAlign_Tokens how many tokens it takes.
    std::vector<TableText::Position> columns;
    std::vector<TableText::Position> headerLengths;
    TableText::Position tokenSum = 0;  // of all columns
};

// One cell: its text without surrounding white space, where that begins in the line it was cut
// from, and whether that line is the one behind the row's own.
struct TableCell {
    std::string_view text;
    TableText::Position begin = 0;
    bool isOfNextLine = false;
};

// CTableRow cuts the lines of a table into cells, one row after the other.
//
//     CTableRow row(grid);                       // one for many rows: its memory is reused
//     row.Begin("Gi0/1  uplink", "              10");
//     row.Cut(0).text;                           // "Gi0/1"
//     row.Cut(2).text;                           // "10", of the next line
//
// Columns are cut in their order, each once: where a cell ends decides about the one behind it. A
// row whose cells go on in the next line at the right columns takes that line over (IsMerged); it
// is no row of its own then.
//
// A cell is found in three steps: where it starts, how long it is, its text. The steps for columns
// that begin at places are in tablerowleft.cpp, for columns that end under their headers in
// tablerowright.cpp, the rest in tablerow.cpp. Views live as long as the lines; positions
// outside of a line are never read.
class CTableRow {
public:
    explicit CTableRow(const TableGrid& grid) : m_grid(grid) {}

    // Whether a line is no row: nothing but white space, dashes and equal signs.
    static bool IsRule(std::string_view line);

    // Starts a row. `next` is the line behind it; empty when it may not be taken over.
    void Begin(std::string_view line, std::string_view next);
    TableCell Cut(std::size_t column);
    bool IsMerged() const { return m_isMerged; }

private:
    using Position = TableText::Position;
    // To the end of the line, as any length below zero is.
    static constexpr Position Rest = -1;

    bool IsLast(std::size_t column) const { return column + 1 == m_grid.columns.size(); }
    Position Column(std::size_t column) const { return m_grid.columns[column]; }
    Position RightEdge(std::size_t column) const {
        return m_grid.columns[column] + m_grid.headerLengths[column];
    }
    void GoOnInNext(Position start);
    std::string_view Piece(Position length) const;
    std::string_view CutText(Position length);

    void StartLeft(std::size_t column);
    void StartAcrossEdge(std::size_t column);
    bool BelongsToColumnBefore(std::size_t column);
    Position LengthLeft(std::size_t column);
    Position LengthAcrossEdge(std::size_t column) const;
    Position LengthOfToken();

    void StartRight(std::size_t column);
    Position LengthRight(std::size_t column);
    Position LengthRightShifted(std::size_t column, Position length);

    Position LengthTokens(std::size_t column);
    void TakeTokens(Position count);
    bool HasToken(Position index) const;
    std::string_view Token(Position index) const {
        return m_tokens[static_cast<std::size_t>(index)];
    }

    const TableGrid& m_grid;
    std::string_view m_line;
    std::string_view m_next;
    bool m_isMerged = false;
    Position m_start = 0;       // of the cell at hand
    Position m_nextColumn = 0;  // where the column behind it begins, the line's end for the last

    // Tokens of the row's own line, with TableAlign_Tokens.
    std::vector<std::string_view> m_tokens;
    Position m_tokenIndex = 0;  // of the cell's first token
    Position m_tokenEnd = 0;    // where the cell's last token ends
};
