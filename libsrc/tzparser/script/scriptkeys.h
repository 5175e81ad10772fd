#pragma once

// The keys of a script rule in its document, those of the declaration inside a script, and those of
// its result.
namespace ScriptKey {

constexpr const char* Script = "script";
constexpr const char* VariableTypes = "variabletypes";
constexpr const char* VariableType = "variabletype";
constexpr const char* TableVariableTypes = "tablevariabletypes";
constexpr const char* TableVariableType = "tablevariabletype";
constexpr const char* TableColumns = "tablecolumns";
constexpr const char* Name = "name";
constexpr const char* Type = "type";
// For each table a member under its name in small letters without "$".
constexpr const char* HashColumns = "hashcolumns";
constexpr const char* HashSort = "hashsort";
constexpr const char* InterfaceKey = "interfacekey";
constexpr const char* TableKeys = "tablekeys";

// The declaration.
constexpr const char* Columns = "columns";
constexpr const char* Table = "table";

// Results.
constexpr const char* ParserName = "parserName";
constexpr const char* Tables = "tables";

}  // namespace ScriptKey
