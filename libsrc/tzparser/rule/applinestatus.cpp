#include "tzparser/rule/applinestatus.h"

#include <algorithm>
#include <cstddef>

CAppLineStatus::CAppLineStatus(const AppLineStatus& bits)
    : m_count(static_cast<int>(bits.size())),
      m_high(m_count),
      m_bits(std::make_shared<AppLineStatus>(bits)) {}

CAppLineStatus::CAppLineStatus(const CAppLineStatus& other) {
    *this = other;
}

// Bits that a host may write are never shared.
CAppLineStatus& CAppLineStatus::operator=(const CAppLineStatus& other) {
    if (this == &other) return *this;
    m_count = other.m_count;
    m_low = other.m_low;
    m_high = other.m_high;
    m_origin = other.m_origin;
    m_bits = other.m_isHosted ? std::make_shared<AppLineStatus>(*other.m_bits) : other.m_bits;
    m_isHosted = false;
    return *this;
}

CAppLineStatus CAppLineStatus::AllOpen(int count) {
    CAppLineStatus status;
    status.m_count = count;
    status.m_high = count;
    return status;
}

int CAppLineStatus::NextOpen(int line) const {
    for (line = std::max(line, m_low); line < m_high; ++line)
        if (IsOpen(line)) return line;
    return m_count;
}

int CAppLineStatus::PreviousOpen(int line) const {
    for (line = std::min(line, m_high - 1); line >= m_low; --line)
        if (IsOpen(line)) return line;
    return -1;
}

void CAppLineStatus::Close(int first, int last) {
    first = std::max(first, m_low);
    last = std::min(last, m_high);
    if (first >= last) return;
    if (!m_isHosted && first == m_low) {
        m_low = last;
    } else if (!m_isHosted && last == m_high) {
        m_high = first;
    } else {
        OwnBits();
        m_bits->reset(static_cast<std::size_t>(first - m_origin),
                      static_cast<std::size_t>(last - first));
    }
}

void CAppLineStatus::CloseAllBut(int first, int last) {
    Close(0, first);
    Close(std::max(last, 0), m_count);
}

void CAppLineStatus::Open(int line) {
    if (line < 0 || line >= m_count || IsOpen(line)) return;
    if (line < m_low || line >= m_high) {
        const int low = m_low < m_high ? std::min(line, m_low) : line;
        const int high = m_low < m_high ? std::max(line + 1, m_high) : line + 1;
        m_bits = std::make_shared<AppLineStatus>(BitsOf(low, high));
        m_low = m_origin = low;
        m_high = high;
    }
    OwnBits();
    m_bits->set(static_cast<std::size_t>(line - m_origin));
}

AppLineStatus CAppLineStatus::ToBits() const {
    return BitsOf(0, m_count);
}

AppLineStatus& CAppLineStatus::HostBits() {
    if (!m_isHosted) {
        m_bits = std::make_shared<AppLineStatus>(ToBits());
        m_origin = m_low = 0;
        m_high = m_count;
        m_isHosted = true;
    }
    return *m_bits;
}

AppLineStatus CAppLineStatus::BitsOf(int low, int high) const {
    AppLineStatus bits(static_cast<std::size_t>(high - low));
    for (int line = NextOpen(low); line < high; line = NextOpen(line + 1))
        bits.set(static_cast<std::size_t>(line - low));
    return bits;
}

void CAppLineStatus::OwnBits() {
    if (m_bits && m_bits.use_count() == 1) return;
    m_bits = std::make_shared<AppLineStatus>(BitsOf(m_low, m_high));
    m_origin = m_low;
}
