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
}

void CTableFilling::FillGaps(CAppParseRuleTable& table, IParagraphScope& scope,
                             const std::vector<int>& begins, const std::vector<int>& ends,
                             std::size_t firstNew) {
    DropUndone(table);
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
bool CTableFilling::OverwritesRow(CAppParseRuleTable& table, const CGapFinder& finder,
                                  const std::vector<int>& begins, std::size_t firstNew) {
    const auto lowest = std::lower_bound(begins.begin(), begins.end(), table.TakeLowestRow());
    const auto from = std::min(firstNew, static_cast<std::size_t>(lowest - begins.begin()));
    const int lastRow = LastRow(table);
    const auto& rows = FirstColumn(table);
    for (auto i = from; i < begins.size() && begins[i] <= lastRow; ++i) {
        const bool isNoGap = finder.HoldsItsBegin(i) && rows.Has(begins[i]);
        if (!isNoGap && HasText(table, begins[i])) return true;
    }
    return false;
}

void CTableFilling::StoreRows(CAppParseRuleTable& table, IParagraphScope& scope,
                              const std::vector<int>& lines) {
    if (lines.empty()) return;
    DropUndone(table);
    m_notes.push_back({lines, 0, 0, 0});
    table.AwaitRows(scope, lines.back());
    const bool overwrites = std::any_of(lines.begin(), lines.end(),
                                        [&table](int line) { return HasText(table, line); });
    m_hasOverwritten = m_hasOverwritten || overwrites;
    if (overwrites || !table.HasAllColumns()) scope.StoreAwaitedRows();
}

void CTableFilling::StoreKept(CAppParseRuleTable& table, const std::vector<int>& begins,
                              const std::vector<int>& ends) {
    DropUndone(table);
    table.StopAwaiting();
    m_hasGapNote = false;
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
