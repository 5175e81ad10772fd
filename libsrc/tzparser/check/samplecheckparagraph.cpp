// What a paragraph's node says: its patterns, its line mode, and the variables it names.
#include "tzparser/check/checkshape.h"
#include "tzparser/check/samplecheck.h"
#include "tzparser/check/statementcheck.h"
#include "tzparser/paragraph/appparseruleparagraph.h"
#include "tzparser/paragraph/paragraphkeys.h"
#include "tzparser/rule/rulekeys.h"
#include "tzparser/select/appparserulelineselector.h"
#include "tzparser/text/appstrutil.h"

namespace {

std::string WithoutDollars(const std::string& name) {
    const auto begin = name.find_first_not_of('$');
    return begin == std::string::npos ? std::string() : name.substr(begin);
}

// The columns of the paragraph's table: the variables of its keyword rules, those of outer
// paragraphs with them, and the names of its filters and design readers.
std::set<std::string> ColumnsOf(CAppParseRuleParagraph& rule) {
    std::vector<std::string> names;
    rule.GetVariableNames(names);
    for (const auto& child : rule.Children())
        if (const auto* selector = dynamic_cast<const CAppParseRuleLineSelector*>(child.get()))
            names.push_back(selector->GetName());
    return {names.begin(), names.end()};
}

}  // namespace

void CSampleCheck::CheckParagraph(const hxJson::Value& node, const std::string& path) {
    const bool isLineMode = node[ParagraphKey::IsLineAsParagraph].asBool() &&
                            node[ParagraphKey::LineAsParagraph].asBool();
    if (node[ParagraphKey::StartLine].asString().empty() && !isLineMode)
        m_report.Add(path, CheckMessage_ParagraphNever);
    const auto& groupSize = node[ParagraphKey::LineAsParagraph];
    if (!groupSize.isNull() && groupSize.asInt() != (groupSize.asBool() ? 1 : 0))
        m_report.Add(path + "." + ParagraphKey::LineAsParagraph, CheckMessage_ParagraphGroupSize);
    CheckParagraphLines(node, path);
    CheckParagraphVariables(node, path);
}

void CSampleCheck::CheckParagraphLines(const hxJson::Value& node, const std::string& path) {
    const auto check = [&](const char* key, CheckMessage_e broken) {
        const auto pattern = node[key].asString();
        if (!pattern.empty()) CheckPattern(pattern, path + "." + key, broken);
    };
    check(ParagraphKey::StartLine, CheckMessage_ParagraphStartBroken);
    check(ParagraphKey::EndLine, CheckMessage_ParagraphEndBroken);
    check(ParagraphKey::ParentLine, CheckMessage_ParagraphParentBroken);
    const auto parentLine = node[ParagraphKey::ParentLine].asString();
    if (!parentLine.empty() && CStatementCheck(parentLine).Compiled().GetVarNames().empty())
        m_report.Add(path + "." + ParagraphKey::ParentLine,
                     CheckMessage_ParagraphParentWithoutVariable, {}, parentLine);
    const auto& ids = node[ParagraphKey::IdLines];
    const auto idsPath = path + "." + ParagraphKey::IdLines;
    if (!HasShape(ids, CheckShape_Array, m_report, idsPath)) return;
    for (std::size_t i = 0; i < ids.size(); ++i)
        if (!ids[i].asString().empty())
            CheckPattern(ids[i].asString(), idsPath + "[" + std::to_string(i) + "]",
                         CheckMessage_ParagraphIdBroken);
}

// Keys are compared without their "$", names to be carried over as they stand.
void CSampleCheck::CheckParagraphVariables(const hxJson::Value& node, const std::string& path) {
    auto* rule = dynamic_cast<CAppParseRuleParagraph*>(FindRule());
    if (rule == nullptr) return;
    const auto columns = ColumnsOf(*rule);
    std::set<std::string> bare;
    for (const auto& column : columns) bare.insert(WithoutDollars(column));
    const auto names = [&node](const char* key) {
        return AppStrUtil::StrSplitToSet(node[key].asString(), ";", false);
    };
    const auto report = [&](const char* key, const std::string& name) {
        m_report.Add(path + "." + key, CheckMessage_ParagraphVariableUnknown, {name});
    };
    for (const auto& name : names(ParagraphKey::KeyVariables))
        if (bare.count(WithoutDollars(name)) == 0) report(ParagraphKey::KeyVariables, name);
    if (!node[ParagraphKey::IsUsePreVars].asBool()) return;
    for (const auto& name : names(ParagraphKey::UsePreVars))
        if (columns.count(name) == 0) report(ParagraphKey::UsePreVars, name);
}

// The loaded rule of the node being checked. A kind with a default child has one more than its
// document says, unless the first node is a keyword rule, which fills it.
CAppParseRule* CSampleCheck::FindRule() {
    CAppParseRule* rule = &m_sample.GetRule();
    for (const auto& level : m_open) {
        auto index = level.next - 1;
        const int first = hxJson::Value(level.Node(0)[RuleKey::Type].asString()).asInt();
        if (HasDefaultKeyWord(rule->GetRuleType()) && first != RuleType_KeyWord) ++index;
        if (index >= rule->Children().size()) return nullptr;
        rule = rule->Children()[index].get();
    }
    return rule;
}
