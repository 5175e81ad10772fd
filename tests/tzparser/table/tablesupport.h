#pragma once

#include "tzparser/table/appparseruletable.h"

#include "support/ruletree.h"

// A table node: the keys given, with a name, three headers and their variables unless they are
// given too.
inline std::string TableNode(const std::string& keys) {
    std::string node = R"({"type":3,"name":"t")";
    if (keys.find("\"headers\"") == std::string::npos)
        node += R"(,"headers":"AA;BB;CC","headertovariables":"AA:$a;BB:$b;CC:$c")";
    if (!keys.empty()) node += "," + keys;
    return node + "}";
}

inline CAppParseRuleTable& TableAt(CAppParseRule& parent, std::size_t index) {
    return dynamic_cast<CAppParseRuleTable&>(*parent.Children().at(index));
}

// One line a variable: `$a 1:0-3 'Gi1' 2:...`, a cell as its line, columns and text; the line is
// that of the cell's key, which its rows have to repeat.
inline std::string DumpCells(const CLetColumns::Positions& positions) {
    std::string dump;
    for (const auto& [name, cells] : positions) {
        dump += name;
        for (const auto& [line, let] : cells) {
            dump += " " + std::to_string(line) + ":" + std::to_string(let.beginCol) + "-" +
                    std::to_string(let.endCol) + " '" + let.text + "'";
            if (let.beginRow != line || let.endRow != line) dump += " elsewhere";
        }
        dump += "\n";
    }
    return dump;
}

inline std::string ParseTable(const std::string& keys, const std::string& text) {
    const auto sample = LoadRules(TableNode(keys));
    return sample->Parse(text, 0, -1, nullptr) ? DumpCells(TableAt(*sample, 0).VariablePos())
                                               : "no table";
}

struct TableRow {
    const char* name;
    const char* keys;  // of the table's node
    std::string text;
    const char* wanted;
};

template <std::size_t Count>
void CheckTables(const TableRow (&rows)[Count]) {
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(ParseTable(row.keys, row.text), row.wanted);
    }
}
