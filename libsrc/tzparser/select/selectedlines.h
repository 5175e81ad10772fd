#pragma once

#include <string_view>
#include <vector>

class CAppLineStatus;
class CAppSampleLines;

// A line that a design reader selected, and the line of the text that it is.
struct SelectedLine {
    std::string_view text;  // without white space at its ends
    int line = -1;          // -1: the text has no such line, or none that is left
};

// Finds for each line of a reader's selection, in order, the line of the text that it comes from:
// the first open line from `startLine` to `endLine`, exclusive, with the same text that no earlier
// line has taken, at or behind the line found before it, or, when there is none there, the first of
// all. White space at the ends of both lines doesn't count, and an empty line never has a source.
//
// Takes time in proportion to the lines of both, however often lines repeat. The views are those of
// `selected`. The range must lie in the text.
std::vector<SelectedLine> FindSelectedLines(const CAppSampleLines& lines,
                                            const CAppLineStatus& status, int startLine,
                                            int endLine, std::string_view selected);
