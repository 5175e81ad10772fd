#include "host/net/ipmask.h"

#include "host/net/ipaddress.h"

#include <bitset>
#include <charconv>
#include <system_error>

namespace {

bool ReadNumber(std::string_view text, int base, std::uint32_t& number) {
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number, base);
    return error == std::errc() && stop == end;
}

bool ReadLength(std::string_view text, std::uint32_t& mask) {
    std::uint32_t length = 0;
    if (text.size() > 2 || !ReadNumber(text, 10, length) || length > 32) return false;
    mask = IpMaskOfLength(static_cast<int>(length));
    return true;
}

bool ReadDotted(std::string_view text, std::uint32_t& mask) {
    IpAddress dotted;
    if (!dotted.Read(text)) return false;
    const std::uint32_t inverse = ~dotted.Value();
    const bool isWildcard = dotted.Value() != 0 && inverse != 0 && IpMaskIsContiguous(inverse);
    mask = isWildcard ? inverse : dotted.Value();
    return true;
}

bool ReadHex(std::string_view text, std::uint32_t& mask) {
    const bool marked = text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
    if (marked) text.remove_prefix(2);
    std::uint32_t number = 0;
    if (text.size() > 8 || !ReadNumber(text, 16, number)) return false;
    if (!marked && (text.size() != 8 || !IpMaskIsContiguous(number))) return false;
    mask = number;
    return true;
}

}  // namespace

bool ReadIpMask(std::string_view text, std::uint32_t& mask) {
    return ReadLength(text, mask) || ReadDotted(text, mask) || ReadHex(text, mask);
}

std::uint32_t IpMaskOfLength(int length) {
    return length <= 0 ? 0 : ~std::uint32_t{0} << (32 - length);
}

int IpMaskLength(std::uint32_t mask) {
    return static_cast<int>(std::bitset<32>(mask).count());
}

bool IpMaskIsContiguous(std::uint32_t mask) {
    const std::uint32_t inverse = ~mask;
    return (inverse & (inverse + 1)) == 0;
}
