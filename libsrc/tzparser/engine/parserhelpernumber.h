#pragma once

// Numbers of records, for the sources of this folder: the rules of std::stoll and std::stod in the
// "C" locale, without exceptions and whatever the locale of the process is.
//
//     std::int64_t vlan;
//     RecordInteger(" 12a", vlan);    // true, 12
//     double load;
//     RecordReal("1e999", load);      // false

#include <cstdint>
#include <string>

// The decimal integer at the text's start, behind white space and a sign. What follows it doesn't
// matter. False when there is none or it doesn't fit 64 bits.
bool RecordInteger(std::string_view text, std::int64_t& number) noexcept;

// The same for a decimal or hexadecimal number, an infinity or a NaN. False also for a number that
// is too big or too small for a double.
bool RecordReal(std::string_view text, double& number) noexcept;
