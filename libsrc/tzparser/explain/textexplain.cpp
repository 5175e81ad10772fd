// Explaining a text rule: how many of its lines were found, and of those that weren't where a line
// stands that is nearly equal, out of order, or out of bounds.
#include "tzparser/explain/boundsexplain.h"
#include "tzparser/explain/kindexplain.h"
#include "tzparser/select/appparseruletext.h"
#include "tzparser/text/appstrutil.h"

namespace {

// So many of the lines that weren't found are told of one by one.
constexpr std::size_t MostMissing = 20;

// A line equal to a record that the search didn't come to.
struct Elsewhere {
    int line = -1;
    const char* why = "";
};

// An equal line counts for more than one that blanks make another.
Elsewhere FindElsewhere(const CAppParseRuleText& rule, int lineCount, const std::string& text,
                        const ExplainRun& range, int searchedFrom) {
    Elsewhere nearly;
    const auto trimmed = AppStrUtil::StrTrimmed(text);
    for (int line = 0; line < lineCount; ++line) {
        const auto view = rule.OriginalLineView(line);
        if (view == text)
            return {line, line >= range.begin && line < searchedFrom
                              ? "; this line stands in front of the one found before it"
                              : "; this line stands outside of the rule's range"};
        if (nearly.line < 0 && !trimmed.empty() && AppStrUtil::StrTrimmed(view) == trimmed)
            nearly = {line, "; this line has other blanks at its ends"};
    }
    return nearly;
}

void TellMissing(CExplainScope& scope, const CAppParseRuleText& rule, const ExplainRun& range) {
    const auto& found = rule.GetLineMapping();
    const int lineCount = scope.Rule().LineStatus().Count();
    std::size_t next = 0;
    std::size_t missing = 0;
    int searchedFrom = range.begin;
    for (const auto& record : rule.GetRecords()) {
        if (next < found.size() && rule.OriginalLineView(found[next].first) == record.m_text) {
            searchedFrom = found[next++].first + 1;
            continue;
        }
        if (missing++ >= MostMissing) continue;
        const auto place = FindElsewhere(rule, lineCount, record.m_text, range, searchedFrom);
        scope.Warn("not found: " + Quoted(record.m_text) + place.why, place.line);
    }
    if (missing > MostMissing)
        scope.Warn("... and " + std::to_string(missing - MostMissing) + " more not found");
}

}  // namespace

void ExplainText(CExplainScope& scope) {
    const auto* rule = dynamic_cast<const CAppParseRuleText*>(&scope.Rule());
    if (rule == nullptr) return;
    ExplainRun last{0, 0};
    ExplainBounds(scope, [&last](std::size_t, const ExplainRun& range) { last = range; });
    scope.Below().clear();
    if (!scope.Found().hasRun) return;
    const auto& found = rule->GetLineMapping();
    scope.Tell(std::to_string(found.size()) + " of " +
                   CountInWords(rule->GetRecords().size(), "line") + " found" +
                   (found.empty() ? "" : ", the first here"),
               found.empty() ? -1 : found.front().first);
    TellMissing(scope, *rule, last);
}
