#pragma once

#include "tzparser/rule/appparserulehashed.h"

// CAppParseRuleKeyed is a rule whose values are rows, a table or a paragraph: beside what the hash
// takes it holds the columns that name a row. The sample hands them down when it is loaded; the
// variable tree takes them over.
//
//     rule.AddTableKey("port");
//     rule.GetTableKeysEx(false);     // "port", and the keys of the paragraphs above
//
// Clones share the keys until one of them is edited. One thread at a time uses a rule.
class TZPARSER_API CAppParseRuleKeyed : public CAppParseRuleHashed {
public:
    using CAppParseRuleHashed::CAppParseRuleHashed;

    // Getters replace `keys`. Keys are the sample's: adding one doesn't mark the definition as
    // changed.
    void GetTableKeys(std::set<std::string>& keys) const override;
    void AddTableKey(const std::string& key) override;
    void GetTableInterfaceKeys(std::set<std::string>& keys) const override;
    void AddTableInterfaceKey(const std::string& key) override;
    // The keys of this rule and of the paragraphs above, also through filters between: of each the
    // interface keys and, unless only they are wanted or there are some, the keys.
    using CAppParseRule::GetTableKeysEx;
    std::set<std::string> GetTableKeysEx(bool interfaceKeysOnly) const;

protected:
    // Empties keys and hashing; the interface keys stay.
    void ResetComparison();
    void CopyComparisonTo(CAppParseRuleKeyed& target) const;

private:
    struct Keys {
        std::set<std::string> keys;
        std::set<std::string> interfaceKeys;
    };

    const std::set<std::string>& OwnKeys(bool interfaceKeysOnly) const;

    CCopyOnWrite<Keys> m_keys;
};
