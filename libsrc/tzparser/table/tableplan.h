#pragma once

#include "tzparser/table/appparseruletable.h"
#include "tzparser/table/tableheader.h"
#include "tzparser/table/tabletext.h"

#include <memory>
#include <string>
#include <vector>

// Where the cells of a column go.
struct TableColumn {
    static constexpr std::size_t NoVariable = static_cast<std::size_t>(-1);

    TableText::Position headerLength = 0;
    std::size_t variable = NoVariable;  // in Plan::variables; shared by columns of one variable
};

// What a table's definition is compiled to. Immutable, shared by clones.
struct CAppParseRuleTable::Plan {
    // A variable that some column feeds.
    struct Variable {
        std::string name;
        bool follows;  // an empty cell takes the value of the row before
    };
    struct End {
        bool exists = false;
        std::string regexText;
        std::shared_ptr<const CAppRegex> regex;  // null: it doesn't compile
        bool isMultiLine = false;
    };

    std::vector<std::string> headers;  // those that this was made of
    CTableHeader header;
    std::vector<TableColumn> columns;
    std::vector<Variable> variables;
    std::vector<TableText::Position> range;  // the numbers of the align range
    End end;
    std::vector<std::shared_ptr<const CAppRegex>> excludes;
};
