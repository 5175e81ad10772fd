// The line differ over configurations of 20,000 lines in blocks of ten, some of them changed. The
// baselines number the lines with a standard map and run the greedy search over whole sequences,
// with nothing dropped and nothing kept of the way; for unrelated texts, where that search takes
// seconds, they number the lines alone.
#include "host/diff/tzdifflib.h"

#include "ratiotable.h"

#include <algorithm>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <benchmark/benchmark.h>

namespace {

constexpr int Lines = 20'000;
constexpr int Unrelated = 1;  // as "one line in", all of them are changed

struct Texts {
    std::string first;
    std::string second;
};

std::string LineOf(int i) {
    const auto block = std::to_string(i / 10);
    if (i % 10 == 0) return "interface Vlan" + block;
    if (i % 10 == 9) return "!";
    return i % 10 < 4 ? " no option " + std::to_string(i % 10)
                      : " setting " + std::to_string(i % 10) + " of " + block;
}

// One line in `every` has another text in the second.
const Texts& TextsOf(int every) {
    static std::map<int, Texts> known;
    auto& texts = known[every];
    if (!texts.first.empty()) return texts;
    std::mt19937 random(7);
    for (int i = 0; i < Lines; ++i) {
        const auto line = LineOf(i);
        texts.first += line + "\n";
        const bool isChanged = random() % static_cast<unsigned>(every) == 0;
        texts.second += isChanged ? line + " changed " + std::to_string(i) + "\n" : line + "\n";
    }
    return texts;
}

using Numbering = std::unordered_map<std::string_view, int>;

std::vector<int> NumberPlainly(std::string_view text, Numbering& known) {
    std::vector<int> numbers;
    for (std::size_t begin = 0; begin <= text.size();) {
        const auto end = std::min(text.find('\n', begin), text.size());
        const auto next = static_cast<int>(known.size());
        numbers.push_back(known.emplace(text.substr(begin, end - begin), next).first->second);
        begin = end + 1;
    }
    return numbers;
}

// The number of differences by the greedy search from one corner.
int CountDifferences(const std::vector<int>& first, const std::vector<int>& second) {
    const auto n = static_cast<int>(first.size());
    const auto m = static_cast<int>(second.size());
    std::vector<int> reach(first.size() + second.size() + 3);
    const auto at = [&](int diagonal) -> int& {
        return reach[static_cast<std::size_t>(diagonal + m + 1)];
    };
    for (int d = 0; d <= n + m; ++d) {
        for (int k = std::max(-d, d - 2 * m); k <= std::min(d, 2 * n - d); k += 2) {
            const bool isDown = k == -d || (k != d && at(k - 1) < at(k + 1));
            int x = d == 0 ? 0 : isDown ? at(k + 1) : at(k - 1) + 1;
            while (x < n && x - k < m &&
                   first[static_cast<std::size_t>(x)] == second[static_cast<std::size_t>(x - k)])
                ++x;
            at(k) = x;
            if (x >= n && x - k >= m) return d;
        }
    }
    return n + m;
}

void Diff(benchmark::State& state) {
    const auto& texts = TextsOf(static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(TzDiffLib::CompareLines(texts.first, texts.second));
}

// As a rule does it, whose baseline is made ready when the definition is loaded.
void DiffPrepared(benchmark::State& state) {
    const auto& texts = TextsOf(static_cast<int>(state.range(0)));
    const CDiffLines lines(texts.first);
    for (auto _ : state) benchmark::DoNotOptimize(lines.Compare(texts.second));
}

void DiffPlainly(benchmark::State& state) {
    const auto every = static_cast<int>(state.range(0));
    const auto& texts = TextsOf(every);
    for (auto _ : state) {
        Numbering known;
        const auto first = NumberPlainly(texts.first, known);
        const auto second = NumberPlainly(texts.second, known);
        benchmark::DoNotOptimize(second.data());
        if (every != Unrelated) benchmark::DoNotOptimize(CountDifferences(first, second));
    }
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(10)->Arg(100)->Arg(1000)->Arg(Unrelated)->Unit(benchmark::kMicrosecond);
}

BENCHMARK(Diff)->Apply(&Sizes);
BENCHMARK(DiffPrepared)->Arg(100)->Unit(benchmark::kMicrosecond);
BENCHMARK(DiffPlainly)->Apply(&Sizes);

RatioRow RowOf(const std::string& what, const std::string& ours, const std::string& every) {
    return {what, ours + "/" + every, "DiffPlainly/" + every, RatioMeasure_Microseconds, {}};
}

const bool rows = CRatioTable::Add({
    RowOf("20 thousand lines: diff with 1 in 10 changed, to the plain greedy search", "Diff", "10"),
    RowOf("the same with 1 in 100", "Diff", "100"),
    RowOf("the same with the first text made ready", "DiffPrepared", "100"),
    RowOf("the same with 1 in 1000", "Diff", "1000"),
    RowOf("20 thousand lines: diff of unrelated texts, to numbering their lines", "Diff", "1"),
});

}  // namespace
