#pragma once

// The keys of a parser definition and of a sample, as far as the engine reads them itself.
namespace EngineKey {

constexpr const char* AccessType = "accessType";
constexpr const char* Sequences = "sequences";
constexpr const char* Samples = "samples";
constexpr const char* Index = "index";
constexpr const char* ParserRules = "parserRules";

// The access type that turns the extended built-in variables on.
constexpr int ExtendedAccess = 16;

}  // namespace EngineKey
