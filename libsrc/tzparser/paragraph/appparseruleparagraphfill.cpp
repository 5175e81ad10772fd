// Filling of gaps, so that rows line up: a paragraph in which a child found nothing gets empty
// values at its first line.
//
// Which paragraphs are gaps goes by the lines of the child: the rows that a table has of its first
// variable, the begins of a nested paragraph. A line outside of all paragraphs counts for the first
// one, so that one is then no gap.
//
// Below another paragraph this runs after every run, over the paragraphs of all runs so far. What
// earlier runs settled stays settled: their paragraphs keep their lines or were filled, and filling
// them again would store the same. So only the new ones are looked at, and the first. Three things
// make older ones count again: a child that has other variables now or lost rows of an earlier
// parse, ranges that didn't come in order, and, for tables further down, line numbers that have
// become indexes.
#include "tzparser/keyword/appparserulekeyword.h"
#include "tzparser/paragraph/appparseruleparagraph.h"
#include "tzparser/table/appparseruletable.h"

#include <algorithm>
#include <limits>

namespace {

constexpr int NoLine = std::numeric_limits<int>::max();

// The first of a child's lines at or behind a line; NoLine when there is none.
int NextLine(const std::vector<int>& lines, int from) {
    const auto at = std::lower_bound(lines.begin(), lines.end(), from);
    return at != lines.end() ? *at : NoLine;
}

int NextLine(const CLetColumn& rows, int from) {
    return rows.FirstLine(from);
}

CAppParseRuleTable* AsTable(CAppParseRule& rule) {
    if (rule.GetRuleType() != RuleType_Table) return nullptr;
    return dynamic_cast<CAppParseRuleTable*>(&rule);
}

CAppParseRuleParagraph* AsParagraph(CAppParseRule& rule) {
    if (rule.GetRuleType() != RuleType_Paragraph) return nullptr;
    return dynamic_cast<CAppParseRuleParagraph*>(&rule);
}

CAppParseRuleKeyWord* AsKeyWord(CAppParseRule& rule) {
    if (rule.GetRuleType() != RuleType_KeyWord) return nullptr;
    return dynamic_cast<CAppParseRuleKeyWord*>(&rule);
}

// How many variables the keyword rules below a rule have values for.
std::size_t CountNames(const CAppParseRule& rule) {
    std::size_t count = 0;
    for (const auto& child : rule.Children()) {
        if (auto* keyword = AsKeyWord(*child)) count += keyword->Values().All().size();
        count += CountNames(*child);
    }
    return count;
}

}  // namespace

// Whether a keyword child has a variable; asked once a parse, not once a run.
bool CAppParseRuleParagraph::NeedsFilling() {
    if (!m_needsFilling) m_needsFilling = HasVariables();
    return *m_needsFilling;
}

void CAppParseRuleParagraph::FillGaps() {
    m_fillStates.resize(Children().size());
    for (std::size_t i = 0; i < Children().size(); ++i) {
        auto& child = *Children()[i];
        if (auto* table = AsTable(child))
            FillTableChild(*table, m_fillStates[i]);
        else if (auto* paragraph = AsParagraph(child))
            FillParagraphChild(*paragraph, m_fillStates[i]);
    }
}

// Of several paragraphs that hold a line it is the first one's.
template <class Lines>
bool CAppParseRuleParagraph::HasLine(const Lines& lines, std::size_t index) const {
    if (index >= m_ranges.Count()) return false;
    int from = m_ranges.begins[index];
    if (index > 0) from = std::max(from, m_ranges.ends[index - 1]);
    return NextLine(lines, from) < m_ranges.ends[index];
}

template <class Lines>
bool CAppParseRuleParagraph::HasLineBefore(const Lines& lines, std::size_t index) const {
    const int from = index > 0 ? m_ranges.ends[index - 1] : std::numeric_limits<int>::min();
    return NextLine(lines, from) < m_ranges.begins[index];
}

template <class Lines>
bool CAppParseRuleParagraph::HasLineBehindAll(const Lines& lines) const {
    const auto count = m_ranges.Count();
    const int from = count > 0 ? m_ranges.ends[count - 1] : std::numeric_limits<int>::min();
    return NextLine(lines, from) != NoLine;
}

// The indexes of the paragraphs without a line, ascending, less those that are settled.
template <class Lines>
std::vector<int> CAppParseRuleParagraph::FindGaps(const Lines& lines, std::size_t names,
                                                  FillState& state) const {
    const bool isWhole = m_firstNew == 0 || state.names != names;
    const auto from = isWhole ? 0 : m_firstNew;
    if (isWhole) state.hasOutside = false;
    state.names = names;
    for (auto i = from; i < m_ranges.Count(); ++i)
        if (HasLineBefore(lines, i)) state.hasOutside = true;
    std::vector<int> gaps;
    const auto count = m_ranges.begins.size();
    const bool hasOutside = state.hasOutside || HasLineBehindAll(lines);
    if (count > 0 && !hasOutside && !HasLine(lines, 0)) gaps.push_back(0);
    if (!isWhole) AddGapsThatBecameIndexes(lines, gaps);
    for (auto i = std::max<std::size_t>(from, 1); i < count; ++i)
        if (!HasLine(lines, i)) gaps.push_back(static_cast<int>(i));
    return gaps;
}

// Gaps of earlier runs whose begin line is an index only since this run.
template <class Lines>
void CAppParseRuleParagraph::AddGapsThatBecameIndexes(const Lines& lines,
                                                      std::vector<int>& gaps) const {
    const auto& begins = m_ranges.begins;
    const auto at = [&begins](std::size_t line) {
        return std::lower_bound(begins.begin(), begins.end(), static_cast<int>(line));
    };
    const auto last = at(begins.size());
    for (auto begin = at(m_earlierBegins); begin < last; ++begin) {
        const auto index = static_cast<std::size_t>(begin - begins.begin());
        if (index >= m_firstNew) break;
        if (index > 0 && !HasLine(lines, index)) gaps.push_back(static_cast<int>(index));
    }
}

void CAppParseRuleParagraph::FillTableChild(CAppParseRuleTable& child, FillState& state) const {
    static const CLetColumn noRows;
    const auto& values = child.Values().All();
    const auto gaps =
        FindGaps(values.empty() ? noRows : values.begin()->second, child.RowsVersion(), state);
    FillEmptyTableValue(child, gaps);
    state.names = child.RowsVersion();
}

// The numbers are indexes of this rule's paragraphs. From FillEmptyParagraphLines come line numbers
// all the same, and the rows then stand at the begins of other paragraphs; results in use have them
// there. A number that is no index is left out.
void CAppParseRuleParagraph::FillEmptyTableValue(CAppParseRuleTable& rule,
                                                 const std::vector<int>& indexes) const {
    for (const int index : indexes)
        if (index >= 0 && static_cast<std::size_t>(index) < m_ranges.begins.size())
            rule.StoreEmptyRow(m_ranges.begins[static_cast<std::size_t>(index)]);
}

void CAppParseRuleParagraph::FillParagraphChild(CAppParseRuleParagraph& child,
                                                FillState& state) const {
    const auto gaps = FindGaps(child.GetBeginLines(), CountNames(child), state);
    if (gaps.empty()) return;
    std::vector<int> lines;
    lines.reserve(gaps.size());
    for (const int gap : gaps) lines.push_back(m_ranges.begins[static_cast<std::size_t>(gap)]);
    for (const auto& grandchild : child.Children()) {
        if (auto* keyword = AsKeyWord(*grandchild))
            keyword->StoreEmptyValues(lines);
        else if (auto* paragraph = AsParagraph(*grandchild))
            FillEmptyParagraphLines(*paragraph, lines);
    }
}

void CAppParseRuleParagraph::FillEmptyParagraphValue(CAppParseRuleParagraph* rule,
                                                     const std::set<int>& lines) {
    if (rule != nullptr) FillEmptyParagraphLines(*rule, {lines.begin(), lines.end()});
}

// One level in two is passed over: of a paragraph below `rule`, the keyword rules are filled and
// its own paragraphs asked, but not its tables.
void CAppParseRuleParagraph::FillEmptyParagraphLines(CAppParseRuleParagraph& rule,
                                                     const std::vector<int>& lines) const {
    for (const auto& child : rule.Children()) {
        if (auto* keyword = AsKeyWord(*child)) keyword->StoreEmptyValues(lines);
        if (auto* table = AsTable(*child)) FillEmptyTableValue(*table, lines);
        auto* nested = AsParagraph(*child);
        if (nested == nullptr) continue;
        for (const auto& grandchild : nested->Children()) {
            if (auto* keyword = AsKeyWord(*grandchild))
                keyword->StoreEmptyValues(lines);
            else if (auto* paragraph = AsParagraph(*grandchild))
                FillEmptyParagraphLines(*paragraph, lines);
        }
    }
}
