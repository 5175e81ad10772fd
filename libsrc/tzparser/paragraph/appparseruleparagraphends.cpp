// Finding where paragraphs end, and closing the lines between them.
//
// An end line is looked for behind the head of a paragraph and before the next start, so the start
// pattern is the stronger one. Without an end line a paragraph runs up to the next start, the last
// one to the last open line.
#include "tzparser/paragraph/appparseruleparagraph.h"
#include "tzparser/rule/runlines.h"

#include <algorithm>

namespace {

// The one expression that an empty line is tried with.
constexpr const char* EmptyLineExpression = "^$";

std::string_view WithoutLineEnd(std::string_view text) {
    while (!text.empty() && (text.back() == '\r' || text.back() == '\n')) text.remove_suffix(1);
    return text;
}

}  // namespace

void CAppParseRuleParagraph::FindEnds(const Pattern& pattern, Range range) {
    const auto& begins = m_ranges.begins;
    const bool hasEnd = !m_definition->endExpr.empty();
    for (std::size_t i = 0; i < begins.size(); ++i) {
        const bool isLast = i + 1 == begins.size();
        const int next = isLast ? range.last : begins[i + 1];
        int end = next;
        if (hasEnd && FindEnd(pattern, {m_scratch->headEnds[i], next}, end))
            end += m_definition->isExcludeEndLine ? 0 : 1;
        else if (isLast)
            end = EndOfLast(range.last);
        m_ranges.ends.push_back(end);
    }
}

// The first line that fits; of a match over several lines its first line. False when none does,
// `end` stays.
bool CAppParseRuleParagraph::FindEnd(const Pattern& pattern, Range range, int& end) {
    if (pattern.isMultiLine) {
        int matchEnd = 0;
        const int line =
            ParseMultipleLineMatch(range.first, range.last, pattern.regexText, matchEnd);
        if (line == range.last) return false;
        end = line;
        return true;
    }
    if (!pattern.regex) return false;
    const bool takesEmpty = pattern.regexText == EmptyLineExpression;
    const CRunLines lines(*this, GetSampleLines());
    for (int line = range.first; line < range.last; ++line) {
        if (!IsLineOpen(line)) continue;
        const auto text = WithoutLineEnd(lines.Wrapped(line));
        if ((text.empty() && !takesEmpty) ||
            pattern.regex->Search(text, m_scratch->match) != AppRegexSearch_Match)
            continue;
        end = line;
        return true;
    }
    return false;
}

int CAppParseRuleParagraph::EndOfLast(int last) const {
    for (int line = last; line > m_ranges.begins.back(); --line)
        if (IsLineOpen(line - 1)) return line;
    return last;
}

// An end line that isn't excluded lies before the end already, and one line more stays open behind
// each paragraph. What lies before all paragraphs and behind them goes first, which costs nothing.
void CAppParseRuleParagraph::CloseBetween() {
    const auto& [begins, ends] = m_ranges;
    if (begins.empty() || begins.size() != ends.size()) return;
    const int behind = m_definition->isExcludeEndLine ? 0 : 1;
    m_lineStatus.Close(0, begins.front());
    m_lineStatus.Close(ends.back() + behind, LineCount());
    for (std::size_t i = 0; i + 1 < begins.size(); ++i)
        m_lineStatus.Close(ends[i] + behind, begins[i + 1]);
}
