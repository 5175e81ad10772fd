// Splitting 5 MB into lines; the table of lines copies the text, which the baseline doesn't.
#include "tzparser/rule/appsamplelines.h"

#include "benchtext.h"
#include "plainsearch.h"
#include "ratiotable.h"

#include <benchmark/benchmark.h>
#include <boost/algorithm/string/replace.hpp>

namespace {

void Assign(benchmark::State& state, const std::string& text) {
    for (auto _ : state) {
        CAppSampleLines lines;
        lines.Assign(text);
        if (lines.Count() != static_cast<int>(BenchText::LargeLines))
            state.SkipWithError("wrong number of lines");
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void Split(benchmark::State& state) {
    Assign(state, BenchText::Large());
}

void SplitCrLf(benchmark::State& state) {
    static const auto text = boost::algorithm::replace_all_copy(BenchText::Large(), "\n", "\r\n");
    Assign(state, text);
}

void SplitMemchr(benchmark::State& state) {
    const auto& text = BenchText::Large();
    for (auto _ : state) benchmark::DoNotOptimize(SplitPlainly(text));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

BENCHMARK(Split)->Unit(benchmark::kMicrosecond);
BENCHMARK(SplitCrLf)->Unit(benchmark::kMicrosecond);
BENCHMARK(SplitMemchr)->Unit(benchmark::kMicrosecond);

const bool rows = CRatioTable::Add({
    {"5 MB: split into lines, to a memchr loop",
     "Split",
     "SplitMemchr",
     RatioMeasure_Megabytes,
     {}},
    {"5 MB with CR LF: split into lines, to a memchr loop over LF",
     "SplitCrLf",
     "SplitMemchr",
     RatioMeasure_Megabytes,
     {}},
});

}  // namespace
