// Reading a statement: which of the six forms it has, and its variables.
#include "tzparser/pattern/parserpatternhelper.h"

#include "host/text/asciicase.h"
#include "host/text/stlhelper.h"
#include "tzparser/pattern/appregex.h"
#include "tzparser/pattern/patternscan.h"

#include <array>
#include <string_view>

const std::string DummyVariableName = "$_dummy";

namespace {

constexpr std::string_view MultiRegexMarker = "mregex:";
constexpr std::string_view MultiRegexBracket = "mregex[";
constexpr std::string_view RegexMarker = "regex:";
constexpr std::string_view RegexBracket = "regex[";
constexpr std::string_view MlineBracket = "mline[";
constexpr std::string_view BracketEnd = "]:";
constexpr const char* InvalidPattern = "Invalid pattern.";
constexpr const char* InvalidRegex = "Invalid regex.";

struct DataTypeWord {
    std::string_view word;
    AppDataType_e type;
};

constexpr std::array<DataTypeWord, 10> DataTypeWords = {{
    {"int", AppDataType_Int},
    {"double", AppDataType_Double},
    {"float", AppDataType_Float},
    {"string", AppDataType_String},
    {"bool", AppDataType_Bool},
    {"ip", AppDataType_IP},
    {"mac", AppDataType_Mac},
    {"percent", AppDataType_Percent},
    {"ipv6", AppDataType_IPv6},
    {"configlet", AppDataType_ConfigLet},
}};

// The type word that leaves the compiler: "mstr" goes out as it is, unlike the longer "mstring".
const std::string& ExportedType(const std::string& type) {
    static const std::string string = "string";
    static const std::string real = "double";
    if (type.empty() || type == "mstring" || type == "mword") return string;
    if (type == "float") return real;
    return type;
}

}  // namespace

bool CParserPatternHelper::Parse(const std::string& pattern, std::string& error) {
    m_pattern = pattern;
    m_regex.clear();
    m_isRegex = false;
    m_isMultiLineRegex = false;
    m_isMline = false;
    error = InvalidPattern;
    if (ParseForm(pattern, error)) return true;
    if (m_isRegex) error = InvalidRegex;
    return false;
}

// The order of the markers decides: "mregex:" holds "regex:", and a line of text that happens to
// hold a marker is a statement of that form. What stands before the marker is dropped.
bool CParserPatternHelper::ParseForm(const std::string& pattern, std::string& error) {
    auto at = pattern.find(MultiRegexMarker);
    if (at != std::string::npos) {
        m_regex = pattern.substr(at + MultiRegexMarker.size());
        m_isRegex = m_isMultiLineRegex = true;
        return IsCompilable();
    }
    at = pattern.find(MultiRegexBracket);
    if (at != std::string::npos)
        return ParseBracketForm(pattern, at + MultiRegexBracket.size(), true, error);
    at = pattern.find(RegexMarker);
    if (at != std::string::npos) {
        m_regex = pattern.substr(at + RegexMarker.size());
        m_isRegex = true;
        return IsCompilable();
    }
    at = pattern.find(RegexBracket);
    if (at != std::string::npos)
        return ParseBracketForm(pattern, at + RegexBracket.size(), false, error);
    at = pattern.find(MlineBracket);
    if (at != std::string::npos) return ParseMline(pattern, at + MlineBracket.size(), error);
    return ParseNormal(pattern, error);
}

// The two bracket forms differ when the bracket names no variable: "regex[" has become a regex
// statement by then and is refused as "Invalid regex.", "mregex[" hasn't and is refused as "Invalid
// pattern.".
bool CParserPatternHelper::ParseBracketForm(const std::string& pattern, std::size_t bracket,
                                            bool multiLine, std::string& error) {
    const auto end = pattern.find(BracketEnd, bracket);
    if (end == std::string::npos) return false;
    const std::string variables = pattern.substr(bracket, end - bracket);
    if (multiLine && !ParseVariables(variables, error)) return false;
    m_regex = pattern.substr(end + BracketEnd.size());
    m_isRegex = true;
    m_isMultiLineRegex = multiLine;
    if (!multiLine && !ParseVariables(variables, error)) return false;
    return IsCompilable();
}

bool CParserPatternHelper::ParseMline(const std::string& pattern, std::size_t bracket,
                                      std::string& error) {
    const auto end = pattern.find(BracketEnd, bracket);
    if (end == std::string::npos) return false;
    if (!ParseVariables(pattern.substr(bracket, end - bracket), error)) return false;
    std::vector<std::string> pieces;
    StlHelper::splitString(pattern.substr(end + BracketEnd.size()), ",", pieces);
    for (const auto& piece : pieces) {
        auto span = StlHelper::trump(piece);
        if (!span.empty()) m_mlineSpans.push_back(std::move(span));
    }
    m_isMline = true;
    return !m_mlineSpans.empty();
}

bool CParserPatternHelper::ParseNormal(const std::string& pattern, std::string& error) {
    if (pattern == "^$") {
        m_regex = pattern;
        return true;
    }
    if (!ParseVariables(pattern, error)) return false;
    BuildRegex();
    return true;
}

bool CParserPatternHelper::ParseVariables(const std::string& text, std::string&) {
    CPatternScan scan(text);
    while (scan.Next()) {
        PatternVariable variable;
        variable.m_matchText = scan.Match();
        variable.m_type = scan.Type().substr(0, scan.Type().find(':'));
        if (variable.m_type.empty()) variable.m_type = "string";
        ToLowerInPlace(variable.m_type);
        variable.m_name.assign("$").append(scan.Name());
        variable.m_alternatives = scan.Alternatives();
        m_variables.push_back(std::move(variable));
    }
    return !m_variables.empty();
}

bool CParserPatternHelper::IsCompilable() const {
    return CAppRegex(m_regex, 0).IsValid();
}

std::vector<std::string> CParserPatternHelper::GetVarNames() const {
    std::vector<std::string> names;
    names.reserve(m_variables.size());
    for (const auto& variable : m_variables) names.push_back(variable.m_name);
    return names;
}

std::vector<std::pair<std::string, std::string>> CParserPatternHelper::GetVarTypesWithOrder()
    const {
    std::vector<std::pair<std::string, std::string>> types;
    types.reserve(m_variables.size());
    for (const auto& variable : m_variables)
        types.emplace_back(variable.m_name, ExportedType(variable.m_type));
    return types;
}

std::map<std::string, std::string> CParserPatternHelper::GetVarTypes() const {
    std::map<std::string, std::string> types;
    for (auto& [name, type] : GetVarTypesWithOrder()) types[name] = std::move(type);
    return types;
}

bool CParserPatternHelper::GetMlineVariables(
    std::string& name, std::vector<std::pair<std::string, std::string>>& spans) const {
    if (!m_isMline || m_variables.empty()) return false;
    name = m_variables.front().m_name;
    spans.clear();
    for (const auto& span : m_mlineSpans) {
        const auto dash = span.find('-');
        std::string first = span.substr(0, dash);
        StlHelper::trim(first, " \t");
        std::string second = dash == std::string::npos ? first : span.substr(dash + 1);
        StlHelper::trim(second, " \t");
        spans.emplace_back(std::move(first), std::move(second));
    }
    return true;
}

AppDataType_e CParserPatternHelper::GetDataType(const std::string& typeName) {
    for (const auto& row : DataTypeWords)
        if (AsciiEqualIgnoreCase(typeName, row.word)) return row.type;
    return AppDataType_String;
}
