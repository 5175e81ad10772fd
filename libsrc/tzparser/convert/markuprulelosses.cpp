// The walk over rules in XML. An element counts as read when the table of elements knows it and,
// where it says something, the rule does too: a text may be no number, a list in no place where it
// is looked for.
#include "host/text/stlhelper.h"
#include "host/xml/markup.h"
#include "tzparser/convert/conversionplace.h"
#include "tzparser/convert/rulelosses.h"
#include "tzparser/convert/rulewords.h"
#include "tzparser/rule/appparserule.h"
#include "tzparser/rule/markuplists.h"
#include "tzparser/rule/rulekeys.h"

#include <map>

namespace {

const hxJson::Value& PartOf(const hxJson::Value* rule, const char* key) {
    static const hxJson::Value nothing;
    const auto* part = rule->find(key);
    return part != nullptr ? *part : nothing;
}

// The first element below the current one, at any depth, that isn't among the names. The depth of a
// document is limited.
std::string FindStranger(CMarkup& xml, std::string_view names) {
    const AppMarkupLevel level(xml);
    while (xml.FindElem()) {
        const auto name = xml.GetTagName();
        if (names.find(" " + name + " ") == std::string_view::npos) return name;
        auto stranger = FindStranger(xml, names);
        if (!stranger.empty()) return MemberPath(name, stranger);
    }
    return std::string();
}

// Whether an element says anything but "no".
bool SaysSomething(CMarkup& xml) {
    const auto text = StlHelper::toLower(StlHelper::trump(xml.GetData()));
    if (text.find_first_not_of('0') != std::string::npos && text != "false") return true;
    const AppMarkupLevel level(xml);
    while (xml.FindElem())
        if (SaysSomething(xml)) return true;
    return false;
}

// The lines that a rule of a built-in form comes with aren't shown as its own.
bool HasBuiltInLines(int ruleType) {
    return ruleType == RuleType_Ping || ruleType == RuleType_TraceRoute;
}

}  // namespace

void CRuleLosses::CompareMarkup(CMarkup& xml, const hxJson::Value& held, const hxJson::Value& back,
                                const std::string& path) {
    CompareElements(xml, held, back, path, RuleType_Sample);
}

// Only elements that made a rule count for which is the first.
void CRuleLosses::CompareElements(CMarkup& xml, const hxJson::Value& held,
                                  const hxJson::Value& back, const std::string& path,
                                  int parentType) {
    auto rules = RulesOf(held, back, parentType);
    bool isFirst = true;
    std::size_t index = 0;
    xml.ResetChildPos();
    while (xml.FindElem()) {
        const auto name = xml.GetTagName();
        if (name != RuleKey::ParseRule) {
            if (parentType != RuleType_Sample || name != RuleKey::Variables)
                Add(ShownPath(MemberPath(path, name)), "nothing reads it");
            continue;
        }
        const auto rulePath = ElementPath(MemberPath(path, name), index++);
        int ruleType = RuleType_KeyWord;
        xml.GetData(RuleKey::Type, ruleType);
        const auto* rule = rules.Take(ruleType, isFirst);
        if (rule != nullptr) isFirst = false;
        if (Takes(rule, ruleType, rulePath)) CompareElement(xml, *rule, rulePath);
    }
}

void CRuleLosses::CompareElement(CMarkup& xml, const Rule& rule, const std::string& path) {
    CompareOwn(rule, path);
    const AppMarkupLevel level(xml);
    CompareParts(xml, rule, path);
    xml.ResetChildPos();
    if (!xml.FindElem(RuleKey::Child)) return;
    const AppMarkupLevel children(xml);
    CompareElements(xml, PartOf(rule.held, RuleKey::Child), PartOf(rule.back, RuleKey::Child),
                    MemberPath(path, RuleKey::Child), rule.ruleType);
}

void CRuleLosses::CompareParts(CMarkup& xml, const Rule& rule, const std::string& path) {
    std::map<std::string, int, std::less<>> counts;
    while (xml.FindElem()) {
        const auto name = xml.GetTagName();
        const auto place = ShownPath(MemberPath(path, name)) + Label(rule);
        const bool isOwn = name != RuleKey::Type && name != RuleKey::Child;
        const auto* known = isOwn ? FindRuleElement(rule.ruleType, name) : nullptr;
        if (isOwn && known == nullptr) {
            Add(place, "nothing reads it");
            continue;
        }
        if (++counts[name] > 1 && (known == nullptr || !known->isRepeated)) {
            Add(place, "only the first of these elements is read");
            continue;
        }
        if (known == nullptr) continue;
        const auto stranger = FindStranger(xml, known->below);
        if (!stranger.empty())
            Add(ShownPath(MemberPath(MemberPath(path, name), stranger)) + Label(rule),
                "nothing reads it");
        else if (!HasBuiltInLines(rule.ruleType) && SaysSomething(xml) &&
                 SaysNothing(PartOf(rule.held, StlHelper::toLower(name).c_str())))
            Add(place, "nothing of it is read");
    }
}
