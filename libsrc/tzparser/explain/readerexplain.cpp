// Explaining a design reader: whether the host has one, how many lines it selected, which of them
// the text doesn't have, and the lines kept. What is told is that of the last run.
#include "tzparser/explain/kindexplain.h"
#include "tzparser/select/appparseruledesignreader.h"
#include "tzparser/select/designreader.h"
#include "tzparser/select/selectedlines.h"

#include <algorithm>

namespace {

// So many of the lines without a source are told of one by one.
constexpr std::size_t MostMissing = 20;

void TellSelected(CExplainScope& scope, const std::vector<SelectedLine>& selected) {
    std::size_t missing = 0;
    int first = -1;
    for (const auto& [text, line] : selected) {
        if (line >= 0) {
            if (first < 0 || line < first) first = line;
        } else if (missing++ < MostMissing) {
            scope.Warn("selected, but no open line that is left: " + Quoted(std::string(text)));
        }
    }
    if (missing > MostMissing)
        scope.Warn("... and " + CountInWords(missing - MostMissing, "line") + " more");
    if (first >= 0)
        scope.Tell("the first of " + CountInWords(selected.size() - missing, "line") + " kept",
                   first);
    else
        scope.Warn("keeps no line");
}

}  // namespace

void ExplainReader(CExplainScope& scope) {
    auto* rule = dynamic_cast<CAppParseRuleDesignReader*>(&scope.Rule());
    if (rule == nullptr) return;
    if (scope.Runs().empty()) return;
    auto* parent = rule->GetParentRule();
    const auto& above = parent != nullptr ? parent->LineStatus() : rule->LineStatus();
    for (const auto& run : scope.Runs()) scope.NoteRun(run, rule->LineStatus());
    if (!GetDesignReader()) {
        scope.Warn("no design reader is set, so it keeps nothing");
        return;
    }
    const auto& last = scope.Runs().back();
    const int count = above.Count();
    TellSelected(scope, rule->FindLines(above, std::clamp(last.begin, 0, count),
                                        std::clamp(last.end, 0, count)));
}
