// Id lines: patterns that each paragraph has to hold.
//
// A paragraph that lacks one is noted by its index. Then the begins and the ends whose line number
// is one of these indexes go, each list by itself. So a paragraph that fails stays, unless its
// index happens to be a begin or an end line, and the line of another may go in its place; begins
// and ends may then differ in number. Definitions in use have been written against this.
#include "tzparser/paragraph/appparseruleparagraph.h"
#include "tzparser/rule/runlines.h"

#include <algorithm>

namespace {

void RemoveFailed(const std::vector<char>& failed, std::vector<int>& lines) {
    const auto isFailed = [&failed](int line) {
        return line >= 0 && static_cast<std::size_t>(line) < failed.size() &&
               failed[static_cast<std::size_t>(line)] != 0;
    };
    lines.erase(std::remove_if(lines.begin(), lines.end(), isFailed), lines.end());
}

}  // namespace

void CAppParseRuleParagraph::CheckIDLines(const std::vector<Pattern>& ids) {
    if (ids.empty() || m_ranges.begins.empty()) return;
    std::vector<char> failed(m_ranges.Count(), 0);
    for (std::size_t i = 0; i < failed.size(); ++i) {
        const Range paragraph{m_ranges.begins[i], m_ranges.ends[i]};
        const bool hasAll = std::all_of(
            ids.begin(), ids.end(),
            [this, paragraph](const Pattern& pattern) { return HasIDLine(pattern, paragraph); });
        failed[i] = hasAll ? 0 : 1;
    }
    RemoveFailed(failed, m_ranges.begins);
    RemoveFailed(failed, m_ranges.ends);
}

// Original lines are searched. A pattern with variables needs one that took some text.
bool CAppParseRuleParagraph::HasIDLine(const Pattern& pattern, Range paragraph) {
    if (!pattern.regex) return false;
    const CRunLines lines(*this, GetSampleLines());
    auto& scratch = *m_scratch;
    scratch.values.assign(pattern.names.size(), std::string());
    for (int line = paragraph.first; line < paragraph.last; ++line) {
        if (!IsLineOpen(line)) continue;
        const auto text = lines.Original(line);
        if (text.empty() || pattern.regex->Search(text, scratch.match) != AppRegexSearch_Match)
            continue;
        if (pattern.names.empty() || TakeCaptures(pattern, scratch.match, scratch.values))
            return true;
    }
    return false;
}
