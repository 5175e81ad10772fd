#pragma once

// Reading of decimal numbers with fractions and exponents, for the sources of this folder.
//
//     double number;
//     ReadRealText("2.5e3 ms", number);   // true, 2500.0

#include <string_view>

namespace hxJson {

// Reads the number that the text begins with ("-" or a digit or a point; no blanks, no "+") as the
// nearest double; 0 if it begins with none. What is too small for a double gives 0. What is too big
// gives the largest double of its sign, and false; all else gives true. The locale has no say.
bool ReadRealText(std::string_view text, double& number) noexcept;

}  // namespace hxJson
