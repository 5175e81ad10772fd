#include "tzparser/table/tablevalues.h"

#include <algorithm>
#include <utility>

CLetColumns::Positions& CTableValues::HostPositions() {
    m_isHosted = true;
    return m_columns.HostPositions();
}

// The cells of a row come one after the other: one with a text settles the row, unless it takes the
// place of a cell whose text may have been the row's only one.
void CTableValues::Store(CLetColumn& column, std::int32_t line, std::int32_t begin,
                         std::string_view text) {
    const bool isNew = column.Append(line, begin, text);
    if (!isNew || (text.empty() && m_lineWithText != line)) {
        if (m_unchecked.empty() || m_unchecked.back() != line) m_unchecked.push_back(line);
        return;
    }
    if (text.empty()) return;
    m_lineWithText = line;
    if (!m_unchecked.empty() && m_unchecked.back() == line) m_unchecked.pop_back();
}

void CTableValues::Store(const std::string& name, std::int32_t line, const CAppTextLet& let) {
    m_columns.Column(name).Set(line, let);
    if (m_unchecked.empty() || m_unchecked.back() != line) m_unchecked.push_back(line);
}

// Lines that no one has stored to since they were last looked at have their text still.
void CTableValues::RemoveEmptyRows() {
    auto lines = m_isHosted ? AllLines() : std::exchange(m_unchecked, {});
    m_unchecked.clear();
    m_lineWithText = NoLine;
    std::sort(lines.begin(), lines.end());
    lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
    const auto stays = [this](std::int32_t line) { return HasText(line); };
    lines.erase(std::remove_if(lines.begin(), lines.end(), stays), lines.end());
    for (auto& column : m_columns.All()) column.second.Erase(lines);
}

bool CTableValues::HasText(std::int32_t line) const {
    const auto& columns = m_columns.All();
    return std::any_of(columns.begin(), columns.end(),
                       [line](const auto& column) { return column.second.HasText(line); });
}

std::vector<std::int32_t> CTableValues::AllLines() const {
    std::vector<std::int32_t> all;
    for (const auto& column : m_columns.All()) {
        const auto lines = column.second.Lines();
        all.insert(all.end(), lines.begin(), lines.end());
    }
    return all;
}

void CTableValues::Clear() {
    m_columns.Clear();
    m_unchecked.clear();
    m_lineWithText = NoLine;
}
