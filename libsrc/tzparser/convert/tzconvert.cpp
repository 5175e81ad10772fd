// Both ways go alike: read the source into a sample, write the sample in the other form, read that
// into a second sample, and compare the two beside the source.
#include "tzparser/convert/tzconvert.h"

#include "host/json/hxjson.h"
#include "host/xml/markup.h"
#include "tzparser/convert/conversionplace.h"
#include "tzparser/convert/conversionsource.h"
#include "tzparser/convert/identifydocument.h"
#include "tzparser/convert/loadablerules.h"
#include "tzparser/convert/rulewords.h"
#include "tzparser/engine/enginekeys.h"
#include "tzparser/engine/tzparsersample.h"
#include "tzparser/identify/identifykeys.h"
#include "tzparser/rule/delimitedset.h"
#include "tzparser/rule/markuplists.h"
#include "tzparser/rule/rulekeys.h"

#include <set>

namespace {

constexpr int OnlySample = 1;
constexpr char KeySeparator = ',';

using Keys = std::set<std::string>;

struct Converted {
    CAppParseRuleSample rules{""};
    CCanvasNodeCmdSampleIdentify identify;
    Keys interfaceKeys;
};

std::string Joined(const Keys& keys) {
    std::string joined;
    for (const auto& key : keys) joined += (joined.empty() ? "" : ",") + key;
    return joined;
}

Keys KeysAtLevel(CMarkup& xml) {
    std::string keys;
    if (FindFirstElem(xml, RuleKey::Variables)) xml.GetData(RuleKey::VariablesInterfaceKeys, keys);
    return SplitDelimitedSet(keys, KeySeparator, '\0');
}

bool EnterRules(CMarkup& xml) {
    xml.ResetPos();
    return xml.FindElem(RuleKey::ParseRules);
}

// All that an XML document says; false when it has no rules.
bool ReadMarkup(CMarkup& xml, Converted& read) {
    if (!EnterRules(xml)) return false;
    {
        const AppMarkupLevel level(xml);
        read.interfaceKeys = KeysAtLevel(xml);
    }
    read.interfaceKeys.merge(KeysAtLevel(xml));
    xml.ResetPos();
    read.rules.LoadFromXml(xml);
    xml.ResetPos();
    read.identify.LoadFromMarkup(xml);
    return true;
}

Keys KeysOf(const hxJson::Value& element) {
    auto keys =
        SplitDelimitedSet(element[RuleKey::Variables][RuleKey::VariablesInterfaceKeys].asString(),
                          KeySeparator, '\0');
    for (const auto& key : element[RuleKey::InterfaceKeys]) keys.insert(key.asString());
    return keys;
}

void CompareInterfaceKeys(const Keys& source, const Keys& back, const std::string& path,
                          CRuleLosses& losses) {
    for (const auto& key : source)
        if (back.count(key) == 0)
            losses.Add(ShownPath(MemberPath(MemberPath(path, RuleKey::InterfaceKeys), key)),
                       "comes back as another key");
}

// What stands in a sample beside its rules, conditions and interface keys.
void CompareSampleKeys(const ConversionSource& source, CRuleLosses& losses) {
    for (auto member = source.element.begin(); member != source.element.end(); ++member) {
        const auto& key = member.memberName();
        const auto place = ShownPath(MemberPath(source.path, key));
        if (key == RuleKey::Operations || key == RuleKey::TableKeys) {
            if (!SaysNothing(*member)) losses.AddPlaceless(place);
        } else if (key == EngineKey::Index) {
            if (member->asInt() != OnlySample)
                losses.Add(place, "comes back as " + std::to_string(OnlySample));
        } else if (key == RuleKey::Variables) {
            hxJson::Value read;
            read[RuleKey::VariablesInterfaceKeys] = std::string();
            losses.CompareKeys(*member, read, MemberPath(source.path, key));
        } else if (key != EngineKey::ParserRules && key != RuleKey::ParseRules &&
                   key != RuleKey::InterfaceKeys && key != IdentifyKey::Identify) {
            losses.AddUnread(place, *member);
        }
    }
}

std::string WriteMarkup(CTzParserSample& sample, const Keys& interfaceKeys) {
    CMarkup xml;
    sample.GetRule().SaveToXml(xml);
    if (!interfaceKeys.empty() && EnterRules(xml)) {
        const AppMarkupLevel rules(xml);
        const AppMarkupLevel variables(xml, RuleKey::Variables);
        xml.AddElem(RuleKey::VariablesInterfaceKeys, Joined(interfaceKeys));
    }
    xml.ResetPos();
    if (sample.HasConditions()) sample.SaveToMarkup(xml);
    return xml.GetDoc();
}

std::string WriteDefinition(Converted& read) {
    hxJson::Value element;
    element[EngineKey::Index] = OnlySample;
    auto rules = LoadableRules(read.rules);
    DropDefaultRules(rules);
    element[EngineKey::ParserRules] = rules.toString(false);
    if (read.identify.HasConditions())
        element[IdentifyKey::Identify] = IdentifyDocument(read.identify).toString(false);
    for (const auto& key : read.interfaceKeys)
        element[RuleKey::InterfaceKeys].append(hxJson::Value(key));
    hxJson::Value definition;
    definition[EngineKey::Sequences].append(hxJson::Value(OnlySample));
    definition[EngineKey::Samples].append(std::move(element));
    return definition.toStyledString();
}

// The outermost elements, and the items of the conditions.
void CompareOutermost(CMarkup& xml, const Converted& read, CRuleLosses& losses) {
    std::set<std::string> seen;
    xml.ResetPos();
    while (xml.FindElem()) {
        const auto name = xml.GetTagName();
        const bool isKnown = name == RuleKey::ParseRules || name == RuleKey::Variables ||
                             name == IdentifyKey::ConfigKey;
        if (!isKnown || !seen.insert(name).second)
            losses.Add(MemberPath(std::string(), name),
                       isKnown ? "only the first of these elements is read" : "nothing reads it");
    }
    xml.ResetPos();
    if (!xml.FindElem(IdentifyKey::ConfigKey)) return;
    const AppMarkupLevel config(xml);
    const auto compare = [&](const char* list, std::size_t held) {
        if (!FindFirstElem(xml, list)) return;
        const AppMarkupLevel level(xml);
        std::size_t items = 0;
        while (xml.FindElem()) ++items;
        if (items > held)
            losses.Add(MemberPath(IdentifyKey::ConfigKey, list),
                       std::to_string(items - held) + " of " + std::to_string(items) +
                           " conditions aren't used");
    };
    compare(IdentifyKey::MustConditions, read.identify.GetMustConditions().size());
    compare(IdentifyKey::OptionalConditions, read.identify.GetOptionalConditions().size());
}

}  // namespace

Conversion CTzConvert::ToXml(const hxJson::Value& document, std::optional<int> sample) {
    Conversion result;
    CRuleLosses losses("XML", result.losses);
    ConversionSource source;
    result.error = FindConversionSource(document, sample, losses, source);
    if (!result.error.empty()) return result;
    CTzParserSample read;
    if (!read.LoadSample(source.element)) {
        result.error = MemberPath(source.path, IdentifyKey::Identify) + ": not JSON";
        return result;
    }
    const auto keys = KeysOf(source.element);
    result.text = WriteMarkup(read, keys);
    CMarkup xml;
    Converted back;
    if (!xml.SetDoc(result.text) || !ReadMarkup(xml, back)) {
        result.error = "the rules can't be written as XML: " + xml.GetError();
        return result;
    }
    CompareSampleKeys(source, losses);
    CompareInterfaceKeys(keys, back.interfaceKeys, source.path, losses);
    const auto identifyPath = MemberPath(source.path, IdentifyKey::Identify);
    const auto identify = IdentifyDocument(read);
    losses.CompareKeys(source.identify, identify, identifyPath);
    losses.CompareValues(identify, IdentifyDocument(back.identify), identifyPath);
    losses.CompareDocument(source.rules, LoadableRules(read.GetRule()), LoadableRules(back.rules),
                           source.rulesPath);
    return result;
}

Conversion CTzConvert::ToJson(const std::string& text) {
    Conversion result;
    CRuleLosses losses("JSON", result.losses);
    CMarkup xml;
    Converted read;
    if (!xml.SetDoc(text)) {
        result.error = "not XML: " + xml.GetError();
        return result;
    }
    if (!ReadMarkup(xml, read)) {
        result.error = "there is no element \"" + std::string(RuleKey::ParseRules) + "\"";
        return result;
    }
    result.text = WriteDefinition(read);
    hxJson::Value definition;
    CTzParserSample back;
    if (!hxJson::Reader().parse(result.text, definition) ||
        !back.LoadSample(definition[EngineKey::Samples][0]) ||
        back.GetRule().IsLeaf() != read.rules.IsLeaf()) {
        result.error = "the rules are nested too deep for JSON";
        return result;
    }
    CompareOutermost(xml, read, losses);
    CompareInterfaceKeys(read.interfaceKeys, KeysOf(definition[EngineKey::Samples][0]),
                         std::string(), losses);
    losses.CompareValues(IdentifyDocument(read.identify), IdentifyDocument(back), std::string());
    EnterRules(xml);
    const AppMarkupLevel level(xml);
    losses.CompareMarkup(xml, LoadableRules(read.rules), LoadableRules(back.GetRule()),
                         RuleKey::ParseRules);
    return result;
}
