#pragma once

#include "host/json/hxjson.h"
#include "tzparser/convert/rulelosses.h"

#include <optional>
#include <string>

// The sample that a JSON document gives to be converted: the document is a parser definition, one
// sample of it, a rule document as `CAppParseRuleSample` loads it (with "parserules"), or the rules
// alone (with "parserule").
struct ConversionSource {
    // An element of "samples", with its rules as an object under "parserRules".
    hxJson::Value element;
    // The rules with their keys in small letters.
    hxJson::Value rules;
    // The identify document; null when there is none.
    hxJson::Value identify;
    // Where the sample and its rules stand; the first is empty for the document itself.
    std::string path;
    std::string rulesPath;
};

// Finds the sample, that with the number `sample` when it is given, and tells what stands outside
// of it. Gives why there is none, or the empty text.
std::string FindConversionSource(const hxJson::Value& document, std::optional<int> sample,
                                 CRuleLosses& losses, ConversionSource& source);
