// A definition and a text through the engine: the definition up to the first NUL, the text behind
// it. Values lie inside their lines, and a second parse gives the same tree. Scripts are left out.
#include "host/text/stlhelper.h"
#include "tzparser/engine/tzparser.h"
#include "tzparser/rule/appparserule.h"
#include "tzparser/rule/appsamplelines.h"

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

void Collect(const CAppVariableValue& value, std::string& dump) {
    for (const auto& let : value.GetValues()) {
        hxJson::Value json;
        CAppTextLet(let).Save(json);
        dump += json.toString();
    }
    for (const auto* child : value.GetChildValues()) Collect(*child, dump);
    for (const auto* property : value.GetBuiltInProperties()) Collect(*property, dump);
}

// A value on one row of a text that no operation rewrites is what stands in its columns, as long as
// all rules are keyword rules: a filter's own value has no place, and once lines are closed the
// rows of matches over several lines are those of later ones.
void CheckSpans(const CAppVariableValue& root, const CAppSampleLines& lines) {
    for (const auto* child : root.GetChildValues()) {
        for (const auto& let : child->GetValues()) {
            if (let.beginRow < 0 || let.endRow < let.beginRow) std::abort();
            if (let.beginRow != let.endRow || !let.lines.empty() || let.text.empty()) continue;
            const auto line = lines.View(let.beginRow);
            if (let.beginCol < 0 ||
                line.substr(static_cast<std::size_t>(let.beginCol), let.text.size()) != let.text)
                std::abort();
        }
    }
}

// Operations may stand under a key of any case, and in an embedded text behind escapes.
bool MayRewriteLines(const std::string& definition) {
    return StlHelper::findIgnoreCase(definition, "operations") != std::string::npos ||
           definition.find("\\u") != std::string::npos;
}

bool HasKeyWordRulesOnly(const CAppParseRule& rule) {
    for (const auto& child : rule.Children())
        if (child->GetRuleType() != RuleType_KeyWord || !HasKeyWordRulesOnly(*child)) return false;
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    const auto cut = input.find('\0');
    if (cut == std::string::npos) return 0;
    hxJson::Value definition;
    hxJson::Reader reader;
    if (!reader.parse(input.substr(0, cut), definition, true)) return 0;
    const std::string text = input.substr(cut + 1);
    CTzParser parser;
    parser.SetParser(definition);
    std::string error;
    // A script that the fuzzer wrote would run with all rights.
    const auto rules = parser.GetSampleParseRuleClone(text, error);
    if (rules && rules->HasChildParser(0)) return 0;
    const auto first = parser.Parse(text, error);
    const auto second = parser.Parse(text, error);
    if ((first == nullptr) != (second == nullptr)) std::abort();
    if (!first) return 0;
    std::string firstDump;
    std::string secondDump;
    Collect(*first, firstDump);
    Collect(*second, secondDump);
    if (firstDump != secondDump) std::abort();
    CAppSampleLines lines;
    lines.Assign(text);
    if (!MayRewriteLines(definition.toString()) && HasKeyWordRulesOnly(*rules))
        CheckSpans(*first, lines);
    return 0;
}
