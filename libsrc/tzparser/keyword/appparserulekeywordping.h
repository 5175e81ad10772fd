#pragma once

#include "tzparser/keyword/appparserulekeyword.h"

#include <string>
#include <vector>

// CAppParseRuleKeyWordPing reads the statistics of a ping with no statement of an author's: which
// share of the packets was lost, how long the others took, and whether any came back.
//
//     auto* rule = new CAppParseRuleKeyWordPing(&sample);
//     sample.AddChildRule(rule);                        // the sample owns it now
//     sample.Parse("Success rate is 80 percent (4/5)\n", 0, -1, nullptr);
//     rule->GetVariablePos()["$lost_rate"][0].text;     // "20"
//     rule->GetVariablePos()["$ping_result"][0].text;   // "True"
//
// A text with "Lost =" in it, in this case and anywhere, is one that counts what was lost; any
// other counts what came back. Each parse forgets the rule's lines and values and takes the lines
// of the syntax it faces, so what a definition says of them serves the variable tree alone. A text
// without statistics isn't a failure: its rate counts as 0, which is no loss in the one syntax and
// no success in the other.
//
// One thread at a time uses a rule.
class TZPARSER_API CAppParseRuleKeyWordPing : public CAppParseRuleKeyWord {
public:
    explicit CAppParseRuleKeyWordPing(CAppParseRule* parent);
    ~CAppParseRuleKeyWordPing() override;

    // False only when a bound isn't found; the variables then have no values.
    bool Parse(const std::string& text, int startLine, int endLine,
               IAppVariableCallback* callback) override;
    CAppParseRule* CreateObject(CAppParseRule* parent) override;

    // What tells the syntax that counts what was lost.
    static constexpr const char* LossMark = "Lost =";

private:
    void AppendKeywordVariables(std::vector<std::string>& names) override;

    static const CBuiltInLines& DeclaredLines();
    static const CBuiltInLines& LossLines();
    static const CBuiltInLines& SuccessLines();
};
