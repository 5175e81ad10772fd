// Explaining a diff filter: which rows were compared, which row the kept lines came from, and which
// lines closed because no row is common with them or only a row marked as added.
#include "tzparser/explain/kindexplain.h"
#include "tzparser/select/appparseruledifffilter.h"

#include <algorithm>
#include <unordered_set>

namespace {

// How many lines are of one sort, and the first of them.
struct Tally {
    std::size_t count = 0;
    int first = -1;

    void Add(int line) {
        if (count++ == 0) first = line;
    }
};

std::unordered_set<std::string_view> AddedTexts(const AppDiffLines& lines) {
    std::unordered_set<std::string_view> texts;
    for (const int row : lines.m_addedRows)
        if (const auto at = lines.m_rows.find(row); at != lines.m_rows.end())
            texts.insert(at->second);
    return texts;
}

void TellRows(CExplainScope& scope, const CAppParseRuleDiffFilter& filter, const ExplainRun& run) {
    const auto& lines = filter.GetLines();
    if (filter.GetOuterDiffFilter() != nullptr) {
        scope.Tell("takes the comparison of the diff filter above it, and looks for its own " +
                   CountInWords(lines.m_rows.size(), "row") + " in it");
        return;
    }
    const auto inRange = [&run](const auto& row) {
        return row.first >= run.begin && row.first < run.end && !row.second.empty();
    };
    const auto compared =
        static_cast<std::size_t>(std::count_if(lines.m_rows.begin(), lines.m_rows.end(), inRange));
    const auto words = std::to_string(compared) + " of " +
                       CountInWords(lines.m_rows.size(), "row") +
                       (compared == 1 || lines.m_rows.size() == 1 ? " has" : " have") +
                       " a text and a number in the range, from " + std::to_string(run.begin) +
                       " to " + std::to_string(run.end - 1);
    if (compared == 0)
        scope.Warn(words + ", so it fails and nothing below it runs");
    else
        scope.Tell(words);
}

void TellKept(CExplainScope& scope, const CAppParseRuleDiffFilter& filter, const ExplainRun& run) {
    Tally kept;
    Tally moved;
    int keptRow = 0;
    int movedRow = 0;
    for (const auto& [line, row] : filter.GetLineMapping()) {
        if (line < run.begin || line >= run.end) continue;
        if (kept.count == 0) keptRow = row;
        kept.Add(line);
        if (row == line) continue;
        if (moved.count == 0) movedRow = row;
        moved.Add(line);
    }
    if (kept.count == 0) {
        scope.Warn("keeps no line");
        return;
    }
    scope.Tell("the first of " + CountInWords(kept.count, "line") + " kept comes from row " +
                   std::to_string(keptRow),
               kept.first);
    if (moved.count > 0)
        scope.Tell("the first of " + CountInWords(moved.count, "line") +
                       " kept whose row has another number; it comes from row " +
                       std::to_string(movedRow),
                   moved.first);
}

void TellClosed(CExplainScope& scope, CAppParseRuleDiffFilter& filter, const ExplainRun& run) {
    auto* parent = filter.GetParentRule();
    if (parent == nullptr) return;
    const auto& above = parent->LineStatus();
    const auto added = AddedTexts(filter.GetLines());
    Tally closed;
    Tally closedAsAdded;
    for (int line = above.NextOpen(run.begin); line < std::min(run.end, above.Count());
         line = above.NextOpen(line + 1)) {
        if (filter.IsLineOpen(line)) continue;
        const bool isAdded = added.count(filter.OriginalLineView(line)) != 0;
        (isAdded ? closedAsAdded : closed).Add(line);
    }
    if (closed.count > 0)
        scope.Tell("the first of " + CountInWords(closed.count, "line") +
                       " closed, which no row is common with",
                   closed.first);
    if (closedAsAdded.count > 0)
        scope.Tell("the first of " + CountInWords(closedAsAdded.count, "line") +
                       " closed, which a row marked as added has",
                   closedAsAdded.first);
}

}  // namespace

// Below a paragraph only the last run has left its mapping.
void ExplainDiffFilter(CExplainScope& scope) {
    auto* filter = dynamic_cast<CAppParseRuleDiffFilter*>(&scope.Rule());
    if (filter == nullptr || scope.Runs().empty()) return;
    for (const auto& run : scope.Runs()) scope.NoteRun(run, filter->LineStatus());
    const auto run = scope.Runs().back();
    TellRows(scope, *filter, run);
    const bool hasFailed = filter->GetLineMapping().empty() && !filter->GetLastError().empty();
    if (hasFailed) {
        scope.Below().clear();
        return;
    }
    TellKept(scope, *filter, run);
    TellClosed(scope, *filter, run);
}
