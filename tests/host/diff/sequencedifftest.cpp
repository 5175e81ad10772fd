// Common subsequences of numbers against the plain table of all pairs, within the limits of each
// search and beyond them, and the sizes that would take for ever without limits.
#include "host/diff/sequencediff.h"

#include "support/plaindiff.h"

#include <algorithm>
#include <numeric>
#include <random>

#include <gtest/gtest.h>

namespace {

using Numbers = std::vector<int>;

struct LimitRow {
    const char* name;
    SequenceDiffLimits limits;
    bool isLongest;
};

constexpr long long Much = 1'000'000;
const LimitRow LimitRows[] = {
    {"few differences", {Much, 0, 0, 0}, true},
    {"pairs", {0, Much, 0, 0}, true},
    {"many differences", {0, -1, Much, 1}, true},
    {"unique lines, then cut at once", {0, -1, 0, 1}, false},
    {"unique lines, then cut soon", {0, -1, 20, 30}, false},
};

// Two sequences of up to 40 numbers, -1 among them: unrelated, or the second an edited first.
std::pair<Numbers, Numbers> MakeCase(std::mt19937& random) {
    const auto below = [&random](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    const int kinds = below(4) == 0 ? 30 : 1 + below(5);
    const auto fill = [&](int size) {
        Numbers numbers(static_cast<std::size_t>(size));
        for (int& number : numbers) number = below(kinds + 1) - 1;
        return numbers;
    };
    const auto first = fill(below(3) == 0 ? below(3) : below(40));
    auto second = fill(below(40));
    if (below(2) == 0) return {first, second};
    second = first;
    for (int edits = below(5); edits > 0; --edits) {
        second.insert(second.begin() + below(static_cast<int>(second.size()) + 1), below(kinds));
        if (below(2) == 0) second.erase(second.begin() + below(static_cast<int>(second.size())));
    }
    return {first, second};
}

TEST(SequenceDiff, AgreesWithThePlainTable) {
    std::mt19937 random(20260101);
    for (int round = 0; round < 5000; ++round) {
        const auto [first, second] = MakeCase(random);
        const auto longest = PlainCommonCount(first, second);
        for (const auto& row : LimitRows) {
            SCOPED_TRACE(row.name);
            const auto common = CSequenceDiff::Compare(first, second, row.limits);
            ASSERT_EQ(WhyNotCommon(first, second, common), "") << "round " << round;
            if (row.isLongest)
                ASSERT_EQ(common.size(), longest) << "round " << round;
            else
                ASSERT_LE(common.size(), longest);
        }
    }
}

Numbers Count(int size) {
    Numbers numbers(static_cast<std::size_t>(size));
    std::iota(numbers.begin(), numbers.end(), 0);
    return numbers;
}

Numbers Shuffled(int size, unsigned seed) {
    auto numbers = Count(size);
    std::mt19937 random(seed);
    for (auto i = numbers.size(); i > 1; --i) std::swap(numbers[i - 1], numbers[random() % i]);
    return numbers;
}

Numbers OfKinds(int size, unsigned kinds, unsigned seed) {
    std::mt19937 random(seed);
    Numbers numbers(static_cast<std::size_t>(size));
    for (int& number : numbers) number = static_cast<int>(random() % kinds);
    return numbers;
}

Numbers Repeated(const Numbers& part, int times) {
    Numbers numbers;
    for (int i = 0; i < times; ++i) numbers.insert(numbers.end(), part.begin(), part.end());
    return numbers;
}

Numbers Joined(Numbers first, const Numbers& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

// Without limits most of these would take minutes.
struct SizeRow {
    const char* name;
    Numbers first;
    Numbers second;
    std::size_t atLeast;
};

TEST(SequenceDiff, LargeSequences) {
    const Numbers blanks(200'000, 0);
    const SizeRow rows[] = {
        {"unrelated", Count(20'000), Numbers(20'000, -1), 0},
        {"permutations", Shuffled(20'000, 1), Shuffled(20'000, 2), 250},
        {"two kinds", OfKinds(20'000, 2, 1), OfKinds(20'000, 2, 2), 15'500},
        {"identical", Count(1'000'000), Count(1'000'000), 1'000'000},
        {"blanks", blanks, Numbers(100'000, 0), 100'000},
        {"blanks between others", Joined({1}, Joined(blanks, {2})),
         Joined({2}, Joined(Numbers(100'000, 0), {1})), 100'000},
        {"blocks moved", Joined(blanks, Numbers(200'000, 1)), Joined(Numbers(200'000, 1), blanks),
         150'000},
        {"out of step", Repeated({0, 1}, 50'000), Repeated({1, 0, 1, 1, 0}, 20'000), 60'000},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto limits = SequenceDiffLimits::For(row.first.size() + row.second.size());
        const auto common = CSequenceDiff::Compare(row.first, row.second, limits);
        EXPECT_EQ(WhyNotCommon(row.first, row.second, common), "");
        EXPECT_GE(common.size(), row.atLeast);
    }
}

}  // namespace
