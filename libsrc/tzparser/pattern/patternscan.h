#pragma once

#include "host/runtime/tzexport.h"

#include <cstddef>
#include <string_view>

// The expression that says what a variable is in a statement: "$", optionally a type word and a
// colon, a name, optionally alternatives in parentheses. Compiled case-insensitively it is the
// reference of CPatternScan.
TZPARSER_API extern const char* const PatternVariableRegex;

// CPatternScan finds the variables of a statement, one after the other, exactly where
// PatternVariableRegex matches, in time linear in the statement's length (the expression itself is
// quadratic on texts such as "$a($a($a(").
//
//     CPatternScan scan("rate $int:rate(low|high)");
//     while (scan.Next())
//         scan.Name();    // "rate", of the type "int:" with the alternatives "(low|high)"
//
// The views point into the text given, which must outlive the object.
class CPatternScan {
public:
    explicit CPatternScan(std::string_view text) : m_text(text) {}

    // Goes to the next variable; false when none is left.
    bool Next();

    // The current variable: the whole text matched, its byte offset, and its parts as written.
    std::string_view Match() const { return m_text.substr(m_begin, m_end - m_begin); }
    std::size_t Begin() const { return m_begin; }
    std::size_t End() const { return m_end; }
    std::string_view Type() const { return m_type; }
    std::string_view Name() const { return m_name; }
    std::string_view Alternatives() const { return m_alternatives; }

private:
    bool ReadAt(std::size_t dollar);
    std::size_t NameLength(std::size_t begin) const;
    std::size_t AlternativesLength(std::size_t begin);

    std::string_view m_text;
    std::size_t m_begin = 0;
    std::size_t m_end = 0;
    std::string_view m_type;
    std::string_view m_name;
    std::string_view m_alternatives;
    std::size_t m_nextClose = 0;  // the first ")" at or after the last place asked for
    std::size_t m_nextBar = 0;    // the same for "|"
};
