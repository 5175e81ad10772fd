#pragma once

#include "host/runtime/tzexport.h"

#include <cstddef>
#include <string>
#include <vector>

// One thing that the author of a definition should know.
struct TZPARSER_API DefinitionFinding {
    // `caret` of a finding that points at no place in its statement.
    static constexpr std::size_t NoCaret = static_cast<std::size_t>(-1);

    // The path to the part of the definition, with array indexes from 0 and keys of rule documents
    // in small letters: "samples[0].parserRules.parserule[2]"; "definition" for the whole.
    std::string where;
    // The place of a JSON error, in the definition or, for "samples[i].parserRules", in the text
    // that this key holds. Both count from 1, the column in bytes; 0 when there is no such place.
    int line = 0;
    int column = 0;
    // What is wrong and what comes of it, in whole sentences.
    std::string message;
    // The statement, expression or line of JSON in question; empty when it isn't about one.
    std::string statement;
    // The byte offset in `statement` where it breaks; its size when it breaks at its end.
    std::size_t caret = NoCaret;
};

// CTzDefinitionCheck reads a parser definition as CTzParser does and says what CTzParser is silent
// about: loading a definition leaves out what it can't use, so a mistake shows only as a value that
// is missing.
//
//     for (const auto& finding : CTzDefinitionCheck::Check(definitionText))
//         std::cerr << CTzDefinitionCheck::Format(finding);
//
//     samples[0].parserRules.parserule[0].keywords.keyword[3]: Invalid regex. Unmatched ...
//         regex[$uptime]:uptime is (.*
//                                     ^
//
// The checks stand on the loader's own reading: rule kinds are made by its table, statements by the
// pattern compiler, expressions as rules compile them. All functions are static and keep nothing;
// they may run on any thread.
class TZPARSER_API CTzDefinitionCheck {
public:
    CTzDefinitionCheck() = delete;

    // The largest number of findings; behind them one more says that there are others.
    static constexpr std::size_t MaxFindings = 1000;

    // What there is to say about a definition, mostly in the order of the document; empty when it
    // is sound. A text that isn't JSON gives one finding with the place. No exception but that of
    // memory running out.
    static std::vector<DefinitionFinding> Check(const std::string& definitionText);

    // The finding in one to three lines, each ending in a line feed: path, place and message; the
    // statement, or 120 bytes of a longer one; a caret under the place. Control characters are
    // shown as "?".
    static std::string Format(const DefinitionFinding& finding);
};
