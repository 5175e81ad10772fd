#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// What the steps of a table share: sets of characters, and searching by positions that may be -1.
namespace TableText {

// Between headers; at the edges of cells and between the words of a header; what a line of nothing
// but rules has; between the tokens of a row.
constexpr std::string_view Blanks = " \t";
constexpr std::string_view Spaces = " \t\r\n";
constexpr std::string_view RuleCharacters = " \t\n\r-=";
constexpr std::string_view RowSeparators = " \t\n";
// Characters that end a token where a column's edge falls: a backslash too, since it stands for a
// line that goes on.
constexpr std::string_view Boundaries = " \t\r\n\\";
constexpr std::string_view WhiteSpace = " \t\n\v\f\r";

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
Position FirstOf(std::string_view text, std::string_view set, Position from);
Position FirstNotOf(std::string_view text, std::string_view set, Position from);
Position LastOf(std::string_view text, std::string_view set, Position from);

// The same as FirstOf, with the text's size for none.
Position EndOfToken(std::string_view text, Position from);

// Whether the character at a position ends a token; false outside of the text.
bool IsBoundary(std::string_view text, Position at);

std::string_view Trim(std::string_view text, std::string_view set);
std::string_view TrimRight(std::string_view text, std::string_view set);

// Cuts a text at runs of separators, into views; a separator at an end gives an empty token there,
// an empty text none. Replaces `tokens`.
void Cut(std::string_view text, std::string_view separators, std::vector<std::string_view>& tokens);

// The number that a text begins with, 0 when it begins with none; the nearest one that fits when it
// is too large.
int LeadingNumber(const std::string& text);

}  // namespace TableText
