#pragma once

#include "host/diff/difflines.h"

#include <cstddef>
#include <vector>

// How much work a comparison may cost; one step is one cell looked at.
struct SequenceDiffLimits {
    long long fewEdits = 0;   // steps of the first search, enough for texts that differ little
    long long pairs = 0;      // pairs of equal lines that may be gone through one by one
    long long manyEdits = 0;  // steps of the second search; the last is exact for a quarter of it
    long long cut = 0;        // steps after which every further search settles for what it has

    static SequenceDiffLimits For(std::size_t lines);
};

// CSequenceDiff finds a longest common subsequence of two sequences of numbers in linear space.
//
//     CSequenceDiff::Compare({7, 8, 9}, {9, 7, 9}, SequenceDiffLimits::For(6));  // (0,1), (2,2)
//
// Numbers count from 0 without large gaps; a negative one is equal to nothing. The result ascends
// in both, and its numbers are equal pair by pair, whatever the limits; with them it is a longest
// one as long as one of the searches ends within its limit. Safe on any threads.
class TZPARSER_API CSequenceDiff {
public:
    CSequenceDiff() = delete;

    static CommonLines Compare(const std::vector<int>& first, const std::vector<int>& second,
                               const SequenceDiffLimits& limits);
};
