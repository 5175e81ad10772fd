#pragma once

#include "tzparser/rule/appparserule.h"
#include "tzparser/rule/appsamplelines.h"

#include <string_view>

// CRunLines reads the lines of one run of a rule, with the rule's replacements, without asking the
// tree for its root at each line.
//
//     const CRunLines lines(*this, GetSampleLines());
//     lines.Wrapped(3);
//
// Lives no longer than the run. Without sample lines every line is empty.
class CRunLines {
public:
    CRunLines(const CAppParseRule& rule, const CAppSampleLines* lines)
        : m_rule(rule), m_lines(lines), m_isReplaced(!rule.GetSearchReplaceResult().empty()) {}

    std::string_view Wrapped(int line) const {
        if (m_isReplaced) return m_rule.WrappedLineView(line);
        return Original(line);
    }
    std::string_view Original(int line) const {
        return m_lines != nullptr ? m_lines->View(line) : std::string_view();
    }

private:
    const CAppParseRule& m_rule;
    const CAppSampleLines* m_lines;
    bool m_isReplaced;
};
