#pragma once

#include <cstddef>
#include <vector>

// CSparseDiff pairs off two sequences by going through the pairs of equal numbers: O(p log n) time
// for p pairs and 12 bytes for each, however far apart equal numbers stand.
//
//     const CSparseDiff sparse(first, second, numberRange);
//     if (sparse.CountPairs() < 1'000'000) sparse.PairAll(partners);
//
// Numbers lie between 0 and the range given, exclusive. The sequences have to outlive it; partners
// come in as NoPartner, one a place of the first sequence. Safe on any threads.
class CSparseDiff {
public:
    CSparseDiff(const std::vector<int>& first, const std::vector<int>& second, std::size_t range);

    // How many pairs of equal numbers there are, each number of the first sequence with each of the
    // second.
    long long CountPairs() const;
    // Notes a longest common subsequence of all numbers, or of those that stand once in both.
    void PairAll(std::vector<int>& partners) const;
    void PairUnique(std::vector<int>& partners) const;

private:
    void Pair(bool uniqueOnly, std::vector<int>& partners) const;

    const std::vector<int>& m_first;
    std::vector<int> m_firstCounts;  // by number
    std::vector<int> m_begins;       // by number, in m_places
    std::vector<int> m_places;       // in the second sequence, grouped by number, ascending
};
