// How the cost of a line grows with the number of lines; every line is tried by every statement.
#include "tzparser/engine/tzparser.h"

#include "benchtext.h"
#include "plainsearch.h"
#include "ratiotable.h"

#include <benchmark/benchmark.h>

namespace {

constexpr std::int64_t EmptyLines = 1000000;

void Parse(benchmark::State& state, const std::string& text, std::int64_t lines) {
    const auto parser = BenchText::MakeParser(BenchText::LateStatements());
    std::string error;
    for (auto _ : state) benchmark::DoNotOptimize(parser->Parse(text, error));
    if (!error.empty()) state.SkipWithError(error.c_str());
    state.SetItemsProcessed(state.iterations() * lines);
}

void Growth(benchmark::State& state) {
    const auto lines = state.range(0);
    Parse(state, BenchText::Interfaces(static_cast<std::size_t>(lines)), lines);
}

void GrowthEmpty(benchmark::State& state) {
    Parse(state, std::string(static_cast<std::size_t>(EmptyLines), '\n'), EmptyLines);
}

void GrowthEmptyPlain(benchmark::State& state) {
    const CPlainSearch plain(BenchText::LateStatements());
    const std::string text(static_cast<std::size_t>(EmptyLines), '\n');
    for (auto _ : state) benchmark::DoNotOptimize(plain.FirstMatches(SplitPlainly(text)));
    state.SetItemsProcessed(state.iterations() * EmptyLines);
}

BENCHMARK(Growth)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond);
BENCHMARK(GrowthEmpty)->Unit(benchmark::kMillisecond);
BENCHMARK(GrowthEmptyPlain)->Unit(benchmark::kMillisecond);

const bool rows = CRatioTable::Add({
    {"a line of 10 thousand, to one of 1 thousand",
     "Growth/10000",
     "Growth/1000",
     RatioMeasure_Nanoseconds,
     {RatioAim::Ratio, '<', 1.1}},
    {"a line of 100 thousand, to one of 1 thousand",
     "Growth/100000",
     "Growth/1000",
     RatioMeasure_Nanoseconds,
     {RatioAim::Ratio, '<', 1.1}},
    {"an empty line of 1 million, to plain split and loop",
     "GrowthEmpty",
     "GrowthEmptyPlain",
     RatioMeasure_Nanoseconds,
     {}},
});

}  // namespace
