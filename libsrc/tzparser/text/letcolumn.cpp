// Cells in line order, their texts one behind the other in one string. A cell that comes out of
// order is appended and merged into its place when the column is next read: the cost is that of the
// cells behind its place, so filling gaps near the end costs little, however much stands before.
#include "tzparser/text/letcolumn.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace {

constexpr std::size_t MaxTexts = std::numeric_limits<std::uint32_t>::max();
constexpr std::int64_t MaxColumn = std::numeric_limits<std::int32_t>::max();

bool LiesOnLine(const CAppTextLet& let, std::int32_t line) {
    return let.beginRow == line && let.endRow == line && let.lines.empty() &&
           std::int64_t{let.endCol} - let.beginCol == static_cast<std::int64_t>(let.text.size());
}

}  // namespace

std::size_t CLetColumn::Count() const {
    if (m_map != nullptr) return m_map->size();
    Settle();
    return m_cells.size();
}

bool CLetColumn::AppendText(std::string_view text, Cell& cell) {
    if (text.size() > MaxTexts - m_texts.size() ||
        static_cast<std::int64_t>(text.size()) > MaxColumn - std::max(cell.begin, 0))
        return false;
    cell.text = static_cast<std::uint32_t>(m_texts.size());
    cell.length = static_cast<std::int32_t>(text.size());
    m_texts.append(text);
    return true;
}

void CLetColumn::Set(std::int32_t line, std::int32_t begin, std::string_view text) {
    Cell cell{line, begin, 0, 0};
    if (m_map == nullptr && AppendText(text, cell)) {
        Place(cell);
        return;
    }
    const auto end =
        std::min(MaxColumn, std::int64_t{begin} + static_cast<std::int64_t>(text.size()));
    Set(line, CAppTextLet(line, begin, line, static_cast<std::int32_t>(end), std::string(text)));
}

void CLetColumn::Set(std::int32_t line, const CAppTextLet& let) {
    if (m_map != nullptr) {
        m_map->insert_or_assign(m_map->end(), line, let);
        return;
    }
    Cell cell{line, let.beginCol, 0, 0};
    if (!LiesOnLine(let, line) || !AppendText(let.text, cell)) {
        cell.begin = static_cast<std::int32_t>(m_odd.size());
        cell.length = OddLength;
        m_odd.push_back(let);
    }
    Place(cell);
}

void CLetColumn::Place(const Cell& cell) {
    const bool isInOrder = m_cells.size() == m_settled;
    if (isInOrder && !m_cells.empty() && m_cells.back().line == cell.line) {
        m_cells.back() = cell;
        return;
    }
    const bool isBehind = m_cells.empty() || m_cells.back().line < cell.line;
    m_cells.push_back(cell);
    if (isInOrder && isBehind) ++m_settled;
}

void CLetColumn::Settle() const {
    if (m_cells.size() == m_settled) return;
    const auto byLine = [](const Cell& left, const Cell& right) { return left.line < right.line; };
    const auto settled = m_cells.begin() + static_cast<std::ptrdiff_t>(m_settled);
    std::stable_sort(settled, m_cells.end(), byLine);
    const auto from = std::lower_bound(m_cells.begin(), settled, *settled, byLine);
    std::inplace_merge(from, settled, m_cells.end(), byLine);
    auto kept = from;
    for (auto at = from; at != m_cells.end(); ++at) {
        if (kept != from && std::prev(kept)->line == at->line) --kept;
        *kept++ = *at;
    }
    m_cells.erase(kept, m_cells.end());
    m_settled = m_cells.size();
}

void CLetColumn::Erase(const std::vector<std::int32_t>& lines) {
    if (lines.empty()) return;
    if (m_map != nullptr) {
        for (const auto line : lines) m_map->erase(line);
        return;
    }
    const auto first = m_cells.begin() + (LowerBound(lines.front()) - m_cells.cbegin());
    auto wanted = lines.begin();
    const auto kept = std::remove_if(first, m_cells.end(), [&](const Cell& cell) {
        while (wanted != lines.end() && *wanted < cell.line) ++wanted;
        return wanted != lines.end() && *wanted == cell.line;
    });
    m_cells.erase(kept, m_cells.end());
    m_settled = m_cells.size();
}

void CLetColumn::Clear() {
    if (m_map != nullptr) m_map->clear();
    m_cells.clear();
    m_settled = 0;
    m_texts.clear();
    m_odd.clear();
}

CLetColumn::Cells::const_iterator CLetColumn::LowerBound(std::int32_t line) const {
    Settle();
    return std::lower_bound(m_cells.cbegin(), m_cells.cend(), line,
                            [](const Cell& cell, std::int32_t value) { return cell.line < value; });
}

bool CLetColumn::Has(std::int32_t line) const {
    return FirstLine(line) == line && line != NoLine;
}

std::int32_t CLetColumn::FirstLine(std::int32_t from) const {
    if (m_map != nullptr) {
        const auto at = m_map->lower_bound(from);
        return at != m_map->end() ? at->first : NoLine;
    }
    const auto at = LowerBound(from);
    return at != m_cells.cend() ? at->line : NoLine;
}

bool CLetColumn::HasText(std::int32_t line) const {
    if (m_map != nullptr) {
        const auto at = m_map->find(line);
        return at != m_map->end() && !at->second.text.empty() && !at->second.IsEmpty();
    }
    const auto at = LowerBound(line);
    if (at == m_cells.cend() || at->line != line) return false;
    if (at->length != OddLength) return at->length > 0;
    const auto& let = m_odd[static_cast<std::size_t>(at->begin)];
    return !let.text.empty() && !let.IsEmpty();
}

bool CLetColumn::HasEmptySpan() const {
    bool found = false;
    ForEach([&found](std::int32_t, const CAppTextLet& let) { found = found || let.IsEmpty(); });
    return found;
}

std::int32_t CLetColumn::LastLine() const {
    if (IsEmpty()) return NoLineYet;
    return m_map != nullptr ? m_map->rbegin()->first : m_cells.back().line;
}

std::int32_t CLetColumn::LastLineBefore(std::int32_t line) const {
    if (m_map != nullptr) {
        const auto at = m_map->lower_bound(line);
        return at != m_map->begin() ? std::prev(at)->first : NoLineYet;
    }
    const auto at = LowerBound(line);
    return at != m_cells.cbegin() ? std::prev(at)->line : NoLineYet;
}

std::vector<CAppTextLet> CLetColumn::Lets() const {
    std::vector<CAppTextLet> lets;
    lets.reserve(Count());
    if (m_map != nullptr)
        for (const auto& entry : *m_map) lets.push_back(entry.second);
    else
        for (const auto& cell : m_cells) lets.push_back(LetOf(cell));
    return lets;
}

std::vector<std::int32_t> CLetColumn::Lines() const {
    std::vector<std::int32_t> lines;
    lines.reserve(Count());
    if (m_map != nullptr)
        for (const auto& entry : *m_map) lines.push_back(entry.first);
    else
        for (const auto& cell : m_cells) lines.push_back(cell.line);
    return lines;
}

CLetColumn::Map CLetColumn::ToMap() const {
    Map map;
    ForEach([&map](std::int32_t line, const CAppTextLet& let) {
        map.emplace_hint(map.end(), line, let);
    });
    return map;
}

CAppTextLet CLetColumn::At(std::int32_t line) const {
    if (m_map != nullptr) {
        const auto at = m_map->find(line);
        return at != m_map->end() ? at->second : CAppTextLet();
    }
    const auto at = LowerBound(line);
    return at != m_cells.cend() && at->line == line ? LetOf(*at) : CAppTextLet();
}

CAppTextLet CLetColumn::AtIndex(std::size_t index) const {
    if (index >= Count()) return {};
    if (m_map != nullptr)
        return std::next(m_map->begin(), static_cast<std::ptrdiff_t>(index))->second;
    return LetOf(m_cells[index]);
}

void CLetColumn::Follow(Map* map) {
    if (map == m_map) return;
    m_map = nullptr;
    Clear();
    m_map = map;
}

CAppTextLet CLetColumn::LetOf(const Cell& cell) const {
    if (cell.length == OddLength) return m_odd[static_cast<std::size_t>(cell.begin)];
    return CAppTextLet(cell.line, cell.begin, cell.line, cell.begin + cell.length,
                       m_texts.substr(cell.text, static_cast<std::size_t>(cell.length)));
}
