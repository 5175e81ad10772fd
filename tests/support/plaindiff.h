#pragma once

#include "host/diff/difflines.h"

#include <algorithm>
#include <string>
#include <vector>

// The length of a longest common subsequence by the plain table of all pairs; a negative number is
// equal to nothing.
inline std::size_t PlainCommonCount(const std::vector<int>& first, const std::vector<int>& second) {
    std::vector<std::size_t> row(second.size() + 1);
    for (const int number : first) {
        std::size_t diagonal = 0;
        for (std::size_t i = 0; i < second.size(); ++i) {
            const auto above = row[i + 1];
            row[i + 1] =
                number >= 0 && number == second[i] ? diagonal + 1 : std::max(row[i], row[i + 1]);
            diagonal = above;
        }
    }
    return row.back();
}

// Empty when the lines ascend in both sequences, are equal pair by pair and each is the first of
// its like behind the line before it; otherwise what is wrong.
inline std::string WhyNotCommon(const std::vector<int>& first, const std::vector<int>& second,
                                const CommonLines& common) {
    const auto isFirst = [](const std::vector<int>& numbers, int last, int at) {
        const auto end = numbers.begin() + at;
        return std::find(numbers.begin() + last + 1, end, *end) == end;
    };
    CommonLine last{-1, -1};
    for (const auto& line : common) {
        const auto where = std::to_string(line.first) + ":" + std::to_string(line.second);
        if (line.first <= last.first || line.second <= last.second) return where + " goes back";
        if (line.first >= static_cast<int>(first.size()) ||
            line.second >= static_cast<int>(second.size()))
            return where + " is no place";
        const int number = first[static_cast<std::size_t>(line.first)];
        if (number < 0 || number != second[static_cast<std::size_t>(line.second)])
            return where + " isn't equal";
        if (!isFirst(first, last.first, line.first) || !isFirst(second, last.second, line.second))
            return where + " isn't the first";
        last = line;
    }
    return {};
}
