#pragma once

#include "host/runtime/tzexport.h"

#include <memory>

#include <boost/dynamic_bitset.hpp>

// One open or closed bit per line of the text, in the form that hosts see; a set bit is an open
// line.
using AppLineStatus = boost::dynamic_bitset<unsigned long>;

// CAppLineStatus tells which lines of a text are open to a rule. It costs what was closed, not what
// the text is long: closing everything in front of a line or behind it moves a bound, a copy shares
// its bits, and only single lines closed in between need bits of their own. So a rule may take over
// its parent's status for each of ten thousand paragraphs.
//
//     auto status = CAppLineStatus::AllOpen(100);
//     status.Close(0, 10);                       // lines 0 to 9
//     for (int line = status.NextOpen(0); line < status.Count(); line = status.NextOpen(line + 1))
//
// Lines are 0-based, ranges exclude their end and are cut to the text. One thread at a time; copies
// may go to other threads.
class TZPARSER_API CAppLineStatus {
public:
    CAppLineStatus() = default;
    CAppLineStatus(
        const AppLineStatus& bits);  // a copy; a host may pass its bits wherever this stands
    CAppLineStatus(const CAppLineStatus& other);
    CAppLineStatus(CAppLineStatus&& other) noexcept = default;
    CAppLineStatus& operator=(const CAppLineStatus& other);
    CAppLineStatus& operator=(CAppLineStatus&& other) noexcept = default;
    ~CAppLineStatus() = default;

    static CAppLineStatus AllOpen(int count);

    // How many lines there are, open and closed.
    int Count() const { return m_count; }
    bool IsOpen(int line) const {
        return line >= m_low && line < m_high &&
               (!m_bits || (*m_bits)[static_cast<std::size_t>(line - m_origin)]);
    }
    // The first open line at or behind a line; Count() when there is none.
    int NextOpen(int line) const;
    // The last open line at or in front of a line; -1 when there is none.
    int PreviousOpen(int line) const;
    bool HasOpen() const { return NextOpen(0) < m_count; }

    void Close(int first, int last);
    void CloseAllBut(int first, int last);
    void Open(int line);

    AppLineStatus ToBits() const;
    // The bits as a host reads and writes them, which hold from now on; not to be resized. Valid
    // until this object is assigned to or destroyed.
    AppLineStatus& HostBits();

private:
    AppLineStatus BitsOf(int low, int high) const;
    void OwnBits();

    int m_count = 0;
    // Lines outside of these are closed.
    int m_low = 0;
    int m_high = 0;
    // The status of the line m_origin and of those behind it, up to m_high at least; null when all
    // lines within the bounds are open.
    int m_origin = 0;
    std::shared_ptr<AppLineStatus> m_bits;
    bool m_isHosted = false;  // a host may hold a reference to the bits
};
