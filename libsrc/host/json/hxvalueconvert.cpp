// The conversions of Value: every type to every type, saturating where the wanted one is narrower.

#include "host/json/hxvaluebody.h"
#include "host/json/jsontext.h"
#include "host/json/realtext.h"
#include "host/text/asciicase.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <memory>
#include <system_error>

namespace hxJson {

namespace {

// The largest powers of two that stand just above the ranges; doubles hold them exactly.
constexpr double AboveInt64 = 9223372036854775808.0;
constexpr double AboveUInt64 = 18446744073709551616.0;

// The number at the start of the text, without blanks and "+" before it; empty if there is none.
// What it gives begins with an optional "-" and then a digit, or a point if `mayStartWithPoint`.
std::string_view NumberStart(std::string_view text, bool mayStartWithPoint) noexcept {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    if (!text.empty() && text[0] == '+') {
        text.remove_prefix(1);
        if (!text.empty() && text[0] == '-') return std::string_view();
    }
    const size_t sign = !text.empty() && text[0] == '-' ? 1 : 0;
    if (text.size() <= sign) return std::string_view();
    const bool starts = AsciiIsDigit(text[sign]) || (mayStartWithPoint && text[sign] == '.');
    return starts ? text : std::string_view();
}

template <typename Integer>
Integer ReadInteger(std::string_view text) noexcept {
    using Limits = std::numeric_limits<Integer>;
    text = NumberStart(text, false);
    if (text.empty()) return 0;
    const bool isNegative = text[0] == '-';
    if (isNegative && !Limits::is_signed) return 0;
    Integer number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec == std::errc::result_out_of_range)
        return isNegative ? Limits::min() : Limits::max();
    return number;
}

double ReadReal(std::string_view text) noexcept {
    double number = 0.0;
    ReadRealText(NumberStart(text, true), number);
    return number;
}

long long Int64Of(double real) noexcept {
    if (std::isnan(real)) return 0;
    if (real >= AboveInt64) return std::numeric_limits<long long>::max();
    if (real < -AboveInt64) return std::numeric_limits<long long>::min();
    return static_cast<long long>(real);
}

unsigned long long UInt64Of(double real) noexcept {
    if (std::isnan(real) || real <= 0.0) return 0;
    if (real >= AboveUInt64) return std::numeric_limits<unsigned long long>::max();
    return static_cast<unsigned long long>(real);
}

}  // namespace

bool Value::isInt() const noexcept {
    using Limits = std::numeric_limits<int>;
    return isInt64() && asInt64() >= Limits::min() && asInt64() <= Limits::max();
}

bool Value::isInt64() const noexcept {
    return m_type == intValue || (m_type == uintValue && m_data.integer >= 0);
}

bool Value::isUInt64() const noexcept {
    return m_type == uintValue || (m_type == intValue && m_data.integer >= 0);
}

int Value::asInt() const noexcept {
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(std::clamp<long long>(asInt64(), Limits::min(), Limits::max()));
}

long long Value::asInt64() const noexcept {
    constexpr auto most = static_cast<unsigned long long>(std::numeric_limits<long long>::max());
    switch (type()) {
        case intValue:
        case booleanValue:
            return m_data.integer;
        case uintValue:
            return static_cast<long long>(std::min(m_data.natural, most));
        case realValue:
            return Int64Of(m_data.real);
        case stringValue:
            return ReadInteger<long long>(*m_data.text);
        default:
            return 0;
    }
}

unsigned long long Value::asUInt64() const noexcept {
    switch (type()) {
        case uintValue:
            return m_data.natural;
        case realValue:
            return UInt64Of(m_data.real);
        case stringValue:
            return ReadInteger<unsigned long long>(*m_data.text);
        default:
            return static_cast<unsigned long long>(std::max(asInt64(), 0LL));
    }
}

double Value::asDouble() const noexcept {
    switch (type()) {
        case uintValue:
            return static_cast<double>(m_data.natural);
        case realValue:
            return m_data.real;
        case stringValue:
            return ReadReal(*m_data.text);
        default:
            return static_cast<double>(asInt64());
    }
}

bool Value::asBool() const noexcept {
    switch (type()) {
        case realValue:
            return m_data.real < 0.0 || m_data.real > 0.0;
        case stringValue:
            return AsciiEqualIgnoreCase(*m_data.text, "true") || ReadReal(*m_data.text) != 0.0;
        case uintValue:
            return m_data.natural != 0;
        default:
            return asInt64() != 0;
    }
}

std::string Value::asString() const {
    switch (type()) {
        case nullValue:
            return std::string();
        case intValue:
            return std::to_string(m_data.integer);
        case uintValue:
            return std::to_string(m_data.natural);
        case realValue:
            return RealJson(m_data.real);
        case stringValue:
            return *m_data.text;
        case booleanValue:
            return m_data.integer != 0 ? "true" : "false";
        default:
            return toString();
    }
}

// Two threads may ask one unchanging node at once: only a text that differs is exchanged, and then
// the node has changed, which is for one thread alone.
const char* Value::asCString() const {
    if (isString()) return m_data.text->c_str();
    if (isNull()) return "";
    auto made = std::make_unique<std::string>(asString());
    std::string* held = m_cachedText.load(std::memory_order_acquire);
    while (held == nullptr || *held != *made) {
        if (!m_cachedText.compare_exchange_weak(held, made.get(), std::memory_order_acq_rel))
            continue;
        delete held;
        held = made.release();
        break;
    }
    return held->c_str();
}

std::string_view Value::stringView() const noexcept {
    return isString() ? std::string_view(*m_data.text) : std::string_view();
}

}  // namespace hxJson
