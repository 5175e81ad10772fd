// Bytes as a document to convert, XML or JSON by their first: what is converted without a loss
// comes back without one, and stays as it is from then on.
#include "host/json/hxjson.h"
#include "tzparser/convert/tzconvert.h"

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>

namespace {

[[noreturn]] void Fail(const char* what, const Conversion& first, const Conversion& second) {
    std::cerr << what << "\n" << first.text << "\n" << second.text << "\n" << second.error << "\n";
    for (const auto& loss : second.losses) std::cerr << loss.place << ": " << loss.reason << "\n";
    std::abort();
}

bool IsWhole(const Conversion& conversion) {
    return conversion.error.empty() && conversion.losses.empty();
}

Conversion ToXml(const std::string& json) {
    hxJson::Value document;
    Conversion conversion;
    conversion.error = "not JSON";
    return hxJson::Reader().parse(json, document, true) ? CTzConvert::ToXml(document) : conversion;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const bool isXml = size > 0 && text[0] == '<';
    const auto first = isXml ? CTzConvert::ToJson(text) : ToXml(text);
    if (!IsWhole(first)) return 0;
    const auto back = isXml ? ToXml(first.text) : CTzConvert::ToJson(first.text);
    // XML has elements of diff filters, which are read but not written.
    if (!IsWhole(back) && isXml) return 0;
    if (!IsWhole(back)) Fail("lost on the way back", first, back);
    const auto again = isXml ? CTzConvert::ToJson(back.text) : ToXml(back.text);
    if (!IsWhole(again) || again.text != first.text) Fail("differs the second time", first, again);
    return 0;
}
