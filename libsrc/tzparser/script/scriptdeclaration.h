#pragma once

#include "host/runtime/tzexport.h"
#include "tzparser/variable/appdatatype.h"

#include <string>
#include <string_view>
#include <vector>

// ScriptDeclaration is the block by which a script says in its own source what it yields, in a
// comment or a string:
//
//     """Begin Declare Variable [
//         {'name': 'hostname', 'type': 'str'},
//         {'name': 'vlans', 'type': 'table', 'columns': [{'name': 'id', 'type': 'int'}]}
//     ] End Declare"""
//
// The words count in any case. Single quotes stand for double quotes, all of them, so that a text
// with one in it is no JSON any more. Names get a "$" in front. A plain value, as safe to share
// between threads as any other.
struct TZPARSER_API ScriptDeclaration {
    struct Column {
        std::string name;
        AppDataType_e type;
    };
    struct Variable {
        std::string name;
        bool isTable;
        AppDataType_e type;           // of a plain variable
        std::vector<Column> columns;  // of a table
    };

    // Reads the first block of a script. One that can't be read, or of which nothing can, counts as
    // a block that declares nothing.
    static ScriptDeclaration Of(std::string_view script);

    // Finds the first block: the text between the words as JSON, with double quotes, and the byte
    // offset in the script where it begins. False when there is none.
    static bool Find(std::string_view script, std::string& json, std::size_t& begin);

    bool isThere = false;
    std::vector<Variable> variables;  // in the order of the block
};

// Puts a "$" in front of a name that has none.
TZPARSER_API std::string ScriptVariableName(std::string name);
