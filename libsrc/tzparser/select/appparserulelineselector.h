#pragma once

#include "tzparser/rule/appparserule.h"

#include <string>
#include <vector>

class CAppParseRuleKeyWord;

// CAppParseRuleLineSelector is what rules have in common that narrow the lines for the rules below
// them: a name that is a variable, and an empty keyword rule as their first child from the start,
// whose lists they hand through.
//
//     auto& selector = ...;                    // a filter or a design reader
//     selector.AddKVP("mtu $int:mtu");         // read in the selected lines only
//
// One thread at a time uses a rule.
class TZPARSER_API CAppParseRuleLineSelector : public CAppParseRule {
public:
    ~CAppParseRuleLineSelector() override;

    virtual const std::string& GetName() const = 0;
    // Renames the variable and tells the root that the definition has changed.
    virtual void SetName(const std::string& name) = 0;

    // The lists of the first child, a keyword rule. Without one, adding does nothing and the lists
    // are empty; they live until the child is edited.
    void AddKVP(const std::string& kvp);
    void AddStatement(const std::string& statement);
    const std::vector<std::string>& GetKVPs() const;
    const std::vector<std::string>& GetStatements() const;

    // This rule for its name, with or without one "$"; otherwise what the rules below answer.
    CAppParseRule* GetChildRuleByVariableName(const std::string& name) override;

protected:
    CAppParseRuleLineSelector(RuleType type, CAppParseRule* parent);

    // Whether values are asked for by the rule's name; any one character may stand in front of it.
    bool IsAskedForValue(const std::string& name) const;
    // Empties the first child.
    void ResetKeyWord();
    // The text of the open lines, parted by "\r\n".
    std::string TextOf(const CAppLineStatus& status) const;

private:
    CAppParseRuleKeyWord* FirstKeyWord() const;
};

// Calls `use` with the number of each open line, in ascending order.
template <class Use>
void ForEachOpenLine(const CAppLineStatus& status, Use use) {
    for (int line = status.NextOpen(0); line < status.Count(); line = status.NextOpen(line + 1))
        use(line);
}

// The numbers of the open lines as an array.
void WriteOpenLines(const CAppLineStatus& status, hxJson::Value& list);
