#pragma once

// The keys of a parser definition and of a sample, as far as the engine reads them itself.
namespace EngineKey {

constexpr const char* AccessType = "accessType";
constexpr const char* Sequences = "sequences";
constexpr const char* Samples = "samples";
constexpr const char* Index = "index";
constexpr const char* ParserRules = "parserRules";
constexpr const char* Identify = "identify";

// The access type that turns the extended built-in variables on.
constexpr int ExtendedAccess = 16;

}  // namespace EngineKey

// The keys of an identify document. In markup the attributes go without the "@".
namespace IdentifyKey {

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
