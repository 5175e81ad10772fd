// Tables, paragraphs and filters: what a stored cell costs, how the cost of a row grows with the
// number of rows, and how much memory a parse takes beside its text.
#include "tzparser/engine/tzparser.h"

#include "benchtext.h"
#include "peakmemory.h"
#include "plainsearch.h"
#include "ratiotable.h"
#include "shapetext.h"

#include <benchmark/benchmark.h>

namespace {

void Parse(benchmark::State& state, const std::string& text, CTzParser& parser,
           std::size_t values) {
    std::string error;
    for (auto _ : state) benchmark::DoNotOptimize(parser.Parse(text, error));
    if (!error.empty()) state.SkipWithError(error.c_str());
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(values));
}

// One iteration, with the peak as the bytes of the run; the baseline beside it has the text's.
void Memory(benchmark::State& state, const std::string& text, CTzParser& parser) {
    std::size_t bytes = 0;
    for (auto _ : state) {
        bytes = PeakMemory([&] {
            std::string error;
            benchmark::DoNotOptimize(parser.Parse(text, error));
        });
    }
    state.counters["bytes"] = static_cast<double>(bytes);
}

void TextSize(benchmark::State& state, const std::string& text) {
    for (auto _ : state) benchmark::DoNotOptimize(text.data());
    state.counters["bytes"] = static_cast<double>(text.size());
}

std::size_t Count(const benchmark::State& state) {
    return static_cast<std::size_t>(state.range(0));
}

void Table(benchmark::State& state) {
    const auto rows = Count(state);
    Parse(state, ShapeText::Table(rows), *ShapeText::TableParser(), rows * ShapeText::TableColumns);
}

// What storing alone costs: each cell trimmed and copied into columns of strings.
void TablePlain(benchmark::State& state) {
    const auto text = ShapeText::Table(Count(state));
    constexpr std::size_t begins[] = {0, 10, 30, 43, 54, 62, 69, 87, 95};
    for (auto _ : state) {
        std::vector<std::vector<std::string>> columns(ShapeText::TableColumns);
        for (const auto line : SplitPlainly(text)) {
            for (std::size_t i = 0; i < columns.size() && begins[i] < line.size(); ++i) {
                auto cell = line.substr(begins[i], begins[i + 1] - begins[i]);
                cell = cell.substr(0, cell.find_last_not_of(' ') + 1);
                columns[i].emplace_back(cell);
            }
        }
        benchmark::DoNotOptimize(columns.data());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
    state.SetItemsProcessed(state.iterations() *
                            static_cast<std::int64_t>(Count(state) * ShapeText::TableColumns));
}

void TableMemory(benchmark::State& state) {
    Memory(state, ShapeText::Table(Count(state)), *ShapeText::TableParser());
}

void TableText(benchmark::State& state) {
    TextSize(state, ShapeText::Table(Count(state)));
}

void Blocks(benchmark::State& state) {
    const auto blocks = Count(state);
    Parse(state, ShapeText::Blocks(blocks), *ShapeText::BlockParser(),
          blocks * ShapeText::BlockVariables);
}

// The searches alone: the start line over all lines, then each statement over the lines of a block
// until it fits.
void BlocksPlain(benchmark::State& state) {
    const auto text = ShapeText::Blocks(Count(state));
    const CPlainSearch start({"^$name is $state, line protocol is"});
    const CPlainSearch statements(
        {"^$name is $state, line protocol is", "Hardware is $hardware, address is $mac",
         "Description: $description", "Internet address is $address",
         "MTU $int:mtu bytes, BW $int:bandwidth Kbit", "txload $txload, rxload $rxload",
         "input rate $int:rate_in bits", "output rate $int:rate_out bits"});
    for (auto _ : state) {
        std::vector<std::string_view> block;
        for (const auto line : SplitPlainly(text)) {
            if (start.FirstMatches({line}) == 1 && !block.empty()) {
                benchmark::DoNotOptimize(statements.FirstMatches(block));
                block.clear();
            }
            block.push_back(line);
        }
        benchmark::DoNotOptimize(statements.FirstMatches(block));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
    state.SetItemsProcessed(state.iterations() *
                            static_cast<std::int64_t>(Count(state) * ShapeText::BlockVariables));
}

void BlocksMemory(benchmark::State& state) {
    Memory(state, ShapeText::Blocks(Count(state)), *ShapeText::BlockParser());
}

void BlocksText(benchmark::State& state) {
    TextSize(state, ShapeText::Blocks(Count(state)));
}

void Nested(benchmark::State& state) {
    const auto count = Count(state);
    Parse(state, ShapeText::Nested(count, count), *ShapeText::NestedParser(), count * count);
}

void NestedMemory(benchmark::State& state) {
    const auto count = Count(state);
    Memory(state, ShapeText::Nested(count, count), *ShapeText::NestedParser());
}

void NestedText(benchmark::State& state) {
    TextSize(state, ShapeText::Nested(Count(state), Count(state)));
}

void Filter(benchmark::State& state) {
    const auto lines = Count(state);
    Parse(state, BenchText::Interfaces(lines), *ShapeText::FilterParser(), lines);
}

void FilterMemory(benchmark::State& state) {
    Memory(state, BenchText::Interfaces(Count(state)), *ShapeText::FilterParser());
}

void FilterText(benchmark::State& state) {
    TextSize(state, BenchText::Interfaces(Count(state)));
}

void KeywordMemory(benchmark::State& state) {
    Memory(state, BenchText::Large(), *BenchText::MakeParser(BenchText::EarlyStatements()));
}

void KeywordText(benchmark::State& state) {
    TextSize(state, BenchText::Large());
}

// The lines that a paragraph text of so many blocks has, and a nested one of so many in as many.
constexpr int ThousandLinesOfBlocks = 72;
constexpr int ThousandLinesOfNested = 32;
constexpr int HundredThousandLinesOfNested = 316;

BENCHMARK(Table)->Arg(19)->Unit(benchmark::kMicrosecond);
BENCHMARK(TablePlain)->Arg(19)->Unit(benchmark::kMicrosecond);
BENCHMARK(Table)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond);
BENCHMARK(TablePlain)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(TableMemory)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(TableText)->Arg(100000)->Iterations(1);
BENCHMARK(Blocks)->RangeMultiplier(10)->Range(1000, 10000)->Unit(benchmark::kMillisecond);
BENCHMARK(Blocks)
    ->Arg(ThousandLinesOfBlocks)
    ->Arg(100 * ThousandLinesOfBlocks)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BlocksPlain)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(BlocksMemory)->Arg(10000)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BlocksText)->Arg(10000)->Iterations(1);
BENCHMARK(Nested)
    ->Arg(ThousandLinesOfNested)
    ->Arg(100)
    ->Arg(HundredThousandLinesOfNested)
    ->Arg(1000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(NestedMemory)
    ->Arg(HundredThousandLinesOfNested)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(NestedText)->Arg(HundredThousandLinesOfNested)->Iterations(1);
BENCHMARK(Filter)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(FilterMemory)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(FilterText)->Arg(100000)->Iterations(1);
BENCHMARK(KeywordMemory)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(KeywordText)->Iterations(1);

const bool rows = CRatioTable::Add({
    {"table of 20 lines, to cutting and copying the cells plainly",
     "Table/19",
     "TablePlain/19",
     RatioMeasure_Microseconds,
     {RatioAim::Ours, '<', 40}},
    {"table of 100 thousand rows by 8, to cutting and copying the cells plainly",
     "Table/100000",
     "TablePlain/100000",
     RatioMeasure_Megabytes,
     {}},
    {"the table, a stored cell", "Table/100000", "TablePlain/100000", RatioMeasure_Nanoseconds, {}},
    {"a cell of 10 thousand rows, to one of 1 thousand",
     "Table/10000",
     "Table/1000",
     RatioMeasure_Nanoseconds,
     {RatioAim::Ratio, '<', 1.1}},
    {"a cell of 100 thousand rows, to one of 1 thousand",
     "Table/100000",
     "Table/1000",
     RatioMeasure_Nanoseconds,
     {RatioAim::Ratio, '<', 1.1}},
    {"the plain cutting: a cell of 100 thousand rows, to one of 1 thousand",
     "TablePlain/100000",
     "TablePlain/1000",
     RatioMeasure_Nanoseconds,
     {}},
    {"10 thousand paragraphs of 12 values, to the plain searches",
     "Blocks/10000",
     "BlocksPlain/10000",
     RatioMeasure_Megabytes,
     {}},
    {"the paragraphs, a stored value",
     "Blocks/10000",
     "BlocksPlain/10000",
     RatioMeasure_Nanoseconds,
     {}},
    {"paragraphs: a value of 100 thousand lines, to one of 1 thousand",
     "Blocks/7200",
     "Blocks/72",
     RatioMeasure_Nanoseconds,
     {RatioAim::Ratio, '<', 1.1}},
    {"nested paragraphs: one of 100 thousand lines, to one of 1 thousand",
     "Nested/316",
     "Nested/32",
     RatioMeasure_Nanoseconds,
     {RatioAim::Ratio, '<', 1.1}},
    {"nested paragraphs: one of 1 million lines, to one of 10 thousand",
     "Nested/1000",
     "Nested/100",
     RatioMeasure_Nanoseconds,
     {RatioAim::Ratio, '<', 1.1}},
    {"filter of 50 patterns: a line of 100 thousand, to one of 1 thousand",
     "Filter/100000",
     "Filter/1000",
     RatioMeasure_Nanoseconds,
     {RatioAim::Ratio, '<', 1.1}},
    {"12 statements, 5 MB: peak memory, to the text",
     "KeywordMemory/iterations:1",
     "KeywordText/iterations:1",
     RatioMeasure_Bytes,
     {}},
    {"table of 100 thousand rows by 8: peak memory, to the text",
     "TableMemory/100000/iterations:1",
     "TableText/100000/iterations:1",
     RatioMeasure_Bytes,
     {}},
    {"10 thousand paragraphs of 12 values: peak memory, to the text",
     "BlocksMemory/10000/iterations:1",
     "BlocksText/10000/iterations:1",
     RatioMeasure_Bytes,
     {}},
    {"nested paragraphs, 100 thousand lines: peak memory, to the text",
     "NestedMemory/316/iterations:1",
     "NestedText/316/iterations:1",
     RatioMeasure_Bytes,
     {}},
    {"filter of 50 patterns, 100 thousand lines: peak memory, to the text",
     "FilterMemory/100000/iterations:1",
     "FilterText/100000/iterations:1",
     RatioMeasure_Bytes,
     {}},
});

}  // namespace
