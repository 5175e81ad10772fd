// Cells in line order. A text is a place in the text that is being parsed, or one behind the other
// with those that aren't in it. A cell that comes out of order is appended and merged into its
// place when the column is next read: the cost is that of the cells behind its place, so filling
// gaps near the end costs little, however much stands before.
#include "tzparser/text/letcolumn.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <limits>
#include <utility>

namespace {

constexpr std::size_t MaxTexts = std::numeric_limits<std::uint32_t>::max();
constexpr std::int64_t MaxColumn = std::numeric_limits<std::int32_t>::max();

bool LiesOnLine(const CAppTextLet& let, std::int32_t line) {
    return let.beginRow == line && let.endRow == line && let.lines.empty() &&
           !let.IsModifyByOutSide() &&
           std::int64_t{let.endCol} - let.beginCol == static_cast<std::int64_t>(let.text.size());
}

bool LiesIn(std::string_view piece, const std::string& text) {
    const std::less_equal<> isBefore;
    return isBefore(text.data(), piece.data()) &&
           isBefore(piece.data() + piece.size(), text.data() + text.size());
}

}  // namespace

CLetColumn::CLetColumn(const CLetColumn& other) {
    *this = other;
}

// What isn't settled isn't shared, as the next reader of either would write it.
CLetColumn& CLetColumn::operator=(const CLetColumn& other) {
    if (this == &other) return *this;
    m_map = nullptr;
    if (other.m_map == nullptr) {
        m_body = other.m_body;
        if (m_body->cells.size() != m_body->settled) m_body.Edit();
        return *this;
    }
    m_body = {};
    for (const auto& [line, let] : *other.m_map) Set(line, let);
    return *this;
}

void CLetColumn::ReadFrom(const std::shared_ptr<const std::string>& text) {
    if (m_map != nullptr || m_body->source == text) return;
    LeaveSourceText();
    if (text && text->size() <= MaxTexts - m_body->texts.size()) {
        auto& body = m_body.Edit();
        const auto shift = static_cast<std::uint32_t>(text->size());
        for (auto& cell : body.cells) cell.text += shift;
        body.source = text;
    }
}

// Texts of the source are put behind the others; then all move to where there is no source.
void CLetColumn::LeaveSourceText() {
    if (!m_body->source) return;
    auto& body = m_body.Edit();
    const auto source = std::exchange(body.source, nullptr);
    const auto sourceSize = static_cast<std::uint32_t>(source->size());
    for (auto& cell : body.cells) {
        if (cell.length == OddLength || cell.length == 0) continue;
        if (cell.text >= sourceSize) {
            cell.text -= sourceSize;
            continue;
        }
        const auto text =
            std::string_view(*source).substr(cell.text, static_cast<std::size_t>(cell.length));
        if (body.AddText(text, cell)) continue;
        body.odd.emplace_back(cell.line, cell.begin, cell.line, cell.begin + cell.length,
                              std::string(text));
        cell.begin = static_cast<std::int32_t>(body.odd.size()) - 1;
        cell.length = OddLength;
    }
}

void CLetColumn::Reserve(std::size_t count) {
    if (m_map == nullptr && count > 1) m_body.Edit().cells.reserve(count);
}

std::size_t CLetColumn::Count() const {
    return m_map != nullptr ? m_map->size() : Settled().cells.size();
}

bool CLetColumn::Body::AddText(std::string_view text, Cell& cell) {
    if (static_cast<std::int64_t>(text.size()) > MaxColumn - std::max(cell.begin, 0)) return false;
    cell.length = static_cast<std::int32_t>(text.size());
    if (source && LiesIn(text, *source)) {
        cell.text = static_cast<std::uint32_t>(text.data() - source->data());
        return true;
    }
    if (text.size() > MaxTexts - SourceSize() - texts.size()) return false;
    cell.text = static_cast<std::uint32_t>(SourceSize() + texts.size());
    texts.append(text);
    return true;
}

void CLetColumn::Set(std::int32_t line, std::int32_t begin, std::string_view text) {
    Put(line, begin, text);
}

bool CLetColumn::Append(std::int32_t line, std::int32_t begin, std::string_view text) {
    if (m_map == nullptr) Settled();
    return Put(line, begin, text);
}

// True when the values were settled and the line is behind all of them.
bool CLetColumn::Put(std::int32_t line, std::int32_t begin, std::string_view text) {
    Cell cell{line, begin, 0, 0};
    if (m_map == nullptr) {
        auto& body = m_body.Edit();
        if (body.AddText(text, cell)) return body.Place(cell);
    }
    const bool isNew = LastLine() < line;
    const auto end =
        std::min(MaxColumn, std::int64_t{begin} + static_cast<std::int64_t>(text.size()));
    Set(line, CAppTextLet(line, begin, line, static_cast<std::int32_t>(end), std::string(text)));
    return isNew;
}

void CLetColumn::Set(std::int32_t line, const CAppTextLet& let) {
    if (m_map != nullptr) {
        m_map->insert_or_assign(m_map->end(), line, let);
        return;
    }
    auto& body = m_body.Edit();
    Cell cell{line, let.beginCol, 0, 0};
    if (!LiesOnLine(let, line) || !body.AddText(let.text, cell)) {
        cell.begin = static_cast<std::int32_t>(body.odd.size());
        cell.text = 0;
        cell.length = OddLength;
        body.odd.push_back(let);
    }
    body.Place(cell);
}

bool CLetColumn::Body::Place(const Cell& cell) {
    const bool isInOrder = cells.size() == settled;
    if (isInOrder && !cells.empty() && cells.back().line == cell.line) {
        cells.back() = cell;
        return false;
    }
    const bool isBehind = cells.empty() || cells.back().line < cell.line;
    cells.push_back(cell);
    if (!isInOrder || !isBehind) return false;
    ++settled;
    return true;
}

void CLetColumn::Body::Settle() {
    const auto byLine = [](const Cell& left, const Cell& right) { return left.line < right.line; };
    const auto middle = cells.begin() + static_cast<std::ptrdiff_t>(settled);
    std::stable_sort(middle, cells.end(), byLine);
    const auto from = std::lower_bound(cells.begin(), middle, *middle, byLine);
    std::inplace_merge(from, middle, cells.end(), byLine);
    auto kept = from;
    for (auto at = from; at != cells.end(); ++at) {
        if (kept != from && std::prev(kept)->line == at->line) --kept;
        *kept++ = *at;
    }
    cells.erase(kept, cells.end());
    settled = cells.size();
}

const CLetColumn::Body& CLetColumn::Settled() const {
    if (m_body->cells.size() != m_body->settled) m_body.Edit().Settle();
    return *m_body;
}

void CLetColumn::Erase(const std::vector<std::int32_t>& lines) {
    if (lines.empty() || IsEmpty()) return;
    if (m_map != nullptr) {
        for (const auto line : lines) m_map->erase(line);
        return;
    }
    auto& body = m_body.Edit();
    const auto first = body.cells.begin() + (LowerBound(body, lines.front()) - body.cells.cbegin());
    auto wanted = lines.begin();
    const auto kept = std::remove_if(first, body.cells.end(), [&](const Cell& cell) {
        while (wanted != lines.end() && *wanted < cell.line) ++wanted;
        return wanted != lines.end() && *wanted == cell.line;
    });
    body.cells.erase(kept, body.cells.end());
    body.settled = body.cells.size();
}

void CLetColumn::Clear() {
    if (m_map != nullptr) m_map->clear();
    m_body = {};
}

CLetColumn::Cells::const_iterator CLetColumn::LowerBound(const Body& body, std::int32_t line) {
    return std::lower_bound(body.cells.cbegin(), body.cells.cend(), line,
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
    const auto& body = Settled();
    const auto at = LowerBound(body, from);
    return at != body.cells.cend() ? at->line : NoLine;
}

bool CLetColumn::HasText(std::int32_t line) const {
    if (m_map != nullptr) {
        const auto at = m_map->find(line);
        return at != m_map->end() && !at->second.text.empty() && !at->second.IsEmpty();
    }
    const auto& body = Settled();
    const auto at = LowerBound(body, line);
    if (at == body.cells.cend() || at->line != line) return false;
    if (at->length != OddLength) return at->length > 0;
    const auto& let = body.odd[static_cast<std::size_t>(at->begin)];
    return !let.text.empty() && !let.IsEmpty();
}

bool CLetColumn::HasEmptySpan() const {
    if (m_map != nullptr)
        return std::any_of(m_map->begin(), m_map->end(),
                           [](const auto& entry) { return entry.second.IsEmpty(); });
    const auto& body = Settled();
    return std::any_of(body.cells.begin(), body.cells.end(), [&body](const Cell& cell) {
        return cell.length == OddLength ? body.odd[static_cast<std::size_t>(cell.begin)].IsEmpty()
                                        : cell.length == 0;
    });
}

std::int32_t CLetColumn::LastLine() const {
    if (m_map != nullptr) return m_map->empty() ? NoLineYet : m_map->rbegin()->first;
    const auto& body = Settled();
    return body.cells.empty() ? NoLineYet : body.cells.back().line;
}

std::int32_t CLetColumn::LastLineBefore(std::int32_t line) const {
    if (m_map != nullptr) {
        const auto at = m_map->lower_bound(line);
        return at != m_map->begin() ? std::prev(at)->first : NoLineYet;
    }
    const auto& body = Settled();
    const auto at = LowerBound(body, line);
    return at != body.cells.cbegin() ? std::prev(at)->line : NoLineYet;
}

std::vector<CAppTextLet> CLetColumn::Lets() const {
    std::vector<CAppTextLet> lets;
    lets.reserve(Count());
    if (m_map != nullptr)
        for (const auto& entry : *m_map) lets.push_back(entry.second);
    else
        for (const auto& cell : m_body->cells) lets.push_back(m_body->Let(cell));
    return lets;
}

std::vector<std::int32_t> CLetColumn::Lines() const {
    std::vector<std::int32_t> lines;
    lines.reserve(Count());
    if (m_map != nullptr)
        for (const auto& entry : *m_map) lines.push_back(entry.first);
    else
        for (const auto& cell : m_body->cells) lines.push_back(cell.line);
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
    const auto& body = Settled();
    const auto at = LowerBound(body, line);
    return at != body.cells.cend() && at->line == line ? body.Let(*at) : CAppTextLet();
}

CAppTextLet CLetColumn::AtIndex(std::size_t index) const {
    if (index >= Count()) return {};
    if (m_map != nullptr)
        return std::next(m_map->begin(), static_cast<std::ptrdiff_t>(index))->second;
    return m_body->Let(m_body->cells[index]);
}

std::string_view CLetColumn::TextAtIndex(std::size_t index) const {
    if (index >= Count()) return {};
    if (m_map != nullptr)
        return std::next(m_map->begin(), static_cast<std::ptrdiff_t>(index))->second.text;
    return m_body->Text(m_body->cells[index]);
}

std::size_t CLetColumn::TextBytes() const {
    std::size_t bytes = 0;
    if (m_map != nullptr)
        for (const auto& entry : *m_map) bytes += entry.second.text.size();
    else
        for (const auto& cell : Settled().cells) bytes += m_body->Text(cell).size();
    return bytes;
}

void CLetColumn::Follow(Map* map) {
    if (map == m_map) return;
    m_body = {};
    m_map = map;
}

std::string_view CLetColumn::Body::Text(const Cell& cell) const {
    if (cell.length == OddLength) return odd[static_cast<std::size_t>(cell.begin)].text;
    if (cell.length == 0) return {};
    const auto length = static_cast<std::size_t>(cell.length);
    const auto sourceSize = SourceSize();
    return cell.text < sourceSize ? std::string_view(*source).substr(cell.text, length)
                                  : std::string_view(texts).substr(cell.text - sourceSize, length);
}

CAppTextLet CLetColumn::Body::Let(const Cell& cell) const {
    if (cell.length == OddLength) return odd[static_cast<std::size_t>(cell.begin)];
    return CAppTextLet(cell.line, cell.begin, cell.line, cell.begin + cell.length,
                       std::string(Text(cell)));
}
