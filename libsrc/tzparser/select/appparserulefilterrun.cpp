// A run: the range between begin and end line, the lines kept in it, then the children.
//
// Lines over which a multi-line pattern stretches are found before the lines are walked. A begin
// pattern that finds nothing closes every line; an end pattern that finds nothing leaves the range
// open to its end.
#include "host/runtime/diagnostics.h"
#include "tzparser/rule/appparserulesample.h"
#include "tzparser/rule/appsamplelines.h"
#include "tzparser/select/appparserulefilter.h"

#include <algorithm>

namespace {

void TellBroken(const std::string& pattern) {
    DiagnosticOutput("Invalid regex expression:" + pattern + "\n");
}

}  // namespace

bool CAppParseRuleFilter::Parse(const std::string& text, int startLine, int endLine,
                                IAppVariableCallback* callback) {
    const auto plan = PlanOfRun();
    if (auto* parent = GetParentRule()) m_lineStatus = parent->LineStatus();
    startLine = std::clamp(startLine, 0, LineCount());
    endLine = std::clamp(endLine, 0, LineCount());
    m_lineStatus.CloseAllBut(startLine, endLine);
    if (!IsUseMultiLineStatus()) m_runRanges.clear();
    if (startLine >= endLine) return true;
    Range range;
    range.begin = range.scanFrom = startLine;
    range.end = endLine;
    FindBegin(plan->begin, endLine, callback, range);
    FindEnd(plan->end, endLine, range);
    CloseOutside(range, startLine, endLine);
    m_runRanges.push_back(range);
    ContainLines(plan->includes, range.begin, range.end, true);
    ContainLines(plan->excludes, range.begin, range.end, false);
    for (const auto& child : Children()) child->Parse(text, range.begin, range.end, callback);
    if (IsUseMultiLineStatus()) AddRunStatus(m_lineStatus, startLine, endLine);
    return true;
}

void CAppParseRuleFilter::FindBegin(const Pattern& pattern, int endLine,
                                    IAppVariableCallback* callback, Range& range) {
    if (pattern.line.empty()) return;
    Pattern filled;
    const auto* begin = &pattern;
    if (pattern.regexText.empty()) {
        filled = pattern;
        filled.regexText = FilterByGlobalVariable(pattern.line, callback);
        if (!filled.isMultiLine)
            filled.regex = GetCachedRegex(filled.regexText, CAppRegex::RuleFlags);
        begin = &filled;
    }
    int matchEnd = 0;
    const int line = begin->isMultiLine
                         ? ParseMultipleLineMatch(range.begin, endLine, begin->regexText, matchEnd)
                         : FindLine(*begin, range.begin, endLine, false);
    if (line == endLine) return;
    range.beginLine = line;
    range.begin = m_definition->isExcludeBeginLine ? line + 1 : line;
    range.scanFrom = (begin->isMultiLine ? matchEnd : line) + 1;
}

void CAppParseRuleFilter::FindEnd(const Pattern& pattern, int endLine, Range& range) {
    if (pattern.line.empty()) return;
    if (!range.IsBeginFound() && !m_definition->beginLine.empty()) return;
    int matchEnd = 0;
    const int line = pattern.isMultiLine ? ParseMultipleLineMatch(range.scanFrom, endLine,
                                                                  pattern.regexText, matchEnd)
                                         : FindLine(pattern, range.scanFrom, endLine, true);
    if (line == endLine) return;
    range.endLine = line;
    range.end = m_definition->isExcludeEndLine ? line : line + 1;
}

// The first open line that fits; endLine when none does.
int CAppParseRuleFilter::FindLine(const Pattern& pattern, int startLine, int endLine,
                                  bool tellsBroken) {
    const auto* lines = GetSampleLines();
    if (lines == nullptr || (!pattern.regex && !tellsBroken)) return endLine;
    CAppRegexMatch match;
    for (int line = startLine; line < endLine; ++line) {
        if (!IsLineOpen(line)) continue;
        if (!pattern.regex)
            TellBroken(pattern.line);
        else if (pattern.regex->Search(lines->View(line), match) == AppRegexSearch_Match)
            return line;
    }
    return endLine;
}

void CAppParseRuleFilter::CloseOutside(const Range& range, int startLine, int endLine) {
    if (!m_definition->beginLine.empty() && !range.IsBeginFound())
        m_lineStatus.Close(startLine, endLine);
    else
        m_lineStatus.CloseAllBut(range.begin, range.end);
}

// Each pattern counts for its first line, or for all with the loop. When all are used up, what is
// left of the range closes under include patterns and stays under exclude patterns. When the end
// line belongs to the range, the line behind it isn't closed here. Lines of multi-line matches have
// the last word, also over lines that were closed before.
void CAppParseRuleFilter::ContainLines(const std::vector<Pattern>& patterns, int beginLine,
                                       int endLine, bool include) {
    if (patterns.empty()) return;
    const auto marked = MarkMultiLines(patterns, beginLine, endLine);
    m_lineStatus.CloseAllBut(beginLine, m_definition->isExcludeEndLine ? endLine : endLine + 1);
    std::vector<char> pending(patterns.size(), 1);
    CAppRegexMatch match;
    for (int line = beginLine; line < endLine; ++line) {
        if (!IsLineOpen(line)) continue;
        if (pending.empty() && !include) break;
        if (pending.empty() || FitsPending(patterns, line, marked, pending, match) != include)
            m_lineStatus.Close(line, line + 1);
        if (std::find(pending.begin(), pending.end(), 1) == pending.end()) pending.clear();
    }
    for (int line = beginLine; !marked.lines.empty() && line < endLine; ++line) {
        if (!marked.Has(line)) continue;
        if (include)
            m_lineStatus.Open(line);
        else
            m_lineStatus.Close(line, line + 1);
    }
}

// All pending patterns are tried, also behind one that fits, so one line may use up several.
bool CAppParseRuleFilter::FitsPending(const std::vector<Pattern>& patterns, int line,
                                      const MarkedLines& marked, std::vector<char>& pending,
                                      CAppRegexMatch& match) const {
    const auto text = OriginalLineView(line);
    bool hit = false;
    for (std::size_t i = 0; i < patterns.size(); ++i) {
        if (pending[i] == 0) continue;
        const auto& pattern = patterns[i];
        if (!pattern.isMultiLine && !pattern.regex) {
            TellBroken(pattern.line);
            continue;
        }
        const bool fits = pattern.isMultiLine
                              ? marked.Has(line)
                              : pattern.regex->Search(text, match) == AppRegexSearch_Match;
        if (!fits) continue;
        hit = true;
        if (!m_definition->isFilterLoop) pending[i] = 0;
    }
    return hit;
}

CAppParseRuleFilter::MarkedLines CAppParseRuleFilter::MarkMultiLines(
    const std::vector<Pattern>& patterns, int beginLine, int endLine) {
    MarkedLines marked{beginLine, {}};
    int scanFrom = beginLine;
    for (const auto& pattern : patterns) {
        if (!pattern.isMultiLine) continue;
        marked.lines.resize(static_cast<std::size_t>(std::max(endLine - beginLine, 0)));
        MarkMultiLines(pattern, endLine, scanFrom, marked);
    }
    return marked;
}

// Each search goes over what is left of the lines as over a text of its own. A match is placed by
// its text up to the first NUL, as ParseMultipleLineMatch does it.
void CAppParseRuleFilter::MarkMultiLines(const Pattern& pattern, int endLine, int& scanFrom,
                                         MarkedLines& marked) {
    const auto* sample = GetSampleRoot();
    if (sample == nullptr) return;
    if (!pattern.regex) {
        TellBroken(pattern.line);
        return;
    }
    std::vector<int> numbers;
    const auto joined =
        sample->GroupMultiLine(scanFrom, endLine, m_lineStatus, numbers, GetSearchReplaceResult());
    std::string_view rest = joined;
    CAppRegexMatch match;
    while (scanFrom < endLine && pattern.regex->Search(rest, match) == AppRegexSearch_Match) {
        const auto matched = match.Text(0).substr(0, match.Text(0).find('\0'));
        const auto position = rest.find(matched);
        const auto behind = position + matched.size();
        const int first = scanFrom + GetLineCountByPos(rest, static_cast<int>(position));
        const int last = scanFrom + GetLineCountByPos(rest, static_cast<int>(behind));
        for (int line = first; line <= last; ++line) marked.Mark(line);
        if (!m_definition->isFilterLoop) return;
        scanFrom = last + 1;
        const auto lineFeed = rest.find('\n', behind);
        rest.remove_prefix(lineFeed == std::string_view::npos ? rest.size() : lineFeed + 1);
    }
}

// Children of the second and later runs of a paragraph start from the status of its first run: that
// is how a filter below a paragraph is defined.
AppLineStatus& CAppParseRuleFilter::GetLineStatus() {
    if (IsUseMultiLineStatus() && !m_multiLineStatus.empty())
        return m_multiLineStatus.front().HostBits();
    return CAppParseRule::GetLineStatus();
}

const CAppLineStatus& CAppParseRuleFilter::LineStatus() {
    if (IsUseMultiLineStatus() && !m_multiLineStatus.empty()) return m_multiLineStatus.front();
    return CAppParseRule::LineStatus();
}

int CAppParseRuleFilter::GetLineStatus(std::vector<AppLineStatus>& statuses) const {
    statuses.clear();
    for (const auto& status : RunStatuses()) statuses.push_back(status.ToBits());
    return static_cast<int>(statuses.size());
}

std::vector<CAppLineStatus> CAppParseRuleFilter::RunStatuses() const {
    return IsUseMultiLineStatus() ? m_multiLineStatus : std::vector<CAppLineStatus>{m_lineStatus};
}

void CAppParseRuleFilter::SetLineStatus(AppLineStatus status, int startLine, int endLine) {
    if (IsUseMultiLineStatus()) AddRunStatus(CAppLineStatus(status), startLine, endLine);
}

void CAppParseRuleFilter::AddRunStatus(CAppLineStatus status, int startLine, int endLine) {
    status.CloseAllBut(startLine, endLine);
    m_multiLineStatus.push_back(std::move(status));
}
