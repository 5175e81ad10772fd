#include "host/net/ipaddress.h"

#include "host/text/asciicase.h"

namespace {

// Takes one number of 0 to 255 off the front of the text.
bool TakeOctet(std::string_view& text, std::uint32_t& octet) {
    std::size_t length = 0;
    octet = 0;
    while (length < text.size() && length < 3 && AsciiIsDigit(text[length]))
        octet = octet * 10 + static_cast<std::uint32_t>(text[length++] - '0');
    if (length == 0 || octet > 255 || (length > 1 && text[0] == '0')) return false;
    text.remove_prefix(length);
    return true;
}

bool TakeDot(std::string_view& text) {
    if (text.empty() || text[0] != '.') return false;
    text.remove_prefix(1);
    return true;
}

}  // namespace

IpAddress::IpAddress(const std::string& text) {
    Read(text);
}

bool IpAddress::Read(std::string_view text) {
    std::uint32_t value = 0;
    for (int i = 0; i < 4; ++i) {
        std::uint32_t octet = 0;
        if ((i > 0 && !TakeDot(text)) || !TakeOctet(text, octet)) return false;
        value = value << 8 | octet;
    }
    if (!text.empty()) return false;
    m_value = value;
    return true;
}

std::string IpAddress::textForm() const {
    std::string text;
    text.reserve(15);
    for (int shift = 24; shift >= 0; shift -= 8) {
        if (shift < 24) text.push_back('.');
        text += std::to_string(m_value >> shift & 0xff);
    }
    return text;
}
