// Once a host has asked for the maps, they hold the values and the columns work on them. As the
// host may take names out and put others in at any time, the columns follow the names at every
// access.
#include "tzparser/text/letcolumns.h"

#include <iterator>

CLetColumns::CLetColumns(const CLetColumns& other) {
    *this = other;
}

CLetColumns& CLetColumns::operator=(const CLetColumns& other) {
    if (this == &other) return *this;
    m_columns.clear();
    m_host.reset();
    if (!other.m_host) {
        m_columns = other.m_columns;
        return *this;
    }
    for (const auto& [name, values] : *other.m_host) {
        auto& column = m_columns[name];
        for (const auto& [line, let] : values) column.Set(line, let);
    }
    return *this;
}

const std::map<std::string, CLetColumn>& CLetColumns::All() const {
    FollowHost();
    return m_columns;
}

std::map<std::string, CLetColumn>& CLetColumns::All() {
    FollowHost();
    return m_columns;
}

CLetColumn& CLetColumns::Column(const std::string& name) {
    if (m_host) m_host->try_emplace(name);
    return All()[name];
}

const CLetColumn* CLetColumns::Find(const std::string& name) const {
    const auto& columns = All();
    const auto at = columns.find(name);
    return at != columns.end() ? &at->second : nullptr;
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
    m_columns.clear();
    if (m_host) m_host->clear();
}

void CLetColumns::FollowHost() const {
    if (!m_host) return;
    for (auto at = m_columns.begin(); at != m_columns.end();)
        at = m_host->count(at->first) == 0 ? m_columns.erase(at) : std::next(at);
    for (auto& [name, values] : *m_host) m_columns[name].Follow(&values);
}
