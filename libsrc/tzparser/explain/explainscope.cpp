#include "tzparser/explain/explainscope.h"

#include "tzparser/pattern/parserpatternhelper.h"
#include "tzparser/rule/appparserulesample.h"

#include <algorithm>

namespace {

constexpr std::size_t MaxQuoted = 200;
// So many lines go into a text that a statement over several lines is compared with.
constexpr int MaxJoined = 2000;

bool IsOverLines(const std::string& statement) {
    CParserPatternHelper helper;
    std::string error;
    return helper.Parse(statement, error) && helper.IsMultiLineRegex();
}

}  // namespace

ExplainFact& CExplainScope::Tell(const std::string& text, int line, int column) {
    auto& fact = m_found.facts.emplace_back();
    fact.text = text;
    fact.line = line;
    fact.column = column;
    return fact;
}

ExplainFact& CExplainScope::Warn(const std::string& text, int line, int column) {
    auto& fact = Tell(text, line, column);
    fact.isTrouble = true;
    return fact;
}

ExplainFact& CExplainScope::TellNearest(const std::string& words, const std::string& statement,
                                        const ExplainRun& range, const CAppLineStatus& status,
                                        bool isWrapped) {
    NearestMatch match;
    std::size_t open = 0;
    if (IsOverLines(statement)) {
        match = FindOverLines(statement, range, status);
    } else {
        std::vector<NearestCandidate> lines;
        for (int line = status.NextOpen(range.begin); line < range.end && line < status.Count();
             line = status.NextOpen(line + 1)) {
            if (++open > CNearestLine::MaxLines) continue;
            lines.push_back(
                {line, isWrapped ? m_rule.WrappedLineView(line) : m_rule.OriginalLineView(line)});
        }
        match = m_nearest.Find(statement, lines);
    }
    auto& fact = Tell(words + " " + Quoted(statement), match.line, match.column);
    fact.statement = statement;
    fact.statementColumn = match.statementColumn;
    if (isWrapped && match.line >= 0 &&
        m_rule.WrappedLineView(match.line) != m_rule.OriginalLineView(match.line))
        fact.replacedLine = m_rule.WrappedLineView(match.line);
    if (!match.wish.empty()) fact.text += "; " + match.wish;
    if (open == 0 && match.line < 0 && CountOpenLines(status, range) == 0)
        fact.text += "; there is no line to fit";
    if (open > CNearestLine::MaxLines)
        fact.text += "; only the first " + std::to_string(CNearestLine::MaxLines) +
                     " lines were compared for the nearest";
    if (m_nearest.IsExhausted()) fact.text += "; too much to compare for the nearest line";
    return fact;
}

// Closed lines stand as empty ones in the text, so line feeds count lines.
NearestMatch CExplainScope::FindOverLines(const std::string& statement, const ExplainRun& range,
                                          const CAppLineStatus& status) {
    const auto* sample = dynamic_cast<const CAppParseRuleSample*>(m_rule.GetRootParentRule());
    if (sample == nullptr) return {};
    std::vector<int> numbers;
    const int end = std::min(range.end, range.begin + MaxJoined);
    const auto text =
        sample->GroupMultiLine(range.begin, end, status, numbers, m_rule.GetSearchReplaceResult());
    auto match = m_nearest.FindInText(statement, text);
    if (match.line < 0) return match;
    const auto before = std::string_view(text).substr(0, static_cast<std::size_t>(match.column));
    const auto feed = before.rfind('\n');
    match.line = range.begin + static_cast<int>(std::count(before.begin(), before.end(), '\n'));
    if (feed != std::string_view::npos) match.column -= static_cast<int>(feed) + 1;
    return match;
}

int CExplainScope::FindUnseen(const CAppRegex& expression, const ExplainRun& range,
                              const CAppLineStatus& status) {
    std::vector<NearestCandidate> lines;
    for (int line = 0; line < status.Count() && lines.size() < CNearestLine::MaxLines; ++line) {
        const bool isSeen = line >= range.begin && line < range.end && status.IsOpen(line);
        if (!isSeen) lines.push_back({line, m_rule.OriginalLineView(line)});
    }
    return m_nearest.FindFitting(expression, lines);
}

void CExplainScope::NoteRun(const ExplainRun& range, const CAppLineStatus& status) {
    m_found.hasRun = true;
    ++m_found.runs;
    m_found.beginLine = range.begin;
    m_found.endLine = std::max(range.begin, range.end);
    m_found.openLines = CountOpenLines(status, range);
}

int CountOpenLines(const CAppLineStatus& status, const ExplainRun& range) {
    int count = 0;
    const int end = std::min(range.end, status.Count());
    for (int line = status.NextOpen(range.begin); line < end; line = status.NextOpen(line + 1))
        ++count;
    return count;
}

std::string Quoted(const std::string& text) {
    if (text.size() <= MaxQuoted) return "\"" + text + "\"";
    return "\"" + text.substr(0, MaxQuoted) + "...\"";
}

std::string LinesInWords(const ExplainRun& range) {
    if (range.end <= range.begin) return "no line";
    if (range.end == range.begin + 1) return "line " + std::to_string(range.end);
    return "lines " + std::to_string(range.begin + 1) + " to " + std::to_string(range.end);
}

std::string CountInWords(std::size_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}
