// Choosing among 200 samples for a text of 100 KB that fits the last of them only, against the
// parse itself and against searching the strings of the conditions one by one.
#include "host/json/hxjson.h"
#include "tzparser/engine/tzparser.h"
#include "tzparser/identify/canvasnodecmdsampleidentify.h"
#include "tzparser/identify/samplechooser.h"

#include "benchtext.h"
#include "ratiotable.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

namespace {

constexpr int Samples = 200;
constexpr std::size_t Lines = 2000;

const std::string& Text() {
    static const auto text = BenchText::Interfaces(Lines);
    return text;
}

hxJson::Value Condition(int index, int type, const std::string& value) {
    hxJson::Value item;
    item["@Index"] = index;
    item["@Type"] = type;
    item["@Value"] = value;
    return item;
}

// All strings of the last sample stand in the text; of the others one is that of another device.
hxJson::Value Conditions(int sample) {
    const bool isLast = sample + 1 == Samples;
    const auto number = std::to_string(sample);
    hxJson::Value document;
    auto& items = document["ConfigKey"]["MustConditions"]["Item"];
    items.append(Condition(1, 1,
                           isLast ? std::string("line protocol is;packets input;Total of")
                                  : "line protocol is;Platform CR" + number + "00"));
    items.append(Condition(2, 0, "Encapsulation ARPA;Encapsulation of model " + number));
    items.append(Condition(3, 2, "Invalid input " + number + ";Release " + number + " Software"));
    hxJson::Value holder;
    holder["identify"] = std::move(document);
    return holder;
}

const std::vector<std::unique_ptr<CCanvasNodeCmdSampleIdentify>>& Identifies() {
    static const auto identifies = [] {
        std::vector<std::unique_ptr<CCanvasNodeCmdSampleIdentify>> made;
        for (int sample = 0; sample < Samples; ++sample)
            made.emplace_back(std::make_unique<CCanvasNodeCmdSampleIdentify>())
                ->Load(Conditions(sample));
        return made;
    }();
    return identifies;
}

void CountBytes(benchmark::State& state) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(Text().size()));
}

void IdentifyChoose(benchmark::State& state) {
    std::vector<const CCanvasNodeCmdSampleIdentify*> samples;
    for (const auto& identify : Identifies()) samples.push_back(identify.get());
    const CSampleChooser chooser(samples);
    if (chooser.Choose(Text()) + 1 != Samples) state.SkipWithError("another sample was chosen");
    for (auto _ : state) benchmark::DoNotOptimize(chooser.Choose(Text()));
    CountBytes(state);
}

void IdentifyChoosePlain(benchmark::State& state) {
    for (auto _ : state) {
        int chosen = 0;
        for (const auto& identify : Identifies()) {
            if (identify->IsMatch(Text())) break;
            ++chosen;
        }
        if (chosen + 1 != Samples) state.SkipWithError("another sample was chosen");
    }
    CountBytes(state);
}

void IdentifyBuild(benchmark::State& state) {
    std::vector<const CCanvasNodeCmdSampleIdentify*> samples;
    for (const auto& identify : Identifies()) samples.push_back(identify.get());
    for (auto _ : state) {
        const CSampleChooser chooser(samples);
        benchmark::DoNotOptimize(&chooser);
    }
}

void Parse(benchmark::State& state, const BenchText::Statements& statements) {
    const auto parser = BenchText::MakeParser(statements);
    std::string error;
    for (auto _ : state) benchmark::DoNotOptimize(parser->Parse(Text(), error));
    if (!error.empty()) state.SkipWithError(error.c_str());
    CountBytes(state);
}

void IdentifyParse(benchmark::State& state) {
    Parse(state, BenchText::LateStatements());
}

// So many strings of a length, none of which stands in the text: where the limit lies under which
// strings are searched one by one. The plain search is the quicker the longer a string is; the
// search at once doesn't care.
std::vector<std::string> FewStrings(std::int64_t count, std::int64_t length) {
    const std::string word = "Platform Version";
    std::vector<std::string> strings;
    for (std::int64_t i = 0; i < count; ++i)
        strings.push_back(std::to_string(10 + i) +
                          word.substr(0, static_cast<std::size_t>(length - 2)));
    return strings;
}

void FewStringsAtOnce(benchmark::State& state) {
    const auto strings = FewStrings(state.range(0), state.range(1));
    const CStringFinder finder({strings.begin(), strings.end()});
    for (auto _ : state) benchmark::DoNotOptimize(finder.Find(Text()).Has(0));
    CountBytes(state);
}

void FewStringsInTurn(benchmark::State& state) {
    const auto strings = FewStrings(state.range(0), state.range(1));
    for (auto _ : state)
        for (const auto& string : strings)
            benchmark::DoNotOptimize(
                CCanvasNodeCmdSampleIdentifyConditionStr::IsFound(Text(), string));
    CountBytes(state);
}

BENCHMARK(IdentifyChoose)->Unit(benchmark::kMicrosecond);
BENCHMARK(IdentifyChoosePlain)->Unit(benchmark::kMicrosecond);
BENCHMARK(IdentifyParse)->Unit(benchmark::kMicrosecond);
BENCHMARK(IdentifyBuild)->Unit(benchmark::kMicrosecond);
BENCHMARK(FewStringsAtOnce)->Args({16, 4})->Args({16, 12});
BENCHMARK(FewStringsInTurn)->Args({16, 4})->Args({16, 12});

const bool rows = CRatioTable::Add({
    {"100 KB: choose among 200 samples, to the parse",
     "IdentifyChoose",
     "IdentifyParse",
     RatioMeasure_Microseconds,
     {RatioAim::Ratio, '<', 0.2}},
    {"100 KB: choose among 200 samples, to asking one by one",
     "IdentifyChoose",
     "IdentifyChoosePlain",
     RatioMeasure_Microseconds,
     {}},
    {"100 KB: search 16 strings of 4 bytes at once, to one by one",
     "FewStringsAtOnce/16/4",
     "FewStringsInTurn/16/4",
     RatioMeasure_Microseconds,
     {}},
    {"100 KB: search 16 strings of 12 bytes at once, to one by one",
     "FewStringsAtOnce/16/12",
     "FewStringsInTurn/16/12",
     RatioMeasure_Microseconds,
     {}},
});

}  // namespace
