#include "tzparser/rule/appparserulekeyed.h"

void CAppParseRuleKeyed::GetTableKeys(std::set<std::string>& keys) const {
    keys = m_keys->keys;
}

void CAppParseRuleKeyed::AddTableKey(const std::string& key) {
    m_keys.Edit().keys.insert(key);
}

void CAppParseRuleKeyed::GetTableInterfaceKeys(std::set<std::string>& keys) const {
    keys = m_keys->interfaceKeys;
}

void CAppParseRuleKeyed::AddTableInterfaceKey(const std::string& key) {
    m_keys.Edit().interfaceKeys.insert(key);
}

const std::set<std::string>& CAppParseRuleKeyed::OwnKeys(bool interfaceKeysOnly) const {
    const auto& [keys, interfaceKeys] = *m_keys;
    return interfaceKeysOnly || !interfaceKeys.empty() ? interfaceKeys : keys;
}

std::set<std::string> CAppParseRuleKeyed::GetTableKeysEx(bool interfaceKeysOnly) const {
    auto keys = OwnKeys(interfaceKeysOnly);
    for (const auto* above = GetParentRule(); above != nullptr; above = above->GetParentRule()) {
        if (above->GetRuleType() == RuleType_Filter) continue;
        if (above->GetRuleType() != RuleType_Paragraph) break;
        if (const auto* paragraph = dynamic_cast<const CAppParseRuleKeyed*>(above)) {
            const auto& outer = paragraph->OwnKeys(interfaceKeysOnly);
            keys.insert(outer.begin(), outer.end());
        }
    }
    return keys;
}

void CAppParseRuleKeyed::ResetComparison() {
    if (!m_keys->keys.empty()) m_keys.Edit().keys.clear();
    ResetHashing();
}

void CAppParseRuleKeyed::CopyComparisonTo(CAppParseRuleKeyed& target) const {
    target.m_keys = m_keys;
    CopyHashingTo(target);
}
