// The sample's document.
#include "host/text/stlhelper.h"
#include "tzparser/rule/appparserulesample.h"
#include "tzparser/rule/delimitedset.h"
#include "tzparser/rule/rulekeys.h"

namespace {

// So much goes from the front of a key that holds "_original_result" anywhere: the name with the
// "$" before it or the "." behind it.
constexpr std::size_t OriginalResultPrefix = 17;

std::string TrimDollars(std::string text) {
    StlHelper::trim(text, "$");
    return text;
}

void InsertTexts(const hxJson::Value& texts, std::set<std::string>& set) {
    for (const auto& text : texts) set.insert(text.asString());
}

struct TableColumn {
    std::string table;
    std::string column;
};

// Splits a key such as "$_original_result.$parent.$table.$column": the column is behind the last
// ".", and the table is what is left behind the first "." of the rest. A key without "." is both.
TableColumn SplitTableKey(std::string key) {
    if (key.find(ResultKey::OriginalResult) != std::string::npos)
        key.erase(0, OriginalResultPrefix);
    const auto last = key.rfind('.');
    std::string table = key;
    std::string column = key;
    if (last != std::string::npos) {
        column = TrimDollars(key.substr(last + 1));
        table.resize(last);
    }
    const auto first = table.find('.');
    if (first != std::string::npos) table.erase(0, first + 1);
    return {TrimDollars(table), column};
}

}  // namespace

bool CAppParseRuleSample::Load(const hxJson::Value& json) {
    const auto& operations = json[RuleKey::Operations];
    if (operations.isArray())
        for (const auto& operation : operations) AddOperation(operation);
    const auto& rules = json[RuleKey::ParseRules];
    if (!rules.isNull()) {
        DeleteChildren();
        FillChildNode(rules);
    }
    LoadKeys(json);
    ShareCachedRegex();
    return true;
}

void CAppParseRuleSample::LoadKeys(const hxJson::Value& json) {
    const auto& variables = json[RuleKey::Variables];
    if (!variables.isNull())
        m_interfaceKeys.merge(
            SplitDelimitedSet(variables[RuleKey::VariablesInterfaceKeys].asString(), ',', '\0'));
    InsertTexts(json[RuleKey::TableKeys], m_tableKeys);
    InsertTexts(json[RuleKey::InterfaceKeys], m_interfaceKeys);
    SetChildTableKey(m_interfaceKeys, true);
    SetChildTableKey(m_tableKeys, false);
}

void CAppParseRuleSample::SetChildTableKey(const std::set<std::string>& keys, bool interfaceKeys) {
    for (const auto& key : keys) {
        const auto target = SplitTableKey(key);
        auto* rule = GetChildRuleByVariableName(target.table);
        if (rule == nullptr) continue;
        if (interfaceKeys)
            rule->AddTableInterfaceKey(target.column);
        else
            rule->AddTableKey(target.column);
    }
}

bool CAppParseRuleSample::Save(hxJson::Value& json) {
    auto& rules = json[RuleKey::ParseRules];
    SaveChildNode(rules);
    rules[RuleKey::Variables][RuleKey::VariablesInterfaceKeys] = JoinedInterfaceKeys();
    return true;
}

std::string CAppParseRuleSample::JoinedInterfaceKeys() const {
    std::string joined;
    for (const auto& key : m_interfaceKeys) joined += (joined.empty() ? "" : ",") + key;
    return joined;
}
