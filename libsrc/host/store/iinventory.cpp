#include "host/store/iinventory.h"

#include <algorithm>
#include <cstring>

#include <arpa/inet.h>

namespace {

bool HasControlCharacter(const std::string& text) {
    return std::any_of(text.begin(), text.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < 0x20 || byte == 0x7F;
    });
}

bool IsName(const std::string& text, const char* field, std::string& error) {
    if (text.empty()) {
        error = std::string("the ") + field + " is empty";
    } else if (text.size() > LongestInventoryName) {
        error = std::string("the ") + field + " is longer than " +
                std::to_string(LongestInventoryName) + " bytes";
    } else if (HasControlCharacter(text)) {
        error = std::string("the ") + field + " holds a control character";
    } else {
        return true;
    }
    return false;
}

bool IsMappedIpv4(const in6_addr& address) {
    return IN6_IS_ADDR_V4MAPPED(&address);
}

int LongestPrefix(const std::string& address) {
    return address.find(':') == std::string::npos ? 32 : 128;
}

}  // namespace

bool IsTenantName(const std::string& tenant, std::string& error) {
    if (tenant.empty()) {
        error = "the tenant's name is empty";
    } else if (tenant.size() > LongestTenantName) {
        error = "the tenant's name is longer than " + std::to_string(LongestTenantName) + " bytes";
    } else if (tenant.find('\0') != std::string::npos || tenant.find('/') != std::string::npos ||
               tenant == "." || tenant == "..") {
        error = "the tenant's name can't be used: it is a path or holds \"/\" or NUL";
    } else {
        return true;
    }
    return false;
}

bool CanonicalRow(const InventoryRow& row, InventoryRow& canonical, std::string& error) {
    if (!IsName(row.device, "device", error)) return false;
    if (!IsName(row.interfaceName, "interface name", error)) return false;
    std::string address = CanonicalAddress(row.address);
    if (address.empty() && !row.address.empty()) {
        error = "the address is neither IPv4 nor IPv6";
        return false;
    }
    if (row.prefixLength < -1 || row.prefixLength > LongestPrefix(row.address)) {
        error = "the prefix length doesn't fit the address";
        return false;
    }
    canonical = row;
    // The prefix of an IPv4 address that is written inside an IPv6 one counts the 96 bits before.
    const int before = LongestPrefix(row.address) - LongestPrefix(address);
    canonical.prefixLength = std::max(row.prefixLength - before, -1);
    canonical.address = std::move(address);
    return true;
}

std::string CanonicalAddress(std::string_view text) {
    char buffer[INET6_ADDRSTRLEN];
    if (text.size() >= sizeof buffer || text.find('\0') != std::string_view::npos) return {};
    std::memcpy(buffer, text.data(), text.size());
    buffer[text.size()] = '\0';
    in_addr ipv4;
    if (inet_pton(AF_INET, buffer, &ipv4) == 1)
        return inet_ntop(AF_INET, &ipv4, buffer, sizeof buffer);
    in6_addr ipv6;
    if (inet_pton(AF_INET6, buffer, &ipv6) != 1) return {};
    return IsMappedIpv4(ipv6) ? inet_ntop(AF_INET, &ipv6.s6_addr[12], buffer, sizeof buffer)
                              : inet_ntop(AF_INET6, &ipv6, buffer, sizeof buffer);
}
