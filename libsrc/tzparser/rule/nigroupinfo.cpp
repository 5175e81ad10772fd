#include "tzparser/rule/nigroupinfo.h"

#include "tzparser/rule/rulekeys.h"

void NIGroupInfo::Load(const hxJson::Value& node) {
    m_type = node[RuleKey::Type].asInt();
    m_pattern = node[RuleKey::Pattern].asString();
    m_text = node[RuleKey::Text].asString();
    m_xxid = node[RuleKey::Xxid].asString();
    m_skip = node[RuleKey::Skip].asInt();
}
