#pragma once

#include "tzparser/text/apptextlet.h"
#include "tzparser/variable/appdatatype.h"

#include <cstddef>
#include <string>
#include <vector>

// Appends the JSON form of one value by its data type: an integer that fits 64 bits, a decimal
// number, a boolean, and a string for every other type and for a text that doesn't fit its own
// type. Digits are written as they stand in the text, but for a "+" and needless zeros in front,
// which JSON doesn't know, and a decimal number always has a fraction. The empty value is null.
void AppendScalar(std::string& out, AppDataType_e type, const CAppTextLet& value);

// The same for the value number `index` of a list; null when there is none.
void AppendScalarAt(std::string& out, AppDataType_e type, const std::vector<CAppTextLet>& values,
                    std::size_t index);
