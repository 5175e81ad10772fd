#pragma once

// How JSON writes a string and a real number, for whoever prints JSON without building a tree.
//
//     QuoteJson("say \"hi\"\n")   // "\"say \\\"hi\\\"\\n\""
//     RealJson(1.0)               // "1.0"
//
// Pure functions, safe on any thread; nothing depends on the locale.

#include "host/runtime/tzexport.h"

#include <string>
#include <string_view>

namespace hxJson {

// The text between quotes. Control characters, quote and backslash are escaped; valid UTF-8 is
// written as it is; a byte that is no part of valid UTF-8 is written as \u00XX, its Latin-1
// character, so the result is valid JSON in valid UTF-8 whatever the bytes.
TZPARSER_API std::string QuoteJson(std::string_view text);

// The same, put at the end of `out`.
TZPARSER_API void AppendQuotedJson(std::string& out, std::string_view text);

// The shortest text that reads back as the same number, always with a point or an exponent so that
// it reads back as a real: "1.0", "0.1", "1e+300". What JSON has no text for gives "nan", "inf" or
// "-inf".
TZPARSER_API std::string RealJson(double number);

}  // namespace hxJson
