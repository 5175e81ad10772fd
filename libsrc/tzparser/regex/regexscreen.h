#pragma once

#include "tzparser/regex/regextree.h"

#include <array>
#include <cstddef>
#include <string_view>

// CRegexScreen looks for a string that every match of an expression holds, many times faster than
// the expression itself is searched.
//
//     const CRegexScreen screen(tree);
//     if (!screen.Passes(line)) return;     // surely no match
//
// Letters stand for both cases where the expression takes both. Immutable.
class CRegexScreen {
public:
    // Without a string: passes everything.
    CRegexScreen() = default;
    explicit CRegexScreen(const RegexTree& tree);

    bool Passes(std::string_view text) const noexcept { return m_length == 0 || Find(text); }
    // The string, letters of both cases as small ones.
    std::string_view Text() const noexcept { return {m_bytes.data(), m_length}; }

private:
    static constexpr std::size_t MaxLength = 16;

    struct Candidate;
    class CChooser;

    bool Find(std::string_view text) const noexcept;
    bool FindInShort(std::string_view text) const noexcept;
    bool FindIn(const char* begin, std::size_t places) const noexcept;
    bool IsAt(const char* at) const noexcept;

    // A byte of the text fits when it is the string's after the bits of `m_fold` were set.
    std::array<char, MaxLength> m_bytes{};
    std::array<char, MaxLength> m_fold{};
    std::size_t m_length = 0;
    // Places in the string whose bytes are rare; both are looked at before the rest.
    std::size_t m_firstProbe = 0;
    std::size_t m_lastProbe = 0;
};
