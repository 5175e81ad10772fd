// An identify document and a text: the document up to the first NUL, the text behind it. What
// loads from JSON goes through markup unharmed, and the chooser's quick search answers as the
// conditions themselves do.
#include "host/xml/markup.h"
#include "tzparser/identify/canvasnodecmdsampleidentify.h"
#include "tzparser/identify/samplechooser.h"
#include "tzparser/identify/stringfinder.h"

#include <cstdint>
#include <cstdlib>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Identify = CCanvasNodeCmdSampleIdentify;

std::size_t CountConditions(const Identify& identify) {
    return identify.GetMustConditions().size() + identify.GetOptionalConditions().size();
}

void CheckMarkup(const Identify& identify) {
    CMarkup markup;
    identify.SaveToMarkup(markup);
    markup.ResetPos();
    Identify again;
    if (!again.LoadFromMarkup(markup) || CountConditions(again) != CountConditions(identify))
        std::abort();
}

// The strings of all conditions, and pieces of the text so that some are found.
void CheckFinder(const Identify& identify, const std::string& text) {
    std::set<std::string> strings;
    for (const auto* conditions :
         {&identify.GetMustConditions(), &identify.GetOptionalConditions()})
        for (const auto& entry : *conditions)
            if (const auto* onStrings =
                    dynamic_cast<const CCanvasNodeCmdSampleIdentifyConditionStr*>(
                        entry.second.get()))
                strings.insert(onStrings->GetStrings().begin(), onStrings->GetStrings().end());
    for (std::size_t at = 0; at < text.size() && at < 64; at += 7)
        strings.insert(text.substr(at, 1 + at % 5));
    const std::vector<std::string_view> views(strings.begin(), strings.end());
    const auto found = CStringFinder(views).Find(text);
    for (std::size_t i = 0; i < views.size(); ++i)
        if (found.Has(i) != (text.find(views[i]) != std::string::npos)) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    const auto cut = input.find('\0');
    if (cut == std::string::npos) return 0;
    hxJson::Value sample;
    sample["identify"] = input.substr(0, cut);
    const std::string text = input.substr(cut + 1);
    Identify identify;
    if (!identify.Load(sample)) return 0;
    const bool fits = identify.IsMatch(text);
    if (fits != (CSampleChooser({&identify}).Choose(text) == 0)) std::abort();
    if (fits != (identify.FindFailure(text).condition == nullptr)) std::abort();
    CheckMarkup(identify);
    CheckFinder(identify, text);
    identify.GenerateSummaryStr();
    hxJson::Value saved;
    identify.Save(saved);
    if (!Identify(identify).Load(saved)) std::abort();
    return 0;
}
