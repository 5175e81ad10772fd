#pragma once

#include "host/runtime/tzexport.h"
#include "tzparser/variable/appdatatype.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

// The name that takes a capture group and throws its value away.
TZPARSER_API extern const std::string DummyVariableName;

// CParserPatternHelper compiles one statement of the statement language: a line of a device's
// output with its variable parts marked, an expression written by hand, or a span of lines between
// other variables.
//
//     CParserPatternHelper helper;
//     std::string error;
//     if (helper.Parse("Success rate is $int:lost_rate percent", error))
//         helper.GetRegex();       // Success\s+rate\s+is\s+(\-?\d+)\s+percent
//         helper.GetVarNames();    // {"$lost_rate"}
//
// The six forms, in the order in which their markers are looked for anywhere in the statement:
//
//     mregex:EXPRESSION              one expression over a range of lines, no variables
//     mregex[VARIABLES]:EXPRESSION   the same, its groups paired with the variables in order
//     regex:EXPRESSION               one expression for a line, no variables
//     regex[VARIABLES]:EXPRESSION    the same with variables
//     mline[VARIABLE]:SPANS          the lines between other variables; no expression
//     anything else                  literal text with $variables
//
// One object serves one statement; make a new one for the next, since variables and spans of an
// earlier Parse stay. An object is used by one thread at a time; copies are independent.
class TZPARSER_API CParserPatternHelper {
public:
    // Compiles a statement. On false `error` says "Invalid pattern." (no closing "]:", no variable
    // where one is needed, an mline statement without spans) or "Invalid regex." (an expression
    // that doesn't compile, or a regex[ bracket without a variable), and the object is to be
    // discarded. `error` is set first and stays on success too: look at it only after false. Throws
    // nothing.
    bool Parse(const std::string& pattern, std::string& error);

    // The expression; empty for an mline statement.
    const std::string& GetRegex() const { return m_regex; }
    // Whether the author wrote the expression by hand (the four regex forms).
    bool IsRegex() const { return m_isRegex; }
    bool IsMultiLineRegex() const { return m_isMultiLineRegex; }
    bool IsMline() const { return m_isMline; }

    // The variables' names with their "$", in order of appearance, "$_dummy" included.
    std::vector<std::string> GetVarNames() const;
    // Names and type words, in order: "mstring", "mword" and no type read "string", "float" reads
    // "double"; every other word stands as written, "mstr" too.
    std::vector<std::pair<std::string, std::string>> GetVarTypesWithOrder() const;
    // The same by name; of two variables of one name the later one wins.
    std::map<std::string, std::string> GetVarTypes() const;
    // For an mline statement: the name of its variable and its spans, each a pair of the variables
    // between which the lines lie; the second is empty for a span open to the end, and equal to the
    // first for a span of one variable. False for every other statement.
    bool GetMlineVariables(std::string& name,
                           std::vector<std::pair<std::string, std::string>>& spans) const;

    // The data type of a type word, compared without case; string for a word that is none.
    static AppDataType_e GetDataType(const std::string& typeName);
    // Puts a backslash before each metacharacter; a "^" in front or a "$" at the end can be kept as
    // anchors.
    static std::string RegexEscape(const std::string& text, bool keepLeadingCaret,
                                   bool keepTrailingDollar);

protected:
    bool ParseNormal(const std::string& pattern, std::string& error);
    bool ParseVariables(const std::string& text, std::string& error);
    void BuildRegex();

private:
    struct PatternVariable {
        std::string m_matchText;     // as written, type and alternatives included
        std::string m_type;          // the type word in small letters
        std::string m_name;          // with the leading "$"
        std::string m_alternatives;  // with their parentheses, or empty
    };

    bool ParseForm(const std::string& pattern, std::string& error);
    bool ParseBracketForm(const std::string& pattern, std::size_t bracket, bool multiLine,
                          std::string& error);
    bool ParseMline(const std::string& pattern, std::size_t bracket, std::string& error);
    bool IsCompilable() const;
    // Views into the variables and constants.
    std::vector<std::string_view> ChooseCaptures() const;
    void BuildRegexByPieces(const std::vector<std::string_view>& captures);
    void BuildRegexByPlaceholders(const std::vector<std::string_view>& captures);

    std::string m_pattern;
    std::string m_regex;
    bool m_isRegex = false;
    bool m_isMultiLineRegex = false;
    bool m_isMline = false;
    std::vector<PatternVariable> m_variables;
    std::vector<std::string> m_mlineSpans;
};
