#pragma once

#include "host/runtime/tzexport.h"
#include "tzparser/convert/conversionloss.h"

#include <optional>
#include <string>

namespace hxJson {
class Value;
}

// A converted document, or why there is none.
struct TZPARSER_API Conversion {
    // Empty when the document was converted.
    std::string error;
    // The document in the other form.
    std::string text;
    // What it doesn't hold, mostly in the order of the source; empty when nothing is lost.
    ConversionLosses losses;
};

// CTzConvert turns rule documents from their JSON form into XML and back, and tells what the other
// form can't hold.
//
//     const auto conversion = CTzConvert::ToXml(definition);
//     for (const auto& loss : conversion.losses)
//         std::cerr << loss.place << ": " << loss.reason << "\n";
//
// The converted document is read again, and what its rules hold is compared with what the source's
// rules hold, key by key; what nothing reads in the source is told too. So what isn't listed
// isn't lost. All functions are static and keep nothing; they may run on any thread. No exception
// but that of memory running out.
class TZPARSER_API CTzConvert {
public:
    CTzConvert() = delete;

    // One sample of a parser definition, or a rule document (with "parserules" or "parserule"), as
    // the XML that `CAppParseRuleSample::LoadFromXml` reads, with the identify conditions behind
    // the rules as an element "ConfigKey". `sample` is the number of the sample, its "index"; it
    // may be absent where there is one sample.
    //
    // Interface keys stand there twice: beside the rules, where the sample writes them, and among
    // the rules, where it reads them.
    static Conversion ToXml(const hxJson::Value& document,
                            std::optional<int> sample = std::optional<int>());

    // Such XML as a parser definition with one sample, its rules and conditions as texts.
    // Interface keys are taken from both places.
    static Conversion ToJson(const std::string& xml);
};
