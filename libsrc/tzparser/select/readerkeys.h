#pragma once

// The keys of a design reader rule in its document, and those of its result that no other kind has.
namespace ReaderKey {

constexpr const char* Name = "name";
constexpr const char* ReaderName = "drname";
constexpr const char* ReaderCode = "drcode";

// Results in the XML form alone.
constexpr const char* XmlFilterLines = "filterLines";
constexpr const char* XmlFilterLine = "filterLine";

}  // namespace ReaderKey
