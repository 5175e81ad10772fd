#pragma once

#include "tzparser/paragraph/gapfinder.h"

#include <cstddef>
#include <vector>

class CAppParseRuleTable;
class IParagraphScope;

// CTableFilling fills the gaps of one table below a paragraph with rows of empty cells, and does as
// late as possible what the next run of the table would undo.
//
//     CTableFilling filling;
//     filling.FillGaps(table, *this, ranges, firstNew);    // after each run of the paragraph
//     filling.StoreRows(table, *this, {giver, {4, 9}, 0}); // rows that a paragraph further up
//     gives filling.StoreKept(table, begins, ends);              // when someone wants to see them
//
// After each run of a paragraph all gaps so far are filled, and each run of the table that finds a
// header takes all rows of empty cells out again. Of a thousand fillings only the last ones are
// ever seen. So a filling is only noted, a run of the table drops the notes, and what is left is
// done in its order, once. The table looks then as if every filling had been done in its time.
//
// A filling is done at once where its effect would outlive the next run of the table: when it
// makes a column, or takes the place of a row that a run of the table stored. From then on each run
// of the paragraph looks at all its paragraphs, those of earlier runs too. Rows take places of
// others when ranges overlap or rows come from further up, so texts of devices hardly ever do this.
//
// One thread at a time.
class CTableFilling {
public:
    // Lines, ascending. Those before the first new one, but for the very first, are as at the call
    // before of the same giver; 0 when that isn't so.
    struct GivenRows {
        const void* giver = nullptr;
        std::vector<int> lines;
        std::size_t firstNew = 0;
    };

    // Fills the gaps among all paragraphs there are. Those before the first new one are as they
    // were at the call before; 0 when that isn't so. A note lives until the paragraphs before the
    // first new one change: call StoreKept before.
    void FillGaps(CAppParseRuleTable& table, IParagraphScope& scope, const std::vector<int>& begins,
                  const std::vector<int>& ends, std::size_t firstNew);
    // Stores rows of empty cells that a paragraph further up gives.
    void StoreRows(CAppParseRuleTable& table, IParagraphScope& scope, const GivenRows& rows);
    // Does what was noted. `begins` and `ends` begin with those of the last FillGaps.
    void StoreKept(CAppParseRuleTable& table, const std::vector<int>& begins,
                   const std::vector<int>& ends);

private:
    // A filling that was put off: of gaps, or of lines when there are some.
    struct Note {
        std::vector<int> lines;
        std::size_t beginCount = 0;
        std::size_t endCount = 0;
        std::size_t from = 0;
    };

    void DropUndone(const CAppParseRuleTable& table);
    void NoteLowestRow(CAppParseRuleTable& table);
    bool OverwritesRow(const CAppParseRuleTable& table, const CGapFinder& finder,
                       const std::vector<int>& begins, std::size_t firstNew);

    std::vector<Note> m_notes;
    bool m_hasGapNote = false;
    bool m_hasOverwritten = false;    // a row that a run of the table had stored
    const void* m_giver = nullptr;    // whose lines are all stored or noted
    int m_lowestRow = INT_MAX;        // of the runs since the last filling of gaps
    int m_lastGiven = INT_MIN;        // the highest line of StoreRows
    bool m_haveRowsComeBack = false;  // a run stored rows before that line
};
