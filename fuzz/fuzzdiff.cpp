// Two texts, parted by the first byte 0x01, through the differ and through the plain table of all
// pairs: what is common is valid whatever the limits, and a longest one while none of them is hit.
// The first byte of all gives the limits of a second comparison.
#include "host/diff/sequencediff.h"
#include "host/diff/tzdifflib.h"
#include "tzparser/rule/appsamplelines.h"

#include "support/plaindiff.h"

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <map>
#include <string>

namespace {

std::vector<int> NumbersOf(const std::string& text,
                           std::map<std::string, int, std::less<>>& known) {
    CAppSampleLines lines;
    lines.Assign(text);
    std::vector<int> numbers;
    for (int i = 0; i < lines.Count(); ++i)
        numbers.push_back(known.emplace(std::string(lines.View(i)), static_cast<int>(known.size()))
                              .first->second);
    return numbers;
}

void Require(const std::string& fault) {
    if (fault.empty()) return;
    std::cerr << fault << "\n";
    std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0 || size > 2048) return 0;
    const int limit = data[0];
    const std::string bytes(reinterpret_cast<const char*>(data + 1), size - 1);
    const auto middle = bytes.find('\x01');
    const auto text = bytes.substr(0, middle);
    const auto other = middle == std::string::npos ? std::string() : bytes.substr(middle + 1);
    std::map<std::string, int, std::less<>> known;
    const auto first = NumbersOf(text, known);
    const auto second = NumbersOf(other, known);
    const auto longest = PlainCommonCount(first, second);

    const auto common = TzDiffLib::CompareLines(text, other);
    Require(WhyNotCommon(first, second, common));
    if (common.size() != longest) Require("not a longest one");
    const SequenceDiffLimits pairs{0, 10'000'000, 0, 0};
    if (CSequenceDiff::Compare(first, second, pairs).size() != longest)
        Require("not a longest one of the pairs");
    const SequenceDiffLimits cut{0, -1, limit, limit + 1};
    Require(WhyNotCommon(first, second, CSequenceDiff::Compare(first, second, cut)));
    return 0;
}
