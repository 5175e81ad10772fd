#include "tzparser/convert/conversionsource.h"

#include "host/json/hxlower.h"
#include "host/text/stlhelper.h"
#include "tzparser/convert/conversionplace.h"
#include "tzparser/convert/rulewords.h"
#include "tzparser/engine/enginekeys.h"
#include "tzparser/identify/identifykeys.h"
#include "tzparser/rule/rulekeys.h"

#include <vector>

namespace {

constexpr std::size_t MaxNumbersNamed = 20;

std::string NumbersOf(const hxJson::Value& samples) {
    std::string numbers;
    std::size_t named = 0;
    for (const auto& sample : samples) {
        if (named++ == MaxNumbersNamed) return numbers + ", ...";
        numbers += (numbers.empty() ? "" : ", ") + std::to_string(sample[EngineKey::Index].asInt());
    }
    return numbers;
}

// The first sample of that number; the only one when no number is given.
std::string ChooseSample(const hxJson::Value& samples, std::optional<int> number,
                         std::size_t& chosen) {
    if (samples.size() == 0) return "the definition has no sample";
    if (!number && samples.size() == 1) return std::string();
    if (!number)
        return "the definition has several samples, with the numbers " + NumbersOf(samples) +
               ": one has to be chosen";
    for (chosen = 0; chosen < samples.size(); ++chosen)
        if (samples[chosen][EngineKey::Index].asInt() == *number) return std::string();
    return "the definition has no sample with the number " + std::to_string(*number) +
           "; there are " + NumbersOf(samples);
}

// The number and order of samples mean something where there are several.
void TellOutside(const hxJson::Value& document, std::size_t chosen, CRuleLosses& losses) {
    const auto& samples = document[EngineKey::Samples];
    for (std::size_t index = 0; index < samples.size(); ++index)
        if (index != chosen)
            losses.Add(ElementPath(EngineKey::Samples, index), "only one sample is converted");
    for (auto member = document.begin(); member != document.end(); ++member) {
        const auto& key = member.memberName();
        const auto place = MemberPath(std::string(), key);
        if (key == EngineKey::Samples) continue;
        if (key == EngineKey::Sequences) {
            if (samples.size() > 1 && !SaysNothing(*member)) losses.AddPlaceless(place);
        } else if (key == EngineKey::AccessType) {
            if (*member == hxJson::Value(EngineKey::ExtendedAccess)) losses.AddPlaceless(place);
        } else {
            losses.AddUnread(place, *member);
        }
    }
}

// A document within the document: an object, or the text of one.
std::string ReadInner(const hxJson::Value& value, const std::string& path, hxJson::Value& inner) {
    if (value.isObject()) {
        inner = value;
        return std::string();
    }
    hxJson::Reader reader;
    if (reader.parse(value.asString(), inner, true)) return std::string();
    return path + ": not JSON: " + reader.getErrorMessage();
}

// The member of that name in any case; empty when there is none.
std::string FindAnyCase(const hxJson::Value& document, const char* name) {
    for (auto member = document.begin(); member != document.end(); ++member)
        if (StlHelper::toLower(member.memberName()) == name) return member.memberName();
    return std::string();
}

std::string ReadSample(const hxJson::Value& element, ConversionSource& source) {
    source.element = element;
    const auto& rules = element[EngineKey::ParserRules];
    source.rulesPath = MemberPath(source.path, EngineKey::ParserRules);
    hxJson::Value read;
    const auto error = rules.isNull() ? std::string() : ReadInner(rules, source.rulesPath, read);
    if (!error.empty()) return error;
    // As the engine does, onto rules that stand there in the form that it makes.
    source.rules = element[RuleKey::ParseRules];
    hxJson::CopyWithLowerKeys(read, source.rules);
    source.element[EngineKey::ParserRules] = std::move(read);
    const auto& identify = element[IdentifyKey::Identify];
    const auto identifyPath = MemberPath(source.path, IdentifyKey::Identify);
    return identify.isNull() ? std::string() : ReadInner(identify, identifyPath, source.identify);
}

}  // namespace

std::string FindConversionSource(const hxJson::Value& document, std::optional<int> sample,
                                 CRuleLosses& losses, ConversionSource& source) {
    if (const auto& samples = document[EngineKey::Samples]; samples.isArray()) {
        std::size_t chosen = 0;
        auto error = ChooseSample(samples, sample, chosen);
        if (!error.empty()) return error;
        TellOutside(document, chosen, losses);
        source.path = ElementPath(EngineKey::Samples, chosen);
        return ReadSample(samples[chosen], source);
    }
    if (sample) return "the document has no samples to choose from";
    if (document.isMember(EngineKey::ParserRules)) return ReadSample(document, source);
    if (const auto key = FindAnyCase(document, RuleKey::ParseRules); !key.empty()) {
        auto element = document;
        element[EngineKey::ParserRules] = element.removeMember(key);
        const auto error = ReadSample(element, source);
        source.rulesPath = key;
        return error;
    }
    if (FindAnyCase(document, RuleKey::ParseRule).empty())
        return "the document is neither a parser definition nor a rule document";
    source.rulesPath.clear();
    hxJson::CopyWithLowerKeys(document, source.rules);
    source.element[EngineKey::ParserRules] = document;
    return std::string();
}
