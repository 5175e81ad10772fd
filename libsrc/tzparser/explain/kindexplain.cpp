#include "tzparser/explain/kindexplain.h"

#include "tzparser/explain/boundsexplain.h"
#include "tzparser/rule/appparserulesample.h"
#include "tzparser/select/appparserulefilter.h"

namespace {

struct KindRow {
    RuleType type;
    KindExplainer explainer;
};

std::string NoName(const CAppParseRule&) {
    return {};
}

std::string NameOfFilter(const CAppParseRule& rule) {
    const auto* filter = dynamic_cast<const CAppParseRuleFilter*>(&rule);
    return filter != nullptr ? filter->GetName() : std::string();
}

const KindRow Kinds[] = {
    {RuleType_Sample, {"sample", &ExplainSample, &NoName}},
    {RuleType_KeyWord, {"keyword", &ExplainKeyWord, &NoName}},
    {RuleType_Filter, {"filter", &ExplainFilter, &NameOfFilter}},
};

const KindExplainer OtherKind = {"rule", &ExplainBoundsAlone, &NoName};

}  // namespace

const KindExplainer& FindExplainer(RuleType type) {
    for (const auto& row : Kinds)
        if (row.type == type) return row.explainer;
    return OtherKind;
}

void ExplainSample(CExplainScope& scope) {
    for (const auto& run : scope.Runs()) scope.NoteRun(run, scope.Rule().LineStatus());
}
