// Explaining a paragraph rule: the blocks are those of the run; when there is none, the lines of
// its patterns are looked for one by one.
#include "tzparser/explain/boundsexplain.h"
#include "tzparser/explain/kindexplain.h"
#include "tzparser/paragraph/appparseruleparagraph.h"

#include <algorithm>
#include <map>
#include <set>

namespace {

// The first open line of a range that a pattern fits; -1: none.
int FindFitting(CAppParseRuleParagraph& rule, const std::string& pattern, const ExplainRun& range) {
    std::map<std::string, std::string> memo;
    std::set<std::string> multiLine;
    const auto regexText = CAppParseRule::GetRegexByLine(pattern, memo, multiLine);
    if (!multiLine.empty()) {
        int matchEnd = 0;
        const int line = rule.ParseMultipleLineMatch(range.begin, range.end, regexText, matchEnd);
        return line == range.end ? -1 : line;
    }
    const CAppRegex regex(regexText, CAppRegex::RuleFlags);
    CAppRegexMatch match;
    const auto& status = rule.LineStatus();
    for (int line = status.NextOpen(range.begin); line < range.end && line < status.Count();
         line = status.NextOpen(line + 1))
        if (regex.Search(rule.WrappedLineView(line), match) == AppRegexSearch_Match) return line;
    return -1;
}

void TellPattern(CExplainScope& scope, CAppParseRuleParagraph& rule, const std::string& name,
                 const std::string& pattern, const ExplainRun& range) {
    if (pattern.empty()) return;
    const int line = FindFitting(rule, pattern, range);
    if (line >= 0)
        scope.Tell("the first line that fits the " + name + " " + Quoted(pattern), line);
    else
        scope.TellNearest("no line fits the " + name, pattern, range, rule.LineStatus(), true);
}

void TellNoParagraph(CExplainScope& scope, CAppParseRuleParagraph& rule, const ExplainRun& range) {
    if (rule.GetStartExpr().empty()) {
        scope.Warn(rule.IsLineAsParagraph()
                       ? "no paragraph: there is no line to make one"
                       : "no paragraph: it has no start line, and a line alone is none");
        return;
    }
    scope.Warn("no paragraph");
    const auto patterns = rule.GetIDLines();
    TellPattern(scope, rule, "start line", rule.GetStartExpr(), range);
    for (std::size_t i = 1; i < patterns.size(); ++i)
        TellPattern(scope, rule, "id line", patterns[i], range);
    for (auto& fact : scope.Found().facts)
        if (!fact.statement.empty()) fact.isTrouble = true;
}

// A paragraph that lacks an id line mostly stays, so this is no trouble by itself.
void TellIDLines(CExplainScope& scope, CAppParseRuleParagraph& rule) {
    auto patterns = rule.GetIDLines();
    if (!rule.GetStartExpr().empty() && !patterns.empty()) patterns.erase(patterns.begin());
    const auto& blocks = scope.Below();
    for (const auto& pattern : patterns) {
        const auto lacking = static_cast<std::size_t>(std::count_if(
            blocks.begin(), blocks.end(),
            [&](const ExplainRun& block) { return FindFitting(rule, pattern, block) < 0; }));
        scope.Tell(std::to_string(blocks.size() - lacking) + " of " +
                   CountInWords(blocks.size(), "paragraph") + " have the id line " +
                   Quoted(pattern));
    }
}

void SetRanges(CExplainScope& scope, const CAppParseRuleParagraph& rule) {
    const auto& begins = rule.GetBeginLines();
    const auto& ends = rule.GetEndLines();
    scope.Below().clear();
    for (std::size_t i = 0; i < std::min(begins.size(), ends.size()); ++i) {
        scope.Found().ranges.emplace_back(begins[i], ends[i]);
        scope.Below().push_back({begins[i], ends[i]});
    }
}

}  // namespace

void ExplainParagraph(CExplainScope& scope) {
    auto* rule = dynamic_cast<CAppParseRuleParagraph*>(&scope.Rule());
    if (rule == nullptr) return;
    SetRanges(scope, *rule);
    ExplainRun last{0, 0};
    ExplainBounds(scope, [&last](std::size_t, const ExplainRun& range) { last = range; });
    if (!scope.Found().hasRun) return;
    if (scope.Below().empty()) {
        TellNoParagraph(scope, *rule, last);
        return;
    }
    const auto first = scope.Below().front();
    scope.Tell("the first of " + CountInWords(scope.Below().size(), "paragraph") + ", " +
                   LinesInWords(first),
               first.begin);
    TellIDLines(scope, *rule);
    TellPattern(scope, *rule, "end line", rule->GetEndExpr(), last);
    TellPattern(scope, *rule, "parent line", rule->GetParentLine(), last);
}
