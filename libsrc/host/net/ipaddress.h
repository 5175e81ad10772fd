#pragma once

#include "host/runtime/tzexport.h"

#include <cstdint>
#include <string>
#include <string_view>

// IpAddress is one IPv4 address without a mask, a number of 32 bits whose most significant byte is
// the first of the dotted text.
//
//     const IpAddress address("192.0.2.7");
//     address.Value();      // 0xc0000207
//     address.textForm();   // "192.0.2.7"
//
// A plain value: const operations may run on several threads at once, none throws but for want of
// memory, and none depends on the locale.
class TZPARSER_API IpAddress {
public:
    // 0.0.0.0.
    IpAddress() = default;
    explicit IpAddress(std::uint32_t value) : m_value(value) {}
    // Reads dotted text; what isn't an address gives 0.0.0.0. See Read.
    explicit IpAddress(const std::string& text);

    // Reads the whole of a text as four decimal numbers of 0 to 255 joined by dots. Leading zeros
    // are refused, since some systems take them for octal. On failure the address stays as it was.
    bool Read(std::string_view text);

    std::uint32_t Value() const { return m_value; }
    // Dotted decimal text.
    std::string textForm() const;

    bool operator==(const IpAddress& other) const { return m_value == other.m_value; }
    bool operator!=(const IpAddress& other) const { return m_value != other.m_value; }
    bool operator<(const IpAddress& other) const { return m_value < other.m_value; }

private:
    std::uint32_t m_value = 0;
};
