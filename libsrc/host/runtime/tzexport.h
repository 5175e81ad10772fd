#pragma once

// TZPARSER_API marks what the shared library exports; everything else is hidden.
// The library is built with TZPARSER_BUILD defined and hidden visibility; its users see default
// visibility.
#define TZPARSER_API __attribute__((visibility("default")))
