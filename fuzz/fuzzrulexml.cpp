// Bytes as the XML form of a rule tree: what is loaded is written so that it is loaded and written
// alike, it has a JSON form, and it parses a text.
#include "host/xml/markup.h"
#include "tzparser/rule/appparserulesample.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>

namespace {

const std::string Text =
    "host r1\ninterface a\n mtu 1500\n!\nPort   Name   VLAN\nGi0/1  uplink 10\n";

bool Load(const std::string& text, CAppParseRuleSample& sample) {
    CMarkup xml;
    return xml.SetDoc(text) && sample.LoadFromXml(xml);
}

std::string Save(CAppParseRuleSample& sample) {
    CMarkup xml;
    if (!sample.SaveToXml(xml)) std::abort();
    return xml.GetDoc();
}

// The variables of a table's headers needn't come back: of a pattern that is no statement one
// character that no name has goes at each load.
std::string WithoutHeaderVariables(std::string text) {
    const std::string open = "<headertovariables>";
    const std::string close = "</headertovariables>";
    for (std::size_t at = 0; (at = text.find(open, at)) != std::string::npos;)
        text.erase(at, text.find(close, at) + close.size() - at);
    return text;
}

// The built-in forms add the lines of a document to their own, and diff filters aren't written.
bool ComesBack(const CAppParseRule& rule) {
    const auto type = rule.GetRuleType();
    if (type == RuleType_Ping || type == RuleType_TraceRoute || type == RuleType_DiffFilter)
        return false;
    const auto& rules = rule.Children();
    return std::all_of(rules.begin(), rules.end(),
                       [](const auto& child) { return ComesBack(*child); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // Bytes that are no text become text when they are written, which may change the order of
    // names.
    CMarkup xml;
    CAppParseRuleSample sample("fuzz");
    if (!xml.SetDoc(std::string(reinterpret_cast<const char*>(data), size)) ||
        !Load(xml.GetDoc(), sample))
        return 0;
    const auto saved = Save(sample);
    CAppParseRuleSample again("fuzz");
    if (!Load(saved, again)) std::abort();
    // Interface keys are written where they aren't read.
    const auto rules = [](const std::string& text) {
        return WithoutHeaderVariables(text.substr(0, text.rfind("<variables>")));
    };
    if (ComesBack(sample) && rules(Save(again)) != rules(saved)) {
        std::cerr << saved << Save(again);
        std::abort();
    }
    hxJson::Value json;
    sample.Save(json);
    if (sample.HasChildParser(0)) return 0;  // scripts are left out
    const std::unique_ptr<CAppParseRule> clone(sample.Clone(nullptr));
    clone->Parse(Text, 0, -1, nullptr);
    clone->SaveResultAsJson(json);
    return 0;
}
