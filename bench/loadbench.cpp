// Loading a definition of 200 samples with ten statements each, from its JSON text.
#include "host/json/hxjson.h"
#include "tzparser/engine/tzparser.h"

#include "benchtext.h"
#include "plainsearch.h"
#include "ratiotable.h"

#include <benchmark/benchmark.h>
#include <malloc.h>

namespace {

constexpr std::size_t Samples = 200;

const std::string& Document() {
    static const auto text = BenchText::Definition(Samples, BenchText::SmallStatements());
    return text;
}

void CountBytes(benchmark::State& state) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(Document().size()));
}

void Load(benchmark::State& state) {
    for (auto _ : state) {
        hxJson::Value definition;
        CTzParser parser;
        if (!hxJson::Reader().parse(Document(), definition) || !parser.SetParser(definition))
            state.SkipWithError("the definition could not be loaded");
    }
    CountBytes(state);
}

// Compiles as many expressions.
void LoadPlainCompile(benchmark::State& state) {
    for (auto _ : state)
        for (std::size_t sample = 0; sample < Samples; ++sample)
            benchmark::DoNotOptimize(CPlainSearch(BenchText::SmallStatements()).Count());
    CountBytes(state);
}

void LoadJsonOnly(benchmark::State& state) {
    for (auto _ : state) {
        hxJson::Value definition;
        benchmark::DoNotOptimize(hxJson::Reader().parse(Document(), definition));
    }
    CountBytes(state);
}

// Bytes that the heap has in use once the definition is loaded and its document gone, of one rule.
void LoadMemory(benchmark::State& state) {
    double bytes = 0;
    for (auto _ : state) {
        const auto before = mallinfo2();
        CTzParser parser;
        {
            hxJson::Value definition;
            if (!hxJson::Reader().parse(Document(), definition) || !parser.SetParser(definition))
                state.SkipWithError("the definition could not be loaded");
        }
        const auto after = mallinfo2();
        bytes = static_cast<double>(after.uordblks + after.hblkhd) -
                static_cast<double>(before.uordblks + before.hblkhd);
    }
    state.counters["bytes"] = bytes / Samples;
}

// What the texts of a rule alone take: its statements, each held once.
void LoadTexts(benchmark::State& state) {
    std::size_t bytes = 0;
    for (auto _ : state) {
        bytes = 0;
        for (const auto& statement : BenchText::SmallStatements()) bytes += statement.size();
    }
    state.counters["bytes"] = static_cast<double>(bytes);
}

BENCHMARK(Load)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadPlainCompile)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadJsonOnly)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadMemory)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadTexts)->Iterations(1);

const bool rows = CRatioTable::Add({
    {"load 200 samples, to compiling their statements plainly",
     "Load",
     "LoadPlainCompile",
     RatioMeasure_Megabytes,
     {}},
    {"load 200 samples, to reading the JSON alone",
     "Load",
     "LoadJsonOnly",
     RatioMeasure_Megabytes,
     {}},
    {"200 samples in memory: one rule, to the texts of its statements",
     "LoadMemory/iterations:1",
     "LoadTexts/iterations:1",
     RatioMeasure_Kilobytes,
     {}},
});

}  // namespace
