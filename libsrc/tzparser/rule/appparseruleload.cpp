// Rule documents: the envelope of a rule node, and the rules made of its children.
#include "tzparser/rule/appparserule.h"
#include "tzparser/rule/appparserulesample.h"
#include "tzparser/rule/rulefactory.h"
#include "tzparser/rule/rulekeys.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace {

// The number that a text begins with, 0 when it begins with none: a missing "type" is a keyword
// rule.
int LeadingNumber(const std::string& text) {
    const long number = std::strtol(text.c_str(), nullptr, 10);
    return static_cast<int>(
        std::clamp<long>(number, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

}  // namespace

// Children are complete before the rule's own keys are read.
bool CAppParseRule::Load(const hxJson::Value& node) {
    const auto& guid = node[RuleKey::Xxid].asString();
    if (guid != m_definition->ruleGuid) m_definition.Edit().ruleGuid = guid;
    FillChildNode(node[RuleKey::Child]);
    LoadBounds(node);
    const auto& operations = node[RuleKey::Operations];
    if (operations.isArray())
        for (const auto& operation : operations) AddOperation(operation);
    return LoadParseRule(node);
}

void CAppParseRule::LoadBounds(const hxJson::Value& node) {
    const auto& start = node[RuleKey::NiStart];
    if (start.isObject() && !start.empty()) m_definition.Edit().niStart.Load(start);
    const auto& end = node[RuleKey::NiEnd];
    if (end.isObject() && !end.empty()) m_definition.Edit().niEnd.Load(end);
}

void CAppParseRule::AddOperation(const hxJson::Value& node) {
    SearchReplaceOperation operation;
    if (operation.Load(node)) m_definition.Edit().operations.push_back(std::move(operation));
}

// An unknown kind drops the nodes behind it too; what was made before it stays.
bool CAppParseRule::FillChildNode(const hxJson::Value& child) {
    const auto& rules = child[RuleKey::ParseRule];
    if (rules.isObject()) return AddRuleOfNode(rules, true, false);
    if (!rules.isArray()) return false;
    bool isFirst = true;
    for (const auto& node : rules) {
        if (!AddRuleOfNode(node, isFirst, true)) return false;
        isFirst = false;
    }
    return true;
}

bool CAppParseRule::AddRuleOfNode(const hxJson::Value& node, bool isFirst, bool isArray) {
    const int type = LeadingNumber(node[RuleKey::Type].asString());
    auto* rule = AddRuleOfType(type, isFirst, isArray ? RuleNodeForm_Array : RuleNodeForm_Object);
    if (rule == nullptr) return false;
    rule->Load(node);
    return true;
}

CAppParseRule* CAppParseRule::AddRuleOfType(int type, bool isFirst, RuleNodeForm_e form) {
    if (type == RuleType_KeyWord && isFirst && HasDefaultKeyWord(m_ruleType) && !m_children.empty())
        return m_children.front().get();
    auto rule = MakeRule(type, form, this);
    if (!rule) return nullptr;
    auto* added = rule.get();
    AddChildRule(rule.release());
    return added;
}

bool CAppParseRule::Save(hxJson::Value& node) {
    if (!m_children.empty()) SaveChildNode(node[RuleKey::Child]);
    return SaveParseRule(node);
}

bool CAppParseRule::SaveChildNode(hxJson::Value& child) {
    auto& rules = child[RuleKey::ParseRule];
    for (const auto& rule : m_children) {
        hxJson::Value node;
        node[RuleKey::Type] = static_cast<int>(rule->GetRuleType());
        rule->Save(node);
        rules.append(std::move(node));
    }
    return true;
}
