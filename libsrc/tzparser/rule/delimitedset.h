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
