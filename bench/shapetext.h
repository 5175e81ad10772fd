#pragma once

#include <cstddef>
#include <memory>
#include <string>

class CTzParser;

// Texts of the shapes that tables and paragraphs read, and a definition for each. All are made
// here, the same bytes on every run and machine.
namespace ShapeText {

constexpr std::size_t TableColumns = 8;
constexpr std::size_t BlockVariables = 12;

// A header and so many rows of eight columns, 95 bytes a row, as "show interfaces status" prints
// them; a few values straddle their columns.
std::string Table(std::size_t rows);
std::unique_ptr<CTzParser> TableParser();

// So many blocks of 14 lines with twelve values each, as "show interfaces" prints them.
std::string Blocks(std::size_t blocks);
std::unique_ptr<CTzParser> BlockParser();

// So many blocks with so many one-line blocks in each: neighbours and their prefixes.
std::string Nested(std::size_t outer, std::size_t inner);
std::unique_ptr<CTzParser> NestedParser();

// A filter of fifty patterns that keeps the lines which any of them fits, two of twenty-five in
// BenchText::Interfaces; the other forty-eight fit none.
std::unique_ptr<CTzParser> FilterParser();
constexpr std::size_t FilterPatterns = 50;

// So many lines, all different and of one length.
std::string Distinct(std::size_t lines);
// A text rule of so many records, by turns a line of Distinct and one that no text has.
std::unique_ptr<CTzParser> TextParser(std::size_t records);
// A design reader rule; its reader is the caller's.
std::unique_ptr<CTzParser> ReaderParser();

}  // namespace ShapeText
