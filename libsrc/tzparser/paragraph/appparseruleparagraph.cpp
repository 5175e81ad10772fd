// The rule as a definition: its patterns made ready, its children's variables, the variable tree.
#include "tzparser/paragraph/appparseruleparagraph.h"

#include "tzparser/keyword/appparserulekeyword.h"
#include "tzparser/pattern/parserpatternhelper.h"
#include "tzparser/variable/appvariabledef.h"

#include <algorithm>

namespace {

const CAppParseRuleKeyWord* AsKeyWord(const CAppParseRule& rule) {
    if (rule.GetRuleType() != RuleType_KeyWord) return nullptr;
    return dynamic_cast<const CAppParseRuleKeyWord*>(&rule);
}

std::vector<char> MarkDummies(const std::vector<std::string>& names) {
    std::vector<char> isDummy;
    isDummy.reserve(names.size());
    for (const auto& name : names) isDummy.push_back(name == DummyVariableName ? 1 : 0);
    return isDummy;
}

}  // namespace

// Compiles the patterns of one rule. What the first child reads has the child's expression. A
// pattern that is no statement but looks like one of several lines is searched for over several
// lines, as its literal text; an end pattern only when another pattern of the rule is the same
// text.
class CAppParseRuleParagraph::PatternMaker {
public:
    explicit PatternMaker(CAppParseRuleParagraph& rule) : m_rule(rule) {}

    Pattern MakeWithVariables(const std::string& line) {
        Pattern pattern;
        if (auto* keyword = m_rule.GetFirstKeywordRule()) {
            keyword->ExtractVariableNames(line, pattern.names);
            pattern.isDummy = MarkDummies(keyword->GetKVPVariableDefineWithDummy(line));
            if (!pattern.names.empty()) m_regexByLine[line] = keyword->GetKVPRegex(line);
        }
        pattern.regexText = pattern.names.empty() ? GetRegexByLine(line, m_regexByLine, m_multiLine)
                                                  : m_regexByLine[line];
        if (IsMultiLineSyntax(line)) m_multiLine.insert(line);
        return Finish(line, std::move(pattern));
    }

    Pattern MakeEnd(const std::string& line) {
        Pattern pattern;
        pattern.regexText = GetRegexByLine(line, m_regexByLine, m_multiLine);
        return Finish(line, std::move(pattern));
    }

private:
    Pattern Finish(const std::string& line, Pattern&& pattern) const {
        pattern.regex = m_rule.GetCachedRegex(pattern.regexText, CAppRegex::RuleFlags);
        pattern.isMultiLine = m_multiLine.count(line) != 0;
        return std::move(pattern);
    }

    CAppParseRuleParagraph& m_rule;
    std::map<std::string, std::string> m_regexByLine;
    std::set<std::string> m_multiLine;
};

CAppParseRuleParagraph::CAppParseRuleParagraph(CAppParseRule* parent)
    : CAppParseRuleKeyed(RuleType_Paragraph, parent) {
    CAppParseRule::AddChildRule(new CAppParseRuleKeyWord(this));
}

CAppParseRuleParagraph::~CAppParseRuleParagraph() = default;

CAppParseRule* CAppParseRuleParagraph::CreateObject(CAppParseRule* parent) {
    return new CAppParseRuleParagraph(parent);
}

bool CAppParseRuleParagraph::OnCopyTo(CAppParseRule* target) {
    auto* other = dynamic_cast<CAppParseRuleParagraph*>(target);
    if (other == nullptr) return false;
    if (other != this) {
        other->m_definition = m_definition;
        CopyComparisonTo(*other);
        other->m_ranges = m_ranges;
    }
    other->SetRuleModify();
    return true;
}

// What was found out about the children holds no longer. A child that changes itself in its run, as
// the built-in forms do, leaves what the run going on needs.
void CAppParseRuleParagraph::SetRuleModify() {
    m_needsFilling.reset();
    if (!m_isRunning) {
        m_fillStates.clear();
        m_runPlan.reset();
    }
    CAppParseRule::SetRuleModify();
}

CAppParseRuleParagraph::Definition& CAppParseRuleParagraph::EditDefinition() {
    auto& definition = m_definition.Edit();
    definition.plan.reset();
    m_runPlan.reset();
    return definition;
}

// The end pattern comes last, since any other pattern of the same text decides whether it is
// searched over several lines.
std::shared_ptr<const CAppParseRuleParagraph::Plan> CAppParseRuleParagraph::MakePlan() {
    PatternMaker maker(*this);
    auto plan = std::make_shared<Plan>();
    const auto& definition = *m_definition;
    plan->isKeyWordRead = GetFirstKeywordRule() != nullptr;
    if (!definition.startExpr.empty()) plan->start = maker.MakeWithVariables(definition.startExpr);
    for (const auto& line : definition.idLines) plan->ids.push_back(maker.MakeWithVariables(line));
    if (!definition.parentLine.empty())
        plan->parent = maker.MakeWithVariables(definition.parentLine);
    if (!definition.endExpr.empty()) plan->end = maker.MakeEnd(definition.endExpr);
    return plan;
}

std::shared_ptr<const CAppParseRuleParagraph::Plan> CAppParseRuleParagraph::PlanOfRun() {
    const auto& plan = m_definition->plan;
    if (plan && plan->isKeyWordRead == (GetFirstKeywordRule() != nullptr)) return plan;
    if (!m_runPlan) m_runPlan = MakePlan();
    return m_runPlan;
}

// A pattern with the variables of the start pattern and an expression of its own.
CAppParseRuleParagraph::Pattern CAppParseRuleParagraph::StartPatternOf(const std::string& regex) {
    Pattern pattern;
    if (!m_definition->startExpr.empty()) pattern = PlanOfRun()->start;
    pattern.regexText = regex;
    pattern.regex = GetCachedRegex(regex, CAppRegex::RuleFlags);
    return pattern;
}

bool CAppParseRuleParagraph::IsBelowParagraph() const {
    const auto* parent = GetParentRule();
    return parent != nullptr && parent->GetRuleType() == RuleType_Paragraph;
}

CAppParseRuleKeyWord* CAppParseRuleParagraph::GetFirstKeywordRule() const {
    return IsLeaf() ? nullptr : dynamic_cast<CAppParseRuleKeyWord*>(Children().front().get());
}

std::vector<std::string> CAppParseRuleParagraph::GetIDLines() const {
    auto lines = m_definition->idLines;
    if (!m_definition->startExpr.empty()) lines.insert(lines.begin(), m_definition->startExpr);
    return lines;
}

bool CAppParseRuleParagraph::AreIDLines(const std::vector<std::string>& lines) const {
    const auto& ids = m_definition->idLines;
    const std::size_t starts = m_definition->startExpr.empty() ? 0 : 1;
    return lines.size() == starts + ids.size() &&
           (starts == 0 || lines.front() == m_definition->startExpr) &&
           std::equal(ids.begin(), ids.end(), lines.begin() + static_cast<std::ptrdiff_t>(starts));
}

bool CAppParseRuleParagraph::GetVariableNames(std::vector<std::string>& names) const {
    std::set<std::string> known(names.begin(), names.end());
    for (const auto& child : Children()) {
        if (AsKeyWord(*child) == nullptr) continue;
        for (auto& name : dynamic_cast<CAppParseRuleKeyWord&>(*child).GetVariableNames())
            if (known.insert(name).second) names.push_back(std::move(name));
    }
    return !names.empty();
}

bool CAppParseRuleParagraph::HasVariables() const {
    return std::any_of(Children().begin(), Children().end(), [](const auto& child) {
        return AsKeyWord(*child) != nullptr &&
               !dynamic_cast<CAppParseRuleKeyWord&>(*child).GetVariableNames().empty();
    });
}

bool CAppParseRuleParagraph::AddToVariableTree(CAppVariableDef* def) {
    auto node = std::make_unique<CAppVariableDef>(def, "$" + m_definition->name, AppDataType_Node18,
                                                  AppVariableType_Parser, "");
    for (const auto& child : Children()) child->AddToVariableTree(node.get());
    if (def->AddChild(node.get())) node.release();
    return true;
}

void CAppParseRuleParagraph::ClearVariablePosition() {
    m_ranges.Clear();
    m_fillStates.clear();
    for (const auto& child : Children()) child->ClearVariablePosition();
}
