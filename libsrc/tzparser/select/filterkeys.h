#pragma once

// The keys of a filter rule in its document, and those of its result that no other kind has.
namespace FilterKey {

constexpr const char* Name = "name";
constexpr const char* StartLine = "startline";
constexpr const char* EndLine = "endline";
constexpr const char* SkipLines = "skiplines";
constexpr const char* SkipLine = "skipline";
constexpr const char* IncludeLines = "includelines";
constexpr const char* IncludeLine = "includeline";
constexpr const char* ExcludeLines = "excludelines";
constexpr const char* ExcludeLine = "excludeline";
constexpr const char* FilterLoop = "filterloop";
constexpr const char* ExcludeEndLine = "excludeendline";
constexpr const char* ExcludeBeginLine = "excludebeginline";
constexpr const char* AsConfiglet = "asconfiglet";

// Results in the XML form alone.
constexpr const char* XmlParseResult = "parseresult";
constexpr const char* XmlType = "type";
constexpr const char* XmlLine = "line";

}  // namespace FilterKey
