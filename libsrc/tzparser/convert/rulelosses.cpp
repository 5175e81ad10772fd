#include "tzparser/convert/rulelosses.h"

#include "host/json/jsontext.h"
#include "tzparser/convert/conversionplace.h"
#include "tzparser/convert/rulewords.h"
#include "tzparser/rule/appparserule.h"
#include "tzparser/rule/rulekeys.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>

namespace {

constexpr std::size_t MaxShownText = 60;

// The envelope of a node, which is never saved.
constexpr std::array<std::string_view, 4> Envelope = {RuleKey::Xxid, RuleKey::NiStart,
                                                      RuleKey::NiEnd, RuleKey::Operations};

bool IsEnvelope(const std::string& key) {
    return std::find(Envelope.begin(), Envelope.end(), key) != Envelope.end();
}

int TypeOf(const hxJson::Value& node) {
    const auto text = node[RuleKey::Type].asString();
    return static_cast<int>(std::strtol(text.c_str(), nullptr, 10));
}

std::string Shown(const hxJson::Value& value) {
    auto text = value.toString(false);
    if (text.size() > MaxShownText) text = text.substr(0, MaxShownText) + "...";
    return text;
}

const hxJson::Value& Nothing() {
    static const hxJson::Value nothing;
    return nothing;
}

}  // namespace

void CRuleLosses::Add(const std::string& place, const std::string& reason) {
    m_losses.push_back({place, reason});
}

void CRuleLosses::AddPlaceless(const std::string& place) {
    Add(place, std::string(m_target) + " has no place for it");
}

void CRuleLosses::AddUnread(const std::string& place, const hxJson::Value& value) {
    if (!SaysNothing(value)) Add(place, "nothing reads it");
}

void CRuleLosses::CompareKeys(const hxJson::Value& source, const hxJson::Value& held,
                              const std::string& path, const std::string& label) {
    if (source.isObject() && held.isObject()) {
        for (auto member = source.begin(); member != source.end(); ++member) {
            const auto memberPath = MemberPath(path, member.memberName());
            const auto* other = held.find(member.memberName());
            if (other != nullptr)
                CompareKeys(*member, *other, memberPath, label);
            else
                AddUnread(ShownPath(memberPath) + label, *member);
        }
    } else if (source.isArray() && held.isArray()) {
        if (source.size() > held.size())
            Add(ShownPath(path) + label, std::to_string(source.size() - held.size()) + " of " +
                                             std::to_string(source.size()) +
                                             " entries aren't used");
        if (source.size() != held.size()) return;
        for (std::size_t index = 0; index < source.size(); ++index)
            CompareKeys(source[index], held[index], ElementPath(path, index), label);
    } else if ((held.isArray() || held.isObject()) && SaysNothing(held)) {
        // A list in a shape that isn't read.
        AddUnread(ShownPath(path) + label, source);
    }
}

void CRuleLosses::CompareValues(const hxJson::Value& held, const hxJson::Value& back,
                                const std::string& path, const std::string& label) {
    if (held == back || (SaysNothing(held) && SaysNothing(back))) return;
    if (SaysNothing(back)) {
        AddPlaceless(ShownPath(path) + label);
    } else if (held.isObject() && back.isObject()) {
        for (auto member = held.begin(); member != held.end(); ++member)
            CompareValues(*member, back[member.memberName()], MemberPath(path, member.memberName()),
                          label);
    } else if (held.isArray() && back.isArray() && held.size() == back.size()) {
        for (std::size_t index = 0; index < held.size(); ++index)
            CompareValues(held[index], back[index], ElementPath(path, index), label);
    } else {
        Add(ShownPath(path) + label, "comes back as " + Shown(back));
    }
}

// A rule that came back stands behind the ones before it, and all of a kind come back or none.
CRuleLosses::Rules CRuleLosses::RulesOf(const hxJson::Value& held, const hxJson::Value& back,
                                        int parentType) {
    Rules result{{}, HasDefaultChild(parentType), 0};
    const auto& backRules = back[RuleKey::ParseRule];
    std::size_t next = 0;
    for (const auto& rule : held[RuleKey::ParseRule]) {
        const int ruleType = rule[RuleKey::Type].asInt();
        const bool isBack =
            next < backRules.size() && backRules[next][RuleKey::Type].asInt() == ruleType;
        result.rules.push_back({&rule, isBack ? &backRules[next] : nullptr, ruleType});
        if (isBack) ++next;
    }
    result.next = result.hasDefault && !result.rules.empty() ? 1 : 0;
    return result;
}

const CRuleLosses::Rule* CRuleLosses::Rules::Take(int ruleType, bool isFirst) {
    if (isFirst && hasDefault && ruleType == RuleType_KeyWord && !rules.empty()) return &rules[0];
    if (next >= rules.size() || rules[next].ruleType != ruleType) return nullptr;
    return &rules[next++];
}

std::string CRuleLosses::Label(const Rule& rule) {
    const auto name = (*rule.held)["name"].asString();
    std::string label = " (" + RuleKindWords(rule.ruleType);
    if (!name.empty()) label += " " + hxJson::QuoteJson(name.substr(0, MaxShownText));
    return label + ")";
}

void CRuleLosses::CompareOwn(const Rule& rule, const std::string& path) {
    for (auto member = rule.held->begin(); member != rule.held->end(); ++member)
        if (member.memberName() != RuleKey::Child)
            CompareValues(*member, (*rule.back)[member.memberName()],
                          MemberPath(path, member.memberName()), Label(rule));
}

// Whether there is a rule of a source node to compare further; if not, that is told.
bool CRuleLosses::Takes(const Rule* rule, int ruleType, const std::string& path) {
    if (rule == nullptr) {
        Add(ShownPath(path) + " (" + RuleKindWords(ruleType) + ")",
            "no rule of this kind is read here");
    } else if (rule->back == nullptr) {
        Add(ShownPath(path) + Label(*rule),
            std::string(m_target) + " can't hold a rule of this kind here, nor what is below it");
    }
    return rule != nullptr && rule->back != nullptr;
}

void CRuleLosses::CompareDocument(const hxJson::Value& source, const hxJson::Value& held,
                                  const hxJson::Value& back, const std::string& path) {
    CompareNodes(source, held, back, path, RuleType_Sample);
}

void CRuleLosses::CompareNodes(const hxJson::Value& source, const hxJson::Value& held,
                               const hxJson::Value& back, const std::string& path, int parentType) {
    if (!source.isObject()) {
        AddUnread(ShownPath(path), source);
        return;
    }
    for (auto member = source.begin(); member != source.end(); ++member)
        if (member.memberName() != RuleKey::ParseRule)
            AddUnread(ShownPath(MemberPath(path, member.memberName())), *member);
    auto rules = RulesOf(held, back, parentType);
    const auto& nodes = source[RuleKey::ParseRule];
    const auto rulesPath = MemberPath(path, RuleKey::ParseRule);
    if (!nodes.isArray()) {
        if (!nodes.isObject()) {
            AddUnread(ShownPath(rulesPath), nodes);
        } else if (const auto* rule = rules.Take(TypeOf(nodes), true);
                   Takes(rule, TypeOf(nodes), rulesPath)) {
            CompareNode(nodes, *rule, rulesPath);
        }
        return;
    }
    for (std::size_t index = 0; index < nodes.size(); ++index) {
        const auto* rule = rules.Take(TypeOf(nodes[index]), index == 0);
        if (Takes(rule, TypeOf(nodes[index]), ElementPath(rulesPath, index)))
            CompareNode(nodes[index], *rule, ElementPath(rulesPath, index));
    }
}

void CRuleLosses::CompareNode(const hxJson::Value& source, const Rule& rule,
                              const std::string& path) {
    for (auto member = source.begin(); member != source.end(); ++member) {
        const auto& key = member.memberName();
        if (key == RuleKey::Type || key == RuleKey::Child) continue;
        const auto memberPath = MemberPath(path, key);
        const auto* held = rule.held->find(key);
        if (held != nullptr)
            CompareKeys(*member, *held, memberPath, Label(rule));
        else if (!IsEnvelope(key))
            AddUnread(ShownPath(memberPath) + Label(rule), *member);
        else if (!SaysNothing(*member))
            AddPlaceless(ShownPath(memberPath) + Label(rule));
    }
    CompareOwn(rule, path);
    const auto* child = source.find(RuleKey::Child);
    const auto* heldChild = rule.held->find(RuleKey::Child);
    const auto* backChild = rule.back->find(RuleKey::Child);
    if (child != nullptr)
        CompareNodes(*child, heldChild != nullptr ? *heldChild : Nothing(),
                     backChild != nullptr ? *backChild : Nothing(),
                     MemberPath(path, RuleKey::Child), rule.ruleType);
}
