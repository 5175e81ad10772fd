// The table of rule kinds: the one place that knows them all.
#include "tzparser/keyword/appparserulekeyword.h"
#include "tzparser/keyword/appparserulekeywordping.h"
#include "tzparser/keyword/appparserulekeywordtracert.h"
#include "tzparser/paragraph/appparseruleparagraph.h"
#include "tzparser/rule/rulefactory.h"
#include "tzparser/script/appparserulescript.h"
#include "tzparser/select/appparseruledesignreader.h"
#include "tzparser/select/appparseruledifffilter.h"
#include "tzparser/select/appparserulefilter.h"
#include "tzparser/select/appparseruletext.h"
#include "tzparser/table/appparseruletable.h"

namespace {

using Maker = std::unique_ptr<CAppParseRule> (*)(CAppParseRule*);

template <class Rule>
std::unique_ptr<CAppParseRule> Make(CAppParseRule* parent) {
    return std::make_unique<Rule>(parent);
}

struct RuleKind {
    int ruleType;
    bool inArrayOnly;  // a document may have a node of this kind in the array form alone
    Maker make;
};

constexpr RuleKind RuleKinds[] = {
    {RuleType_KeyWord, false, &Make<CAppParseRuleKeyWord>},
    {RuleType_Filter, false, &Make<CAppParseRuleFilter>},
    {RuleType_DesignReader, false, &Make<CAppParseRuleDesignReader>},
    {RuleType_Table, false, &Make<CAppParseRuleTable>},
    {RuleType_Paragraph, false, &Make<CAppParseRuleParagraph>},
    {RuleType_Ping, false, &Make<CAppParseRuleKeyWordPing>},
    {RuleType_TraceRoute, false, &Make<CAppParseRuleKeyWordTraceRT>},
    {RuleType_Script, false, &Make<CAppParseRuleScript>},
    {RuleType_Text, true, &Make<CAppParseRuleText>},
    {RuleType_DiffFilter, true, &Make<CAppParseRuleDiffFilter>},
};

}  // namespace

std::unique_ptr<CAppParseRule> MakeRule(int ruleType, RuleNodeForm_e form, CAppParseRule* parent) {
    for (const auto& kind : RuleKinds)
        if (kind.ruleType == ruleType && (form == RuleNodeForm_Array || !kind.inArrayOnly))
            return kind.make(parent);
    return nullptr;
}
