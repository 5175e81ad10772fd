// Explaining ping and traceroute rules: which syntax or which lines the rule found, then the lines
// that it installed as those of any keyword rule, then the result.
#include "tzparser/explain/kindexplain.h"
#include "tzparser/keyword/appparserulekeywordping.h"
#include "tzparser/keyword/appparserulekeywordtracert.h"

#include <algorithm>

namespace {

// The first line that holds the mark of a ping's syntax; it counts wherever it stands. -1: none.
int FindLossMark(CExplainScope& scope) {
    const int count = scope.Rule().LineStatus().Count();
    for (int line = 0; line < count; ++line)
        if (scope.Rule().OriginalLineView(line).find(CAppParseRuleKeyWordPing::LossMark) !=
            std::string_view::npos)
            return line;
    return -1;
}

void TellSyntax(CExplainScope& scope) {
    const auto mark = Quoted(CAppParseRuleKeyWordPing::LossMark);
    const int line = FindLossMark(scope);
    if (line >= 0)
        scope.Tell(mark + " stands in the text, so the rate is what was lost", line);
    else
        scope.Tell("no " + mark + " stands in the text, so the rate is what came back");
}

void TellResult(CExplainScope& scope, const CAppParseRuleKeyWord& rule, const std::string& name,
                const std::string& reason) {
    const auto* values = rule.Values().Find(name);
    if (values == nullptr || values->IsEmpty()) return;
    scope.Tell(name + " = " + Quoted(values->First().text) + reason);
}

// The runs below the header of a trace, each from the last hop on.
ExplainRuns TellTrace(CExplainScope& scope, const CAppParseRuleKeyWordTraceRT& rule) {
    ExplainRuns runs;
    for (const auto& run : scope.Runs()) {
        const auto trace = rule.FindTrace(run.begin);
        if (trace.HasHops()) runs.push_back({trace.lastIpLine, run.end});
    }
    const auto trace = rule.FindTrace(scope.Runs().front().begin);
    if (trace.headerLine < 0)
        scope.Warn(
            "no header: no line has a text behind \"tracing\", \"traceroute to\" or "
            "\"Traceroute=\"");
    else
        scope.Tell(trace.targetIp.empty() ? "the header, without an address"
                                          : "the header, with the target " + trace.targetIp,
                   trace.headerLine);
    if (trace.HasHops())
        scope.Tell("the last line with an address, from which the rule reads on", trace.lastIpLine);
    else if (trace.headerLine >= 0)
        scope.Warn("no line below the header has an address");
    return runs;
}

}  // namespace

void ExplainPing(CExplainScope& scope) {
    auto* rule = dynamic_cast<CAppParseRuleKeyWordPing*>(&scope.Rule());
    if (rule == nullptr) return;
    if (!scope.Runs().empty()) TellSyntax(scope);
    const auto matched = ExplainStatements(scope);
    constexpr std::size_t ownLines = 2;  // the line of the rate, and that of the time
    const bool hasRate = matched.size() < ownLines || matched[matched.size() - ownLines] > 0;
    TellResult(scope, *rule, "$ping_result", hasRate ? "" : ": without a rate it counts as 0");
}

void ExplainTraceRoute(CExplainScope& scope) {
    auto* rule = dynamic_cast<CAppParseRuleKeyWordTraceRT*>(&scope.Rule());
    if (rule == nullptr || scope.Runs().empty()) return;
    const auto runs = TellTrace(scope, *rule);
    if (runs.empty())
        for (const auto& run : scope.Runs()) scope.NoteRun(run, rule->LineStatus());
    CExplainScope hops(*rule, scope.Found(), runs, scope.Nearest());
    ExplainStatements(hops);
    scope.Below().clear();
    TellResult(scope, *rule, "$traceroute_result", "");
}
