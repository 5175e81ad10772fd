#pragma once

#include "host/runtime/tzexport.h"

#include <cstdint>
#include <string_view>

// Masks of IPv4 networks as numbers of 32 bits; a set bit belongs to the network.
//
//     std::uint32_t mask = 0;
//     ReadIpMask("0.0.0.255", mask);   // true, 0xffffff00: a wildcard
//     IpMaskLength(mask);              // 24
//
// Pure functions, safe on any thread.

// Reads the whole of a text as a mask in one of the notations in use on devices:
//
//     24                 a length of 0 to 32, decimal
//     255.255.255.0      dotted decimal, with gaps too (255.0.255.0)
//     0.0.0.255          a wildcard, the inverse of a mask: dotted decimal whose set bits are the
//                        last ones. 0.0.0.0 and 255.255.255.255 are masks, not wildcards.
//     0xffffff00         "0x" and up to 8 hexadecimal digits
//     ffffff00           8 hexadecimal digits, when they make a mask without gaps
//
// On failure the mask stays as it was.
TZPARSER_API bool ReadIpMask(std::string_view text, std::uint32_t& mask);

// The mask with that many leading set bits; the length is taken as within 0 to 32.
TZPARSER_API std::uint32_t IpMaskOfLength(int length);

// The number of set bits, wherever they stand.
TZPARSER_API int IpMaskLength(std::uint32_t mask);

// Whether no set bit stands behind an unset one.
TZPARSER_API bool IpMaskIsContiguous(std::uint32_t mask);
