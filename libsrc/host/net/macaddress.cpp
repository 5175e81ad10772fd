#include "host/net/macaddress.h"

#include "host/text/addresstext.h"
#include "host/text/asciicase.h"

#include <algorithm>

namespace {

constexpr std::uint64_t Above48Bits = std::uint64_t{0xffff} << 48;
constexpr std::size_t Eui64Digits = 16;

// How a format groups its digits; without a separator there is one group.
constexpr struct Grouping {
    int m_format;
    int m_digits;
    char m_separator;
} Groupings[] = {{4, 4, '.'}, {1, 16, '\0'}, {2, 2, '-'}, {3, 2, ':'}, {5, 4, '-'}};

const Grouping& GroupingOf(int format) {
    for (const Grouping& row : Groupings)
        if (row.m_format == format) return row;
    return Groupings[0];
}

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t begin = text.find_first_not_of(blanks);
    if (begin == std::string_view::npos) return std::string_view();
    return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

// Whether the text is 16 hexadecimal digits, bare or in groups of one size with one separator.
bool IsEui64(std::string_view text) {
    const std::size_t group = std::min(text.find_first_of(":-."), text.size());
    if (group != Eui64Digits && group != 2 && group != 4) return false;
    if (text.size() != Eui64Digits + Eui64Digits / group - 1) return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isSeparator = i % (group + 1) == group;
        if (isSeparator ? text[i] != text[group] : !AsciiIsHexDigit(text[i])) return false;
    }
    return true;
}

std::uint64_t DigitsOf(std::string_view text) {
    std::uint64_t value = 0;
    for (const char c : text) {
        if (!AsciiIsHexDigit(c)) continue;
        const int digit = AsciiIsDigit(c) ? c - '0' : AsciiLower(c) - 'a' + 10;
        value = value << 4 | static_cast<std::uint64_t>(digit);
    }
    return value;
}

}  // namespace

MacAddress::MacAddress(const std::string& text) {
    Read(text);
}

bool MacAddress::Read(std::string_view text) {
    text = Trimmed(text);
    const bool isLong = IsEui64(text);
    if (!isLong && !StrIsMac(text)) return false;
    const std::uint64_t value = DigitsOf(text);
    if (isLong && (value & Above48Bits) == 0) return false;
    m_value = value;
    return true;
}

std::string MacAddress::TextForm(int format) const {
    const Grouping& grouping = GroupingOf(format);
    const int digits = (m_value & Above48Bits) != 0 ? 16 : 12;
    std::string text;
    text.reserve(24);
    for (int i = 0; i < digits; ++i) {
        if (i > 0 && i % grouping.m_digits == 0) text.push_back(grouping.m_separator);
        text.push_back("0123456789abcdef"[m_value >> 4 * (digits - 1 - i) & 0xf]);
    }
    return text;
}
