#pragma once

#include "host/runtime/tzexport.h"

#include <set>
#include <string>
#include <string_view>

// Splits a text at each delimiter into a set: pieces are trimmed of blanks and line ends, empty
// ones are dropped. A delimiter directly behind the escape character is part of the piece, and the
// escape character goes. An escape of NUL means that there is none.
TZPARSER_API std::set<std::string> SplitDelimitedSet(std::string_view text, char delimiter,
                                                     char escape);

// The lists of names in rule documents, with ";" between the names. Adds every piece of the text as
// it stands, empty ones too; an empty text has none.
TZPARSER_API void InsertPieces(const std::string& text, std::set<std::string>& pieces);
TZPARSER_API std::string JoinPieces(const std::set<std::string>& pieces);
