// A text of 5 MB and 100 thousand lines: the cost of a line counts here.
#include "tzparser/engine/tzparser.h"

#include "benchtext.h"
#include "plainsearch.h"
#include "ratiotable.h"

#include <benchmark/benchmark.h>

namespace {

// One expression over all lines joined, which only fits at the end.
const BenchText::Statements MultiLine = {
    R"(mregex[$int:errors,$int:interfaces]:^ +(\d+) output errors[^\n]*\nTotal of (\d+))"};

void CountBytes(benchmark::State& state) {
    state.SetBytesProcessed(state.iterations() *
                            static_cast<std::int64_t>(BenchText::Large().size()));
}

void Parse(benchmark::State& state, const BenchText::Statements& statements,
           const char* lastVariable) {
    const auto parser = BenchText::MakeParser(statements);
    const auto& text = BenchText::Large();
    std::string error;
    for (auto _ : state) benchmark::DoNotOptimize(parser->Parse(text, error));
    const auto values = parser->Parse(text, error);
    auto* last = values ? values->GetChildValueByName(lastVariable) : nullptr;
    if (last == nullptr || last->GetVariableValue(0)->text.empty())
        state.SkipWithError("the last statement found no line");
    CountBytes(state);
}

// The lines are split in it, which a parse does too.
void Plain(benchmark::State& state, const BenchText::Statements& statements, std::size_t hits) {
    const CPlainSearch plain(statements);
    std::size_t found = 0;
    for (auto _ : state) found = plain.FirstMatches(SplitPlainly(BenchText::Large()));
    if (found != hits) state.SkipWithError("not as many lines found as there should be");
    CountBytes(state);
}

void LargeEarly(benchmark::State& state) {
    Parse(state, BenchText::EarlyStatements(), "resets");
}

void LargeEarlyPlain(benchmark::State& state) {
    Plain(state, BenchText::EarlyStatements(), BenchText::EarlyStatements().size());
}

void LargeLate(benchmark::State& state) {
    Parse(state, BenchText::LateStatements(), BenchText::LateVariable);
}

void LargeLatePlain(benchmark::State& state) {
    Plain(state, BenchText::LateStatements(), 1);
}

void LargeJoined(benchmark::State& state) {
    Parse(state, MultiLine, BenchText::LateVariable);
}

void LargeJoinedPlain(benchmark::State& state) {
    const CPlainSearch plain(MultiLine);
    std::size_t found = 0;
    for (auto _ : state) found = plain.WholeMatches(BenchText::Large());
    if (found != 1) state.SkipWithError("nothing found");
    CountBytes(state);
}

BENCHMARK(LargeEarly)->Unit(benchmark::kMillisecond);
BENCHMARK(LargeEarlyPlain)->Unit(benchmark::kMillisecond);
BENCHMARK(LargeLate)->Unit(benchmark::kMillisecond);
BENCHMARK(LargeLatePlain)->Unit(benchmark::kMillisecond);
BENCHMARK(LargeJoined)->Unit(benchmark::kMillisecond);
BENCHMARK(LargeJoinedPlain)->Unit(benchmark::kMillisecond);

const bool rows = CRatioTable::Add({
    {"5 MB: 12 statements found early, to plain split and searches",
     "LargeEarly",
     "LargeEarlyPlain",
     RatioMeasure_Megabytes,
     {}},
    {"5 MB: 12 statements over every line, to plain searches",
     "LargeLate",
     "LargeLatePlain",
     RatioMeasure_Megabytes,
     {RatioAim::Ratio, '>', 2}},
    {"5 MB: one expression over joined lines, to plain search",
     "LargeJoined",
     "LargeJoinedPlain",
     RatioMeasure_Megabytes,
     {}},
});

}  // namespace
