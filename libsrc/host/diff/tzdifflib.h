#pragma once

#include "host/diff/difflines.h"
#include "host/runtime/tzexport.h"

#include <memory>
#include <string_view>
#include <vector>

// TzDiffLib compares two texts line by line and tells the lines that they have in common.
//
//     TzDiffLib differ;
//     const auto result = differ.Compare(stored, current);
//     for (const auto& line : result->GetCommonLines())
//         show(line->GetLineNum1(), line->GetLineNum2());
//
// Lines end with "\r\n", "\n\r", "\r" or "\n" and are numbered from 0, as the parser numbers them;
// a text with n line ends has n + 1 lines. Lines are equal byte by byte, without their line ends.
//
// The common lines ascend in both texts. They are a longest common subsequence as long as the work
// stays within its limit: always when the texts differ in some hundred lines, or when there are at
// most a million pairs of equal lines (so in any two texts of 1,000 lines), usually with 5,000
// differences. Beyond that they are the lines that stand once in both texts and keep their order,
// and what was found between those. Of several that are equally long one is chosen by the texts
// alone, and each of its lines is the first in its text that is equal to it and stands behind the
// line before it.
//
// Time is O((n + m) d) for n and m lines and d differences, until the limit of some ten million
// steps, from there on O(n + m); memory about 60 bytes a line. Nothing recurses.
//
// A line number is a signed 32-bit number; so a text may have 2^31 lines at most. Objects hold
// nothing, and may be used by any number of threads.

// A line that stands in both texts.
class TZPARSER_API TzDifferLine {
public:
    TzDifferLine(int lineNum1, int lineNum2) : m_lineNum1(lineNum1), m_lineNum2(lineNum2) {}

    // Its number in the first and in the second text, from 0.
    int GetLineNum1() const { return m_lineNum1; }
    int GetLineNum2() const { return m_lineNum2; }

private:
    int m_lineNum1;
    int m_lineNum2;
};

// What a comparison found.
class TZPARSER_API TzDifferResult {
public:
    explicit TzDifferResult(const CommonLines& lines);

    // The common lines in ascending order. They live as long as one of the pointers does.
    std::vector<std::shared_ptr<TzDifferLine>> GetCommonLines() const;

private:
    std::shared_ptr<std::vector<TzDifferLine>> m_lines;
};

class TZPARSER_API TzDiffLib {
public:
    // Never null.
    std::shared_ptr<TzDifferResult> Compare(std::string_view first, std::string_view second) const;

    // The same lines as pairs of numbers, without an object for each.
    static CommonLines CompareLines(std::string_view first, std::string_view second);
};
