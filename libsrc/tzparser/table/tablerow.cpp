// A row: what both lines hold, the text of a cell once its start and its length are known, and the
// cells of given numbers of tokens.
//
// Tokens are those of the row's own line; a line that begins or ends in a separator has an empty
// token there, which counts. A row with fewer tokens than all columns together has empty cells.
#include "tzparser/table/tablerow.h"

using namespace TableText;

namespace {

constexpr CharSet Continuations(" \t\r\n\\");

// A backslash at the end says that the row goes on; it goes, with the blanks before it.
std::string_view WithoutContinuation(std::string_view line) {
    const auto visible = TrimRight(line, Blanks);
    if (visible.empty() || visible.back() != '\\') return line;
    return TrimRight(line, Continuations);
}

}  // namespace

bool CTableRow::IsRule(std::string_view line) {
    return FirstNotOf(line, RuleCharacters, 0) == None || FirstNotOf(line, WhiteSpace, 0) == None;
}

void CTableRow::Begin(std::string_view line, std::string_view next) {
    m_line = WithoutContinuation(line);
    m_next = next;
    m_isMerged = false;
    m_start = 0;
    m_tokenIndex = 0;
    m_tokenEnd = 0;
    if (m_grid.align == TableAlign_Tokens) TableText::Cut(m_line, RowSeparators, m_tokens);
}

TableCell CTableRow::Cut(std::size_t column) {
    Position length = Rest;
    switch (m_grid.align) {
        case TableAlign_Left:
        case TableAlign_Fixed:
            StartLeft(column);
            length = LengthLeft(column);
            break;
        case TableAlign_Right:
            StartRight(column);
            length = LengthRight(column);
            break;
        default:
            length = LengthTokens(column);
            break;
    }
    TableCell cell;
    const auto piece = CutText(length);
    cell.text = Trim(piece, WhiteSpace);
    cell.begin = m_start;
    if (m_start < 0) cell.begin = Size(m_line);
    if (!cell.text.empty()) cell.begin = cell.text.data() - m_line.data();
    cell.isOfNextLine = m_isMerged;
    if (m_grid.align == TableAlign_Tokens) m_start = m_tokenEnd;
    return cell;
}

// A line that ends in front of the cell goes on in the next one when that holds nothing before the
// cell. Otherwise the cell is an empty one at the line's end.
std::string_view CTableRow::CutText(Position length) {
    if (m_start < 0) return {};
    if (m_start < Size(m_line)) return Piece(length);
    const bool goesOn =
        !m_isMerged && Size(m_next) > m_start && FirstNotOf(m_next, Spaces, 0) >= m_start;
    if (!goesOn) {
        m_start = Size(m_line);
        return {};
    }
    GoOnInNext(m_start);
    return Piece(length);
}

std::string_view CTableRow::Piece(Position length) const {
    const auto rest = m_line.substr(static_cast<std::size_t>(m_start));
    return length < 0 ? rest : rest.substr(0, static_cast<std::size_t>(length));
}

void CTableRow::GoOnInNext(Position start) {
    m_line = m_next;
    m_isMerged = true;
    m_start = start;
}

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
