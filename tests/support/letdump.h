#pragma once

#include "tzparser/text/apptextlet.h"

#include <map>
#include <string>
#include <vector>

// Compact texts of results for tables of wanted values: a let as `3:4-9 "text"` (row, columns), as
// `3:4-5:2 "text"` when it ends on another row, with its lines behind it when it has any.
inline std::string DumpLet(const CAppTextLet& let) {
    std::string dump = std::to_string(let.beginRow) + ":" + std::to_string(let.beginCol) + "-";
    if (let.endRow != let.beginRow) dump += std::to_string(let.endRow) + ":";
    dump += std::to_string(let.endCol) + " \"";
    for (const char c : let.text) dump += c == '\n' ? std::string("\\n") : std::string(1, c);
    dump += "\"";
    for (const int line : let.lines) dump += " " + std::to_string(line);
    return dump;
}

inline std::string DumpLets(const std::vector<CAppTextLet>& lets) {
    std::string dump;
    for (const auto& let : lets) dump += (dump.empty() ? "" : "; ") + DumpLet(let);
    return dump;
}

// One line a variable: `$name 3: 3:4-9 "text"; 5: ...`, by name and by line key.
inline std::string DumpPositions(
    const std::map<std::string, std::map<int, CAppTextLet>>& positions) {
    std::string dump;
    for (const auto& [name, lets] : positions) {
        dump += name;
        for (const auto& [line, let] : lets)
            dump += " " + std::to_string(line) + ": " + DumpLet(let) + ";";
        dump += "\n";
    }
    return dump;
}
