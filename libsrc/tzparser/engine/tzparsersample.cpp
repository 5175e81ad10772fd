#include "tzparser/engine/tzparsersample.h"

#include "host/json/hxlower.h"
#include "tzparser/engine/enginekeys.h"
#include "tzparser/rule/rulekeys.h"

namespace {

// The rule document is stored as a text; one written by hand may stand there as the object itself.
bool ReadRules(const hxJson::Value& node, hxJson::Value& lowered) {
    if (node.isObject()) {
        hxJson::CopyWithLowerKeys(node, lowered);
        return true;
    }
    hxJson::Value rules;
    hxJson::Reader reader;
    if (!reader.parse(node.asString(), rules, true)) return false;
    hxJson::CopyWithLowerKeys(rules, lowered);
    return true;
}

}  // namespace

CTzParserSample::CTzParserSample() : m_rule("") {}

bool CTzParserSample::LoadSample(const hxJson::Value& element) {
    hxJson::Value working = element;
    hxJson::Value rules = element[RuleKey::ParseRules];
    if (ReadRules(element[EngineKey::ParserRules], rules))
        working[RuleKey::ParseRules] = std::move(rules);
    const auto& operations = element[RuleKey::Operations];
    if (operations.isArray() && !operations.empty()) {
        hxJson::Value lowered;
        hxJson::CopyWithLowerKeys(operations, lowered);
        working.removeMember(RuleKey::Operations, false);
        working[RuleKey::Operations] = std::move(lowered);
    }
    m_index = element[EngineKey::Index].asInt();
    return Load(working) && m_rule.Load(working);
}

CAppParseRule* CTzParserSample::CloneRule() {
    return m_rule.Clone(nullptr);
}
