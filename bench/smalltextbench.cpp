// A text of 1 KB: the fixed costs of a parse count here. The whole of a parse, then its steps each
// by itself; they don't add up to the last nanosecond, since a step repeated alone finds its memory
// warm.
#include "tzparser/engine/tzparser.h"
#include "tzparser/rule/appparserule.h"
#include "tzparser/rule/appsamplelines.h"

#include "benchtext.h"
#include "plainsearch.h"
#include "ratiotable.h"

#include <benchmark/benchmark.h>

namespace {

// Asks for "_" at the end, which no line has, behind nested repeats that can split each line in
// very many ways.
const BenchText::Statements HostileStatements = {R"(regex[$x]:^(?:(?:\S+\s*)+)+(_)$)"};

void Parse(benchmark::State& state, const BenchText::Statements& statements, bool handOutTree) {
    const auto parser = BenchText::MakeParser(statements);
    if (handOutTree) parser->GetVariableTree();
    const auto& text = BenchText::Small();
    std::string error;
    for (auto _ : state) benchmark::DoNotOptimize(parser->Parse(text, error));
    if (!error.empty()) state.SkipWithError(error.c_str());
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void SmallParse(benchmark::State& state) {
    Parse(state, BenchText::SmallStatements(), false);
}

void SmallParseTreeHandedOut(benchmark::State& state) {
    Parse(state, BenchText::SmallStatements(), true);
}

void SmallParseHostile(benchmark::State& state) {
    Parse(state, HostileStatements, false);
}

void SmallPlain(benchmark::State& state) {
    const CPlainSearch plain(BenchText::SmallStatements());
    const auto lines = SplitPlainly(BenchText::Small());
    if (plain.FirstMatches(lines) != plain.Count())
        state.SkipWithError("a statement found no line");
    for (auto _ : state) benchmark::DoNotOptimize(plain.FirstMatches(lines));
}

void SmallClone(benchmark::State& state) {
    const auto parser = BenchText::MakeParser(BenchText::SmallStatements());
    std::string error;
    for (auto _ : state)
        benchmark::DoNotOptimize(parser->GetSampleParseRuleClone(BenchText::Small(), error));
}

void SmallLines(benchmark::State& state) {
    for (auto _ : state) {
        CAppSampleLines lines;
        lines.Assign(BenchText::Small());
        benchmark::DoNotOptimize(lines.Count());
    }
}

// Splits the lines too.
void SmallRules(benchmark::State& state) {
    const auto parser = BenchText::MakeParser(BenchText::SmallStatements());
    std::string error;
    const auto rules = parser->GetSampleParseRuleClone(BenchText::Small(), error);
    for (auto _ : state) benchmark::DoNotOptimize(rules->Parse(BenchText::Small(), 0, -1, nullptr));
    if (rules->IsNoneExist()) state.SkipWithError("a statement found no line");
}

void SmallValues(benchmark::State& state) {
    const auto parser = BenchText::MakeParser(BenchText::SmallStatements());
    const std::shared_ptr<const CAppVariableDef> definition = parser->GetVariableTree();
    std::string error;
    const auto rules = parser->GetSampleParseRuleClone(BenchText::Small(), error);
    rules->Parse(BenchText::Small(), 0, -1, nullptr);
    for (auto _ : state) {
        const CAppVariableValue values(definition, rules.get(), 0);
        benchmark::DoNotOptimize(&values);
    }
}

BENCHMARK(SmallParse);
BENCHMARK(SmallPlain);
BENCHMARK(SmallClone);
BENCHMARK(SmallLines);
BENCHMARK(SmallRules);
BENCHMARK(SmallValues);
BENCHMARK(SmallParseTreeHandedOut);
BENCHMARK(SmallParseHostile)->Unit(benchmark::kMillisecond);

const bool rows = CRatioTable::Add({
    {"1 KB: parse to plain searches",
     "SmallParse",
     "SmallPlain",
     RatioMeasure_Microseconds,
     {RatioAim::Ours, '<', 25}},
    {"1 KB: clone, of the parse", "SmallClone", "SmallParse", RatioMeasure_Microseconds, {}},
    {"1 KB: lines, of the parse", "SmallLines", "SmallParse", RatioMeasure_Microseconds, {}},
    {"1 KB: rules with lines, of the parse",
     "SmallRules",
     "SmallParse",
     RatioMeasure_Microseconds,
     {}},
    {"1 KB: value tree, of the parse", "SmallValues", "SmallParse", RatioMeasure_Microseconds, {}},
    {"1 KB: parse once the tree was handed out, to parse",
     "SmallParseTreeHandedOut",
     "SmallParse",
     RatioMeasure_Microseconds,
     {}},
    {"1 KB: hostile pattern, to an ordinary parse",
     "SmallParseHostile",
     "SmallParse",
     RatioMeasure_Microseconds,
     {RatioAim::Ours, '<', 10000}},
});

}  // namespace
