#pragma once

#include "host/runtime/tzexport.h"

#include <cstdint>
#include <string>
#include <string_view>

// MacAddress is a hardware address of 48 bits, or of 64 (EUI-64), as one number; 0 is no address.
//
//     const MacAddress mac("00-00-5E-00-53-01");
//     mac.Value();        // 0x00005e005301
//     mac.TextForm(4);    // "0000.5e00.5301"
//
// A number above 48 bits is an address of 64. So an EUI-64 whose first two bytes are 0 can't be
// held: it would read as another, shorter address, and is refused.
//
// A plain value: const operations may run on several threads at once, none throws but for want of
// memory, and none depends on the locale.
class TZPARSER_API MacAddress {
public:
    // No address.
    MacAddress() = default;
    explicit MacAddress(std::uint64_t value) : m_value(value) {}
    // Reads a text, see Read; what can't be read gives no address.
    explicit MacAddress(const std::string& text);

    // Reads the whole of a text, blanks and line ends around it aside, in any notation that
    // StrIsMac takes, or as an EUI-64: 16 hexadecimal digits, bare or in groups of two or four that
    // are joined by ":", "-" or ".". Case doesn't matter. On failure the address stays as it was.
    bool Read(std::string_view text);

    std::uint64_t Value() const { return m_value; }

    // The address in small hexadecimal digits; a 64-bit address has the further groups.
    //
    //     1   "00005e005301"
    //     2   "00-00-5e-00-53-01"
    //     3   "00:00:5e:00:53:01"
    //     4   "0000.5e00.5301", also for every number that isn't in this list
    //     5   "0000-5e00-5301"
    //
    // No address gives a text of zeros.
    std::string TextForm(int format) const;
    void TextForm(std::string& out, int format) const { out = TextForm(format); }

    bool operator==(const MacAddress& other) const { return m_value == other.m_value; }
    bool operator!=(const MacAddress& other) const { return m_value != other.m_value; }
    bool operator<(const MacAddress& other) const { return m_value < other.m_value; }

private:
    std::uint64_t m_value = 0;
};
