// Cells of columns that end where their headers do.
//
// A cell goes from the right edge of the header before to that of its own header. A token across
// one of the edges belongs to the column in which it begins.
#include "tzparser/table/tablerow.h"

using namespace TableText;

void CTableRow::StartRight(std::size_t column) {
    m_start = 0;
    if (column == 0) return;
    const auto anchor = RightEdge(column - 1);
    m_start = anchor;
    if (anchor <= 0 || Size(m_line) <= anchor || IsBoundary(m_line, anchor - 1) ||
        IsBoundary(m_line, anchor))
        return;
    m_start = FirstOf(m_line, Spaces, anchor);
    if (m_start == None && Size(m_next) > anchor) GoOnInNext(anchor);
}

TableText::Position CTableRow::LengthRight(std::size_t column) {
    if (IsLast(column)) return Rest;
    const auto edge = RightEdge(column);
    if (m_start > Column(column)) return LengthRightShifted(column, edge - m_start);
    const bool isAcrossEdge = edge >= 0 && Size(m_line) > edge && !IsBoundary(m_line, edge);
    const auto end = isAcrossEdge ? EndOfToken(m_line, edge) : None;
    return end > Column(column + 1) ? end - Column(column) : edge - m_start;
}

// The cell starts behind its header's begin, so a value before it reached into the column. Where
// what is left reaches the next header, the cell is one token.
TableText::Position CTableRow::LengthRightShifted(std::size_t column, Position length) {
    m_start = FirstNotOf(m_line, Spaces, m_start);
    const auto end = EndOfToken(m_line, m_start);
    const auto next = Column(column + 1);
    return end > next || m_start + length >= next ? end - m_start : length;
}
