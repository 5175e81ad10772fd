#include "choiceformat.h"

#include "host/json/hxjson.h"

#include "jsonlayout.h"

#include <algorithm>
#include <array>

namespace {

struct ReasonRow {
    SampleChoice_e reason;
    const char* name;
    const char* words;
};

constexpr std::array<ReasonRow, 4> Reasons = {{
    {SampleChoice_None, "none", "the definition has no sample"},
    {SampleChoice_Matched, "matched", "all its conditions hold"},
    {SampleChoice_CatchAll, "catch-all", "no sample in \"sequences\" fits, and it stands last"},
    {SampleChoice_Only, "only", "no sample in \"sequences\" fits, and there is no other"},
}};

const ReasonRow& RowOf(SampleChoice_e reason) {
    return *std::find_if(Reasons.begin(), Reasons.end(),
                         [reason](const ReasonRow& row) { return row.reason == reason; });
}

const char* ListOf(const FailedCondition& failed) {
    return failed.isOptional ? "optional" : "must";
}

std::string Harmless(std::string text) {
    std::replace_if(
        text.begin(), text.end(),
        [](char c) {
            const auto byte = static_cast<unsigned char>(c);
            return byte < 0x20 || byte == 0x7F;
        },
        '?');
    return text;
}

std::string TrialLine(const SampleTrial& trial) {
    const auto sample = "sample " + std::to_string(trial.index) + ": ";
    if (!trial.failed) return sample + "all conditions hold";
    const auto& failed = *trial.failed;
    return sample + ListOf(failed) + " condition " + std::to_string(failed.index) +
           " fails: " + failed.typeName + ": " + Harmless(failed.value);
}

void WriteFailed(const FailedCondition& failed, CJsonLayout& json) {
    json.Begin('{');
    json.Key("list");
    json.Value() += hxJson::Value(ListOf(failed)).toString();
    json.Key("index");
    json.Value() += std::to_string(failed.index);
    json.Key("type");
    json.Value() += std::to_string(failed.type);
    json.Key("kind");
    json.Value() += hxJson::Value(failed.typeName).toString();
    json.Key("value");
    json.Value() += hxJson::Value(failed.value).toString();
    json.End();
}

}  // namespace

std::vector<std::string> ChoiceLines(const SampleChoice& choice) {
    std::vector<std::string> lines;
    for (const auto& trial : choice.trials) lines.push_back(TrialLine(trial));
    const auto chosen = choice.reason == SampleChoice_None
                            ? std::string("chosen: none")
                            : "chosen: sample " + std::to_string(choice.index);
    lines.push_back(chosen + " (" + RowOf(choice.reason).words + ")");
    return lines;
}

void WriteChoice(const SampleChoice& choice, COutputWriter& out) {
    for (const auto& line : ChoiceLines(choice)) {
        out.Buffer().append(line).append("\n");
        out.Drain();
    }
}

void WriteChoiceJson(const SampleChoice& choice, COutputWriter& out) {
    CJsonLayout json(out);
    json.Begin('{');
    json.Key("sample");
    json.Value() += choice.reason == SampleChoice_None ? "null" : std::to_string(choice.index);
    json.Key("reason");
    json.Value() += hxJson::Value(RowOf(choice.reason).name).toString();
    json.Key("tried");
    json.Begin('[');
    for (const auto& trial : choice.trials) {
        json.Begin('{');
        json.Key("sample");
        json.Value() += std::to_string(trial.index);
        json.Key("failed");
        if (trial.failed)
            WriteFailed(*trial.failed, json);
        else
            json.Value() += "null";
        json.End();
        out.Drain();
    }
    json.End();
    json.End();
}
