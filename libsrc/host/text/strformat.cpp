#include "host/text/strformat.h"

#include <charconv>
#include <cstddef>
#include <system_error>

namespace {

// The argument number of the placeholder that starts at `at` ("{" digits "}"), with `end` behind
// it; npos if there is no placeholder. A number too big for size_t is none.
size_t ReadPlaceholder(std::string_view format, size_t at, size_t& end) {
    const char* const first = format.data() + at + 1;
    const char* const last = format.data() + format.size();
    size_t number = 0;
    const auto [next, error] = std::from_chars(first, last, number);
    if (error != std::errc() || next == last || *next != '}') return std::string_view::npos;
    end = static_cast<size_t>(next - format.data()) + 1;
    return number;
}

}  // namespace

CFormatBase::CFormatBase(std::string format) : m_format(std::move(format)) {}

CFormatBase::~CFormatBase() = default;

std::string CFormatBase::str() const {
    std::string filled;
    filled.reserve(m_format.size() + 16 * m_params.size());
    size_t copied = 0;
    for (size_t at = m_format.find('{'); at != std::string::npos; at = m_format.find('{', at + 1)) {
        size_t end = 0;
        const size_t number = ReadPlaceholder(m_format, at, end);
        if (number >= m_params.size()) continue;
        filled.append(m_format, copied, at - copied).append(m_params[number]);
        copied = end;
    }
    return filled.append(m_format, copied, std::string::npos);
}

StrFormat& StrFormat::operator<<(const std::string& param) {
    AddParam(param);
    return *this;
}

StrFormat& StrFormat::operator<<(std::string_view param) {
    AddParam(std::string(param));
    return *this;
}

StrFormat& StrFormat::operator<<(const char* param) {
    return *this << std::string_view(param == nullptr ? "" : param);
}

StrFormat& StrFormat::operator<<(int param) {
    return *this << static_cast<long long>(param);
}

StrFormat& StrFormat::operator<<(long param) {
    return *this << static_cast<long long>(param);
}

StrFormat& StrFormat::operator<<(long long param) {
    AddParam(std::to_string(param));
    return *this;
}

StrFormat& StrFormat::operator<<(unsigned param) {
    return *this << static_cast<unsigned long long>(param);
}

StrFormat& StrFormat::operator<<(unsigned long param) {
    return *this << static_cast<unsigned long long>(param);
}

StrFormat& StrFormat::operator<<(unsigned long long param) {
    AddParam(std::to_string(param));
    return *this;
}
