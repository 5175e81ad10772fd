#pragma once

#include "tzparser/text/letcolumn.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <vector>

// CGapFinder finds the paragraphs in which a child found nothing, by the child's lines: the rows
// that a table has of its first variable, the begins of a nested paragraph. It looks at the first
// so many begins and ends of a rule, as they stood after one of its runs.
//
//     bool hasOutside = false;
//     CGapFinder({begins, begins.size(), ends, ends.size()}).Find(lines, 0, hasOutside);
//
// Of several paragraphs that hold a line it is the first one's. A line outside of all paragraphs
// counts for the first one, so that one is then no gap. A begin without an end is always a gap.
// Begins and ends ascend and have to outlive the finder.
class CGapFinder {
public:
    struct Paragraphs {
        const std::vector<int>& begins;
        std::size_t beginCount;
        const std::vector<int>& ends;
        std::size_t endCount;
    };

    explicit CGapFinder(const Paragraphs& paragraphs)
        : m_paragraphs(paragraphs), m_count(std::min(paragraphs.beginCount, paragraphs.endCount)) {}

    // The indexes of the gaps among the paragraphs from one on, ascending, and the first paragraph
    // when it is one. `hasOutside` tells whether a line lies between two paragraphs before, and is
    // brought up to date; from 0 on it is found anew. Costs a search a paragraph.
    template <class Lines>
    std::vector<int> Find(const Lines& lines, std::size_t from, bool& hasOutside) const;

    template <class Lines>
    bool HasLine(const Lines& lines, std::size_t index) const {
        return index < m_count && NextLine(lines, FirstOwnLine(index)) < End(index);
    }
    // Whether the begin of a paragraph is a line of this paragraph.
    bool HoldsItsBegin(std::size_t index) const {
        return index < m_count && FirstOwnLine(index) == Begin(index) && Begin(index) < End(index);
    }
    // Whether a line lies outside of all paragraphs and not behind the last one.
    bool IsBetween(int line) const {
        const auto ends = m_paragraphs.ends.begin();
        const auto last = ends + static_cast<std::ptrdiff_t>(m_count);
        const auto at = std::upper_bound(ends, last, line);
        return at != last && line < Begin(static_cast<std::size_t>(at - ends));
    }

private:
    static constexpr int NoLine = CLetColumn::NoLine;

    // The first of a child's lines at or behind a line.
    static int NextLine(const std::vector<int>& lines, int from) {
        const auto at = std::lower_bound(lines.begin(), lines.end(), from);
        return at != lines.end() ? *at : NoLine;
    }
    static int NextLine(const CLetColumn& rows, int from) { return rows.FirstLine(from); }

    int Begin(std::size_t index) const { return m_paragraphs.begins[index]; }
    int End(std::size_t index) const { return m_paragraphs.ends[index]; }
    int EndBefore(std::size_t index) const { return index > 0 ? End(index - 1) : INT_MIN; }
    int FirstOwnLine(std::size_t index) const { return std::max(Begin(index), EndBefore(index)); }

    template <class Lines>
    bool HasLineBefore(const Lines& lines, std::size_t index) const {
        return NextLine(lines, EndBefore(index)) < Begin(index);
    }
    template <class Lines>
    bool HasLineBehindAll(const Lines& lines) const {
        return NextLine(lines, EndBefore(m_count)) != NoLine;
    }

    Paragraphs m_paragraphs;
    std::size_t m_count;  // of those with begin and end
};

template <class Lines>
std::vector<int> CGapFinder::Find(const Lines& lines, std::size_t from, bool& hasOutside) const {
    if (from == 0) hasOutside = false;
    for (auto i = from; i < m_count && !hasOutside; ++i) hasOutside = HasLineBefore(lines, i);
    std::vector<int> gaps;
    const auto count = m_paragraphs.beginCount;
    if (count > 0 && !hasOutside && !HasLine(lines, 0) && !HasLineBehindAll(lines))
        gaps.push_back(0);
    for (auto i = std::max<std::size_t>(from, 1); i < count; ++i)
        if (!HasLine(lines, i)) gaps.push_back(static_cast<int>(i));
    return gaps;
}
