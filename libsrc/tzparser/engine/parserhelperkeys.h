#pragma once

// The keys of the schema of records, and the version of records.

#include <cstdint>

constexpr std::uint8_t RecordVersion = 1;

namespace RecordKey {

constexpr const char* Type = "type";
constexpr const char* Name = "name";
constexpr const char* Index = "index";
// Of tables only.
constexpr const char* HashColumns = "hashColumns";
constexpr const char* HashSort = "hashSort";
constexpr const char* Column = "column";
constexpr const char* Attributes = "attributes";

}  // namespace RecordKey
