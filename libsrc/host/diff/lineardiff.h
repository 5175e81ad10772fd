#pragma once

#include <vector>

// The mark of a place that is paired with nothing.
constexpr int NoPartner = -1;

// A part of two sequences that is compared: places from begin to end, exclusive, of each.
struct DiffBox {
    int firstBegin;
    int firstEnd;
    int secondBegin;
    int secondEnd;

    bool IsEmpty() const { return firstBegin == firstEnd || secondBegin == secondEnd; }
};

// CLinearDiff pairs off two sequences by halving: the middle of a shortest way from one corner of a
// box to the other splits it in two, until a box holds nothing but what is equal at its ends. It
// takes O((n + m) d) time for d differences and 8 (n + m) bytes.
//
//     std::vector<int> partners(first.size(), NoPartner);
//     CLinearDiff diff(first, second, partners);
//     diff.SetLimit(1'000'000, 0);
//     if (!diff.Run({0, n, 0, m})) giveUp();
//
// The sequences and the partners have to outlive it. For one thread.
class CLinearDiff {
public:
    CLinearDiff(const std::vector<int>& first, const std::vector<int>& second,
                std::vector<int>& partners);

    // How many cells the runs from here on may look at. Beyond that a run fails when `cut` is 0;
    // otherwise each middle that isn't found within so many cells gives way to the furthest place
    // reached, which still is a common subsequence, but maybe not a longest one.
    void SetLimit(long long steps, long long cut) {
        m_stepsLeft = steps;
        m_cut = cut;
    }

    // Notes the partners within a box. False when the limit was reached: what was noted by then
    // holds, but isn't all.
    bool Run(const DiffBox& box);

private:
    struct Point {
        int first;
        int second;
    };

    // How far the ways from one corner have come: the place in the first sequence for each diagonal
    // (place in the first less place in the second) from low to high, every second one.
    struct Frontier {
        std::vector<int> reach;
        int low = 0;
        int high = 0;
    };

    int& At(Frontier& frontier, int diagonal) {
        const int place = diagonal + m_offset;
        return frontier.reach[static_cast<std::size_t>(place)];
    }
    bool AreEqual(int first, int second) const {
        return m_first[static_cast<std::size_t>(first)] ==
               m_second[static_cast<std::size_t>(second)];
    }
    void PairEnds(DiffBox& box);
    bool FindMiddle(const DiffBox& box, Point& middle);
    bool StepForward(const DiffBox& box, bool mayMeet, Point& middle);
    bool StepBackward(const DiffBox& box, bool mayMeet, Point& middle);
    Point FurthestPoint(const DiffBox& box);

    const std::vector<int>& m_first;
    const std::vector<int>& m_second;
    std::vector<int>& m_partners;
    int m_offset;
    Frontier m_forward;
    Frontier m_backward;
    std::vector<DiffBox> m_open;
    long long m_stepsLeft = 0;
    long long m_cut = 0;
    long long m_steps = 0;  // of the search for one middle
};
