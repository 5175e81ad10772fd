// A parse is run here by hand, so that the rules stay to be asked: choose the sample, run a clone
// of its rules, build the values of it, then walk over the rules.
#include "tzparser/explain/tzexplain.h"

#include "host/json/hxlower.h"
#include "tzparser/engine/enginekeys.h"
#include "tzparser/engine/tzparser.h"
#include "tzparser/engine/tzparsersample.h"
#include "tzparser/explain/rulewalk.h"
#include "tzparser/rule/appparserulesample.h"
#include "tzparser/rule/rulekeys.h"
#include "tzparser/variable/appdatatypehelper.h"
#include "tzparser/variable/appvariablearraydef.h"

#include <exception>

namespace {

constexpr int NoSample = -1;

// The place of the chosen sample in "samples": the first loaded one that has its index or, for the
// catch-all, the last loaded one.
int PlaceOfSample(const hxJson::Value& samples, const SampleChoice& choice) {
    int place = NoSample;
    if (!samples.isArray()) return place;
    for (unsigned i = 0; i < samples.size(); ++i) {
        CTzParserSample sample;
        if (!sample.LoadSample(samples[i]) || sample.GetIndex() != choice.index) continue;
        place = static_cast<int>(i);
        if (choice.reason == SampleChoice_Matched) break;
    }
    return place;
}

// As the loader of samples reads it.
hxJson::Value RuleDocument(const hxJson::Value& sample) {
    hxJson::Value rules = sample[RuleKey::ParseRules];
    const auto& stored = sample[EngineKey::ParserRules];
    if (stored.isObject()) {
        hxJson::CopyWithLowerKeys(stored, rules);
        return rules;
    }
    hxJson::Value document;
    hxJson::Reader reader;
    if (reader.parse(stored.asString(), document, true)) hxJson::CopyWithLowerKeys(document, rules);
    return rules;
}

void Run(CAppParseRule& rule, const std::string& text, ExplainReport& report) {
    constexpr const char* failed = "parse failed when using parser rules. reseason:";
    try {
        report.isParsed = rule.Parse(text, 0, -1, nullptr);
        if (!report.isParsed) report.error = failed + rule.GetLastError();
    } catch (const std::exception& exception) {
        report.error = std::string(failed) + exception.what();
    }
}

void CopyLines(const CAppParseRule& root, ExplainReport& report) {
    const auto* sample = dynamic_cast<const CAppParseRuleSample*>(&root);
    if (sample == nullptr) return;
    const auto& lines = sample->GetLines();
    report.lines.reserve(static_cast<std::size_t>(lines.Count()));
    for (int line = 0; line < lines.Count(); ++line) report.lines.emplace_back(lines.View(line));
}

const std::string& TypeName(const CAppVariableValue& node) {
    const auto* array = dynamic_cast<const CAppVariableArrayDef*>(node.GetVarDef());
    return CAppDataTypeHelper::GetDataTypeStr(array != nullptr ? array->GetBaseType()
                                                               : node.GetDataType());
}

void AppendValues(CAppVariableValue& node, int rule, ExplainReport& report) {
    int index = 0;
    for (const auto& let : node.GetValues()) {
        auto& value = report.values.emplace_back();
        value.rule = rule;
        value.name = node.GetVariableFullName();
        value.index = index++;
        value.type = TypeName(node);
        value.beginRow = let.beginRow;
        value.beginCol = let.beginCol;
        value.endRow = let.endRow;
        value.endCol = let.endCol;
        value.text = let.text;
    }
}

void AppendTree(CAppVariableValue& root, CAppParseRule& rule, const CRuleWalk& walk,
                ExplainReport& report) {
    std::vector<CAppVariableValue*> pending{&root};
    while (!pending.empty()) {
        auto* node = pending.back();
        pending.pop_back();
        if (!node->GetValues().empty())
            AppendValues(*node,
                         walk.IndexOf(rule.GetChildRuleByVariableName(node->GetVariableFullName())),
                         report);
        const auto children = node->GetChildValues();
        pending.insert(pending.end(), children.rbegin(), children.rend());
    }
}

}  // namespace

ExplainReport CTzExplain::Explain(const hxJson::Value& definition, const std::string& text) {
    ExplainReport report;
    CTzParser parser;
    parser.SetParser(definition);
    report.choice = parser.Identify(text);
    const auto rule = parser.GetSampleParseRuleClone(text, report.error);
    if (!rule) return report;
    Run(*rule, text, report);
    CopyLines(*rule, report);
    const auto tree = parser.GetVariableTree();
    std::unique_ptr<CAppVariableValue> values;
    if (report.isParsed && tree)
        values = std::make_unique<CAppVariableValue>(tree.get(), true, rule.get(), nullptr,
                                                     parser.GetTableRowCountLimitForHash());
    const auto& samples = definition[EngineKey::Samples];
    const int place = PlaceOfSample(samples, report.choice);
    if (place == NoSample) return report;
    CRuleWalk walk(report.rules);
    walk.Explain(*rule, RuleDocument(samples[static_cast<unsigned>(place)]),
                 "samples[" + std::to_string(place) + "]." + EngineKey::ParserRules,
                 static_cast<int>(report.lines.size()));
    if (values) AppendTree(*values, *rule, walk, report);
    return report;
}
