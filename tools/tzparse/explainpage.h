#pragma once

#include "tzparser/explain/explainreport.h"

#include "outputwriter.h"

#include <string>
#include <string_view>

// The page of "tzparse explain --html": one HTML file that shows a text with its values in place,
// the rule tree and the value tree beside it. It loads nothing from anywhere. What it shows stands
// in it as one block of JSON, which the page's script (page/*.js) turns into what is seen:
//
//     {"definition": "d.json", "textName": "input.txt", "choice": ["chosen: sample 1 (...)"],
//      "parsed": true, "error": "",
//      "lines": ["R1>show version", ...],
//      "rules": [{"parent": -1, "kind": "sample", "name": "", "path": "samples[0].parserRules",
//                 "ran": true, "begin": 0, "end": 52, "open": 52, "ranges": [[3, 9]],
//                 "facts": [{"text": "...", "line": 4, "column": -1, "trouble": true,
//                            "statement": "", "caret": -1}]}],
//      "names": ["hostname"], "types": ["string"],
//      "values": [[rule, name, index, type, beginRow, beginCol, endRow, endCol, "text"], ...]}
//
// Names and types of values are places in "names" and "types". The text of a value is left out when
// the lines have it where the value says it stands.

// What the page calls its inputs.
struct ExplainPageNames {
    std::string definition;
    std::string text;
};

// Writes the whole page. Memory is needed for one line or value at a time, besides an index over
// the distinct names. Throws CToolError when it can't be written.
void WriteExplainPage(const ExplainReport& report, const ExplainPageNames& names,
                      COutputWriter& out);

// Appends `bytes` as a JSON string that is safe inside a script element whatever the bytes: "<",
// ">", "&" and the line separators U+2028 and U+2029 are escaped. A byte that is no part of valid
// UTF-8 becomes the lone surrogate U+DC00 + byte, so that the page can tell it from every
// character and knows that it takes one column.
void AppendPageString(std::string& out, std::string_view bytes);
