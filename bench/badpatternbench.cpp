// Expressions that explode, each over a text of 1 KB beside plain searching, and over one of 1 MB
// beside the 1 KB. Where plain searching gives up, its time is that until it does.
#include "tzparser/pattern/appregex.h"

#include "ratiotable.h"
#include "support/badpatterns.h"

#include <string>
#include <vector>

#include <benchmark/benchmark.h>

namespace {

constexpr std::size_t Kilobyte = 1000;
constexpr std::size_t Megabyte = 1000000;
// What a pattern may take, in microseconds.
constexpr double MostOfKilobyte = 10000;
constexpr double MostOfMegabyte = 2000000;

void Search(benchmark::State& state, const BadPattern& pattern, std::size_t size) {
    const CAppRegex regex(pattern.expression, CAppRegex::RuleFlags);
    const auto text = BadText(pattern, size);
    CAppRegexMatch match;
    bool isFound = false;
    for (auto _ : state) isFound = regex.Search(text, match) == AppRegexSearch_Match;
    if (size == Kilobyte && isFound != pattern.isMatch) state.SkipWithError("another result");
}

void SearchPlain(benchmark::State& state, const BadPattern& pattern) {
    const CAppRegex regex(pattern.expression, CAppRegex::RuleFlags);
    const auto text = BadText(pattern, Kilobyte);
    CAppRegexMatch match;
    bool isFound = false;
    for (auto _ : state) isFound = regex.SearchPlain(text, match) == AppRegexSearch_Match;
    if (isFound && !pattern.isMatch) state.SkipWithError("another result");
}

// A bar would end the cell of a table.
std::string Escaped(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '|') escaped += '\\';
        escaped += c;
    }
    return escaped;
}

template <class Run>
void Register(const std::string& name, Run run) {
    benchmark::RegisterBenchmark(name.c_str(), run)->Iterations(1)->Unit(benchmark::kMicrosecond);
}

bool AddPattern(const BadPattern& pattern) {
    const std::string text = pattern.expression;
    const auto name = "BadPattern/" + text;
    Register(name + "/1KB", [&](benchmark::State& state) { Search(state, pattern, Kilobyte); });
    Register(name + "/1MB", [&](benchmark::State& state) { Search(state, pattern, Megabyte); });
    Register(name + "/plain", [&](benchmark::State& state) { SearchPlain(state, pattern); });
    const std::string once = "/iterations:1";
    return CRatioTable::Add({
        {"1 KB: `" + Escaped(text) + "`, to plain",
         name + "/1KB" + once,
         name + "/plain" + once,
         RatioMeasure_Microseconds,
         {RatioAim::Ours, '<', MostOfKilobyte}},
        {"1 MB: the same, to 1 KB",
         name + "/1MB" + once,
         name + "/1KB" + once,
         RatioMeasure_Microseconds,
         {RatioAim::Ours, '<', MostOfMegabyte}},
    });
}

bool AddAll() {
    bool isAdded = true;
    for (const auto& pattern : BadPatterns()) isAdded = AddPattern(pattern) && isAdded;
    return isAdded;
}

const bool rows = AddAll();

}  // namespace
