// The bounds of a rule: the line of a variable of another rule, or the first line that a statement
// fits. A bound that isn't found fails the rule: that is how a rule is switched off for a text that
// lacks its start.
#include "host/text/stlhelper.h"
#include "host/text/strformat.h"
#include "tzparser/rule/appparserule.h"
#include "tzparser/rule/appsamplelines.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace {

int Saturate(std::int64_t line) {
    return static_cast<int>(std::clamp<std::int64_t>(line, std::numeric_limits<int>::min(),
                                                     std::numeric_limits<int>::max()));
}

}  // namespace

bool CAppParseRule::OnBeginParse(int startLine, int endLine) {
    if (m_parent != nullptr) m_lineStatus = m_parent->LineStatus();
    int niStart = startLine;
    int niEnd = endLine;
    if (!CalcNILineNo(startLine, endLine, m_definition->niStart, true, niStart)) return false;
    if (!CalcNILineNo(startLine, endLine, m_definition->niEnd, false, niEnd)) return false;
    m_niStartLine = std::max(niStart, startLine);
    m_niEndLine = std::min(Saturate(std::int64_t{niEnd} + 1), endLine);
    return true;
}

bool CAppParseRule::GetNIStartEndLineNumber(int& startLine, int& endLine) {
    const int start = startLine;
    const int end = endLine;
    return CalcNILineNo(start, end, m_definition->niStart, true, startLine) &&
           CalcNILineNo(start, end, m_definition->niEnd, false, endLine);
}

bool CAppParseRule::CalcNILineNo(int startLine, int endLine, const NIGroupInfo& info, bool isStart,
                                 int& line) {
    switch (info.m_type) {
        case NIGroupType_None:
            return true;
        case NIGroupType_Variable:
            if (!CalcLineByVariable(info, line)) return false;
            break;
        case NIGroupType_Pattern:
            if (!CalcLineByPattern(startLine, endLine, info, line)) return false;
            break;
        default:
            SetLastError("not support start end line type.");
            return false;
    }
    if (info.m_skip > 0)
        line = Saturate(std::int64_t{line} + (isStart ? info.m_skip : -info.m_skip));
    return true;
}

// A rule that is found but has no line for the variable fails without words: the text that would
// tell it is dropped and the last error emptied, unlike the rule that isn't found.
bool CAppParseRule::CalcLineByVariable(const NIGroupInfo& info, int& line) {
    if (info.m_text.empty()) {
        SetLastError("variable is empty.");
        return false;
    }
    auto* owner = GetRootParentRule()->GetChildRuleByRuleId(info.m_xxid);
    if (owner == nullptr) {
        StrFormat words("can not find parse rule. guild:{0}");
        words << info.m_xxid;
        SetLastError(words.str());
        return false;
    }
    int found = -1;
    if (!owner->GetVariableLine(info.m_text, found)) {
        SetLastError({});
        return false;
    }
    line = found;
    return true;
}

bool CAppParseRule::CalcLineByPattern(int startLine, int endLine, const NIGroupInfo& info,
                                      int& line) {
    std::map<std::string, std::string> memo;
    std::set<std::string> multiLine;
    const auto regexText = GetRegexByLine(info.m_pattern, memo, multiLine);
    int found = endLine;
    if (multiLine.count(info.m_pattern) != 0) {
        int matchEnd = 0;
        found = ParseMultipleLineMatch(startLine, endLine, regexText, matchEnd);
    } else if (const auto expression = GetCachedRegex(regexText, CAppRegex::RuleFlags)) {
        found = FindLine(startLine, endLine, *expression);
    }
    if (found == endLine) return false;
    line = found;
    return true;
}

// The first open line that fits, endLine when none does. Original lines are searched, not replaced
// ones.
int CAppParseRule::FindLine(int startLine, int endLine, const CAppRegex& expression) {
    const auto* lines = GetSampleLines();
    if (lines == nullptr) return endLine;
    CAppRegexMatch match;
    const auto end = std::min(endLine, lines->Count());
    for (int line = std::max(startLine, 0); line < end; ++line) {
        if (!IsLineOpen(line)) continue;
        const auto result = expression.SearchTelling(lines->View(line), match);
        if (result == AppRegexSearch_Match) return line;
        if (result == AppRegexSearch_GaveUp) SetLastError("Catch any exception");
    }
    return endLine;
}
