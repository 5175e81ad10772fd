// Explaining a keyword rule: each statement is searched again over the lines of each run, as the
// rule did it. What it found is shown with the values that the rule kept; for one that found
// nothing in some run, the nearest line of the first such run is looked for.
#include "tzparser/check/statementcheck.h"
#include "tzparser/explain/boundsexplain.h"
#include "tzparser/explain/kindexplain.h"
#include "tzparser/keyword/appparserulekeyword.h"
#include "tzparser/pattern/appregex.h"
#include "tzparser/pattern/parserpatternhelper.h"

#include <algorithm>
#include <map>
#include <memory>
#include <optional>

namespace {

constexpr std::size_t MaxShownValue = 60;
constexpr std::size_t MaxShownValues = 12;

// One statement of the rule, and what its searches found.
struct Trial {
    std::string statement;
    CParserPatternHelper compiled;
    std::unique_ptr<const CAppRegex> regex;
    bool isUsable = false;
    std::size_t matched = 0;  // runs
    int firstLine = -1;       // where it matched first
    ExplainRun firstRun{0, 0};
    ExplainRun firstMiss{0, 0};  // the first run without a match
    std::size_t firstMissRun = 0;
    std::size_t missed = 0;
};

std::vector<Trial> MakeTrials(const CAppParseRuleKeyWord& rule) {
    std::vector<Trial> trials;
    for (auto& statement : rule.GetRunKVPs()) {
        auto& trial = trials.emplace_back();
        std::string error;
        trial.isUsable = trial.compiled.Parse(statement, error);
        trial.regex =
            std::make_unique<const CAppRegex>(trial.compiled.GetRegex(), CAppRegex::RuleFlags);
        trial.isUsable = trial.isUsable && trial.regex->IsValid();
        trial.statement = std::move(statement);
    }
    return trials;
}

int FindLine(CAppParseRuleKeyWord& rule, const Trial& trial, const ExplainRun& range,
             CAppRegexMatch& match) {
    if (trial.compiled.IsMultiLineRegex()) {
        int matchEnd = 0;
        const int line = rule.ParseMultipleLineMatch(range.begin, range.end,
                                                     trial.compiled.GetRegex(), matchEnd);
        return line == range.end ? -1 : line;
    }
    const auto& status = rule.LineStatus();
    const int end = std::min(range.end, status.Count());
    for (int line = status.NextOpen(range.begin); line < end; line = status.NextOpen(line + 1)) {
        const auto text = rule.WrappedLineView(line);
        if (!text.empty() && trial.regex->Search(text, match) == AppRegexSearch_Match) return line;
    }
    return -1;
}

// The value of a variable from these lines, a block's being at its first line; none when there is
// none.
std::optional<CAppTextLet> ValueFrom(const CAppParseRuleKeyWord& rule, const std::string& name,
                                     int first, int last) {
    const auto* values = rule.Values().Find(name);
    if (values == nullptr) return std::nullopt;
    const int line = values->FirstLine(first);
    if (line > last || line == CLetColumn::NoLine) return std::nullopt;
    return values->At(line);
}

int FindBlock(CAppParseRuleKeyWord& rule, const Trial& trial, const ExplainRun& range) {
    std::string name;
    std::vector<std::pair<std::string, std::string>> spans;
    if (!trial.compiled.GetMlineVariables(name, spans)) return -1;
    const auto value = ValueFrom(rule, name, range.begin, range.end);
    return value && !value->text.empty() ? value->beginRow : -1;
}

void Search(CAppParseRuleKeyWord& rule, Trial& trial, std::size_t run, const ExplainRun& range,
            CAppRegexMatch& match) {
    if (!trial.isUsable) return;
    const int line = trial.compiled.IsMline() ? FindBlock(rule, trial, range)
                                              : FindLine(rule, trial, range, match);
    if (line >= 0 && trial.matched++ == 0) {
        trial.firstLine = line;
        trial.firstRun = range;
    }
    if (line < 0 && trial.missed++ == 0) {
        trial.firstMiss = range;
        trial.firstMissRun = run;
    }
}

std::string Shown(const CAppTextLet& value) {
    if (value.text.size() <= MaxShownValue) return "\"" + value.text + "\"";
    return "\"" + value.text.substr(0, MaxShownValue) + "...\"";
}

// Whether a value was computed of the one that a statement found: what a ping rule makes of a rate.
bool IsComputed(const CAppParseRuleKeyWord& rule, int line, const CAppTextLet& let) {
    return rule.GetRuleType() == RuleType_Ping && line == 0 && let.IsEmpty();
}

std::optional<CAppTextLet> ComputedValue(const CAppParseRuleKeyWord& rule,
                                         const std::string& name) {
    const auto value = ValueFrom(rule, name, 0, 0);
    return value && !value->text.empty() && IsComputed(rule, 0, *value) ? value : std::nullopt;
}

// "$hw = "iGbE", $mtu = "1500"", of the first match.
std::string ValuesInWords(CAppParseRuleKeyWord& rule, const Trial& trial) {
    const bool isLine = !trial.compiled.IsMultiLineRegex() && !trial.compiled.IsMline();
    const int last = isLine ? trial.firstLine : trial.firstRun.end;
    std::string words;
    std::size_t shown = 0;
    for (const auto& name : trial.compiled.GetVarNames()) {
        if (name == DummyVariableName || shown == MaxShownValues) continue;
        auto value = ComputedValue(rule, name);
        if (!value) value = ValueFrom(rule, name, trial.firstLine, last);
        if (!value) continue;
        words += (shown++ == 0 ? ": " : ", ") + name + " = " + Shown(*value);
    }
    return words;
}

// Whether other statements gave all the variables of this one a value: then it is one of several
// ways to write them.
bool HasAllValues(CAppParseRuleKeyWord& rule, const Trial& trial) {
    const auto names = trial.compiled.GetVarNames();
    return std::all_of(names.begin(), names.end(), [&rule](const std::string& name) {
        if (name == DummyVariableName) return true;
        bool hasText = false;
        if (const auto* values = rule.Values().Find(name))
            values->ForEach([&](int line, const CAppTextLet& let) {
                hasText = hasText || (!let.text.empty() && !IsComputed(rule, line, let));
            });
        return hasText;
    });
}

void TellUnusable(CExplainScope& scope, const Trial& trial) {
    const CStatementCheck check(trial.statement);
    const auto fault = check.IsValid() ? check.WhyBroken() : check.WhyInvalid();
    auto& fact = scope.Warn(Quoted(trial.statement) + " plays no part: " + check.Words() +
                            (check.Words().empty() ? "" : " ") + fault.reason);
    fact.statement = trial.statement;
    if (fault.caret <= trial.statement.size()) fact.statementColumn = static_cast<int>(fault.caret);
}

void TellMatched(CExplainScope& scope, CAppParseRuleKeyWord& rule, const Trial& trial) {
    auto words = Quoted(trial.statement);
    auto values = ValuesInWords(rule, trial);
    if (scope.HasManyRuns()) {
        words += " matched in " + std::to_string(trial.matched) + " of " +
                 CountInWords(trial.matched + trial.missed, "paragraph");
        if (!values.empty()) words += ", first";
    } else {
        words += " matched";
    }
    if (values.empty() && trial.compiled.GetVarNames().size() > 0)
        values = "; a later run dropped the values or another statement wrote over them";
    scope.Tell(words + values, trial.firstLine);
}

std::string MissedInWords(const CExplainScope& scope, const Trial& trial) {
    if (scope.HasManyRuns() && trial.matched > 0)
        return "the first paragraph without a match, " + LinesInWords(trial.firstMiss) +
               ", doesn't fit";
    if (scope.HasManyRuns()) return "no paragraph fits";
    return trial.compiled.IsMline() ? "no lines stand between the variables of" : "no line fits";
}

// Why the match is missing in all runs, where more can be said than the nearest line.
void TellReason(CExplainScope& scope, CAppParseRuleKeyWord& rule, const Trial& trial,
                ExplainFact& fact) {
    fact.isTrouble = !HasAllValues(rule, trial);
    if (!fact.isTrouble) fact.text += "; its variables have their values from other statements";
    if (scope.HasManyRuns() || trial.compiled.GetRegex().empty()) return;
    const int unseen = scope.FindUnseen(*trial.regex, trial.firstMiss, rule.LineStatus());
    if (unseen >= 0)
        fact.text +=
            "; line " + std::to_string(unseen + 1) + " would fit, but the rule doesn't see it";
}

// The rule is brought back to the state of the run, since bounds and replacements are the run's.
void TellMissed(CExplainScope& scope, CAppParseRuleKeyWord& rule, const Trial& trial) {
    const auto& lines = scope.Runs()[trial.firstMissRun];
    rule.OnBeginParse(lines.begin, lines.end);
    rule.ExecuteSearchReplace(trial.firstMiss.begin, trial.firstMiss.end);
    const auto words = MissedInWords(scope, trial);
    auto& fact =
        trial.compiled.IsMline()
            ? scope.Tell(words + " " + Quoted(trial.statement))
            : scope.TellNearest(words, trial.statement, trial.firstMiss, rule.LineStatus(), true);
    fact.statement = trial.statement;
    if (trial.matched == 0) TellReason(scope, rule, trial, fact);
}

void TellTrial(CExplainScope& scope, CAppParseRuleKeyWord& rule, const Trial& trial) {
    if (!trial.isUsable) TellUnusable(scope, trial);
    if (trial.matched > 0) TellMatched(scope, rule, trial);
    if (trial.missed > 0) TellMissed(scope, rule, trial);
}

}  // namespace

void ExplainKeyWord(CExplainScope& scope) {
    ExplainStatements(scope);
}

std::vector<std::size_t> ExplainStatements(CExplainScope& scope) {
    std::vector<std::size_t> matched;
    auto* rule = dynamic_cast<CAppParseRuleKeyWord*>(&scope.Rule());
    if (rule == nullptr) return matched;
    scope.Below().clear();  // what stands below a keyword rule never runs
    auto trials = MakeTrials(*rule);
    CAppRegexMatch match;
    ExplainBounds(scope, [&](std::size_t run, const ExplainRun& range) {
        for (auto& trial : trials) Search(*rule, trial, run, range, match);
    });
    for (const auto& trial : trials) {
        TellTrial(scope, *rule, trial);
        matched.push_back(trial.matched);
    }
    if (!scope.Runs().empty() && scope.Found().hasRun) {
        const auto& last = scope.Runs().back();
        rule->OnBeginParse(last.begin, last.end);
    }
    return matched;
}
