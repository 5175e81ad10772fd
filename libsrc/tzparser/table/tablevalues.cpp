#include "tzparser/table/tablevalues.h"

#include <algorithm>
#include <utility>

CTableValues::VariablePositions& CTableValues::HostPositions() {
    m_isHosted = true;
    return m_positions;
}

void CTableValues::Store(Cells& column, int line, CAppTextLet&& let) {
    column.insert_or_assign(column.end(), line, std::move(let));
    if (m_unchecked.empty() || m_unchecked.back() != line) m_unchecked.push_back(line);
}

void CTableValues::Store(const std::string& name, int line, CAppTextLet&& let) {
    Store(Column(name), line, std::move(let));
}

// Lines that no one has stored to since they were last looked at have their text still.
void CTableValues::RemoveEmptyRows() {
    const auto lines = m_isHosted ? AllLines() : std::exchange(m_unchecked, {});
    m_unchecked.clear();
    for (const int line : lines)
        if (!HasText(line)) RemoveRow(line);
}

bool CTableValues::HasText(int line) const {
    return std::any_of(m_positions.begin(), m_positions.end(), [line](const auto& variable) {
        const auto at = variable.second.find(line);
        return at != variable.second.end() && !at->second.text.empty() && !at->second.IsEmpty();
    });
}

void CTableValues::RemoveRow(int line) {
    for (auto& variable : m_positions) variable.second.erase(line);
}

std::vector<int> CTableValues::AllLines() const {
    std::vector<int> lines;
    for (const auto& variable : m_positions)
        for (const auto& cell : variable.second) lines.push_back(cell.first);
    std::sort(lines.begin(), lines.end());
    lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
    return lines;
}

void CTableValues::Clear() {
    m_positions.clear();
    m_unchecked.clear();
}
