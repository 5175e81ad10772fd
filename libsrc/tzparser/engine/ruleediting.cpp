#include "tzparser/rule/ruleediting.h"

#include "tzparser/keyword/appparserulekeyword.h"
#include "tzparser/paragraph/appparseruleparagraph.h"
#include "tzparser/select/appparserulelineselector.h"
#include "tzparser/table/appparseruletable.h"

#include <algorithm>

namespace {

// A name with this in it is a property of a variable, not a variable.
constexpr const char* PropertyMark = "._";

// The text behind the last ".", without the "$" in front.
std::string ShortName(const std::string& name) {
    auto begin = name.rfind('.');
    begin = begin == std::string::npos ? 0 : begin + 1;
    if (begin < name.size() && name[begin] == '$') ++begin;
    return name.substr(begin);
}

bool NamesProperty(const std::string& name) {
    return name.find(PropertyMark) != std::string::npos;
}

void DeleteRule(CAppParseRule* rule) {
    if (auto* parent = rule->GetParentRule()) parent->DelChildRule(rule);
}

// The first keyword rule of these kinds is their own default child and stays when it has become
// empty.
bool IsDefaultChild(const CAppParseRule* rule) {
    const auto* parent = rule->GetParentRule();
    if (parent == nullptr || parent->IsLeaf() || parent->Children().front().get() != rule)
        return false;
    return HasDefaultKeyWord(parent->GetRuleType());
}

void DeleteKeyWordVariable(CAppParseRuleKeyWord& rule, const std::string& name) {
    if (NamesProperty(name)) return;
    rule.DeleteVariable("$" + ShortName(name));
    if (rule.GetVariableNames().empty() && !IsDefaultChild(&rule)) DeleteRule(&rule);
}

void RenameKeyWordVariable(CAppParseRuleKeyWord& rule, const std::string& from,
                           const std::string& to) {
    if (!NamesProperty(from)) rule.ReplaceInKVPs("$" + ShortName(from), "$" + ShortName(to));
}

// Filters, design readers and paragraphs.
template <class Rule>
void RenameRule(Rule& rule, const std::string& from, const std::string& to) {
    if (ShortName(from) == rule.GetName()) rule.SetName(ShortName(to));
}

// The header whose column feeds a variable, the first by name; null when none does.
const std::string* HeaderOf(const CAppParseRuleTable& rule, const std::string& variable) {
    const auto& headers = rule.GetHeaderVars();
    const auto at = std::find_if(headers.begin(), headers.end(), [&variable](const auto& entry) {
        return entry.second == variable;
    });
    return at == headers.end() ? nullptr : &at->first;
}

void DeleteTableVariable(CAppParseRuleTable& rule, const std::string& name) {
    if (ShortName(name) == rule.GetName()) {
        DeleteRule(&rule);
        return;
    }
    if (const auto* header = HeaderOf(rule, "$" + ShortName(name)))
        rule.DelHeaderVar(std::string(*header));
}

void RenameTableVariable(CAppParseRuleTable& rule, const std::string& from, const std::string& to) {
    if (ShortName(from) == rule.GetName()) {
        if (!ShortName(to).empty()) rule.SetName(ShortName(to));
        return;
    }
    const auto variable = "$" + ShortName(from);
    const auto* header = HeaderOf(rule, variable);
    if (header == nullptr) return;
    const auto type = rule.GetVariableType(variable);
    const auto pattern = (type == "string" ? "$" : "$" + type + ":") + ShortName(to);
    rule.AddHeaderVar(std::string(*header), pattern);
}

}  // namespace

void DeleteRuleVariable(CAppParseRule* owner, const std::string& name) {
    if (auto* keyword = dynamic_cast<CAppParseRuleKeyWord*>(owner))
        DeleteKeyWordVariable(*keyword, name);
    else if (auto* table = dynamic_cast<CAppParseRuleTable*>(owner))
        DeleteTableVariable(*table, name);
    else
        DeleteRule(owner);
}

void RenameRuleVariable(CAppParseRule* owner, const std::string& from, const std::string& to) {
    if (auto* keyword = dynamic_cast<CAppParseRuleKeyWord*>(owner))
        RenameKeyWordVariable(*keyword, from, to);
    else if (auto* selector = dynamic_cast<CAppParseRuleLineSelector*>(owner))
        RenameRule(*selector, from, to);
    else if (auto* paragraph = dynamic_cast<CAppParseRuleParagraph*>(owner))
        RenameRule(*paragraph, from, to);
    else if (auto* table = dynamic_cast<CAppParseRuleTable*>(owner))
        RenameTableVariable(*table, from, to);
}
