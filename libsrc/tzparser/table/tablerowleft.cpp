// Cells of columns that begin at known places.
//
// A cell goes from its column to the next, unless a token lies across one of the two edges. Across
// the left edge: the token goes to the cell when the blank before it lies behind the start of the
// column before, otherwise it stays with the column before when it ends within this one. Across the
// right edge: the token goes to the next column, unless it is the cell's only one.
#include "tzparser/table/tablerow.h"

using namespace TableText;

void CTableRow::StartLeft(std::size_t column) {
    m_nextColumn = IsLast(column) ? Size(m_line) : Column(column + 1);
    m_start = Column(column);
    const bool isAcrossEdge =
        m_start > 0 && Size(m_line) > m_start && !IsBoundary(m_line, m_start - 1);
    if (isAcrossEdge) StartAcrossEdge(column);
}

// Column 1 never takes a token from the column before: its values are often the overrun of the
// first column's.
void CTableRow::StartAcrossEdge(std::size_t column) {
    const auto blank = LastOf(m_line, Spaces, m_start - 1);
    if (column == 0 || (column >= 2 && blank > Column(column - 1))) {
        m_start = blank + 1;
        return;
    }
    if (BelongsToColumnBefore(column)) return;
    m_start = FirstOf(m_line, Spaces, blank < 1 ? None : blank - 1);
    if (m_start == None && Size(m_next) > Column(column)) GoOnInNext(Column(column));
}

// The token that lies across the left edge ends before the next column: the cell starts behind it.
bool CTableRow::BelongsToColumnBefore(std::size_t column) {
    const auto end = FirstOf(m_line, Spaces, Column(column));
    if (end == None || end >= m_nextColumn) return false;
    m_start = end;
    return true;
}

TableText::Position CTableRow::LengthLeft(std::size_t column) {
    if (IsLast(column)) return Rest;
    const auto next = Column(column + 1);
    if (Column(column) < 0 || next <= Column(column)) return 0;
    if (m_start != Column(column)) return LengthOfToken();
    if (Size(m_line) <= next || IsBoundary(m_line, next - 1)) return next - Column(column);
    return LengthAcrossEdge(column);
}

// A cell that doesn't start at its column is one token.
TableText::Position CTableRow::LengthOfToken() {
    m_start = FirstNotOf(m_line, Spaces, m_start);
    return EndOfToken(m_line, m_start) - m_start;
}

TableText::Position CTableRow::LengthAcrossEdge(std::size_t column) const {
    const auto end = EndOfToken(m_line, Column(column));
    if (end >= Column(column + 1)) return end - Column(column);
    const auto blank = LastOf(m_line, Spaces, m_nextColumn);
    if (blank != None && blank >= end) return blank - m_start;
    return Column(column + 1) - Column(column);
}
