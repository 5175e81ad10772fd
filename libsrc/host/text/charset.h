#pragma once

#include <array>
#include <string_view>

// CharSet is a set of characters that is asked for one at a time: on texts of a few bytes a search
// for each of them takes longer than a look at a table.
//
//     constexpr CharSet blanks(" \t");
//     blanks.Has('\t')                     // true
//
// A constant; safe on any thread.
class CharSet {
public:
    constexpr explicit CharSet(std::string_view characters) {
        for (const char c : characters) m_has[static_cast<unsigned char>(c)] = true;
    }
    constexpr bool Has(char c) const { return m_has[static_cast<unsigned char>(c)]; }

private:
    std::array<bool, 256> m_has{};
};

// White space as the classic locale has it.
inline constexpr CharSet WhiteSpace(" \t\n\v\f\r");
