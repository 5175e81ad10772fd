#pragma once

#include "host/runtime/tzexport.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

class CAppVariableValue;

// What became of a variable or of a row of a table.
enum ValueChange_e {
    ValueChange_Changed,
    ValueChange_Added,
    ValueChange_Removed,
};

// One cell of a changed row, or the value of a changed variable. No text means no value.
struct ValueChangeCell {
    std::string column;  // empty for a variable that is no column
    std::optional<std::string> before;
    std::optional<std::string> after;
};

// One difference between two results.
struct ValueChange {
    ValueChange_e kind = ValueChange_Changed;
    std::string variable;                                   // full name: "hostname", "interfaces"
    std::vector<std::pair<std::string, std::string>> keys;  // of a row: key columns and their texts
    std::vector<ValueChangeCell> cells;  // what differs; of a new or gone row all it held
    int beforeLine = -1;                 // 0-based line of the text, -1 when there is none
    int afterLine = -1;
};

// CValueDiff tells what changed between two results of one definition: scalars by their texts, rows
// of tables by their key columns.
//
//     for (const auto& change : CValueDiff::Compare(*before, *after))
//         report(change.variable, change.keys, change.cells);
//
// The keys of a table are its comparison and interface keys, else its keys, else all its columns:
// without any key a changed cell is a row gone and a row new. Rows of the same keys are paired in
// their order. Positions play no part in the comparison.
//
// Changes stand in the order of the variable tree; in a table rows gone and changed come in their
// old order, new rows behind them in theirs. Two trees of different definitions are compared as far
// as their names agree. The time is linear in the cells but for sorting the keys. No state.
class TZPARSER_API CValueDiff {
public:
    CValueDiff() = delete;

    static std::vector<ValueChange> Compare(const CAppVariableValue& before,
                                            const CAppVariableValue& after);
};
