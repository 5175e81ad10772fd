// Once a host has asked for the maps, they hold the values and the columns work on them. As the
// host may take names out and put others in at any time, the columns follow the names at every
// access.
#include "tzparser/text/letcolumns.h"

#include <algorithm>
#include <array>
#include <iterator>

CLetColumns::CLetColumns(const CLetColumns& other) {
    *this = other;
}

CLetColumns& CLetColumns::operator=(const CLetColumns& other) {
    if (this == &other) return *this;
    m_slots.clear();
    m_host.reset();
    m_columns = other.All();
    m_source = other.m_source;
    return *this;
}

const CLetColumns::Columns& CLetColumns::All() const {
    FollowHost();
    return m_columns;
}

CLetColumns::Columns& CLetColumns::All() {
    FollowHost();
    return m_columns;
}

CLetColumn& CLetColumns::Column(const std::string& name) {
    if (m_host) m_host->try_emplace(name);
    const auto [at, isNew] = All().try_emplace(name);
    if (isNew) at->second.ReadFrom(m_source);
    return at->second;
}

CLetColumn& CLetColumns::FindSlot(std::size_t slot, const std::string& name) {
    auto& column = Column(name);
    if (slot >= m_slots.size()) m_slots.resize(slot + 1);
    m_slots[slot] = &column;
    return column;
}

const CLetColumn* CLetColumns::Find(std::string_view name) const {
    const auto& columns = All();
    const auto at = columns.find(name);
    return at != columns.end() ? &at->second : nullptr;
}

const CLetColumn* CLetColumns::FindWithDollar(std::string_view name) const {
    if (!name.empty() && name.front() == '$') return Find(name);
    std::array<char, 64> full{'$'};
    if (name.size() >= full.size()) return Find("$" + std::string(name));
    std::copy(name.begin(), name.end(), full.begin() + 1);
    return Find({full.data(), name.size() + 1});
}

void CLetColumns::SetSource(const std::shared_ptr<const std::string>& text) {
    m_source = text;
    for (auto& [name, column] : All()) column.ReadFrom(text);
}

CLetColumns::Positions& CLetColumns::HostPositions() {
    if (!m_host) m_host = std::make_unique<Positions>(ToPositions());
    FollowHost();
    return *m_host;
}

CLetColumns::Positions CLetColumns::ToPositions() const {
    Positions positions;
    for (const auto& [name, column] : All()) positions[name] = column.ToMap();
    return positions;
}

void CLetColumns::Clear() {
    m_slots.clear();
    m_columns.clear();
    if (m_host) m_host->clear();
}

void CLetColumns::FollowHost() const {
    if (!m_host) return;
    for (auto at = m_columns.begin(); at != m_columns.end();)
        at = m_host->count(at->first) == 0 ? m_columns.erase(at) : std::next(at);
    for (auto& [name, values] : *m_host) m_columns[name].Follow(&values);
}
