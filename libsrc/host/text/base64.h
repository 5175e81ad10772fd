#pragma once

// Bytes as base64 text: the alphabet A-Z a-z 0-9 + /, "=" up to a multiple of four, no line breaks.
//
//     base64_encode(reinterpret_cast<const unsigned char*>("Man"), 3)   // "TWFu"

#include "host/runtime/tzexport.h"

#include <cstddef>
#include <string>

// `bytes` may be null if `length` is 0, which gives "". Safe on any thread.
TZPARSER_API std::string base64_encode(const unsigned char* bytes, size_t length);
