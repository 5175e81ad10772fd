#pragma once

#include "host/runtime/tzexport.h"
#include "host/text/linescan.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

// CAppSampleLines is the one table of lines of a text: it holds the text once and knows where each
// line begins.
//
//     CAppSampleLines lines;
//     lines.Assign("a\r\n\r\nb");
//     lines.Count();       // 3
//     lines.View(2);       // "b"
//
// Lines count from 0. "\r\n", "\n\r", "\r" and "\n" each end a line ("\n\r" is one line end, as
// some devices send it), so a text with n line ends has n + 1 lines: an empty text has one empty
// line, and a text that ends in a line end has an empty last line. Lines are bytes; NUL is a byte
// like others.
//
// Views live until the next Assign or the object's end, longer for who holds the text. A copy
// shares the text. Used by one thread at a time.
class TZPARSER_API CAppSampleLines {
public:
    // The longest text that fits, in bytes.
    static constexpr std::size_t MaxText = 0xFFFFFFFEU;

    // Takes a copy of the text and splits it; false for a text longer than MaxText, with the object
    // left empty.
    bool Assign(std::string_view text);

    // The number of lines; 0 only before the first Assign.
    int Count() const noexcept { return static_cast<int>(m_begins.size()); }
    // A line without its line end; empty for a number that isn't a line.
    std::string_view View(int line) const noexcept {
        if (line < 0 || line >= Count()) return {};
        const auto index = static_cast<std::size_t>(line);
        const std::size_t begin = m_begins[index];
        const char* text = m_text->data();
        if (index + 1 == m_begins.size()) return {text + begin, m_text->size() - begin};
        const std::size_t next = m_begins[index + 1];
        const bool pair = next - begin >= 2 && CLineScan::IsPair(text[next - 2], text[next - 1]);
        return {text + begin, next - begin - (pair ? 2 : 1)};
    }
    // The same as a string, which is made when it is first asked for and kept until the next
    // Assign.
    const std::string& String(int line) const;

    // The text; null before the first Assign and after one that failed.
    const std::shared_ptr<const std::string>& Text() const noexcept { return m_text; }

    bool operator==(const CAppSampleLines& other) const;
    void Swap(CAppSampleLines& other) noexcept;

private:
    std::shared_ptr<const std::string> m_text;
    std::vector<std::uint32_t> m_begins;  // the end of a line follows from the next line's begin
    mutable std::unordered_map<int, std::string> m_strings;
};
