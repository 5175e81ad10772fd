#include "tzparser/explain/kindexplain.h"

#include "tzparser/explain/boundsexplain.h"
#include "tzparser/paragraph/appparseruleparagraph.h"
#include "tzparser/rule/appparserulesample.h"
#include "tzparser/select/appparseruledifffilter.h"
#include "tzparser/select/appparserulelineselector.h"
#include "tzparser/select/appparseruletext.h"
#include "tzparser/table/appparseruletable.h"

namespace {

struct KindRow {
    RuleType type;
    KindExplainer explainer;
};

std::string NoName(const CAppParseRule&) {
    return {};
}

// Of a filter or design reader.
std::string NameOfSelector(const CAppParseRule& rule) {
    const auto* selector = dynamic_cast<const CAppParseRuleLineSelector*>(&rule);
    return selector != nullptr ? selector->GetName() : std::string();
}

std::string NameOfText(const CAppParseRule& rule) {
    const auto* text = dynamic_cast<const CAppParseRuleText*>(&rule);
    return text != nullptr ? text->GetName() : std::string();
}

std::string NameOfDiffFilter(const CAppParseRule& rule) {
    const auto* filter = dynamic_cast<const CAppParseRuleDiffFilter*>(&rule);
    return filter != nullptr ? filter->GetName() : std::string();
}

std::string NameOfTable(const CAppParseRule& rule) {
    const auto* table = dynamic_cast<const CAppParseRuleTable*>(&rule);
    return table != nullptr ? table->GetName() : std::string();
}

std::string NameOfParagraph(const CAppParseRule& rule) {
    const auto* paragraph = dynamic_cast<const CAppParseRuleParagraph*>(&rule);
    return paragraph != nullptr ? paragraph->GetName() : std::string();
}

const KindRow Kinds[] = {
    {RuleType_Sample, {"sample", &ExplainSample, &NoName}},
    {RuleType_KeyWord, {"keyword", &ExplainKeyWord, &NoName}},
    {RuleType_Ping, {"ping", &ExplainPing, &NoName}},
    {RuleType_TraceRoute, {"traceroute", &ExplainTraceRoute, &NoName}},
    {RuleType_Paragraph, {"paragraph", &ExplainParagraph, &NameOfParagraph}},
    {RuleType_Table, {"table", &ExplainTable, &NameOfTable}},
    {RuleType_Filter, {"filter", &ExplainFilter, &NameOfSelector}},
    {RuleType_DesignReader, {"design reader", &ExplainReader, &NameOfSelector}},
    {RuleType_Text, {"text", &ExplainText, &NameOfText}},
    {RuleType_Script, {"script", &ExplainScript, &NoName}},
    {RuleType_DiffFilter, {"diff filter", &ExplainDiffFilter, &NameOfDiffFilter}},
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
