// A run: find the paragraphs, close the lines between them, run the children over each, fill the
// gaps that they left, read the parent line.
//
// Below another paragraph the ranges of earlier runs are put aside and come back in front of the
// new ones. Runs mostly come in the order of the text, so nothing has to be sorted, and what
// earlier runs settled needn't be looked at again.
#include "tzparser/keyword/appparserulekeyword.h"
#include "tzparser/paragraph/appparseruleparagraph.h"

#include <algorithm>

namespace {

// Whether lines stand in order behind the earlier ones.
bool FollowInOrder(const std::vector<int>& earlier, const std::vector<int>& lines) {
    const bool inOrder = earlier.empty() || lines.empty() || earlier.back() <= lines.front();
    return inOrder && std::is_sorted(lines.begin(), lines.end());
}

// Puts the earlier lines in front, sorted.
void PutInFront(std::vector<int>& earlier, std::vector<int>& lines, bool isSorted) {
    earlier.insert(earlier.end(), lines.begin(), lines.end());
    if (!isSorted) std::sort(earlier.begin(), earlier.end());
    earlier.swap(lines);
}

// Marks a rule as running for as long as it lives.
class RunMark {
public:
    explicit RunMark(bool& mark) : m_mark(mark) { m_mark = true; }
    ~RunMark() { m_mark = false; }
    RunMark(const RunMark&) = delete;
    RunMark& operator=(const RunMark&) = delete;

private:
    bool& m_mark;
};

const CAppParseRuleParagraph* AsParagraph(const CAppParseRule* rule) {
    return dynamic_cast<const CAppParseRuleParagraph*>(rule);
}

}  // namespace

// The rows that fill gaps of the tables are kept back while a paragraph above goes on running.
bool CAppParseRuleParagraph::Parse(const std::string& text, int startLine, int endLine,
                                   IAppVariableCallback* callback) {
    if (!OnBeginParse(startLine, endLine)) return false;
    if (!m_scratch) m_scratch = std::make_unique<Scratch>();
    const RunMark mark(m_isRunning);
    const auto plan = PlanOfRun();
    const Range range{std::clamp(GetNIStartLine(), 0, LineCount()),
                      std::clamp(GetNIEndLine(), 0, LineCount())};
    std::swap(m_earlier, m_ranges);
    m_isApart = true;
    m_ranges.Clear();
    ExecuteSearchReplace(range.first, range.last);
    FindParagraphs(*plan, range);
    CloseBetween();
    RunChildren(text, callback);
    AddEarlierRuns();
    if (NeedsFilling()) FillGaps();
    if (!m_ranges.begins.empty() && !m_definition->parentLine.empty())
        ParseParentLine(plan->parent, {range.first, m_ranges.begins.back()});
    const auto* above = AsParagraph(GetParentRule());
    if (above == nullptr || !above->m_isRunning) StoreAwaitedRowsBelow();
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
    if (IsBelowParagraph()) {
        auto& [begins, ends] = m_ranges;
        for (const int begin : begins) m_lowestBegin = std::min(m_lowestBegin, begin);
        const bool beginsInOrder = FollowInOrder(m_earlier.begins, begins);
        const bool endsInOrder = FollowInOrder(m_earlier.ends, ends);
        if (beginsInOrder && endsInOrder)
            m_firstNew = m_earlier.Count();
        else
            StoreAwaitedRows();
        PutInFront(m_earlier.begins, begins, beginsInOrder);
        PutInFront(m_earlier.ends, ends, endsInOrder);
    }
    m_isApart = false;
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
