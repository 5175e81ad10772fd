// What both have at head and tail is paired off first, and what stands in one alone is left out: a
// longest common subsequence of the rest makes one of the whole. The rest goes through searches of
// growing cost until one ends within its limit:
//   1. a linear-space search, quick where the texts differ little;
//   2. the pairs of equal lines one by one, quick where few lines repeat, however much was moved;
//   3. the first search again with a higher limit;
//   4. the lines that stand once in both are paired as far as they keep their order, and the gaps
//      between them are searched, with the rest of every gap cut short in the end.
// Whatever was found, each line of it is then moved up to the first equal one behind the line
// before it.
#include "host/diff/sequencediff.h"

#include "host/diff/lineardiff.h"
#include "host/diff/sparsediff.h"

#include <algorithm>

namespace {

// The lines between head and tail that both sequences have, with their places.
struct Rest {
    std::vector<int> numbers;
    std::vector<int> places;
};

std::vector<int> CountNumbers(const std::vector<int>& numbers, std::size_t begin, std::size_t end,
                              std::size_t range) {
    std::vector<int> counts(range);
    for (auto i = begin; i < end; ++i)
        if (numbers[i] >= 0) ++counts[static_cast<std::size_t>(numbers[i])];
    return counts;
}

Rest TakeRest(const std::vector<int>& numbers, std::size_t begin, std::size_t end,
              const std::vector<int>& others) {
    Rest rest;
    for (auto i = begin; i < end; ++i) {
        if (numbers[i] < 0 || others[static_cast<std::size_t>(numbers[i])] == 0) continue;
        rest.numbers.push_back(numbers[i]);
        rest.places.push_back(static_cast<int>(i));
    }
    return rest;
}

// The gaps between partners are searched one after the other.
void PairGaps(CLinearDiff& linear, int secondSize, std::vector<int>& partners) {
    const auto anchors = partners;
    const auto size = static_cast<int>(anchors.size());
    DiffBox gap{0, 0, 0, 0};
    for (int i = 0; i <= size; ++i) {
        const int partner = i < size ? anchors[static_cast<std::size_t>(i)] : secondSize;
        if (partner == NoPartner) continue;
        gap.firstEnd = i;
        gap.secondEnd = partner;
        linear.Run(gap);
        gap = {i + 1, 0, partner + 1, 0};
    }
}

std::vector<int> PairRest(const std::vector<int>& first, const std::vector<int>& second,
                          std::size_t range, const SequenceDiffLimits& limits) {
    std::vector<int> partners(first.size(), NoPartner);
    if (first.empty() || second.empty()) return partners;
    const DiffBox whole{0, static_cast<int>(first.size()), 0, static_cast<int>(second.size())};
    CLinearDiff linear(first, second, partners);
    linear.SetLimit(limits.fewEdits, 0);
    if (linear.Run(whole)) return partners;
    std::fill(partners.begin(), partners.end(), NoPartner);
    const CSparseDiff sparse(first, second, range);
    if (sparse.CountPairs() <= limits.pairs) {
        sparse.PairAll(partners);
        return partners;
    }
    linear.SetLimit(limits.manyEdits, 0);
    if (linear.Run(whole)) return partners;
    std::fill(partners.begin(), partners.end(), NoPartner);
    sparse.PairUnique(partners);
    linear.SetLimit(limits.manyEdits / 4, limits.cut);
    PairGaps(linear, whole.secondEnd, partners);
    return partners;
}

int FirstFrom(const std::vector<int>& numbers, int place, int number) {
    while (numbers[static_cast<std::size_t>(place)] != number) ++place;
    return place;
}

void MoveUp(const std::vector<int>& first, const std::vector<int>& second, CommonLines& common) {
    CommonLine last{-1, -1};
    for (auto& line : common) {
        const int number = first[static_cast<std::size_t>(line.first)];
        line = {FirstFrom(first, last.first + 1, number),
                FirstFrom(second, last.second + 1, number)};
        last = line;
    }
}

std::size_t NumberRange(const std::vector<int>& numbers) {
    const auto highest = std::max_element(numbers.begin(), numbers.end());
    return highest == numbers.end() || *highest < 0 ? 0 : static_cast<std::size_t>(*highest) + 1;
}

}  // namespace

// The first search may always look at sixteen cells a line. What the last one costs grows with the
// lines only, and with fewer cells a line when there are more of them.
SequenceDiffLimits SequenceDiffLimits::For(std::size_t lines) {
    const auto count = static_cast<long long>(lines);
    SequenceDiffLimits limits;
    limits.fewEdits = 200'000 + 16 * count;
    limits.pairs = 1'000'000;
    limits.manyEdits = 6'000'000;
    limits.cut = std::clamp(2'000'000'000 / (count + 1), 2'048LL, 32'768LL);
    return limits;
}

CommonLines CSequenceDiff::Compare(const std::vector<int>& first, const std::vector<int>& second,
                                   const SequenceDiffLimits& limits) {
    const auto shorter = std::min(first.size(), second.size());
    std::size_t head = 0;
    while (head < shorter && first[head] == second[head] && first[head] >= 0) ++head;
    std::size_t tail = 0;
    while (tail < shorter - head) {
        const int number = first[first.size() - 1 - tail];
        if (number < 0 || number != second[second.size() - 1 - tail]) break;
        ++tail;
    }
    CommonLines common;
    common.reserve(shorter);
    for (std::size_t i = 0; i < head; ++i)
        common.emplace_back(static_cast<int>(i), static_cast<int>(i));
    const auto firstEnd = first.size() - tail;
    const auto secondEnd = second.size() - tail;
    if (head < firstEnd && head < secondEnd) {
        const auto range = std::max(NumberRange(first), NumberRange(second));
        const auto rest =
            TakeRest(first, head, firstEnd, CountNumbers(second, head, secondEnd, range));
        const auto other =
            TakeRest(second, head, secondEnd, CountNumbers(first, head, firstEnd, range));
        const auto partners = PairRest(rest.numbers, other.numbers, range, limits);
        for (std::size_t i = 0; i < partners.size(); ++i)
            if (partners[i] != NoPartner)
                common.emplace_back(rest.places[i],
                                    other.places[static_cast<std::size_t>(partners[i])]);
    }
    for (auto i = tail; i > 0; --i)
        common.emplace_back(static_cast<int>(first.size() - i),
                            static_cast<int>(second.size() - i));
    MoveUp(first, second, common);
    return common;
}
