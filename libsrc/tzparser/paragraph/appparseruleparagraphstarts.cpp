// Finding where paragraphs begin: groups of open lines, lines that fit the start pattern, or
// matches over several lines.
//
// A start pattern with variables is a key. In single lines only a line on which a value differs
// from the last start line begins a paragraph, so consecutive start lines with equal values fall
// into one. Over several lines every match begins one, equal values or not.
//
// Matches over several lines are located by their text: it is looked for again from the end of the
// last one, so an earlier place with the same text counts. A NUL ends the text looked for.
#include "host/runtime/diagnostics.h"
#include "tzparser/paragraph/appparseruleparagraph.h"
#include "tzparser/rule/appparserulesample.h"
#include "tzparser/rule/runlines.h"

#include <algorithm>

namespace {

std::string_view MatchedText(const CAppRegexMatch& match) {
    return match.Text(0).substr(0, match.Text(0).find('\0'));
}

int CountLineFeeds(std::string_view text, std::size_t from, std::size_t to) {
    const auto part = text.substr(from, to - from);
    return static_cast<int>(std::count(part.begin(), part.end(), '\n'));
}

}  // namespace

void CAppParseRuleParagraph::FindParagraphs(const Plan& plan, Range range) {
    m_scratch->headEnds.clear();
    if (m_definition->startExpr.empty()) {
        if (m_definition->isLineAsParagraph && m_definition->lineAsParagraph >= 1)
            CutIntoGroups(range);
        return;
    }
    if (plan.start.isMultiLine)
        FindStartsOverLines(plan.start, range);
    else
        FindStarts(plan.start, range);
    FindEnds(plan.end, range);
    CheckIDLines(plan.ids);
}

// Closed lines inside a group belong to it and don't count. The last group may be short.
void CAppParseRuleParagraph::CutIntoGroups(Range range) {
    int inGroup = 0;
    int lastOpen = 0;
    for (int line = m_lineStatus.NextOpen(range.first); line < range.last;
         line = m_lineStatus.NextOpen(line + 1)) {
        lastOpen = line + 1;
        if (inGroup == 0) m_ranges.begins.push_back(line);
        if (++inGroup < m_definition->lineAsParagraph) continue;
        m_ranges.ends.push_back(line + 1);
        inGroup = 0;
    }
    if (inGroup > 0) m_ranges.ends.push_back(lastOpen);
}

// The captures, dummies passed over, become the values; whether one differed from what was there.
// Dummies are minded when there are more groups than values, the whole match counted in.
bool CAppParseRuleParagraph::TakeCaptures(const Pattern& pattern, const CAppRegexMatch& match,
                                          std::vector<std::string>& values) {
    const auto groups = static_cast<std::size_t>(match.GroupCount());
    const bool mindsDummies = values.size() < groups + 1;
    bool changed = false;
    std::size_t next = 0;
    for (std::size_t group = 1; group <= groups && next < values.size(); ++group) {
        if (mindsDummies && group - 1 < pattern.isDummy.size() && pattern.isDummy[group - 1] != 0)
            continue;
        const auto text = match.Text(static_cast<int>(group));
        auto& value = values[next++];
        if (value == text) continue;
        value.assign(text);
        changed = true;
    }
    return changed;
}

void CAppParseRuleParagraph::FindStarts(const Pattern& start, Range range) {
    if (!start.regex) return;
    const CRunLines lines(*this, GetSampleLines());
    auto& scratch = *m_scratch;
    scratch.values.assign(start.names.size(), std::string());
    for (int line = range.first; line < range.last; ++line) {
        if (!IsLineOpen(line)) continue;
        const auto text = lines.Wrapped(line);
        if (text.empty() || start.regex->Search(text, scratch.match) != AppRegexSearch_Match)
            continue;
        if (!start.names.empty() && !TakeCaptures(start, scratch.match, scratch.values)) continue;
        m_ranges.begins.push_back(line);
        scratch.headEnds.push_back(line + 1);
    }
}

// The lines of a range joined, closed ones standing as empty; false, with words on the debugger
// output, when the expression doesn't compile.
bool CAppParseRuleParagraph::JoinLines(const Pattern& pattern, Range range,
                                       std::string& joined) const {
    const auto* sample = GetSampleRoot();
    if (sample == nullptr) return false;
    if (!pattern.regex) {
        DiagnosticOutput("Invalid regex expression:" + pattern.regexText + "\n");
        return false;
    }
    std::vector<int> openLines;
    joined = sample->GroupMultiLine(range.first, range.last, m_lineStatus, openLines,
                                    GetSearchReplaceResult());
    return true;
}

// Without variables the search goes on with the line behind the one where a match ends, over what
// is left as over a text of its own. Joining once is the same as joining what is left each time.
void CAppParseRuleParagraph::FindStartsOverLines(const Pattern& start, Range range) {
    if (!start.names.empty()) {
        m_scratch->values.assign(start.names.size(), std::string());
        FindChangesOverLines(start, range, m_scratch->values, m_scratch->headEnds);
        return;
    }
    std::string joined;
    if (!JoinLines(start, range, joined)) return;
    std::string_view rest = joined;
    int line = range.first;
    while (line < range.last &&
           start.regex->Search(rest, m_scratch->match) == AppRegexSearch_Match) {
        const auto matched = MatchedText(m_scratch->match);
        const auto position = rest.find(matched);
        const auto behind = position + matched.size();
        m_ranges.begins.push_back(line + CountLineFeeds(rest, 0, position));
        line = m_ranges.begins.back() + CountLineFeeds(rest, position, behind) + 1;
        m_scratch->headEnds.push_back(line);
        const auto lineFeed = rest.find('\n', behind);
        rest.remove_prefix(lineFeed == std::string_view::npos ? rest.size() : lineFeed + 1);
    }
}

// A match that is empty is taken once: the search behind it would find it again without end.
int CAppParseRuleParagraph::FindChangesOverLines(const Pattern& start, Range range,
                                                 std::vector<std::string>& values,
                                                 std::vector<int>& headEnds) {
    std::string joined;
    if (!JoinLines(start, range, joined)) return range.last;
    std::string_view rest = joined;
    std::size_t counted = 0;  // where the last find ended
    int line = range.first;   // the line that stands there
    int found = range.last;
    while (start.regex->Search(rest, m_scratch->match) == AppRegexSearch_Match) {
        const auto matched = MatchedText(m_scratch->match);
        TakeCaptures(start, m_scratch->match, values);
        const auto position = joined.find(matched, counted);
        found = line + CountLineFeeds(joined, counted, position);
        counted = position + matched.size();
        line = found + CountLineFeeds(joined, position, counted);
        m_ranges.begins.push_back(found);
        headEnds.push_back(line + 1);
        const auto length = m_scratch->match.Text(0).size();
        const auto end = static_cast<std::size_t>(m_scratch->match.Position(0)) + length;
        if (length == 0 || end == rest.size()) break;
        rest.remove_prefix(end);
    }
    return found;
}

int CAppParseRuleParagraph::ParseMultipleLineMatchBeginLineWithVariableValue(
    int first, int last, const std::string& regex, std::vector<std::string>& values,
    std::vector<int>& headEnds) {
    if (!m_scratch) m_scratch = std::make_unique<Scratch>();
    return FindChangesOverLines(StartPatternOf(regex), {first, last}, values, headEnds);
}

int CAppParseRuleParagraph::ParseMultipleLineMatchWithVariableValue(
    int first, int last, const std::string& regex, std::vector<std::string>& values, bool& changed,
    int& matchEnd) {
    matchEnd = last;
    const auto pattern = StartPatternOf(regex);
    std::string joined;
    CAppRegexMatch match;
    if (!JoinLines(pattern, {first, last}, joined) ||
        pattern.regex->Search(joined, match) != AppRegexSearch_Match)
        return last;
    if (TakeCaptures(pattern, match, values)) changed = true;
    const auto matched = MatchedText(match);
    const auto position = joined.find(matched);
    matchEnd = first + CountLineFeeds(joined, 0, position + matched.size());
    return first + CountLineFeeds(joined, 0, position);
}
