// A rule's bounds are asked again in the clone that ran. All is as it was then but for one thing: a
// variable of a rule that runs later has a value now and had none then.
#include "tzparser/explain/boundsexplain.h"

#include <algorithm>

namespace {

struct Bound {
    const NIGroupInfo& info;
    bool isStart;

    std::string Name() const { return isStart ? "start bound" : "end bound"; }
};

// What came of one bound over all runs.
struct BoundTally {
    std::size_t found = 0;
    int line = -1;                  // of the first run that found it
    std::ptrdiff_t firstMiss = -1;  // the first run that didn't
    std::string words;              // of the rule, in that run
};

CAppParseRule* TopRule(CAppParseRule& rule) {
    auto* top = &rule;
    while (top->GetParentRule() != nullptr && top->GetParentRule()->GetParentRule() != nullptr)
        top = top->GetParentRule();
    return top;
}

// Whether the rule that a bound asks hadn't run yet: only rules right below the root can be asked.
bool RunsLater(CAppParseRule& rule, const NIGroupInfo& info) {
    if (info.m_type != NIGroupType_Variable) return false;
    auto* root = rule.GetRootParentRule();
    const auto* owner = root->GetChildRuleByRuleId(info.m_xxid);
    const auto* top = TopRule(rule);
    const auto& rules = root->Children();
    const auto place = [&rules](const CAppParseRule* wanted) {
        return std::find_if(rules.begin(), rules.end(),
                            [wanted](const auto& child) { return child.get() == wanted; });
    };
    return owner != nullptr && owner != root && place(owner) >= place(top);
}

void Ask(CAppParseRule& rule, const Bound& bound, std::size_t run, const ExplainRun& lines,
         BoundTally& tally) {
    int line = bound.isStart ? lines.begin : lines.end;
    rule.SetLastError({});
    if (!RunsLater(rule, bound.info) &&
        rule.CalcNILineNo(lines.begin, lines.end, bound.info, bound.isStart, line)) {
        if (tally.found++ == 0) tally.line = line;
    } else if (tally.firstMiss < 0) {
        tally.firstMiss = static_cast<std::ptrdiff_t>(run);
        tally.words = rule.GetLastError();
    }
}

void TellVariableMissing(CExplainScope& scope, const Bound& bound, const BoundTally& tally) {
    std::string words = tally.words;
    const auto* owner = scope.Rule().GetRootParentRule()->GetChildRuleByRuleId(bound.info.m_xxid);
    if (RunsLater(scope.Rule(), bound.info))
        words = "the rule " + Quoted(bound.info.m_xxid) +
                " stands behind this one, so it hadn't run yet";
    else if (bound.info.m_type != NIGroupType_Variable)
        words = "its type " + std::to_string(bound.info.m_type) + " is no kind of bound";
    else if (bound.info.m_text.empty())
        words = "it names no variable";
    else if (owner == nullptr)
        words = "no rule has the id " + Quoted(bound.info.m_xxid);
    else if (words.empty())
        words = bound.info.m_text + " of the rule " + Quoted(bound.info.m_xxid) + " has no line";
    scope.Tell(bound.Name() + ": " + words);
}

void TellMissing(CExplainScope& scope, const Bound& bound, const BoundTally& tally) {
    const auto& run = scope.Runs()[static_cast<std::size_t>(tally.firstMiss)];
    if (bound.info.m_type == NIGroupType_Pattern)
        scope.TellNearest(bound.Name() + ": no line fits", bound.info.m_pattern, run,
                          scope.Rule().LineStatus(), false);
    else
        TellVariableMissing(scope, bound, tally);
    auto& fact = scope.Found().facts.back();
    fact.isTrouble = tally.found == 0;
    if (scope.HasManyRuns())
        fact.text += "; found in " + std::to_string(tally.found) + " of " +
                     CountInWords(scope.Runs().size(), "paragraph") + ", first missing in " +
                     LinesInWords(run);
    else
        fact.text += "; so the rule didn't run";
}

void TellFound(CExplainScope& scope, const Bound& bound, const BoundTally& tally) {
    const auto what =
        bound.info.m_type == NIGroupType_Pattern ? Quoted(bound.info.m_pattern) : bound.info.m_text;
    auto words = bound.Name() + " found by " + what;
    if (bound.info.m_skip > 0)
        words +=
            ", " + CountInWords(static_cast<std::size_t>(bound.info.m_skip), "line") + " skipped";
    scope.Tell(words, tally.line);
}

void ExplainBound(CExplainScope& scope, const Bound& bound) {
    if (bound.info.m_type == NIGroupType_None) return;
    BoundTally tally;
    for (std::size_t run = 0; run < scope.Runs().size(); ++run)
        Ask(scope.Rule(), bound, run, scope.Runs()[run], tally);
    if (tally.firstMiss >= 0)
        TellMissing(scope, bound, tally);
    else if (tally.found > 0)
        TellFound(scope, bound, tally);
}

}  // namespace

void ExplainBounds(CExplainScope& scope,
                   const std::function<void(std::size_t run, const ExplainRun& range)>& use) {
    auto& rule = scope.Rule();
    const auto words = rule.GetLastError();
    const bool waits = RunsLater(rule, rule.GetNIStart()) || RunsLater(rule, rule.GetNIEnd());
    for (std::size_t run = 0; run < scope.Runs().size(); ++run) {
        const auto& lines = scope.Runs()[run];
        if (!rule.OnBeginParse(lines.begin, lines.end) || waits) continue;
        const ExplainRun range{rule.GetNIStartLine(), rule.GetNIEndLine()};
        rule.ExecuteSearchReplace(range.begin, range.end);
        scope.NoteRun(range, rule.LineStatus());
        use(run, range);
    }
    ExplainBound(scope, {rule.GetNIStart(), true});
    ExplainBound(scope, {rule.GetNIEnd(), false});
    rule.SetLastError(words);
}

void ExplainBoundsAlone(CExplainScope& scope) {
    ExplainBounds(scope, [](std::size_t, const ExplainRun&) {});
}
