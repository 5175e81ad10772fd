#include "tzparser/pattern/patternscan.h"

#include "host/text/asciicase.h"

#include <array>

const char* const PatternVariableRegex =
    "\\$(int:|float:|double:|string:|bool:|configlet:|mstr:|mstring:|mword:)?"
    "([a-zA-Z_][a-zA-Z0-9_]*)(\\([^\\)]*?\\|.*?\\))?";

namespace {

constexpr std::array<std::string_view, 9> TypeWords = {
    "int:", "float:", "double:", "string:", "bool:", "configlet:", "mstr:", "mstring:", "mword:"};

bool IsNameStart(char c) {
    const char lower = AsciiLower(c);
    return c == '_' || (lower >= 'a' && lower <= 'z');
}

bool IsNameChar(char c) {
    return IsNameStart(c) || (c >= '0' && c <= '9');
}

std::size_t TypeLength(std::string_view text) {
    for (const auto word : TypeWords)
        if (AsciiEqualIgnoreCase(text.substr(0, word.size()), word)) return word.size();
    return 0;
}

// Moves `next` on to the first `wanted` at or after `from`; never backwards, so that a scan reads
// the text once.
std::size_t MoveTo(std::string_view text, char wanted, std::size_t from, std::size_t& next) {
    if (next < from) next = text.find(wanted, from);
    return next;
}

}  // namespace

bool CPatternScan::Next() {
    for (auto dollar = m_text.find('$', m_end); dollar != std::string_view::npos;
         dollar = m_text.find('$', dollar + 1))
        if (ReadAt(dollar)) return true;
    return false;
}

bool CPatternScan::ReadAt(std::size_t dollar) {
    auto nameBegin = dollar + 1;
    auto typeLength = TypeLength(m_text.substr(nameBegin));
    auto nameLength = NameLength(nameBegin + typeLength);
    // A type word with no name behind it is itself the name: "$int: 5" is the variable "$int".
    if (nameLength == 0 && typeLength != 0) {
        typeLength = 0;
        nameLength = NameLength(nameBegin);
    }
    if (nameLength == 0) return false;
    m_begin = dollar;
    m_type = m_text.substr(nameBegin, typeLength);
    nameBegin += typeLength;
    m_name = m_text.substr(nameBegin, nameLength);
    m_end = nameBegin + nameLength;
    m_alternatives = m_text.substr(m_end, AlternativesLength(m_end));
    m_end += m_alternatives.size();
    return true;
}

std::size_t CPatternScan::NameLength(std::size_t begin) const {
    if (begin >= m_text.size() || !IsNameStart(m_text[begin])) return 0;
    auto end = begin + 1;
    while (end < m_text.size() && IsNameChar(m_text[end])) ++end;
    return end - begin;
}

// Alternatives end at the first ")" and hold a "|" before it.
std::size_t CPatternScan::AlternativesLength(std::size_t begin) {
    if (begin >= m_text.size() || m_text[begin] != '(') return 0;
    const auto close = MoveTo(m_text, ')', begin, m_nextClose);
    const auto bar = MoveTo(m_text, '|', begin, m_nextBar);
    if (close == std::string_view::npos || bar == std::string_view::npos || bar > close) return 0;
    return close - begin + 1;
}
