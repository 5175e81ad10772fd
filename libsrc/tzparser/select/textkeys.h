#pragma once

// The keys of a text rule in its document.
namespace TextKey {

constexpr const char* Name = "name";
constexpr const char* Lines = "lines";

// One record of the lines.
constexpr const char* Row = "row";
constexpr const char* Text = "text";

}  // namespace TextKey
