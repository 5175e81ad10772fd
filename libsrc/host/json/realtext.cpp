#include "host/json/realtext.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <system_error>

namespace hxJson {

namespace {

// The value of the exponent, or one beyond all numbers if it does not fit.
long long ExponentOf(std::string_view text) noexcept {
    if (!text.empty() && text[0] == '+') text.remove_prefix(1);
    long long exponent = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), exponent);
    if (result.ec != std::errc::result_out_of_range) return exponent;
    constexpr long long beyond = std::numeric_limits<long long>::max() / 2;
    return text[0] == '-' ? -beyond : beyond;
}

// Whether a number that no double holds is too big, and not too small: std::from_chars does not
// say. It is too big if its first digit that counts stands before the point once the exponent has
// moved the point.
bool IsTooBig(std::string_view number) noexcept {
    const size_t mark = number.find_first_of("eE");
    const std::string_view digits = number.substr(0, mark);
    const auto first = static_cast<long long>(digits.find_first_of("123456789"));
    const auto point = static_cast<long long>(std::min(digits.find('.'), digits.size()));
    const bool hasExponent = mark != std::string_view::npos;
    return point - first + (hasExponent ? ExponentOf(number.substr(mark + 1)) : 0) > 0;
}

}  // namespace

bool ReadRealText(std::string_view text, double& number) noexcept {
    number = 0.0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec != std::errc::result_out_of_range) return true;
    number = 0.0;
    if (!IsTooBig(text.substr(0, static_cast<size_t>(result.ptr - text.data())))) return true;
    using Limits = std::numeric_limits<double>;
    number = text[0] == '-' ? Limits::lowest() : Limits::max();
    return false;
}

}  // namespace hxJson
