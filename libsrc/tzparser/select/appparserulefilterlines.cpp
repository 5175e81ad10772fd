// The lists of patterns, one set of operations for all three.
#include "tzparser/select/appparserulefilter.h"

#include <algorithm>

void CAppParseRuleFilter::AddLine(std::vector<std::string> Definition::*list,
                                  const std::string& pattern) {
    (EditDefinition().*list).push_back(pattern);
    SetRuleModify();
}

void CAppParseRuleFilter::DelLine(std::vector<std::string> Definition::*list,
                                  const std::string& pattern) {
    const std::string removed = pattern;
    auto& lines = EditDefinition().*list;
    lines.erase(std::remove(lines.begin(), lines.end(), removed), lines.end());
    SetRuleModify();
}

void CAppParseRuleFilter::SetLines(std::vector<std::string> Definition::*list,
                                   const std::vector<std::string>& patterns) {
    EditDefinition().*list = patterns;
    SetRuleModify();
}

void CAppParseRuleFilter::AddSkipLine(const std::string& pattern) {
    AddLine(&Definition::skipLines, pattern);
}

void CAppParseRuleFilter::DelSkipLine(const std::string& pattern) {
    DelLine(&Definition::skipLines, pattern);
}

void CAppParseRuleFilter::SetSkipLine(const std::vector<std::string>& patterns) {
    SetLines(&Definition::skipLines, patterns);
}

void CAppParseRuleFilter::AddIncludeLine(const std::string& pattern) {
    AddLine(&Definition::includeLines, pattern);
}

void CAppParseRuleFilter::DelIncludeLine(const std::string& pattern) {
    DelLine(&Definition::includeLines, pattern);
}

void CAppParseRuleFilter::SetIncludeLine(const std::vector<std::string>& patterns) {
    SetLines(&Definition::includeLines, patterns);
}

void CAppParseRuleFilter::AddExcludeLine(const std::string& pattern) {
    AddLine(&Definition::excludeLines, pattern);
}

void CAppParseRuleFilter::DelExcludeLine(const std::string& pattern) {
    DelLine(&Definition::excludeLines, pattern);
}

void CAppParseRuleFilter::SetExcludeLine(const std::vector<std::string>& patterns) {
    SetLines(&Definition::excludeLines, patterns);
}
