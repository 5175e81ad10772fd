// A run: find the paragraphs, close the lines between them, run the children over each, fill the
// gaps that they left, read the parent line.
//
// Below another paragraph the ranges of earlier runs are put aside and come back in front of the
// new ones. Runs mostly come in the order of the text, so nothing has to be sorted, and what
// earlier runs settled needn't be looked at again.
#include "tzparser/keyword/appparserulekeyword.h"
#include "tzparser/paragraph/appparseruleparagraph.h"
#include "tzparser/table/appparseruletable.h"

#include <algorithm>

namespace {

// Puts the earlier lines in front, sorted; false when they didn't stand in order.
bool PutInFront(std::vector<int>& earlier, std::vector<int>& lines) {
    const bool inOrder = earlier.empty() || lines.empty() || earlier.back() <= lines.front();
    const bool isSorted = inOrder && std::is_sorted(lines.begin(), lines.end());
    earlier.insert(earlier.end(), lines.begin(), lines.end());
    if (!isSorted) std::sort(earlier.begin(), earlier.end());
    earlier.swap(lines);
    return isSorted;
}

}  // namespace

bool CAppParseRuleParagraph::Parse(const std::string& text, int startLine, int endLine,
                                   IAppVariableCallback* callback) {
    if (!OnBeginParse(startLine, endLine)) return false;
    if (!m_scratch) m_scratch = std::make_unique<Scratch>();
    const auto plan = PlanOfRun();
    const Range range{std::clamp(GetNIStartLine(), 0, LineCount()),
                      std::clamp(GetNIEndLine(), 0, LineCount())};
    std::swap(m_earlier, m_ranges);
    m_ranges.Clear();
    ExecuteSearchReplace(range.first, range.last);
    FindParagraphs(*plan, range);
    CloseBetween();
    RunChildren(text, callback);
    AddEarlierRuns();
    if (NeedsFilling()) FillGaps();
    if (!m_ranges.begins.empty() && !m_definition->parentLine.empty())
        ParseParentLine(plan->parent, {range.first, m_ranges.begins.back()});
    return true;
}

void CAppParseRuleParagraph::RunChildren(const std::string& text, IAppVariableCallback* callback) {
    if (!IsBelowParagraph()) {
        m_needsFilling.reset();
        if (!IsLeaf()) ClearChildParagraphVariablePos(this);
    }
    const auto count = m_ranges.Count();
    for (std::size_t i = 0; i < count; ++i)
        for (const auto& child : Children())
            child->Parse(text, m_ranges.begins[i], m_ranges.ends[i], callback);
}

// Begins and ends are sorted each by itself.
void CAppParseRuleParagraph::AddEarlierRuns() {
    m_firstNew = 0;
    m_earlierBegins = 0;
    if (!IsBelowParagraph()) return;
    const auto settled = m_earlier.Count();
    const auto begins = m_earlier.begins.size();
    const bool beginsInOrder = PutInFront(m_earlier.begins, m_ranges.begins);
    const bool endsInOrder = PutInFront(m_earlier.ends, m_ranges.ends);
    if (!beginsInOrder || !endsInOrder) return;
    m_firstNew = settled;
    m_earlierBegins = begins;
}

// Only keyword rules are cleared: rows that a table below holds of an earlier parse stay.
void CAppParseRuleParagraph::ClearChildParagraphVariablePos(CAppParseRule* rule) {
    if (rule == nullptr) return;
    for (const auto& child : rule->Children()) {
        if (auto* keyword = dynamic_cast<CAppParseRuleKeyWord*>(child.get()))
            keyword->ClearValues();
        if (auto* paragraph = dynamic_cast<CAppParseRuleParagraph*>(child.get())) {
            paragraph->m_needsFilling.reset();
            paragraph->m_fillStates.clear();
        }
        if (auto* table = dynamic_cast<CAppParseRuleTable*>(child.get())) table->ReleaseEmptyRows();
        ClearChildParagraphVariablePos(child.get());
    }
}

bool CAppParseRuleParagraph::GetPosAtParagraphRange(int line, int& begin, int& end) const {
    const int index = FindParagraph(*this, line);
    if (index < 0) return true;
    begin = m_ranges.begins[static_cast<std::size_t>(index)];
    end = m_ranges.ends[static_cast<std::size_t>(index)];
    return true;
}

int CAppParseRuleParagraph::GetParagraphIndexByPos(int line) const {
    return std::max(FindParagraph(*this, line), 0);
}

int CAppParseRuleParagraph::GetVariableAtParagraphIndex(int line) const {
    const auto& ends = m_ranges.ends;
    const auto at = std::upper_bound(ends.begin(), ends.end(), line);
    return at == ends.end() ? -1 : static_cast<int>(at - ends.begin());
}
