#include "tzparser/engine/parserhelpernumber.h"

#include "host/text/charset.h"

#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>
#include <string_view>
#include <system_error>

#include <locale.h>

namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

std::string_view WithoutWhiteSpace(std::string_view text) {
    while (!text.empty() && WhiteSpace.Has(text.front())) text.remove_prefix(1);
    return text;
}

// The library's own conversion, for everything that isn't a plain decimal number.
bool RareReal(std::string_view view, double& number) noexcept {
    const std::string text(view);
    static const locale_t classic = newlocale(LC_ALL_MASK, "C", nullptr);
    const int before = errno;
    char* end = nullptr;
    errno = 0;
    number = strtod_l(text.c_str(), &end, classic);
    const bool isNumber = end != text.c_str() && errno != ERANGE;
    errno = before;
    return isNumber;
}

bool IsPlainDecimal(std::string_view number) {
    if (number.empty()) return false;
    if (number[0] == '.') return number.size() > 1 && IsDigit(number[1]);
    return IsDigit(number[0]) && !(number.size() > 1 && (number[1] == 'x' || number[1] == 'X'));
}

}  // namespace

bool RecordInteger(std::string_view text, std::int64_t& number) noexcept {
    auto digits = WithoutWhiteSpace(text);
    if (!digits.empty() && digits[0] == '+') {
        digits.remove_prefix(1);
        if (digits.empty() || !IsDigit(digits[0])) return false;
    }
    return std::from_chars(digits.data(), digits.data() + digits.size(), number).ec == std::errc();
}

bool RecordReal(std::string_view text, double& number) noexcept {
    auto digits = WithoutWhiteSpace(text);
    const bool isNegative = !digits.empty() && digits[0] == '-';
    if (isNegative || (!digits.empty() && digits[0] == '+')) digits.remove_prefix(1);
    if (!IsPlainDecimal(digits)) return RareReal(text, number);
    const auto end = digits.data() + digits.size();
    if (std::from_chars(digits.data(), end, number).ec != std::errc())
        return RareReal(text, number);
    // Whether a number this small is in range depends on whether it is exact.
    if (number < std::numeric_limits<double>::min() && number != 0) return RareReal(text, number);
    if (isNegative) number = -number;
    return true;
}
