#pragma once

// The key of a sample that holds its identify document, and the keys of that document. In markup
// the attributes go without the "@".
namespace IdentifyKey {

constexpr const char* Identify = "identify";
constexpr const char* ConfigKey = "ConfigKey";
constexpr const char* MustConditions = "MustConditions";
constexpr const char* OptionalConditions = "OptionalConditions";
constexpr const char* Item = "Item";
constexpr const char* Index = "@Index";
constexpr const char* Type = "@Type";
constexpr const char* Value = "@Value";
constexpr const char* IndexAttribute = "Index";
constexpr const char* TypeAttribute = "Type";
constexpr const char* ValueAttribute = "Value";

}  // namespace IdentifyKey
