// J. W. Hunt, T. G. Szymanski, "A fast algorithm for computing longest common subsequences": the
// first sequence is walked once, and for each length of a common subsequence the lowest place is
// kept where one of that length can end in the second. The places of a number are taken from the
// last to the first, so that none of them builds on another of the same walk's step.
#include "host/diff/sparsediff.h"

#include <algorithm>

namespace {

// The last pair of a common subsequence, and the node of what comes in front of it.
struct Node {
    int first;
    int second;
    int before;
};

constexpr int NoNode = -1;

}  // namespace

CSparseDiff::CSparseDiff(const std::vector<int>& first, const std::vector<int>& second,
                         std::size_t range)
    : m_first(first), m_firstCounts(range), m_begins(range + 1), m_places(second.size()) {
    for (const int number : first) ++m_firstCounts[static_cast<std::size_t>(number)];
    for (const int number : second) ++m_begins[static_cast<std::size_t>(number) + 1];
    for (std::size_t i = 0; i < range; ++i) m_begins[i + 1] += m_begins[i];
    auto next = m_begins;
    for (std::size_t i = 0; i < second.size(); ++i)
        m_places[static_cast<std::size_t>(next[static_cast<std::size_t>(second[i])]++)] =
            static_cast<int>(i);
}

long long CSparseDiff::CountPairs() const {
    long long pairs = 0;
    for (std::size_t i = 0; i < m_firstCounts.size(); ++i)
        pairs += static_cast<long long>(m_firstCounts[i]) * (m_begins[i + 1] - m_begins[i]);
    return pairs;
}

void CSparseDiff::PairAll(std::vector<int>& partners) const {
    Pair(false, partners);
}

void CSparseDiff::PairUnique(std::vector<int>& partners) const {
    Pair(true, partners);
}

void CSparseDiff::Pair(bool uniqueOnly, std::vector<int>& partners) const {
    std::vector<Node> nodes;
    std::vector<int> ends;  // the lowest end of the subsequences of each length, from 1
    std::vector<int> endNodes;
    for (std::size_t i = 0; i < m_first.size(); ++i) {
        const auto number = static_cast<std::size_t>(m_first[i]);
        const int begin = m_begins[number];
        const int end = m_begins[number + 1];
        if (uniqueOnly && (m_firstCounts[number] != 1 || end - begin != 1)) continue;
        for (int at = end; at-- > begin;) {
            const int place = m_places[static_cast<std::size_t>(at)];
            const auto slot = std::lower_bound(ends.begin(), ends.end(), place);
            const auto length = static_cast<std::size_t>(slot - ends.begin());
            if (slot != ends.end() && *slot == place) continue;
            const int before = length == 0 ? NoNode : endNodes[length - 1];
            if (slot == ends.end()) {
                ends.push_back(place);
                endNodes.push_back(NoNode);
            } else {
                *slot = place;
            }
            endNodes[length] = static_cast<int>(nodes.size());
            nodes.push_back({static_cast<int>(i), place, before});
        }
    }
    for (int at = endNodes.empty() ? NoNode : endNodes.back(); at != NoNode;) {
        const auto& node = nodes[static_cast<std::size_t>(at)];
        partners[static_cast<std::size_t>(node.first)] = node.second;
        at = node.before;
    }
}
