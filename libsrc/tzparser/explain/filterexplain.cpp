// Explaining a filter: where its range begins and ends, which patterns count for no line of it, and
// the lines it keeps.
#include "tzparser/explain/kindexplain.h"
#include "tzparser/pattern/appregex.h"
#include "tzparser/pattern/parserpatternhelper.h"
#include "tzparser/select/appparserulefilter.h"

#include <algorithm>
#include <map>
#include <set>

namespace {

const CAppLineStatus& StatusAbove(CAppParseRuleFilter& filter) {
    auto* parent = filter.GetParentRule();
    return parent != nullptr ? parent->LineStatus() : filter.LineStatus();
}

// "begin line" and "end line" work alike here.
struct Edge {
    const char* name;
    const std::string& pattern;
    int FilterRange::*line;
    bool isBegin;
};

// Where the search for a missing edge went.
ExplainRun SearchedLines(const Edge& edge, const FilterRange& range, const ExplainRun& run) {
    if (edge.isBegin || range.beginLine < 0) return run;
    return {range.beginLine + 1, run.end};
}

void TellMissingEdge(CExplainScope& scope, CAppParseRuleFilter& filter, const Edge& edge,
                     std::size_t at, std::size_t found) {
    const auto& range = filter.GetRunRanges()[at];
    const ExplainRun run =
        at < scope.Runs().size() ? scope.Runs()[at] : ExplainRun{range.begin, range.end};
    auto& fact = scope.TellNearest(std::string("no line fits the ") + edge.name, edge.pattern,
                                   SearchedLines(edge, range, run), StatusAbove(filter), false);
    fact.isTrouble = edge.isBegin && found == 0;
    fact.text += edge.isBegin ? "; so it keeps nothing" : "; so it goes on to the last line";
    if (filter.GetRunRanges().size() > 1)
        fact.text += " (found in " + std::to_string(found) + " of " +
                     CountInWords(filter.GetRunRanges().size(), "run") + ")";
}

void ExplainEdge(CExplainScope& scope, CAppParseRuleFilter& filter, const Edge& edge) {
    if (edge.pattern.empty()) return;
    const auto& ranges = filter.GetRunRanges();
    const auto isFound = [&edge](const FilterRange& range) { return range.*edge.line >= 0; };
    const auto found =
        static_cast<std::size_t>(std::count_if(ranges.begin(), ranges.end(), isFound));
    const auto first = std::find_if(ranges.begin(), ranges.end(), isFound);
    if (first != ranges.end())
        scope.Tell(std::string(edge.name) + " found by " + Quoted(edge.pattern), *first.*edge.line);
    const auto missing = std::find_if_not(ranges.begin(), ranges.end(), isFound);
    const bool isAskedFor = edge.isBegin || filter.GetBeginLine().empty() ||
                            first != ranges.end() ||
                            (missing != ranges.end() && missing->beginLine >= 0);
    if (missing != ranges.end() && isAskedFor)
        TellMissingEdge(scope, filter, edge, static_cast<std::size_t>(missing - ranges.begin()),
                        found);
}

// How many of the filter's lines a pattern fits; over all runs.
std::size_t CountFitting(CAppParseRuleFilter& filter, const std::string& pattern) {
    std::map<std::string, std::string> memo;
    std::set<std::string> multiLine;
    const CAppRegex regex(CAppParseRule::GetRegexByLine(pattern, memo, multiLine),
                          CAppRegex::RuleFlags);
    const auto& status = StatusAbove(filter);
    const bool isMultiLine = !multiLine.empty();
    std::size_t count = 0;
    CAppRegexMatch match;
    for (const auto& range : filter.GetRunRanges()) {
        int matchEnd = 0;
        if (isMultiLine) {
            const int line =
                filter.ParseMultipleLineMatch(range.begin, range.end, regex.GetText(), matchEnd);
            count += line != range.end ? 1 : 0;
            continue;
        }
        for (int line = status.NextOpen(range.begin); line < range.end && line < status.Count();
             line = status.NextOpen(line + 1))
            if (regex.Search(filter.OriginalLineView(line), match) == AppRegexSearch_Match) ++count;
    }
    return count;
}

void ExplainPatterns(CExplainScope& scope, CAppParseRuleFilter& filter,
                     const std::vector<std::string>& patterns, bool isInclude) {
    const std::string name = isInclude ? "include" : "exclude";
    for (const auto& pattern : patterns) {
        const auto count = CountFitting(filter, pattern);
        if (count > 0) {
            scope.Tell(CountInWords(count, "line") + (count == 1 ? " fits the " : " fit the ") +
                       name + " pattern " + Quoted(pattern) +
                       (count > 1 && !filter.IsFilterLoop() ? ", and the first counts" : ""));
            continue;
        }
        const auto& range = filter.GetRunRanges().front();
        auto& fact = scope.TellNearest("no line fits the " + name + " pattern", pattern,
                                       {range.begin, range.end}, StatusAbove(filter), false);
        fact.isTrouble = isInclude;
    }
}

// The lines left by all runs, and the first stretch of them.
void TellKept(CExplainScope& scope, CAppParseRuleFilter& filter) {
    std::size_t kept = 0;
    int first = -1;
    const auto& ranges = filter.GetRunRanges();
    for (std::size_t run = 0; run < ranges.size(); ++run) {
        const ExplainRun range{ranges[run].begin, ranges[run].end};
        const auto& status = filter.RunStatus(run);
        scope.NoteRun(range, status);
        const auto open = static_cast<std::size_t>(CountOpenLines(status, range));
        if (open > 0 && first < 0) first = status.NextOpen(range.begin);
        kept += open;
    }
    if (kept > 0)
        scope.Tell("keeps " + CountInWords(kept, "line") + ", the first", first);
    else
        scope.Warn("keeps no line");
}

void SetRunsBelow(CExplainScope& scope, const CAppParseRuleFilter& filter) {
    scope.Below().clear();
    for (const auto& range : filter.GetRunRanges())
        scope.Below().push_back({range.begin, range.end});
}

}  // namespace

void ExplainFilter(CExplainScope& scope) {
    auto* filter = dynamic_cast<CAppParseRuleFilter*>(&scope.Rule());
    if (filter == nullptr) return;
    SetRunsBelow(scope, *filter);
    if (filter->GetRunRanges().empty()) {
        scope.Warn("had no line to run over");
        return;
    }
    ExplainEdge(scope, *filter,
                {"begin line", filter->GetBeginLine(), &FilterRange::beginLine, true});
    ExplainEdge(scope, *filter, {"end line", filter->GetEndLine(), &FilterRange::endLine, false});
    ExplainPatterns(scope, *filter, filter->GetIncludeLine(), true);
    ExplainPatterns(scope, *filter, filter->GetExcludeLine(), false);
    TellKept(scope, *filter);
}
