// The check of a whole definition, and the form of a finding for people.
#include "tzparser/check/definitioncheck.h"

#include "tzparser/check/checkshape.h"
#include "tzparser/check/samplecheck.h"
#include "tzparser/engine/enginekeys.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace {

constexpr const char* WholeDefinition = "definition";

std::string Element(const char* list, std::size_t index) {
    return std::string(list) + "[" + std::to_string(index) + "]";
}

struct LoadedSample {
    std::string path;
    int index;
    bool hasConditions;
};

std::vector<LoadedSample> CheckSamples(const hxJson::Value& definition, CCheckReport& report) {
    std::vector<LoadedSample> loaded;
    const auto& samples = definition[EngineKey::Samples];
    if (HasShape(samples, CheckShape_Array, report, EngineKey::Samples)) {
        for (std::size_t i = 0; i < samples.size(); ++i) {
            CSampleCheck check(report, Element(EngineKey::Samples, i));
            check.Check(samples[i]);
            if (check.IsLoaded())
                loaded.push_back(
                    {Element(EngineKey::Samples, i), check.Index(), check.HasConditions()});
        }
    }
    if (loaded.empty()) report.Add(WholeDefinition, CheckMessage_NoSample);
    return loaded;
}

// The indexes that "sequences" names, in the order of trying.
std::vector<int> CheckSequences(const hxJson::Value& definition,
                                const std::vector<LoadedSample>& samples, CCheckReport& report) {
    std::unordered_set<int> indexes;
    for (const auto& sample : samples) indexes.insert(sample.index);
    std::vector<int> named;
    const auto& sequences = definition[EngineKey::Sequences];
    if (!HasShape(sequences, CheckShape_Array, report, EngineKey::Sequences)) return named;
    for (std::size_t i = 0; i < sequences.size(); ++i) {
        const int index = sequences[i].asInt();
        named.push_back(index);
        if (indexes.count(index) == 0)
            report.Add(Element(EngineKey::Sequences, i), CheckMessage_NoSuchSample,
                       {std::to_string(index)});
    }
    return named;
}

// The samples by their index, of several with one index the first: the others are never tried.
std::unordered_map<int, const LoadedSample*> ByIndex(const std::vector<LoadedSample>& samples) {
    std::unordered_map<int, const LoadedSample*> byIndex;
    for (const auto& sample : samples) byIndex.emplace(sample.index, &sample);
    return byIndex;
}

// The samples that some text gets as far as, and the one that goes on to none.
struct Reach {
    std::unordered_set<const LoadedSample*> tried;
    const LoadedSample* taker = nullptr;
};

Reach FollowSequences(const std::unordered_map<int, const LoadedSample*>& byIndex,
                      const std::vector<int>& named) {
    Reach reach;
    for (const int index : named) {
        const auto at = byIndex.find(index);
        if (at == byIndex.end()) continue;
        reach.tried.insert(at->second);
        if (at->second->hasConditions) continue;
        reach.taker = at->second;
        break;
    }
    return reach;
}

// The last sample reads what no other one fits; any other is found by its index in "sequences"
// alone. A sample without conditions leaves nothing to those behind it and to the last one.
void CheckReach(const std::vector<LoadedSample>& samples, const std::vector<int>& named,
                CCheckReport& report) {
    const auto byIndex = ByIndex(samples);
    const auto reach = FollowSequences(byIndex, named);
    const std::unordered_set<int> namedOnes(named.begin(), named.end());
    for (const auto& sample : samples) {
        const bool isLast = &sample == &samples.back();
        if (reach.tried.count(&sample) != 0) continue;
        if (!isLast && namedOnes.count(sample.index) == 0)
            report.Add(sample.path, CheckMessage_SampleNotNamed, {std::to_string(sample.index)});
        else if (!isLast && byIndex.at(sample.index) != &sample)
            report.Add(sample.path, CheckMessage_SampleHidden, {std::to_string(sample.index)});
        else if (reach.taker != nullptr)
            report.Add(sample.path, CheckMessage_SampleBehind,
                       {std::to_string(reach.taker->index)});
    }
}

void CheckDefinition(const hxJson::Value& definition, CCheckReport& report) {
    if (!definition.isObject()) {
        report.Add(WholeDefinition, CheckMessage_NotDefinition);
        return;
    }
    const auto& access = definition[EngineKey::AccessType];
    if (!access.isNull() && !access.isInt())
        report.Add(EngineKey::AccessType, CheckMessage_AccessType);
    const auto samples = CheckSamples(definition, report);
    const auto named = CheckSequences(definition, samples, report);
    CheckReach(samples, named, report);
}

bool IsControl(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte == 0x7F;
}

bool IsContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

// A statement is foreign text: shown on a terminal it must not act there.
std::string Harmless(std::string_view text) {
    std::string shown(text);
    std::replace_if(shown.begin(), shown.end(), IsControl, '?');
    return shown;
}

// The part of a statement that is shown, and where in it the caret stands.
struct Excerpt {
    std::string text;
    std::size_t caret;  // in characters
};

Excerpt Cut(const DefinitionFinding& finding) {
    constexpr std::size_t longest = 120;
    constexpr std::string_view gap = "...";
    const std::string_view statement = finding.statement;
    const bool hasCaret = finding.caret != DefinitionFinding::NoCaret;
    const auto caret = hasCaret ? std::min(finding.caret, statement.size()) : 0;
    std::size_t begin = 0;
    if (statement.size() > longest && caret > longest / 2)
        begin = std::min(caret - longest / 2, statement.size() - longest);
    while (begin < caret && IsContinuation(statement[begin])) ++begin;
    auto end = std::min(begin + longest, statement.size());
    while (end < statement.size() && IsContinuation(statement[end])) ++end;
    const auto text = statement.substr(begin, end - begin);
    Excerpt excerpt;
    if (begin != 0) excerpt.text = gap;
    excerpt.caret = excerpt.text.size();
    for (const char c : text.substr(0, caret - begin)) excerpt.caret += IsContinuation(c) ? 0 : 1;
    excerpt.text += Harmless(text);
    if (end < statement.size()) excerpt.text += gap;
    return excerpt;
}

}  // namespace

std::vector<DefinitionFinding> CTzDefinitionCheck::Check(const std::string& definitionText) {
    CCheckReport report;
    hxJson::Value definition;
    hxJson::Reader reader;
    if (reader.parse(definitionText, definition, true))
        CheckDefinition(definition, report);
    else
        report.AddJsonError(WholeDefinition, CheckMessage_NotJson, reader, definitionText);
    return report.Take();
}

std::string CTzDefinitionCheck::Format(const DefinitionFinding& finding) {
    constexpr std::string_view indent = "    ";
    std::string text = finding.where;
    if (finding.line > 0)
        text +=
            ", line " + std::to_string(finding.line) + ", column " + std::to_string(finding.column);
    text += ": " + Harmless(finding.message) + "\n";
    if (finding.statement.empty()) return text;
    const auto excerpt = Cut(finding);
    text.append(indent).append(excerpt.text).append("\n");
    if (finding.caret != DefinitionFinding::NoCaret)
        text.append(indent).append(excerpt.caret, ' ').append("^\n");
    return text;
}
