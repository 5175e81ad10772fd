#pragma once

#include "host/text/charset.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// What the steps of a table share: sets of characters, and searching by positions that may be -1.
namespace TableText {

// Between headers; at the edges of cells and between the words of a header; what a line of nothing
// but rules has; between the tokens of a row.
inline constexpr CharSet Blanks(" \t");
inline constexpr std::string_view SpaceCharacters = " \t\r\n";
inline constexpr CharSet Spaces(SpaceCharacters);
inline constexpr CharSet RuleCharacters(" \t\n\r-=");
inline constexpr CharSet RowSeparators(" \t\n");
// Characters that end a token where a column's edge falls: a backslash too, since it stands for a
// line that goes on.
inline constexpr CharSet Boundaries(" \t\r\n\\");

// A byte position in a line; -1 stands for none and is found nowhere.
using Position = std::ptrdiff_t;
constexpr Position None = -1;

inline Position Size(std::string_view text) {
    return static_cast<Position>(text.size());
}

// The text or the first or last character of a set, or the first one outside of it, at or behind
// (Last: at or before) a position; None for a position outside of the text. Last takes a position
// behind the text as its last character.
Position Find(std::string_view text, std::string_view wanted, Position from);

inline Position FirstOf(std::string_view text, const CharSet& set, Position from) {
    if (from < 0) return None;
    for (auto at = static_cast<std::size_t>(from); at < text.size(); ++at)
        if (set.Has(text[at])) return static_cast<Position>(at);
    return None;
}

inline Position FirstNotOf(std::string_view text, const CharSet& set, Position from) {
    if (from < 0) return None;
    for (auto at = static_cast<std::size_t>(from); at < text.size(); ++at)
        if (!set.Has(text[at])) return static_cast<Position>(at);
    return None;
}

inline Position LastOf(std::string_view text, const CharSet& set, Position from) {
    if (from < 0) return None;
    for (auto end = std::min(static_cast<std::size_t>(from) + 1, text.size()); end > 0; --end)
        if (set.Has(text[end - 1])) return static_cast<Position>(end - 1);
    return None;
}

// The same as FirstOf, with the text's size for none.
inline Position EndOfToken(std::string_view text, Position from) {
    const auto end = FirstOf(text, Spaces, from);
    return end == None ? Size(text) : end;
}

// Whether the character at a position ends a token; false outside of the text.
inline bool IsBoundary(std::string_view text, Position at) {
    return at >= 0 && at < Size(text) && Boundaries.Has(text[static_cast<std::size_t>(at)]);
}

inline std::string_view TrimRight(std::string_view text, const CharSet& set) {
    while (!text.empty() && set.Has(text.back())) text.remove_suffix(1);
    return text;
}

// An empty text where nothing is left: it then is no part of the text given.
inline std::string_view Trim(std::string_view text, const CharSet& set) {
    const auto begin = FirstNotOf(text, set, 0);
    if (begin == None) return {};
    return TrimRight(text.substr(static_cast<std::size_t>(begin)), set);
}

// Cuts a text at runs of separators, into views; a separator at an end gives an empty token there,
// an empty text none. Replaces `tokens`.
void Cut(std::string_view text, const CharSet& separators, std::vector<std::string_view>& tokens);

// The number that a text begins with, 0 when it begins with none; the nearest one that fits when it
// is too large.
int LeadingNumber(const std::string& text);

}  // namespace TableText
