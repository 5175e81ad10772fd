// E. W. Myers, "An O(ND) difference algorithm and its variations", the linear-space form. Ways from
// both corners grow by one difference at a time; where they meet is the middle. Boxes wait on a
// stack of their own.
//
// A way that has reached the right edge can only go down from there. No way on a higher diagonal
// can do better, so those are dropped, and so it is with the other three edges: a box costs its
// shorter side times the differences at most.
#include "host/diff/lineardiff.h"

#include <algorithm>
#include <limits>

namespace {

// In front of and behind every place.
constexpr int Nowhere = -1;
constexpr int NowhereBack = std::numeric_limits<int>::max();

}  // namespace

CLinearDiff::CLinearDiff(const std::vector<int>& first, const std::vector<int>& second,
                         std::vector<int>& partners)
    : m_first(first),
      m_second(second),
      m_partners(partners),
      m_offset(static_cast<int>(second.size()) + 2) {
    m_forward.reach.resize(first.size() + second.size() + 5);
    m_backward.reach.resize(first.size() + second.size() + 5);
}

bool CLinearDiff::Run(const DiffBox& whole) {
    m_open.assign(1, whole);
    while (!m_open.empty()) {
        DiffBox box = m_open.back();
        m_open.pop_back();
        PairEnds(box);
        if (box.IsEmpty()) continue;
        Point middle{};
        if (!FindMiddle(box, middle)) return false;
        m_open.push_back({middle.first, box.firstEnd, middle.second, box.secondEnd});
        m_open.push_back({box.firstBegin, middle.first, box.secondBegin, middle.second});
    }
    return true;
}

void CLinearDiff::PairEnds(DiffBox& box) {
    while (!box.IsEmpty() && AreEqual(box.firstBegin, box.secondBegin))
        m_partners[static_cast<std::size_t>(box.firstBegin++)] = box.secondBegin++;
    while (!box.IsEmpty() && AreEqual(box.firstEnd - 1, box.secondEnd - 1))
        m_partners[static_cast<std::size_t>(--box.firstEnd)] = --box.secondEnd;
}

// The box isn't empty and has nothing equal at its ends, so there are two differences at least and
// the middle is none of its corners.
bool CLinearDiff::FindMiddle(const DiffBox& box, Point& middle) {
    const int begin = box.firstBegin - box.secondBegin;
    const int end = box.firstEnd - box.secondEnd;
    m_forward.low = m_forward.high = begin;
    m_backward.low = m_backward.high = end;
    At(m_forward, begin) = box.firstBegin;
    At(m_backward, end) = box.firstEnd;
    const bool isOdd = ((begin - end) & 1) != 0;
    const auto limit = std::max(m_stepsLeft, m_cut);
    m_steps = 0;
    bool isFound = false;
    bool isOver = false;
    while (!isFound && !isOver) {
        isFound = StepForward(box, isOdd, middle) || StepBackward(box, !isOdd, middle);
        isOver = m_steps > limit;
    }
    m_stepsLeft = std::max(m_stepsLeft - m_steps, 0LL);
    if (isFound) return true;
    if (m_cut == 0) return false;
    middle = FurthestPoint(box);
    return true;
}

bool CLinearDiff::StepForward(const DiffBox& box, bool mayMeet, Point& middle) {
    auto& ways = m_forward;
    const bool isAtBottom = At(ways, ways.low) - ways.low == box.secondEnd;
    const bool isAtRight = At(ways, ways.high) == box.firstEnd;
    int low = isAtBottom ? ways.low + 1 : ways.low - 1;
    const int high = isAtRight ? ways.high - 1 : ways.high + 1;
    if (!isAtBottom) At(ways, low - 1) = Nowhere;
    if (!isAtRight) At(ways, high + 1) = Nowhere;
    ways.high = high;
    for (int diagonal = low; diagonal <= high; diagonal += 2) {
        int first = std::max(At(ways, diagonal - 1) + 1, At(ways, diagonal + 1));
        int second = first - diagonal;
        const int from = first;
        while (first < box.firstEnd && second < box.secondEnd && AreEqual(first, second)) {
            ++first;
            ++second;
        }
        m_steps += first - from + 1;
        At(ways, diagonal) = first;
        if (mayMeet && diagonal >= m_backward.low && diagonal <= m_backward.high &&
            At(m_backward, diagonal) <= first) {
            middle = {first, second};
            return true;
        }
        if (second == box.secondEnd) low = diagonal;
        if (first == box.firstEnd) {
            ways.high = diagonal;
            break;
        }
    }
    ways.low = low;
    return false;
}

bool CLinearDiff::StepBackward(const DiffBox& box, bool mayMeet, Point& middle) {
    auto& ways = m_backward;
    const bool isAtLeft = At(ways, ways.low) == box.firstBegin;
    const bool isAtTop = At(ways, ways.high) - ways.high == box.secondBegin;
    int low = isAtLeft ? ways.low + 1 : ways.low - 1;
    const int high = isAtTop ? ways.high - 1 : ways.high + 1;
    if (!isAtLeft) At(ways, low - 1) = NowhereBack;
    if (!isAtTop) At(ways, high + 1) = NowhereBack;
    ways.high = high;
    for (int diagonal = low; diagonal <= high; diagonal += 2) {
        int first = std::min(At(ways, diagonal - 1), At(ways, diagonal + 1) - 1);
        int second = first - diagonal;
        const int from = first;
        while (first > box.firstBegin && second > box.secondBegin &&
               AreEqual(first - 1, second - 1)) {
            --first;
            --second;
        }
        m_steps += from - first + 1;
        At(ways, diagonal) = first;
        if (mayMeet && diagonal >= m_forward.low && diagonal <= m_forward.high &&
            first <= At(m_forward, diagonal)) {
            middle = {first, second};
            return true;
        }
        if (first == box.firstBegin) low = diagonal;
        if (second == box.secondBegin) {
            ways.high = diagonal;
            break;
        }
    }
    ways.low = low;
    return false;
}

// Of the ways from both corners the one that has come furthest.
CLinearDiff::Point CLinearDiff::FurthestPoint(const DiffBox& box) {
    Point best{box.firstBegin, box.secondBegin};
    int bestGain = 0;
    const auto offer = [&](int first, int second, int gain) {
        if (gain <= bestGain) return;
        best = {first, second};
        bestGain = gain;
    };
    for (int diagonal = m_forward.low; diagonal <= m_forward.high; diagonal += 2) {
        const int first = At(m_forward, diagonal);
        const int second = first - diagonal;
        offer(first, second, first - box.firstBegin + second - box.secondBegin);
    }
    for (int diagonal = m_backward.low; diagonal <= m_backward.high; diagonal += 2) {
        const int first = At(m_backward, diagonal);
        const int second = first - diagonal;
        offer(first, second, box.firstEnd - first + box.secondEnd - second);
    }
    return best;
}
