#include "tzparser/text/letlist.h"

#include <utility>

std::string_view CLetList::Text(std::size_t index) const {
    if (m_lets.empty()) return m_column.TextAtIndex(index);
    return index < m_lets.size() ? std::string_view(m_lets[index].text) : std::string_view();
}

CAppTextLet CLetList::Copy(std::size_t index) const {
    if (m_lets.empty()) return m_column.AtIndex(index);
    return index < m_lets.size() ? m_lets[index] : CAppTextLet();
}

void CLetList::MakeLets() const {
    if (m_column.IsEmpty()) return;
    m_lets = m_column.Lets();
    m_column = {};
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
    m_column = {};
}

std::size_t CLetList::Bytes() const {
    return m_column.Count() * sizeof(std::int64_t) * 2 + m_column.TextBytes();
}
