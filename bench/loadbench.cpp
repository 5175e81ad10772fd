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

// The first so many of the statements.
BenchText::Statements FirstStatements(const benchmark::State& state) {
    const auto& all = BenchText::SmallStatements();
    return {all.begin(), all.begin() + state.range(0)};
}

// Bytes that the heap has in use once a definition of so many statements a rule is loaded and its
// document gone, of one rule.
void LoadMemory(benchmark::State& state) {
    const auto document = BenchText::Definition(Samples, FirstStatements(state));
    double bytes = 0;
    for (auto _ : state) {
        const auto before = mallinfo2();
        CTzParser parser;
        {
            hxJson::Value definition;
            if (!hxJson::Reader().parse(document, definition) || !parser.SetParser(definition))
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
        for (const auto& statement : FirstStatements(state)) bytes += statement.size();
    }
    state.counters["bytes"] = static_cast<double>(bytes);
}

BENCHMARK(Load)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadPlainCompile)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadJsonOnly)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadMemory)->Arg(1)->Arg(10)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadTexts)->Arg(1)->Arg(10)->Iterations(1);

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
    {"200 samples in memory: a rule of one statement, to the statement's text",
     "LoadMemory/1/iterations:1",
     "LoadTexts/1/iterations:1",
     RatioMeasure_Kilobytes,
     {}},
    {"200 samples in memory: a rule of ten statements, to the statements' texts",
     "LoadMemory/10/iterations:1",
     "LoadTexts/10/iterations:1",
     RatioMeasure_Kilobytes,
     {}},
});

}  // namespace
