#pragma once

// The keys of a keyword rule in its document.
namespace KeyWordKey {

constexpr const char* KeyWords = "keywords";
constexpr const char* KeyWord = "keyword";
constexpr const char* Statements = "statements";
constexpr const char* Statement = "statement";
constexpr const char* VariableTypes = "variabletypes";
constexpr const char* VariableType = "variabletype";

}  // namespace KeyWordKey
