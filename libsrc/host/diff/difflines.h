#pragma once

#include "host/diff/textslots.h"
#include "host/runtime/tzexport.h"

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

// The numbers of two equal lines, from 0, in a first and in a second text.
using CommonLine = std::pair<int, int>;
using CommonLines = std::vector<CommonLine>;

// CDiffLines is a first text made ready to be compared with any number of second texts: its lines,
// split at "\r\n", "\n\r", "\r" and "\n", stand as numbers, equal lines having equal ones.
//
//     const CDiffLines stored(text);
//     for (const auto& [line, newLine] : stored.Compare(newText)) ...
//
// Nothing is copied, so the text has to outlive the object. It costs some 50 bytes a line and one
// hash of every byte. Comparing takes four bytes a line of the second text, and hashes those of its
// lines that don't stand where they are expected, behind the line before them. Which
// lines are equal never depends on the hash: its seed is the process's own, so that no text can be
// made to be slow. Any number of threads may compare at once.
class TZPARSER_API CDiffLines {
public:
    explicit CDiffLines(std::string_view text);

    std::size_t Count() const noexcept { return m_lines.size(); }
    // A line as a view into the text.
    std::string_view Line(std::size_t line) const { return m_lines[line]; }

    // The common lines of this text and a second one, ascending in both; see TzDiffLib for which.
    CommonLines Compare(std::string_view second) const;

private:
    int Add(std::string_view line);
    int Find(std::string_view line) const;
    std::vector<int> NumbersOf(std::string_view second) const;
    std::string_view TextOf(int number) const;

    std::vector<std::string_view> m_lines;
    std::vector<int> m_numbers;  // of the lines
    std::vector<int> m_places;   // of each number the first line
    CTextSlots m_slots;
};
