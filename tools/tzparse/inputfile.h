#pragma once

#include <string>

// The name that stands for standard input.
constexpr const char* StandardInput = "-";

// All bytes of a file, or of standard input for "-", as they are: no line end is changed. Throws
// CToolError with the file's name and the system's reason when it can't be read.
std::string ReadInput(const std::string& name);
