#pragma once

// The keys of a diff filter rule in its document, and those of its result.
namespace DiffFilterKey {

constexpr const char* Name = "name";
constexpr const char* Lines = "lines";
constexpr const char* Row = "row";
constexpr const char* Text = "text";
constexpr const char* Added = "added";

// Results.
constexpr const char* ParserName = "parserName";
constexpr const char* LineMapping = "lineMapping";

}  // namespace DiffFilterKey
