#pragma once

#include "tzparser/pattern/parserpatternhelper.h"

#include <cstddef>
#include <string>

// CStatementCheck looks at one statement: the compiler's answer, and what is behind it when the
// statement is no good.
//
//     CStatementCheck check("regex[$a]:(");
//     if (!check.IsValid())
//         check.WhyInvalid().reason;         // "Unmatched ...", with the caret under the "("
//
// One thread at a time.
class CStatementCheck {
public:
    struct Fault {
        std::string reason;  // empty: no fault
        std::size_t caret;   // the byte offset in the statement, DefinitionFinding::NoCaret if none
    };

    explicit CStatementCheck(const std::string& statement);

    const std::string& Statement() const { return m_statement; }
    const CParserPatternHelper& Compiled() const { return m_helper; }
    // Whether the compiler took the statement, and its words if it didn't.
    bool IsValid() const { return m_isValid; }
    const std::string& Words() const { return m_words; }
    // Whether the author meant another form than a plain text: a marker of a form stands in it.
    bool HasMarker() const;

    // The reason behind the compiler's words.
    Fault WhyInvalid() const;
    // Of a valid statement: why its expression doesn't compile the way rules compile it.
    Fault WhyBroken() const;
    // Of a valid regex form: the number of capture groups; -1 when it can't be told.
    int CountGroups() const;
    // Of an mline statement: the place of a variable in the spans.
    std::size_t FindInSpans(const std::string& name) const;

private:
    Fault WhyRegexInvalid() const;
    Fault AtAlternatives(std::string&& reason) const;
    std::size_t BracketBegin() const;
    std::size_t ExpressionBegin() const;

    std::string m_statement;
    CParserPatternHelper m_helper;
    std::string m_words;
    bool m_isValid;
};
