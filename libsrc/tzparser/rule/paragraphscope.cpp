#include "tzparser/rule/paragraphscope.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

int FindParagraph(const IParagraphScope& paragraphs, int line) {
    const auto& begins = paragraphs.GetBeginLines();
    const auto& ends = paragraphs.GetEndLines();
    const auto count = static_cast<std::ptrdiff_t>(std::min(begins.size(), ends.size()));
    const auto end = std::upper_bound(ends.begin(), ends.begin() + count, line);
    const auto index = end - ends.begin();
    if (index == count || begins[static_cast<std::size_t>(index)] > line) return -1;
    return static_cast<int>(index);
}

void AppendOuterValues(const std::map<int, CAppTextLet>& values, const IParagraphScope& paragraphs,
                       const std::vector<int>& lines, std::vector<CAppTextLet>& result) {
    int from = 0;
    int to = 0;
    for (auto at = values.begin(); at != values.end(); ++at) {
        const int index = FindParagraph(paragraphs, at->second.beginRow);
        if (index >= 0) {
            from = paragraphs.GetBeginLines()[static_cast<std::size_t>(index)];
            to = paragraphs.GetEndLines()[static_cast<std::size_t>(index)];
        }
        const bool isLast = std::next(at) == values.end();
        const auto first = std::lower_bound(lines.begin(), lines.end(), from);
        const auto last = isLast ? lines.end() : std::lower_bound(first, lines.end(), to);
        for (auto line = first; line < last; ++line) result.push_back(at->second);
    }
}
