// Cells of given numbers of tokens.
//
// Tokens are those of the row's own line; a line that begins or ends in a separator has an empty
// token there, which counts. A row with fewer tokens than all columns together has empty cells.
#include "tzparser/table/tablerow.h"

using namespace TableText;

TableText::Position CTableRow::LengthTokens(std::size_t column) {
    if (static_cast<Position>(m_tokens.size()) < m_grid.tokenSum) return 0;
    const auto from = HasToken(m_tokenIndex) ? Find(m_line, Token(m_tokenIndex), m_start) : None;
    if (from == None) {
        m_start = m_tokenEnd;
    } else {
        m_start = from;
        TakeTokens(Column(column));
    }
    m_tokenIndex += Column(column);
    if (IsLast(column)) return Rest;
    if (!HasToken(m_tokenIndex)) return Rest;
    return Find(m_line, Token(m_tokenIndex), m_tokenEnd) - m_start;
}

// Puts the end of the cell behind its tokens. The first is taken also by a column of none.
void CTableRow::TakeTokens(Position count) {
    m_tokenEnd = m_start + Size(Token(m_tokenIndex));
    for (Position further = 1; further < count && HasToken(m_tokenIndex + further); ++further) {
        const auto token = Token(m_tokenIndex + further);
        m_tokenEnd = Find(m_line, token, m_tokenEnd) + Size(token);
    }
}

bool CTableRow::HasToken(Position index) const {
    return index >= 0 && index < static_cast<Position>(m_tokens.size());
}
