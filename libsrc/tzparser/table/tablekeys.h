#pragma once

// The keys of a table rule in its document, and those of its result that no other kind has.
namespace TableKey {

constexpr const char* Name = "name";
constexpr const char* Headers = "headers";
constexpr const char* EndLine = "endline";
constexpr const char* IsSkipLine = "isskipline";
constexpr const char* SkipLine = "skipline";
constexpr const char* HashColumns = "hashcolumns";
constexpr const char* HashSort = "hashsort";
constexpr const char* HeaderToVariables = "headertovariables";
constexpr const char* LeftAlign = "leftalign";
constexpr const char* AlignType = "aligntype";
constexpr const char* AlignRange = "alignrange";
constexpr const char* KeyVariables = "keyvariables";
constexpr const char* IsUsePreVars = "isuseprevars";
constexpr const char* UsePreVars = "useprevars";
constexpr const char* VariableTypes = "variabletypes";
constexpr const char* VariableType = "variabletype";
constexpr const char* EnableExcludeLines = "enableexcludelines";
constexpr const char* ExcludeLines = "excludelines";
constexpr const char* ExcludeLine = "excludeline";

// Results.
constexpr const char* ParserName = "parserName";

}  // namespace TableKey
