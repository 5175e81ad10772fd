// Two threads that parse with one parser, against one thread. What the machine itself gives to two
// threads shows in plain searches that share nothing but the process.
#include "tzparser/engine/tzparser.h"

#include "benchtext.h"
#include "plainsearch.h"
#include "ratiotable.h"

#include <benchmark/benchmark.h>

namespace {

void Parse(benchmark::State& state, CTzParser& parser, const std::string& text) {
    std::string error;
    for (auto _ : state) benchmark::DoNotOptimize(parser.Parse(text, error));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void ThreadsSmall(benchmark::State& state) {
    static const auto parser = BenchText::MakeParser(BenchText::SmallStatements());
    Parse(state, *parser, BenchText::Small());
}

void ThreadsLarge(benchmark::State& state) {
    static const auto parser = BenchText::MakeParser(BenchText::LateStatements());
    Parse(state, *parser, BenchText::Large());
}

void ThreadsPlain(benchmark::State& state) {
    const CPlainSearch plain(BenchText::SmallStatements());
    const auto lines = SplitPlainly(BenchText::Small());
    for (auto _ : state) benchmark::DoNotOptimize(plain.FirstMatches(lines));
    state.SetBytesProcessed(state.iterations() *
                            static_cast<std::int64_t>(BenchText::Small().size()));
}

BENCHMARK(ThreadsPlain)->ThreadRange(1, 2)->UseRealTime();
BENCHMARK(ThreadsSmall)->ThreadRange(1, 2)->UseRealTime();
BENCHMARK(ThreadsLarge)->ThreadRange(1, 2)->UseRealTime()->Unit(benchmark::kMillisecond);

const bool rows = CRatioTable::Add({
    {"plain searches of their own: two threads, to one",
     "ThreadsPlain/real_time/threads:2",
     "ThreadsPlain/real_time/threads:1",
     RatioMeasure_Megabytes,
     {}},
    {"1 KB: two threads, to one",
     "ThreadsSmall/real_time/threads:2",
     "ThreadsSmall/real_time/threads:1",
     RatioMeasure_Megabytes,
     {RatioAim::Ratio, '>', 1.9}},
    {"5 MB: two threads, to one",
     "ThreadsLarge/real_time/threads:2",
     "ThreadsLarge/real_time/threads:1",
     RatioMeasure_Megabytes,
     {RatioAim::Ratio, '>', 1.9}},
});

}  // namespace
