// Text rules and design readers: how the cost of a line grows with the number of lines, all of
// which are different. Records of a text rule that the text doesn't have, and a selection in
// another order than the text's, take a table of texts; at 100 thousand it is larger than the
// nearer caches.
#include "tzparser/engine/tzparser.h"
#include "tzparser/select/designreader.h"

#include "plainsearch.h"
#include "ratiotable.h"
#include "shapetext.h"

#include <algorithm>
#include <memory>
#include <vector>

#include <benchmark/benchmark.h>

namespace {

constexpr std::size_t FewRecords = 500;

// Gives the same answer to every text.
class CAnswer : public IDesignReader {
public:
    explicit CAnswer(std::string answer) : m_answer(std::move(answer)) {}
    bool Select(const std::string&, const std::string&, const std::string&,
                std::string& selected) override {
        selected = m_answer;
        return true;
    }

private:
    std::string m_answer;
};

std::size_t Lines(const benchmark::State& state) {
    return static_cast<std::size_t>(state.range(0));
}

void Parse(benchmark::State& state, CTzParser& parser) {
    const auto text = ShapeText::Distinct(Lines(state));
    std::string error;
    for (auto _ : state) benchmark::DoNotOptimize(parser.Parse(text, error));
    if (!error.empty()) state.SkipWithError(error.c_str());
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// The reader answers every other line, in the order of the text or from its end.
void ParseWithReader(benchmark::State& state, bool isReversed) {
    const auto text = ShapeText::Distinct(Lines(state));
    auto lines = SplitPlainly(text);
    if (isReversed) std::reverse(lines.begin(), lines.end());
    std::string answer;
    for (std::size_t i = 0; i < lines.size(); i += 2) answer.append(lines[i]) += '\n';
    SetDesignReader(std::make_shared<CAnswer>(std::move(answer)));
    Parse(state, *ShapeText::ReaderParser());
    SetDesignReader(nullptr);
}

void TextRule(benchmark::State& state) {
    Parse(state, *ShapeText::TextParser(FewRecords));
}

void TextRuleOfAll(benchmark::State& state) {
    Parse(state, *ShapeText::TextParser(Lines(state)));
}

void Reader(benchmark::State& state) {
    ParseWithReader(state, false);
}

void ReaderReversed(benchmark::State& state) {
    ParseWithReader(state, true);
}

BENCHMARK(TextRule)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(TextRuleOfAll)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond);
BENCHMARK(Reader)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond);
BENCHMARK(ReaderReversed)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond);

const bool rows = CRatioTable::Add({
    {"text rule of 500 lines: a line of 100 thousand, to one of 1 thousand",
     "TextRule/100000",
     "TextRule/1000",
     RatioMeasure_Nanoseconds,
     {RatioAim::Ratio, '<', 1.1}},
    {"text rule of as many lines as the text: one of 100 thousand, to one of 1 thousand",
     "TextRuleOfAll/100000",
     "TextRuleOfAll/1000",
     RatioMeasure_Nanoseconds,
     {}},
    {"design reader of every other line: a line of 100 thousand, to one of 1 thousand",
     "Reader/100000",
     "Reader/1000",
     RatioMeasure_Nanoseconds,
     {RatioAim::Ratio, '<', 1.1}},
    {"design reader, from the end: a line of 100 thousand, to one of 1 thousand",
     "ReaderReversed/100000",
     "ReaderReversed/1000",
     RatioMeasure_Nanoseconds,
     {}},
});

}  // namespace
