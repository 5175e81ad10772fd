#pragma once

#include <cstddef>
#include <string>
#include <vector>

// An expression that can fit a text in very many ways, with such a text: `unit` over and over with
// `tail` behind. Plain searching gives up on most of them after long work, or takes very long.
struct BadPattern {
    const char* expression;
    const char* unit;
    const char* tail;
    bool isMatch;  // in a text of 1 KB; no text of those that don't match there matches at all
};

// Those that stand in handbooks and reports of outages, and variants of them.
const std::vector<BadPattern>& BadPatterns();

// A text for the pattern of at least so many bytes.
std::string BadText(const BadPattern& pattern, std::size_t size);
