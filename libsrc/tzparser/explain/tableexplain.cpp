// Explaining a table: the search for its header is run again, line by line and run by run; columns,
// first row and end are those that the last run decided.
#include "tzparser/explain/boundsexplain.h"
#include "tzparser/explain/kindexplain.h"
#include "tzparser/table/appparseruletable.h"

#include <algorithm>
#include <iterator>
#include <set>

namespace {

constexpr std::size_t MaxCandidates = 3;

// What the search for the header found over all runs.
struct HeaderTally {
    std::size_t found = 0;
    std::size_t runs = 0;
    HeaderTrial accepted;  // of the first run with a header
    bool isMissed = false;
    ExplainRun firstMiss{0, 0};
    std::vector<HeaderTrial> trials;  // of the first run without one
};

bool IsAccepted(const std::vector<HeaderTrial>& trials) {
    return !trials.empty() && (trials.back().verdict == HeaderVerdict_Direct ||
                               trials.back().verdict == HeaderVerdict_ByWords);
}

void Search(CAppParseRuleTable& table, const ExplainRun& range, HeaderTally& tally) {
    ++tally.runs;
    auto trials = table.ExplainHeader(range.begin, range.end);
    if (IsAccepted(trials)) {
        if (tally.found++ == 0) tally.accepted = trials.back();
    } else if (!tally.isMissed) {
        tally.isMissed = true;
        tally.firstMiss = range;
        tally.trials = std::move(trials);
    }
}

std::string HeaderAt(const CAppParseRuleTable& table, int header) {
    const auto at = static_cast<std::size_t>(header);
    return header >= 0 && at < table.Headers().size() ? Quoted(table.Headers()[at])
                                                      : std::string("?");
}

std::string AllHeaders(const CAppParseRuleTable& table) {
    std::string words;
    for (const auto& header : table.Headers()) words += (words.empty() ? "" : " ") + header;
    return words;
}

// The more headers a line has, the more it looks like the header line.
int HeadersReached(const HeaderTrial& trial) {
    return std::max(trial.missingHeader, trial.header);
}

std::string WordsOfTrial(const CAppParseRuleTable& table, const HeaderTrial& trial) {
    if (trial.verdict == HeaderVerdict_WholeLineFails)
        return "the headers don't stand in it one behind the other";
    std::string words = HeaderAt(table, trial.missingHeader) + " isn't in it";
    if (trial.verdict == HeaderVerdict_TokenFitsNone)
        words += ", and word " + std::to_string(trial.token + 1) + " is no part of " +
                 HeaderAt(table, trial.header);
    if (trial.verdict == HeaderVerdict_TooFewTokens)
        words += ", and it has fewer words than headers";
    if (trial.verdict == HeaderVerdict_TooFewHeaders)
        words += ", and its words end at " + HeaderAt(table, trial.header);
    return words;
}

// The lines that got farthest, in the order of the text.
std::vector<HeaderTrial> Candidates(std::vector<HeaderTrial> trials) {
    trials.erase(std::remove_if(trials.begin(), trials.end(),
                                [](const auto& trial) { return HeadersReached(trial) <= 0; }),
                 trials.end());
    std::stable_sort(trials.begin(), trials.end(), [](const auto& a, const auto& b) {
        return HeadersReached(a) > HeadersReached(b);
    });
    trials.resize(std::min(trials.size(), MaxCandidates));
    std::sort(trials.begin(), trials.end(),
              [](const auto& a, const auto& b) { return a.line < b.line; });
    return trials;
}

void TellHeaderMissing(CExplainScope& scope, CAppParseRuleTable& table, const HeaderTally& tally) {
    const auto candidates = Candidates(tally.trials);
    std::string words = "no line is the header line of";
    if (tally.runs > 1)
        words = "header line found in " + std::to_string(tally.found) + " of " +
                CountInWords(tally.runs, "paragraph") + "; " + LinesInWords(tally.firstMiss) +
                " have none of";
    auto& fact = candidates.empty() ? scope.TellNearest(words, AllHeaders(table), tally.firstMiss,
                                                        table.LineStatus(), true, CutForm_Headers)
                                    : scope.Tell(words + " " + Quoted(AllHeaders(table)));
    fact.isTrouble = tally.found == 0;
    for (const auto& trial : candidates)
        scope.Tell(WordsOfTrial(table, trial), trial.line, trial.column);
}

std::string ColumnsInWords(const CAppParseRuleTable& table) {
    const auto& columns = table.LastLayout().columns;
    const bool areTokens = table.GetAlign() == TableAlign_Tokens;
    std::string words = areTokens ? "words of a column: " : "columns begin at ";
    if (table.GetAlign() == TableAlign_Right) words = "the headers begin at ";
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (i > 0) words += ", ";
        if (i < table.Headers().size()) words += Quoted(table.Headers()[i]) + " ";
        words += !areTokens && columns[i] < 0 ? std::string("nowhere")
                                              : std::to_string(columns[i] + (areTokens ? 0 : 1));
    }
    return words;
}

void TellColumns(CExplainScope& scope, const CAppParseRuleTable& table) {
    const auto& layout = table.LastLayout();
    if (layout.columns.size() != table.Headers().size()) {
        scope.Warn(CountInWords(layout.columns.size(), "column") + " for " +
                   CountInWords(table.Headers().size(), "header") + ", so no row is read");
        return;
    }
    if (layout.separatorLine >= 0)
        scope.Tell("the columns are those of the ruled line", layout.separatorLine);
    scope.Tell(ColumnsInWords(table));
    for (std::size_t i = 0; i < layout.columns.size(); ++i)
        if (layout.columns[i] < 0 && table.GetAlign() != TableAlign_Tokens)
            scope.Warn("the column " + Quoted(table.Headers()[i]) +
                       " has no place: its very text, capitals too, isn't in the header line "
                       "behind the header before");
    const auto& variables = table.GetHeaderVars();
    for (const auto& header : table.Headers())
        if (variables.count(header) == 0)
            scope.Tell("the column " + Quoted(header) + " has no variable and is dropped");
}

void TellEnd(CExplainScope& scope, CAppParseRuleTable& table) {
    const auto& layout = table.LastLayout();
    if (table.GetEndCond().empty()) return;
    if (layout.isEndFound) {
        scope.Tell("end found by " + Quoted(table.GetEndCond()), layout.endLine);
        return;
    }
    scope
        .TellNearest("no line fits the end condition", table.GetEndCond(),
                     {layout.firstRow, layout.endLine}, table.LineStatus(), true)
        .text += "; so the table goes on to the last line";
}

void TellRows(CExplainScope& scope, const CAppParseRuleTable& table) {
    std::set<int> rows;
    for (const auto& column : table.Values().All())
        column.second.ForEach([&rows](int line, const CAppTextLet& cell) {
            if (!cell.text.empty()) rows.insert(line);
        });
    if (rows.empty())
        scope.Warn("no row with a value");
    else
        scope.Tell("the first of " + CountInWords(rows.size(), "row"), *rows.begin());
}

void TellLayout(CExplainScope& scope, CAppParseRuleTable& table, const HeaderTally& tally) {
    const auto& layout = table.LastLayout();
    std::string words = tally.accepted.verdict == HeaderVerdict_ByWords
                            ? "header line found, by its words one by one"
                            : "header line found, with each header in it";
    if (tally.runs > 1) words = "the first " + words;
    if (layout.isWrappedHeader) words += "; taken to go on in the next line";
    scope.Tell(words, tally.accepted.line);
    if (!layout.isHeaderFound) {
        TellRows(scope, table);
        return;
    }
    TellColumns(scope, table);
    if (layout.columns.size() != table.Headers().size()) return;
    TellEnd(scope, table);
    TellRows(scope, table);
    scope.Found().ranges.emplace_back(layout.firstRow, layout.endLine);
    scope.Below() = {{layout.firstRow, layout.endLine}};
}

}  // namespace

void ExplainTable(CExplainScope& scope) {
    auto* table = dynamic_cast<CAppParseRuleTable*>(&scope.Rule());
    if (table == nullptr) return;
    scope.Below().clear();
    HeaderTally tally;
    ExplainBounds(scope,
                  [&](std::size_t, const ExplainRun& range) { Search(*table, range, tally); });
    if (tally.isMissed) TellHeaderMissing(scope, *table, tally);
    if (tally.found > 0) TellLayout(scope, *table, tally);
}
