// Notes are done in their order. The first filling of gaps looks at all paragraphs. Those after it
// look at the first paragraph and the new ones only: in the others there is a row by now, and as
// the table hasn't run since, rows only come up, so filling them again would store the same.
#include "tzparser/paragraph/tablefilling.h"

#include "tzparser/rule/paragraphscope.h"
#include "tzparser/table/appparseruletable.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace {

// The rows that count: those of the first variable.
const CLetColumn& FirstColumn(const CAppParseRuleTable& table) {
    static const CLetColumn noRows;
    const auto& columns = table.StoredValues().All();
    return columns.empty() ? noRows : columns.begin()->second;
}

bool HasText(const CAppParseRuleTable& table, int line) {
    const auto& columns = table.StoredValues().All();
    return std::any_of(columns.begin(), columns.end(),
                       [line](const auto& column) { return column.second.HasText(line); });
}

int LastRow(const CAppParseRuleTable& table) {
    int last = CLetColumn::NoLineYet;
    for (const auto& column : table.StoredValues().All())
        last = std::max(last, column.second.LastLine());
    return last;
}

}  // namespace

// A run of the table has undone what was noted before it.
void CTableFilling::DropUndone(const CAppParseRuleTable& table) {
    if (table.AwaitsRows()) return;
    m_notes.clear();
    m_hasGapNote = false;
    m_giver = nullptr;
}

void CTableFilling::FillGaps(CAppParseRuleTable& table, IParagraphScope& scope,
                             const std::vector<int>& begins, const std::vector<int>& ends,
                             std::size_t firstNew) {
    DropUndone(table);
    NoteLowestRow(table);
    const CGapFinder finder({begins, begins.size(), ends, ends.size()});
    const bool overwrites = OverwritesRow(table, finder, begins, m_hasOverwritten ? 0 : firstNew);
    m_hasOverwritten = m_hasOverwritten || overwrites;
    m_notes.push_back({{}, begins.size(), ends.size(), m_hasGapNote ? firstNew : 0});
    m_hasGapNote = true;
    table.AwaitRows(scope, begins.empty() ? CLetColumn::NoLineYet : begins.back());
    if (overwrites || !table.HasAllColumns()) StoreKept(table, begins, ends);
}

// Whether a gap may begin where the table has a row. Only new paragraphs and new rows can be the
// reason: others were found before. Once a row was lost, a paragraph may have become a gap.
bool CTableFilling::OverwritesRow(const CAppParseRuleTable& table, const CGapFinder& finder,
                                  const std::vector<int>& begins, std::size_t firstNew) {
    const auto lowest =
        std::lower_bound(begins.begin(), begins.end(), std::exchange(m_lowestRow, INT_MAX));
    const auto from = std::min(firstNew, static_cast<std::size_t>(lowest - begins.begin()));
    const int lastRow = LastRow(table);
    const auto& rows = FirstColumn(table);
    for (auto i = from; i < begins.size() && begins[i] <= lastRow; ++i) {
        const bool isNoGap = finder.HoldsItsBegin(i) && rows.Has(begins[i]);
        if (!isNoGap && HasText(table, begins[i])) return true;
    }
    return false;
}

// A giver's rows of the call before are still there, or noted, when the table hasn't run since.
void CTableFilling::StoreRows(CAppParseRuleTable& table, IParagraphScope& scope,
                              const GivenRows& rows) {
    if (rows.lines.empty()) return;
    DropUndone(table);
    NoteLowestRow(table);
    const auto& lines = rows.lines;
    const auto firstNew = lines.begin() + static_cast<std::ptrdiff_t>(rows.firstNew);
    Note note;
    note.lines.push_back(lines.front());
    note.lines.insert(note.lines.end(), firstNew, lines.end());
    const auto& asked = m_haveRowsComeBack ? lines : note.lines;
    const bool overwrites = std::any_of(asked.begin(), asked.end(),
                                        [&table](int line) { return HasText(table, line); });
    m_hasOverwritten = m_hasOverwritten || overwrites;
    if (m_giver != rows.giver) note.lines = lines;
    m_giver = rows.giver;
    m_lastGiven = std::max(m_lastGiven, lines.back());
    m_notes.push_back(std::move(note));
    table.AwaitRows(scope, lines.back());
    if (overwrites || !table.HasAllColumns()) scope.StoreAwaitedRows();
}

// The rows of a run mostly stand behind all lines given before it.
void CTableFilling::NoteLowestRow(CAppParseRuleTable& table) {
    const int lowest = table.TakeLowestRow();
    m_lowestRow = std::min(m_lowestRow, lowest);
    m_haveRowsComeBack = m_haveRowsComeBack || lowest <= m_lastGiven;
}

void CTableFilling::StoreKept(CAppParseRuleTable& table, const std::vector<int>& begins,
                              const std::vector<int>& ends) {
    DropUndone(table);
    table.StopAwaiting();
    m_hasGapNote = false;
    m_giver = nullptr;
    std::optional<CGapFinder> finder;
    bool hasOutside = false;
    for (const auto& note : std::exchange(m_notes, {})) {
        auto lines = note.lines;
        if (lines.empty()) {
            finder.emplace(CGapFinder::Paragraphs{begins, note.beginCount, ends, note.endCount});
            lines = finder->Find(FirstColumn(table), note.from, hasOutside);
            for (int& line : lines) line = begins[static_cast<std::size_t>(line)];
        }
        for (const int line : lines) {
            table.StoreEmptyRow(line);
            hasOutside = hasOutside || (finder && finder->IsBetween(line));
        }
    }
}
