#include "host/python/tzp3typeobject.h"

#include "host/text/addresstext.h"
#include "host/text/asciicase.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>

// One kind of value: its code, and what its texts look like.
struct TzP3TypeRow {
    int m_code;
    bool (*m_check)(std::string_view text);
};

namespace {

std::string_view WithoutSign(std::string_view text) {
    if (!text.empty() && (text[0] == '+' || text[0] == '-')) text.remove_prefix(1);
    return text;
}

std::size_t CountDigits(std::string_view text) {
    std::size_t count = 0;
    while (count < text.size() && AsciiIsDigit(text[count])) ++count;
    return count;
}

bool IsAnything(std::string_view) {
    return true;
}

bool IsNothing(std::string_view) {
    return false;
}

bool IsBool(std::string_view text) {
    return text == "1" || text == "0" || AsciiEqualIgnoreCase(text, "true") ||
           AsciiEqualIgnoreCase(text, "false");
}

bool IsInt(std::string_view text) {
    const std::string_view digits = WithoutSign(text);
    if (digits.empty() || CountDigits(digits) != digits.size()) return false;
    if (text[0] == '+') text = digits;
    std::int64_t value = 0;
    return std::from_chars(text.data(), text.data() + text.size(), value).ec == std::errc();
}

// Whether a decimal number that is too big or too small for a double is too small, so that it
// stands for 0 and not for infinity: whether its first digit that isn't 0 comes to lie behind the
// point.
bool IsTiny(std::string_view number) {
    const std::size_t end = std::min(number.find_first_of("eE"), number.size());
    const std::size_t point = std::min(number.find('.'), end);
    const std::size_t first = std::min(number.find_first_of("123456789"), end);
    const double scale = static_cast<double>(point) - static_cast<double>(first);
    if (end == number.size()) return scale < 0;
    std::string_view digits = number.substr(end + 1);
    const bool negative = digits[0] == '-';
    digits = WithoutSign(digits);
    std::int64_t exponent = 0;
    if (std::from_chars(digits.data(), digits.data() + digits.size(), exponent).ec != std::errc())
        return negative;
    return scale + static_cast<double>(negative ? -exponent : exponent) < 0;
}

bool IsDouble(std::string_view text) {
    text = WithoutSign(text);
    if (text.empty() || (!AsciiIsDigit(text[0]) && text[0] != '.')) return false;
    double value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, status] = std::from_chars(text.data(), end, value);
    if (stop != end || status == std::errc::invalid_argument) return false;
    return status == std::errc() ? std::isfinite(value) : IsTiny(text);
}

bool IsPercent(std::string_view text) {
    if (text.empty() || text.back() != '%') return false;
    text.remove_suffix(1);
    text = WithoutSign(text);
    const std::size_t whole = CountDigits(text);
    if (whole == 0 || whole == text.size()) return whole != 0;
    text.remove_prefix(whole);
    return text[0] == '.' && text.size() > 1 && CountDigits(text.substr(1)) == text.size() - 1;
}

constexpr TzP3TypeRow TypeRows[] = {
    {1, StrIsIpv4},     // IP
    {2, StrIsMac},      // MAC
    {3, IsPercent},     // Percent
    {4, StrIsIpv6},     // IPv6
    {100, IsAnything},  // string
    {101, IsInt},       // int
    {102, IsDouble},    // double, float
    {103, IsBool},      // bool
    {104, IsNothing},   // dict
    {105, IsNothing},   // array
    {201, IsNothing},   // DeviceTrafficState
    {202, IsNothing},   // NCTRecord
};

}  // namespace

TzP3TypeObject* TzP3TypeObject::CreateObj(int code) {
    for (const TzP3TypeRow& row : TypeRows)
        if (row.m_code == code) return new TzP3TypeObject(row);
    return nullptr;
}

void TzP3TypeObject::SetText(const std::string& text) {
    m_text = text;
}

bool TzP3TypeObject::Check(const std::string& text) const {
    return m_row.m_check(text);
}

int TzP3TypeObject::GetCode() const {
    return m_row.m_code;
}
