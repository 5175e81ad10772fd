#pragma once

// Recognisers of addresses in device texts: they say whether a text has the form of an address, or
// pick one out of a line. They make no address objects.
//
//     StrHasIp2(" 3  203.0.113.9 (core) 4 ms")   // "203.0.113.9"
//     StrIsMac("0011.2233.4455")                 // true
//     StrIsIpv4("198.51.100.0/24")               // true
//
// Pure functions, safe on any thread. Texts are bytes; one with a NUL inside is no address.

#include "host/runtime/tzexport.h"

#include <string>
#include <string_view>

// The first IPv4 address that stands free in the text, else the first IPv6 address that does, else
// "". Free means that no letter, digit, "_" or further ".n" touches it ("1.2.3.4.5" and "v1.2.3.4"
// hold no address); brackets, a port, a prefix length, a full stop at its end or a row of dots
// before it do not matter. The result is a piece of the text as it stands. "::" alone is not taken,
// since it is common punctuation.
TZPARSER_API std::string StrHasIp2(std::string_view text);

// Whether the whole text is a MAC address in one of the usual notations, in either case:
// 00:11:22:33:44:55, 00-11-22-33-44-55, 00.11.22.33.44.55, 0011.2233.4455, 0011-2233-4455,
// 0011:2233:4455, 001122-334455, 001122:334455, 001122.334455, 001122334455. No blanks around it.
TZPARSER_API bool StrIsMac(std::string_view text);

// Whether the whole text is an IPv4 address in dotted decimal without leading zeros, alone
// ("10.0.0.1"), with a prefix length of 0 to 32 ("10.0.0.1/24") or with a mask of leading ones
// behind blanks or tabs
// ("10.0.0.1 255.255.255.0").
TZPARSER_API bool StrIsIpv4(std::string_view text);

// Whether the whole text is an IPv6 address, alone or with a prefix length of 0 to 128.
TZPARSER_API bool StrIsIpv6(std::string_view text);
