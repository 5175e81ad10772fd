#include "tzparser/engine/tzparsersample.h"

#include "host/json/hxlower.h"
#include "tzparser/engine/enginekeys.h"
#include "tzparser/rule/rulekeys.h"

CTzParserSample::CTzParserSample() : m_rule("") {}

bool CTzParserSample::LoadSample(const hxJson::Value& element) {
    hxJson::Value working = element;
    hxJson::Value rules;
    hxJson::Reader reader;
    const auto& constElement = element;
    if (reader.parse(constElement[EngineKey::ParserRules].asString(), rules, true))
        hxJson::CopyWithLowerKeys(rules, working[RuleKey::ParseRules]);
    const auto& operations = constElement[RuleKey::Operations];
    if (operations.isArray() && !operations.empty()) {
        hxJson::Value lowered;
        hxJson::CopyWithLowerKeys(operations, lowered);
        working.removeMember(RuleKey::Operations, false);
        working[RuleKey::Operations] = std::move(lowered);
    }
    m_index = constElement[EngineKey::Index].asInt();
    return m_rule.Load(working);
}

CAppParseRule* CTzParserSample::CloneRule() {
    return m_rule.Clone(nullptr);
}
