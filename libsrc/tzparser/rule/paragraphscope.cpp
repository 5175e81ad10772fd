#include "tzparser/rule/paragraphscope.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

int FindParagraph(const IParagraphScope& paragraphs, int line) {
    const auto& begins = paragraphs.GetBeginLines();
    const auto& ends = paragraphs.GetEndLines();
    const auto count = static_cast<std::ptrdiff_t>(std::min(begins.size(), ends.size()));
    const auto end = std::upper_bound(ends.begin(), ends.begin() + count, line);
    const auto index = end - ends.begin();
    if (index == count || begins[static_cast<std::size_t>(index)] > line) return -1;
    return static_cast<int>(index);
}

void AppendOuterValues(const CLetColumn& values, const IParagraphScope& paragraphs,
                       const std::vector<int>& lines, CLetList& result) {
    std::vector<std::uint32_t> picks;
    std::uint32_t value = 0;
    int from = 0;
    int to = 0;
    const auto last = values.LastLine();
    values.ForEach([&](int line, const CAppTextLet& let) {
        const int index = FindParagraph(paragraphs, let.beginRow);
        if (index >= 0) {
            from = paragraphs.GetBeginLines()[static_cast<std::size_t>(index)];
            to = paragraphs.GetEndLines()[static_cast<std::size_t>(index)];
        }
        const auto begin = std::lower_bound(lines.begin(), lines.end(), from);
        const auto end = line == last ? lines.end() : std::lower_bound(begin, lines.end(), to);
        picks.insert(picks.end(), static_cast<std::size_t>(end - begin), value++);
    });
    result.Append(CLetList(values, std::move(picks)));
}
