#include "tzparser/text/letlist.h"

#include <iterator>
#include <utility>

CLetList::CLetList(const CLetColumn& column, std::vector<std::uint32_t> picks)
    : m_picks(std::move(picks)), m_isPicked(true) {
    if (!m_picks.empty()) m_column = column;
}

void CLetList::Append(CLetList other) {
    if (IsEmpty()) {
        *this = std::move(other);
        return;
    }
    auto& lets = Lets();
    auto others = other.TakeLets();
    lets.insert(lets.end(), std::make_move_iterator(others.begin()),
                std::make_move_iterator(others.end()));
}

// Behind the column's end for an index behind this list's.
std::size_t CLetList::IndexOf(std::size_t index) const {
    if (!m_isPicked) return index;
    return index < m_picks.size() ? m_picks[index] : m_column.Count();
}

CAppTextLet CLetList::Copy(std::size_t index) const {
    if (m_lets.empty()) return m_column.AtIndex(IndexOf(index));
    return index < m_lets.size() ? m_lets[index] : CAppTextLet();
}

void CLetList::MakeLets() const {
    if (m_column.IsEmpty()) return;
    if (m_isPicked) {
        m_lets.reserve(m_picks.size());
        for (const auto index : m_picks) m_lets.push_back(m_column.AtIndex(index));
    } else {
        m_lets = m_column.Lets();
    }
    LeaveColumn();
}

void CLetList::LeaveColumn() const {
    m_column = {};
    m_picks = {};
    m_isPicked = false;
}

CLetList::Values& CLetList::Lets() {
    MakeLets();
    return m_lets;
}

const CLetList::Values& CLetList::Lets() const {
    MakeLets();
    return m_lets;
}

CLetList::Values CLetList::TakeLets() {
    MakeLets();
    return std::exchange(m_lets, {});
}

void CLetList::Clear() {
    m_lets.clear();
    LeaveColumn();
}

std::size_t CLetList::Bytes() const {
    constexpr std::size_t cell = 16;
    return m_picks.size() * sizeof(m_picks.front()) + m_column.Count() * cell +
           m_column.TextBytes();
}
