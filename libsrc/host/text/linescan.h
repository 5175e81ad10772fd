#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

// CLineScan runs once over a text and stops at each of its line ends: "\r\n", "\n\r", "\r" and "\n"
// ("\n\r" is one line end, as some devices send it). A text with n line ends has n + 1 lines.
//
//     CLineScan scan(text);
//     std::size_t begin = 0;
//     for (; scan.Next(); begin = scan.NextBegin())
//         use(text.substr(begin, scan.LineEnd() - begin));
//     use(text.substr(begin));                            // the line behind the last line end
//
// The next line feed and the next carriage return are each looked for with memchr, and again only
// when they have been passed, so a text without carriage returns is searched for one only once. The
// text has to outlive the scan; nothing is allocated. Lines are bytes, NUL is a byte like others.
class CLineScan {
public:
    explicit CLineScan(std::string_view text) noexcept
        : m_begin(text.data()),
          m_end(m_begin + text.size()),
          m_at(m_begin),
          m_lineFeed(Find(m_begin, '\n')),
          m_carriageReturn(Find(m_begin, '\r')) {}

    // Goes on to the next line end; false when there is none.
    bool Next() noexcept {
        if (m_lineFeed < m_at) m_lineFeed = Find(m_at, '\n');
        if (m_carriageReturn < m_at) m_carriageReturn = Find(m_at, '\r');
        if (m_lineFeed == m_end && m_carriageReturn == m_end) return false;
        m_lineEnd = m_lineFeed < m_carriageReturn ? m_lineFeed : m_carriageReturn;
        const bool pair = m_lineEnd + 1 < m_end && IsPair(m_lineEnd[0], m_lineEnd[1]);
        m_at = m_lineEnd + (pair ? 2 : 1);
        return true;
    }

    // The byte offsets of the line end that Next stopped at, and of the line behind it.
    std::size_t LineEnd() const noexcept { return static_cast<std::size_t>(m_lineEnd - m_begin); }
    std::size_t NextBegin() const noexcept { return static_cast<std::size_t>(m_at - m_begin); }

    // Whether two bytes together are one line end.
    static bool IsPair(char first, char second) noexcept {
        return (first == '\r' && second == '\n') || (first == '\n' && second == '\r');
    }

private:
    const char* Find(const char* from, char wanted) const noexcept {
        if (from == m_end) return m_end;
        const auto* found = static_cast<const char*>(
            std::memchr(from, wanted, static_cast<std::size_t>(m_end - from)));
        return found != nullptr ? found : m_end;
    }

    const char* m_begin;
    const char* m_end;
    const char* m_at;
    const char* m_lineFeed;
    const char* m_carriageReturn;
    const char* m_lineEnd = nullptr;
};
