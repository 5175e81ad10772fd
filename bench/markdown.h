#pragma once

#include <iosfwd>
#include <string>
#include <vector>

// The cells of one row of a table.
using MarkdownRow = std::vector<std::string>;

// Writes a table of padded columns behind an empty line, the first row being its head; nothing when
// that is all there is. All rows are as long as the first.
void PrintMarkdown(std::ostream& out, const std::vector<MarkdownRow>& rows);

// A number with so many decimals, the point being a point.
std::string Digits(double value, int decimals);
