// Search and replace: a rule inherits the replaced lines of the rules above it and rewrites them
// with its own operations. Operations on one line apply one after the other. An operation that
// doesn't replace all works once in the whole range, on the first line that it changes.
#include "tzparser/rule/appparserule.h"
#include "tzparser/rule/appsamplelines.h"

#include <algorithm>

bool CAppParseRule::ExecuteSearchReplace(int startLine, int endLine) {
    m_searchReplaceResult =
        m_parent != nullptr ? m_parent->m_searchReplaceResult : decltype(m_searchReplaceResult)();
    if (m_definition->operations.empty()) return true;
    std::vector<char> done(m_definition->operations.size(), 0);
    const auto end = std::min(endLine, m_lineStatus.Count());
    for (int line = std::max(startLine, 0); line < end; ++line)
        if (IsLineOpen(line)) ReplaceInLine(line, done);
    return true;
}

void CAppParseRule::ReplaceInLine(int line, std::vector<char>& done) {
    const auto& operations = m_definition->operations;
    const auto earlier = m_searchReplaceResult->find(line);
    std::string current(earlier != m_searchReplaceResult->end() ? std::string_view(earlier->second)
                                                                : OriginalLineView(line));
    bool changed = false;
    for (std::size_t i = 0; i < operations.size(); ++i) {
        const auto& operation = operations[i];
        if (!operation.HasOriginal() || (done[i] != 0 && !operation.IsReplaceAll())) continue;
        if (!operation.Apply(current)) continue;
        changed = true;
        done[i] = 1;
    }
    if (changed) m_searchReplaceResult.Edit()[line] = std::move(current);
}

const std::string& CAppParseRule::GetSearchReplaceLine(int line) const {
    static const std::string none;
    if (m_searchReplaceResult->empty()) return none;
    const auto at = m_searchReplaceResult->find(line);
    return at != m_searchReplaceResult->end() ? at->second : none;
}

bool CAppParseRule::GetSearchReplaceLine(int line, std::string& text) const {
    text = GetSearchReplaceLine(line);
    return !text.empty();
}
