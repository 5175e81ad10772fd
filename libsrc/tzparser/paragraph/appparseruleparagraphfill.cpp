// Filling of gaps, so that rows line up: a paragraph in which a child found nothing gets empty
// values at its first line.
//
// Below another paragraph this runs after every run, over the paragraphs of all runs so far. Empty
// values of keyword rules stay: paragraphs of earlier runs have a line or were filled, and filling
// them again would store the same. So only the new ones are looked at, and the first. Three things
// make older ones count again: a child that has other variables now, begins of it that didn't come
// in order, and ranges of this rule that didn't. Rows of empty cells go with the next run of their
// table and come back with the next filling (tablefilling.h).
#include "tzparser/keyword/appparserulekeyword.h"
#include "tzparser/paragraph/appparseruleparagraph.h"
#include "tzparser/paragraph/gapfinder.h"
#include "tzparser/table/appparseruletable.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace {

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

// What is filled below a rule, and so at which levels: one in two is passed over. Of a paragraph
// below a rule, the keyword rules are filled and its own paragraphs asked, but not its tables.
// Calls fillKeyWord(keyword) and fillTable(paragraph, table).
template <class FillKeyWord, class FillTable>
void ForEachFilled(CAppParseRuleParagraph& rule, FillKeyWord fillKeyWord, FillTable fillTable) {
    for (const auto& child : rule.Children()) {
        if (auto* keyword = AsKeyWord(*child)) fillKeyWord(*keyword);
        if (auto* table = AsTable(*child)) fillTable(rule, *table);
        auto* nested = AsParagraph(*child);
        if (nested == nullptr) continue;
        for (const auto& grandchild : nested->Children()) {
            if (auto* keyword = AsKeyWord(*grandchild))
                fillKeyWord(*keyword);
            else if (auto* paragraph = AsParagraph(*grandchild))
                ForEachFilled(*paragraph, fillKeyWord, fillTable);
        }
    }
}

const auto NoKeyWord = [](CAppParseRuleKeyWord&) {};
const auto NoTable = [](CAppParseRuleParagraph&, CAppParseRuleTable&) {};

}  // namespace

// Whether a keyword child has a variable; asked once a parse, not once a run.
bool CAppParseRuleParagraph::NeedsFilling() {
    if (!m_needsFilling) m_needsFilling = HasVariables();
    return *m_needsFilling;
}

void CAppParseRuleParagraph::FillGaps() {
    m_fillStates.resize(Children().size());
    const auto& [begins, ends] = m_ranges;
    for (std::size_t i = 0; i < Children().size(); ++i) {
        auto& child = *Children()[i];
        if (auto* table = AsTable(child))
            m_fillStates[i].rows.FillGaps(*table, *this, begins, ends, m_firstNew);
        else if (auto* paragraph = AsParagraph(child))
            FillParagraphChild(*paragraph, m_fillStates[i]);
    }
}

int CAppParseRuleParagraph::TakeLowestBegin() {
    return std::exchange(m_lowestBegin, INT_MAX);
}

void CAppParseRuleParagraph::FillParagraphChild(CAppParseRuleParagraph& child,
                                                FillState& state) const {
    const auto& [begins, ends] = m_ranges;
    const auto names = CountNames(child);
    const auto lowest = child.TakeLowestBegin();
    const bool isWhole = m_firstNew == 0 || state.names != names || lowest < ends[m_firstNew - 1];
    state.names = names;
    const CGapFinder finder({begins, begins.size(), ends, ends.size()});
    auto lines = finder.Find(child.GetBeginLines(), isWhole ? 0 : m_firstNew, state.hasOutside);
    const bool isFirstGap = !lines.empty() && lines.front() == 0;
    for (int& line : lines) line = begins[static_cast<std::size_t>(line)];
    const auto fill = [&lines](CAppParseRuleKeyWord& keyword) { keyword.StoreEmptyValues(lines); };
    for (const auto& grandchild : child.Children()) {
        if (lines.empty()) break;
        if (auto* keyword = AsKeyWord(*grandchild))
            fill(*keyword);
        else if (auto* paragraph = AsParagraph(*grandchild))
            ForEachFilled(*paragraph, fill, NoTable);
    }
    if (isWhole) {
        state.rowsOfGaps.clear();
        state.rowsUpTo = 0;
    }
    FillTablesBelow(child, state, isFirstGap);
}

// Tables go by all gaps again, since their rows go.
void CAppParseRuleParagraph::FillTablesBelow(CAppParseRuleParagraph& child, FillState& state,
                                             bool isFirstGap) const {
    std::optional<CTableFilling::GivenRows> rows;
    const auto fill = [&](CAppParseRuleParagraph& rule, CAppParseRuleTable& table) {
        if (!rows) rows = RowsOfGaps(child.GetBeginLines(), state, isFirstGap);
        rule.StoreRowsBelow(table, *rows);
    };
    for (const auto& grandchild : child.Children())
        if (auto* paragraph = AsParagraph(*grandchild)) ForEachFilled(*paragraph, NoKeyWord, fill);
}

// Where the rows of gaps go that are given by their lines. A gap that begins at a line behind the
// number of paragraphs gives none, so the others come first. Only a paragraph that has an end stays
// what it is.
CTableFilling::GivenRows CAppParseRuleParagraph::RowsOfGaps(const std::vector<int>& lines,
                                                            FillState& state,
                                                            bool isFirstGap) const {
    const auto& [begins, ends] = m_ranges;
    const CGapFinder finder({begins, begins.size(), ends, ends.size()});
    const auto isIndex = [&begins = begins](std::size_t i) {
        return i < begins.size() && static_cast<std::size_t>(begins[i]) < begins.size();
    };
    const auto rowOf = [&begins = begins](std::size_t i) {
        return begins[static_cast<std::size_t>(begins[i])];
    };
    auto& rows = state.rowsOfGaps;
    const auto firstNew = rows.size();
    auto i = std::max<std::size_t>(state.rowsUpTo, 1);
    for (; i < m_ranges.Count() && isIndex(i); ++i)
        if (!finder.HasLine(lines, i)) rows.push_back(rowOf(i));
    state.rowsUpTo = i;
    CTableFilling::GivenRows given{this, {}, firstNew};
    if (isFirstGap && isIndex(0)) {
        given.lines.push_back(rowOf(0));
        ++given.firstNew;
    }
    given.lines.insert(given.lines.end(), rows.begin(), rows.end());
    for (i = std::max(i, m_ranges.Count()); isIndex(i); ++i) given.lines.push_back(rowOf(i));
    return given;
}

// The numbers are indexes of this rule's paragraphs. For tables further down they are line numbers
// all the same, and the rows then stand at the begins of other paragraphs; results in use have them
// there. A number that is no index is left out.
std::vector<int> CAppParseRuleParagraph::RowsAtIndexes(const std::vector<int>& indexes) const {
    std::vector<int> lines;
    for (const int index : indexes)
        if (index >= 0 && static_cast<std::size_t>(index) < m_ranges.begins.size())
            lines.push_back(m_ranges.begins[static_cast<std::size_t>(index)]);
    return lines;
}

void CAppParseRuleParagraph::StoreRowsBelow(CAppParseRuleTable& table,
                                            const CTableFilling::GivenRows& rows) {
    m_fillStates.resize(Children().size());
    for (std::size_t i = 0; i < Children().size(); ++i)
        if (Children()[i].get() == &table) m_fillStates[i].rows.StoreRows(table, *this, rows);
}

void CAppParseRuleParagraph::StoreAwaitedRows() {
    const auto& [begins, ends] = m_isApart ? m_earlier : m_ranges;
    m_fillStates.resize(Children().size());
    for (std::size_t i = 0; i < Children().size(); ++i)
        if (auto* table = AsTable(*Children()[i]))
            m_fillStates[i].rows.StoreKept(*table, begins, ends);
}

void CAppParseRuleParagraph::StoreAwaitedRowsBelow() {
    StoreAwaitedRows();
    for (const auto& child : Children())
        if (auto* paragraph = AsParagraph(*child)) paragraph->StoreAwaitedRowsBelow();
}

void CAppParseRuleParagraph::FillEmptyParagraphValue(CAppParseRuleParagraph* rule,
                                                     const std::set<int>& lines) {
    if (rule == nullptr) return;
    const std::vector<int> indexes(lines.begin(), lines.end());
    const CTableFilling::GivenRows rows{nullptr, RowsAtIndexes(indexes), 0};
    ForEachFilled(
        *rule, [&](CAppParseRuleKeyWord& keyword) { keyword.StoreEmptyValues(indexes); },
        [&](CAppParseRuleParagraph& paragraph, CAppParseRuleTable& table) {
            paragraph.StoreRowsBelow(table, rows);
        });
    rule->StoreAwaitedRowsBelow();
}
