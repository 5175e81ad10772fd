#pragma once

#include "host/diff/difflines.h"

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <boost/core/noncopyable.hpp>

// The stored lines of a diff filter.
struct AppDiffLines {
    std::map<int, std::string> m_rows;  // by row number
    std::set<int> m_addedRows;          // the rows marked as added
};

// Lines of a text with the row each came from, ascending by line.
using AppLineMapping = std::vector<std::pair<int, int>>;

// CDiffBaseline is the diff text of a diff filter made ready for comparisons: the rows of a range
// of numbers that have a text, in ascending order, each with a line feed.
//
//     const CDiffBaseline baseline(lines, 0, 100);
//     for (const auto& [line, row] : baseline.Compare(text)) ...
//
// A row whose text holds line ends gives several lines; the first of them stands for the row.
// Immutable: any number of threads may compare at once.
class CDiffBaseline : private boost::noncopyable {
public:
    // Rows from startRow to endRow, exclusive; the lines aren't needed any longer afterwards.
    CDiffBaseline(const AppDiffLines& lines, int startRow, int endRow);

    bool IsEmpty() const { return m_rowCount == 0; }
    // Whether a range holds all rows of this baseline.
    bool LiesIn(int startRow, int endRow) const {
        return IsEmpty() || (startRow <= m_firstRow && m_lastRow < endRow);
    }

    // The lines of a text that are common with rows not marked as added.
    AppLineMapping Compare(std::string_view text) const;

private:
    std::string JoinRows(const AppDiffLines& lines, int startRow, int endRow);

    // Filled by JoinRows, so they come first.
    int m_rowCount = 0;
    int m_firstRow = 0;
    int m_lastRow = 0;
    std::vector<std::pair<std::size_t, int>> m_places;  // byte offset and row; added ones aren't in

    std::string m_text;  // without the line feed of the last row
    CDiffLines m_lines;
    std::vector<int> m_rows;  // by line
};
