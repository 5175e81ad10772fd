// A run: the mapping of lines to rows, made here or taken from the diff filter above, then the
// lines that it leaves open, then the children.
#include "host/text/strformat.h"
#include "tzparser/select/appparseruledifffilter.h"

#include <algorithm>

namespace {

constexpr const char* NoDiffText = "Cannot get diff text. start line:{0}, end line:{1}.";

bool IsInFront(const std::pair<int, int>& entry, int line) {
    return entry.first < line;
}

}  // namespace

bool CAppParseRuleDiffFilter::Parse(const std::string& text, int startLine, int endLine,
                                    IAppVariableCallback* callback) {
    m_lineMapping.clear();
    if (auto* parent = GetParentRule()) m_lineStatus = parent->LineStatus();
    m_lineStatus.CloseAllBut(startLine, endLine);
    if (const auto* outer = GetOuterDiffFilter())
        m_lineMapping = outer->m_lineMapping;
    else if (!MapLines(text, startLine, endLine))
        return false;
    CloseUnmapped(startLine, endLine);
    for (const auto& child : Children()) child->Parse(text, startLine, endLine, callback);
    return true;
}

const CAppParseRuleDiffFilter* CAppParseRuleDiffFilter::GetOuterDiffFilter() const {
    for (const auto* rule = GetParentRule(); rule != nullptr; rule = rule->GetParentRule())
        if (const auto* outer = dynamic_cast<const CAppParseRuleDiffFilter*>(rule)) return outer;
    return nullptr;
}

bool CAppParseRuleDiffFilter::HasRow(int row) const {
    const auto& lines = m_definition->lines;
    return lines.m_rows.count(row) != 0 && lines.m_addedRows.count(row) == 0;
}

// A range that leaves rows out needs a diff text of its own.
std::shared_ptr<const CDiffBaseline> CAppParseRuleDiffFilter::BaselineOf(int startLine,
                                                                         int endLine) const {
    const auto& whole = m_definition->baseline;
    if (whole && whole->LiesIn(startLine, endLine)) return whole;
    return std::make_shared<const CDiffBaseline>(m_definition->lines, startLine, endLine);
}

bool CAppParseRuleDiffFilter::MapLines(const std::string& text, int startLine, int endLine) {
    const auto baseline = BaselineOf(startLine, endLine);
    if (baseline->IsEmpty()) {
        SetLastError(StrFormat(NoDiffText) << startLine << endLine);
        return false;
    }
    m_lineMapping = baseline->Compare(text);
    return true;
}

// Entries outside of the range stay, whatever they say.
void CAppParseRuleDiffFilter::CloseUnmapped(int startLine, int endLine) {
    const int end = std::min(endLine, m_lineStatus.Count());
    int next = std::max(startLine, 0);
    const auto first =
        std::lower_bound(m_lineMapping.begin(), m_lineMapping.end(), next, &IsInFront);
    const auto last = std::lower_bound(first, m_lineMapping.end(), end, &IsInFront);
    auto kept = first;
    for (auto at = first; at != last; ++at) {
        if (!IsLineOpen(at->first) || !HasRow(at->second)) continue;
        m_lineStatus.Close(next, at->first);
        next = at->first + 1;
        *kept++ = *at;
    }
    m_lineStatus.Close(next, end);
    m_lineMapping.erase(kept, last);
}
