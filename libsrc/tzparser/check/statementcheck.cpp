#include "tzparser/check/statementcheck.h"

#include "host/text/asciicase.h"
#include "tzparser/check/checkreport.h"
#include "tzparser/pattern/appregex.h"
#include "tzparser/pattern/patternscan.h"

#include <array>
#include <string_view>

namespace {

constexpr std::size_t NoCaret = DefinitionFinding::NoCaret;
constexpr std::string_view RegexMarker = "regex:";
constexpr std::string_view BracketEnd = "]:";
// In the order in which the compiler looks for them.
constexpr std::array<std::string_view, 3> Brackets = {"mregex[", "regex[", "mline["};

bool IsNamePart(char c) {
    return AsciiIsAlnum(c) || c == '_' || c == '$';
}

}  // namespace

CStatementCheck::CStatementCheck(const std::string& statement)
    : m_statement(statement), m_isValid(m_helper.Parse(statement, m_words)) {
    if (m_isValid) m_words.clear();
}

bool CStatementCheck::HasMarker() const {
    return m_helper.IsRegex() || BracketBegin() != NoCaret;
}

// Behind the bracket of the form that the compiler saw.
std::size_t CStatementCheck::BracketBegin() const {
    for (const auto bracket : Brackets) {
        const auto at = m_statement.find(bracket);
        if (at != std::string::npos) return at + bracket.size();
    }
    return NoCaret;
}

// The expression of a regex form is the statement's end.
std::size_t CStatementCheck::ExpressionBegin() const {
    return m_statement.size() - m_helper.GetRegex().size();
}

CStatementCheck::Fault CStatementCheck::WhyInvalid() const {
    if (m_helper.IsRegex()) return WhyRegexInvalid();
    const auto bracket = BracketBegin();
    if (bracket == NoCaret) return {CheckText(CheckMessage_ReasonNoVariable), NoCaret};
    if (m_statement.find(BracketEnd, bracket) == std::string::npos)
        return {CheckText(CheckMessage_ReasonBracketOpen), m_statement.size()};
    if (m_helper.IsMline()) return {CheckText(CheckMessage_ReasonNoSpan), m_statement.size()};
    return {CheckText(CheckMessage_ReasonBracketEmpty), bracket};
}

// The compiler tests an expression with case counting, rules compile it without: a range such as
// "[a-Z]" fails only there.
CStatementCheck::Fault CStatementCheck::WhyRegexInvalid() const {
    const bool hasBracket = m_statement.find(RegexMarker) == std::string::npos;
    if (hasBracket && m_helper.GetVarNames().empty())
        return {CheckText(CheckMessage_ReasonBracketEmpty), BracketBegin()};
    Fault fault{{}, 0};
    if (!CAppRegex::Diagnose(m_helper.GetRegex(), fault.reason, fault.caret))
        fault.reason = CheckText(CheckMessage_ReasonCase);
    fault.caret += ExpressionBegin();
    return fault;
}

CStatementCheck::Fault CStatementCheck::WhyBroken() const {
    Fault fault{{}, 0};
    if (!CAppRegex::Diagnose(m_helper.GetRegex(), fault.reason, fault.caret)) return {{}, NoCaret};
    if (!m_helper.IsRegex()) return AtAlternatives(std::move(fault.reason));
    fault.caret += ExpressionBegin();
    return fault;
}

// In a plain statement only alternatives can break the expression: those that don't compile by
// themselves, else the first.
CStatementCheck::Fault CStatementCheck::AtAlternatives(std::string&& reason) const {
    Fault first{std::move(reason), NoCaret};
    CPatternScan scan(m_statement);
    while (scan.Next()) {
        if (scan.Alternatives().empty()) continue;
        const auto begin = scan.End() - scan.Alternatives().size();
        Fault fault{{}, 0};
        if (CAppRegex::Diagnose(scan.Alternatives(), fault.reason, fault.caret)) {
            fault.caret += begin;
            return fault;
        }
        if (first.caret == NoCaret) first.caret = begin;
    }
    return first;
}

// With an empty alternative behind it the expression matches any text, and a match knows its
// groups.
int CStatementCheck::CountGroups() const {
    const CAppRegex expression(m_helper.GetRegex() + "|", CAppRegex::RuleFlags);
    CAppRegexMatch match;
    return expression.Search({}, match) == AppRegexSearch_Match ? match.GroupCount() : -1;
}

std::size_t CStatementCheck::FindInSpans(const std::string& name) const {
    const auto bracketEnd = m_statement.find(BracketEnd, BracketBegin());
    if (bracketEnd == std::string::npos) return NoCaret;
    const auto begin = bracketEnd + BracketEnd.size();
    for (auto at = m_statement.find(name, begin); at != std::string::npos;
         at = m_statement.find(name, at + 1)) {
        const auto end = at + name.size();
        const bool endsThere = end >= m_statement.size() || !IsNamePart(m_statement[end]);
        if (endsThere && !IsNamePart(m_statement[at - 1])) return at;
    }
    return begin;
}
