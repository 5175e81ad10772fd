#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// A text cut out of a sample and the line numbers that belong to it; the plain part of a
/// `CAppTextLet`. A value type: copy it, move it, read and write the members. A moved-from object
/// is empty.
struct CAppText {
    /// The bytes as they stood in the line: not trimmed, case unchanged.
    std::string text;
    /// The line numbers (0-based) of a text that stands for several lines; empty for one place.
    std::vector<std::int32_t> lines;
};
