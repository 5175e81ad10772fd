// KVPs of the mregex forms: one expression runs over the lines of the range, joined by line feeds.
//
// Closed lines stand in the joined text as empty lines but have no entry in the list of line
// numbers. The number of line feeds before a position is used as an index into that list, so once a
// closed line lies before the match, rows are those of later open lines. This is how positions of
// such matches are defined.
//
// Empty groups never take a name here, whatever the counts of groups and names, unlike in single
// lines. And a value carried over from the paragraph before beats a new one.
#include "host/runtime/diagnostics.h"
#include "tzparser/keyword/appparserulekeyword.h"
#include "tzparser/pattern/parserpatternhelper.h"
#include "tzparser/rule/appparserulesample.h"

#include <algorithm>

namespace {

struct JoinedLines {
    std::string text;
    std::vector<int> numbers;  // of the open lines

    int RowOfIndex(int index) const {
        return static_cast<std::size_t>(index) < numbers.size()
                   ? numbers[static_cast<std::size_t>(index)]
                   : index;
    }
};

// The offset of a position in its own line.
int ColumnOf(std::string_view text, std::size_t position) {
    const auto lineFeed = text.substr(0, position).rfind('\n');
    return static_cast<int>(lineFeed == std::string_view::npos ? position
                                                               : position - lineFeed - 1);
}

CAppTextLet LetOfSpan(const JoinedLines& joined, std::size_t position, std::string_view value) {
    const auto end = position + value.size();
    const int firstIndex =
        CAppParseRule::GetLineCountByPos(joined.text, static_cast<int>(position));
    const int lastIndex =
        firstIndex + static_cast<int>(std::count(value.begin(), value.end(), '\n'));
    return {joined.RowOfIndex(firstIndex), ColumnOf(joined.text, position),
            joined.RowOfIndex(lastIndex), ColumnOf(joined.text, end), std::string(value)};
}

}  // namespace

std::vector<char> CAppParseRuleKeyWord::MarkDummies(const Kvp& kvp) {
    const auto& names = kvp.NamesWithDummy();
    if (std::find(names.begin(), names.end(), DummyVariableName) == names.end()) return {};
    std::vector<char> isDummy;
    isDummy.reserve(names.size());
    for (const auto& name : names) isDummy.push_back(name == DummyVariableName ? 1 : 0);
    return isDummy;
}

// The first KVP, by its text, that has this expression tells the dummies: two KVPs of one
// expression share them.
std::vector<char> CAppParseRuleKeyWord::DummiesOfRegex(const std::string& regexText) const {
    for (const auto& entry : m_definition->resolved)
        if (entry.second.RegexText() == regexText) return MarkDummies(entry.second);
    return {};
}

void CAppParseRuleKeyWord::RunMultiLine(Run& run, const PlanItem& item, CAppRegexMatch& match) {
    if (!item.regex) {
        DiagnosticOutput("Invalid regex expression:" + *item.brokenRegex + "\n");
        return;
    }
    for (auto& hit :
         MatchOverLines(run.start, run.end, *item.regex, item.slots.size(), item.isDummy, match)) {
        const auto slot = item.slots[hit.nameIndex];
        if (slot == NoSlot) continue;
        const auto& name = run.plan->variables[slot];
        CarryOver(*run.usePre, name, hit.value);
        m_missing[slot] = 0;
        const int row = hit.value.beginRow;
        Store(name, row, hit.value);
    }
}

bool CAppParseRuleKeyWord::ParseKeywordVariableByMultipleLine(
    int startLine, int endLine, std::set<std::string>& missing, const std::string& regex,
    const std::vector<std::string>& names) {
    const auto compiled = GetCachedRegex(regex, CAppRegex::RuleFlags);
    if (!compiled) {
        DiagnosticOutput("Invalid regex expression:" + regex + "\n");
        return false;
    }
    const auto& usePre = UsePreVars();
    CAppRegexMatch match;
    for (auto& hit : MatchOverLines(startLine, endLine, *compiled, names.size(),
                                    DummiesOfRegex(regex), match)) {
        CarryOver(usePre, names[hit.nameIndex], hit.value);
        AddVariablePosInfo(names[hit.nameIndex], hit.value.beginRow, hit.value);
        missing.erase(names[hit.nameIndex]);
    }
    return true;
}

std::vector<CAppParseRuleKeyWord::MultiLineHit> CAppParseRuleKeyWord::MatchOverLines(
    int startLine, int endLine, const CAppRegex& regex, std::size_t nameCount,
    const std::vector<char>& isDummy, CAppRegexMatch& match) {
    std::vector<MultiLineHit> hits;
    const auto* sample = GetSampleRoot();
    if (sample == nullptr) return hits;
    JoinedLines joined;
    joined.text = sample->GroupMultiLine(startLine, endLine, m_lineStatus, joined.numbers,
                                         GetSearchReplaceResult());
    if (regex.Search(joined.text, match) != AppRegexSearch_Match) return hits;
    const auto groups = static_cast<std::size_t>(match.GroupCount());
    const bool mindDummies = groups + 1 > nameCount;
    std::size_t nameIndex = 0;
    for (std::size_t group = 1; group <= groups && nameIndex < nameCount; ++group) {
        if (mindDummies && group - 1 < isDummy.size() && isDummy[group - 1] != 0) continue;
        const auto value = match.Text(static_cast<int>(group));
        if (value.empty()) continue;
        const auto position = static_cast<std::size_t>(match.Position(static_cast<int>(group)));
        hits.push_back({nameIndex, LetOfSpan(joined, position, value)});
        ++nameIndex;
    }
    return hits;
}
