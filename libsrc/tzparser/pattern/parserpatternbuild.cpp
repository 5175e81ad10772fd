// Building the expression of a normal statement.
//
// 1. The text is cut at its variables; each variable will be one capture group, chosen by its
// alternatives or its type.
// 2. The literal text between them is escaped (a "^" in front and a "$" at the end stay anchors),
// and each run of white
//    space becomes "\s+".
// 3. The captures go in between.
//
// The pieces are what putting a placeholder "#ph1000hp#" in place of each variable, escaping the
// whole and putting the captures in place of the placeholders gives. The two differ only for a
// statement that holds the text "#ph" itself: there an author's own "#ph1000hp#" is taken for the
// placeholder when it stands first, so such a statement goes through the placeholders for real.
#include "host/text/charset.h"
#include "host/text/stlhelper.h"
#include "host/text/strformat.h"
#include "tzparser/pattern/parserpatternhelper.h"
#include "tzparser/text/appcaptures.h"

#include <array>
#include <locale>
#include <string_view>

#include <boost/algorithm/string/replace.hpp>

namespace {

constexpr const char* PlaceholderFormat = "#ph{0}hp#";
constexpr const char* PlaceholderStart = "#ph";
constexpr int FirstPlaceholder = 1000;

struct TypeCapture {
    std::string_view type;
    AppCapture_e
        capture;  // AppCapture_Count: none of its own, that of the variable before stays in force
};

// What a variable of a type captures. The rows "long", "ip", "ipv6", "mac" and "percent" belong to
// the family, though no statement can name these types.
constexpr std::array<TypeCapture, 13> TypeCaptures = {{
    {"bool", AppCapture_Bool},
    {"int", AppCapture_Int},
    {"long", AppCapture_Int},
    {"double", AppCapture_Double},
    {"float", AppCapture_Double},
    {"ip", AppCapture_IP},
    {"ipv6", AppCapture_Count},
    {"mac", AppCapture_Count},
    {"percent", AppCapture_Count},
    {"configlet", AppCapture_ConfigLet},
    {"mstring", AppCapture_MString},
    {"mstr", AppCapture_MString},
    {"mword", AppCapture_MWord},
}};

std::string_view CaptureOfType(const std::string& type, std::string_view before) {
    for (const auto& row : TypeCaptures)
        if (row.type == type)
            return row.capture != AppCapture_Count ? GetAppCapture(row.capture) : before;
    return GetAppCapture(AppCapture_String);
}

// Escaped, each run of white space as "\s+".
void AppendLiteral(std::string_view text, std::string& regex) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (WhiteSpace.Has(text[i])) {
            if (i == 0 || !WhiteSpace.Has(text[i - 1])) regex.append("\\s+");
            continue;
        }
        if (StlHelper::IsRegexMetacharacter(text[i])) regex.push_back('\\');
        regex.push_back(text[i]);
    }
}

// The same, but for an anchor in front or at the end.
void AppendPiece(std::string_view text, bool keepsCaret, bool keepsDollar, std::string& regex) {
    if (keepsCaret && !text.empty() && text.front() == '^') {
        regex.push_back('^');
        text.remove_prefix(1);
    }
    const bool hasDollar = keepsDollar && !text.empty() && text.back() == '$';
    if (hasDollar) text.remove_suffix(1);
    AppendLiteral(text, regex);
    if (hasDollar) regex.push_back('$');
}

std::string Placeholder(int index) {
    StrFormat format(PlaceholderFormat);
    format << FirstPlaceholder + index;
    return format.str();
}

}  // namespace

std::string CParserPatternHelper::RegexEscape(const std::string& text, bool keepLeadingCaret,
                                              bool keepTrailingDollar) {
    std::size_t begin = 0;
    auto end = text.size();
    if (keepLeadingCaret && begin < end && text[begin] == '^') ++begin;
    if (keepTrailingDollar && begin < end && text[end - 1] == '$') --end;
    return text.substr(0, begin) + StlHelper::RegexEscape(text.substr(begin, end - begin)) +
           text.substr(end);
}

std::vector<std::string_view> CParserPatternHelper::ChooseCaptures() const {
    std::vector<std::string_view> captures;
    captures.reserve(m_variables.size());
    std::string_view before;
    for (const auto& variable : m_variables) {
        if (!variable.m_alternatives.empty()) {
            captures.emplace_back(variable.m_alternatives);
        } else {
            before = CaptureOfType(variable.m_type, before);
            captures.push_back(before);
        }
    }
    return captures;
}

void CParserPatternHelper::BuildRegex() {
    const auto captures = ChooseCaptures();
    if (StlHelper::findIgnoreCase(m_pattern, PlaceholderStart, 0) == std::string::npos)
        BuildRegexByPieces(captures);
    else
        BuildRegexByPlaceholders(captures);
}

void CParserPatternHelper::BuildRegexByPieces(const std::vector<std::string_view>& captures) {
    const std::string_view pattern = m_pattern;
    std::size_t at = 0;
    m_regex.reserve(2 * pattern.size());
    for (std::size_t i = 0; i < m_variables.size(); ++i) {
        const auto variable = pattern.find(m_variables[i].m_matchText, at);
        if (variable == std::string_view::npos) continue;  // left over from an earlier statement
        AppendPiece(pattern.substr(at, variable - at), at == 0, false, m_regex);
        m_regex += captures[i];
        at = variable + m_variables[i].m_matchText.size();
    }
    AppendPiece(pattern.substr(at), false, true, m_regex);
}

void CParserPatternHelper::BuildRegexByPlaceholders(const std::vector<std::string_view>& captures) {
    const auto& classic = std::locale::classic();
    std::string working = m_pattern;
    for (std::size_t i = 0; i < m_variables.size(); ++i)
        boost::algorithm::ireplace_first(working, m_variables[i].m_matchText,
                                         Placeholder(static_cast<int>(i)), classic);
    std::string regex;
    AppendPiece(working, true, true, regex);
    for (std::size_t i = 0; i < captures.size(); ++i)
        boost::algorithm::ireplace_first(regex, Placeholder(static_cast<int>(i)), captures[i],
                                         classic);
    m_regex = std::move(regex);
}
