#pragma once

// Letter case as device texts need it: the 26 letters of ASCII and nothing else. All other bytes
// (Latin-1, parts of UTF-8 sequences, NUL) stay as they are, whatever the global locale of the host
// says.
//
//     AsciiLower('K')                      // 'k'
//     AsciiEqualIgnoreCase("Gi0", "GI0")   // true
//
// Pure functions, safe on any thread.

#include <cstddef>
#include <string>
#include <string_view>

constexpr char AsciiLower(char c) noexcept {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

constexpr char AsciiUpper(char c) noexcept {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

constexpr bool AsciiIsDigit(char c) noexcept {
    return c >= '0' && c <= '9';
}

constexpr bool AsciiIsHexDigit(char c) noexcept {
    return AsciiIsDigit(c) || (AsciiLower(c) >= 'a' && AsciiLower(c) <= 'f');
}

constexpr bool AsciiIsAlnum(char c) noexcept {
    return AsciiIsDigit(c) || (AsciiLower(c) >= 'a' && AsciiLower(c) <= 'z');
}

inline void ToLowerInPlace(std::string& text) noexcept {
    for (char& c : text) c = AsciiLower(c);
}

inline void ToUpperInPlace(std::string& text) noexcept {
    for (char& c : text) c = AsciiUpper(c);
}

constexpr bool AsciiEqualIgnoreCase(std::string_view a, std::string_view b) noexcept {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i) {
        if (AsciiLower(a[i]) != AsciiLower(b[i])) return false;
    }
    return true;
}
