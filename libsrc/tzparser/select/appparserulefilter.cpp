// The rule as a definition: its fields, its lists, and the patterns compiled from them.
#include "tzparser/select/appparserulefilter.h"

#include "host/text/asciicase.h"
#include "tzparser/pattern/parserpatternhelper.h"
#include "tzparser/variable/appvariabledef.h"

#include <algorithm>

#include <boost/algorithm/string/replace.hpp>

namespace {

constexpr const char* GlobalMark = "$$";
constexpr const char* AnyWord = "(\\S+)";

bool IsBelow(const CAppParseRule& rule, RuleType type) {
    const auto* parent = rule.GetParentRule();
    return parent != nullptr && parent->GetRuleType() == type;
}

}  // namespace

// Compiles the patterns of one rule; all share what was found out about multi-line statements.
class CAppParseRuleFilter::PatternMaker {
public:
    explicit PatternMaker(CAppParseRuleFilter& rule) : m_rule(rule) {}

    Pattern Make(const std::string& line) {
        Pattern pattern;
        pattern.line = line;
        pattern.regexText = GetRegexByLine(line, m_regexByLine, m_multiLine);
        pattern.regex = m_rule.GetCachedRegex(pattern.regexText, CAppRegex::RuleFlags);
        pattern.isMultiLine = m_multiLine.count(line) != 0;
        return pattern;
    }

    // A pattern counts once, however often it is listed.
    std::vector<Pattern> Make(const std::vector<std::string>& lines) {
        std::vector<Pattern> patterns;
        std::set<std::string> made;
        for (const auto& line : lines)
            if (made.insert(line).second) patterns.push_back(Make(line));
        return patterns;
    }

    // The expression of a begin line with global variables is each parse's own. The one without
    // their values is only put into the cache.
    Pattern MakeBegin(const std::string& line) {
        if (line.find(GlobalMark) == std::string::npos) return Make(line);
        Pattern pattern;
        pattern.line = line;
        m_rule.GetCachedRegex(m_rule.FilterByGlobalVariable(line, nullptr), CAppRegex::RuleFlags);
        pattern.isMultiLine = m_multiLine.count(line) != 0;
        return pattern;
    }

private:
    CAppParseRuleFilter& m_rule;
    std::map<std::string, std::string> m_regexByLine;
    std::set<std::string> m_multiLine;
};

CAppParseRuleFilter::CAppParseRuleFilter(CAppParseRule* parent)
    : CAppParseRuleLineSelector(RuleType_Filter, parent) {}

CAppParseRuleFilter::~CAppParseRuleFilter() = default;

CAppParseRule* CAppParseRuleFilter::CreateObject(CAppParseRule* parent) {
    return new CAppParseRuleFilter(parent);
}

bool CAppParseRuleFilter::OnCopyTo(CAppParseRule* target) {
    auto* other = dynamic_cast<CAppParseRuleFilter*>(target);
    if (other == nullptr) return false;
    if (other == this) return true;
    other->m_definition = m_definition;
    other->m_multiLineStatus = m_multiLineStatus;
    other->m_runRanges = m_runRanges;
    other->m_runPlan = m_runPlan;
    other->SetRuleModify();
    return true;
}

CAppParseRuleFilter::Definition& CAppParseRuleFilter::EditDefinition() {
    auto& definition = m_definition.Edit();
    definition.plan.reset();
    m_runPlan.reset();
    return definition;
}

std::shared_ptr<const CAppParseRuleFilter::Plan> CAppParseRuleFilter::MakePlan() {
    PatternMaker maker(*this);
    auto plan = std::make_shared<Plan>();
    if (!m_definition->endLine.empty()) plan->end = maker.Make(m_definition->endLine);
    plan->excludes = maker.Make(m_definition->excludeLines);
    plan->includes = maker.Make(m_definition->includeLines);
    if (!m_definition->beginLine.empty()) plan->begin = maker.MakeBegin(m_definition->beginLine);
    return plan;
}

std::shared_ptr<const CAppParseRuleFilter::Plan> CAppParseRuleFilter::PlanOfRun() {
    if (m_definition->plan) return m_definition->plan;
    if (!m_runPlan) m_runPlan = MakePlan();
    return m_runPlan;
}

void CAppParseRuleFilter::FilterContainLine(const std::vector<std::string>& patterns, int beginLine,
                                            int endLine, bool include) {
    ContainLines(PatternMaker(*this).Make(patterns), std::clamp(beginLine, 0, LineCount()),
                 std::clamp(endLine, 0, LineCount()), include);
}

// Every variable takes the place of the first word that is left, whatever its own type captures; a
// value is a piece of the expression, not a text to be found.
std::string CAppParseRuleFilter::FilterByGlobalVariable(const std::string& line,
                                                        IAppVariableCallback* callback) {
    const auto statement = boost::algorithm::replace_all_copy(line, GlobalMark, "$");
    CParserPatternHelper helper;
    std::string error;
    if (!helper.Parse(statement, error)) return {};
    std::string result = helper.GetRegex();
    for (const auto& name : helper.GetVarNames()) {
        std::string value;
        if (callback != nullptr) callback->GetVariableValue("$" + name, value);
        boost::algorithm::replace_first(result, AnyWord, value);
    }
    return result;
}

void CAppParseRuleFilter::SetName(const std::string& name) {
    m_definition.Edit().name = name;
    SetRuleModify();
}

void CAppParseRuleFilter::SetBeginLine(const std::string& pattern) {
    EditDefinition().beginLine = pattern;
    SetRuleModify();
}

void CAppParseRuleFilter::SetEndLine(const std::string& pattern) {
    EditDefinition().endLine = pattern;
    SetRuleModify();
}

void CAppParseRuleFilter::SetFlag(bool Definition::*flag, bool value) {
    if ((*m_definition).*flag == value) return;
    m_definition.Edit().*flag = value;
    SetRuleModify();
}

void CAppParseRuleFilter::SetIsFilterLoop(bool loop) {
    SetFlag(&Definition::isFilterLoop, loop);
}

void CAppParseRuleFilter::SetIsExcludeEndLine(bool exclude) {
    SetFlag(&Definition::isExcludeEndLine, exclude);
}

void CAppParseRuleFilter::SetIsExcludeBeginLine(bool exclude) {
    SetFlag(&Definition::isExcludeBeginLine, exclude);
}

void CAppParseRuleFilter::SetAsConfiglet(bool configlet) {
    SetFlag(&Definition::asConfiglet, configlet);
}

void CAppParseRuleFilter::SetAsConfiglet(const std::string& configlet) {
    SetAsConfiglet(configlet == "1" || AsciiEqualIgnoreCase(configlet, "true"));
}

void CAppParseRuleFilter::Reset() {
    auto& definition = EditDefinition();
    definition.beginLine.clear();
    definition.endLine.clear();
    definition.skipLines.clear();
    definition.includeLines.clear();
    definition.isExcludeEndLine = true;
    ResetKeyWord();
    SetRuleModify();
}

bool CAppParseRuleFilter::IsUseMultiLineStatus() const {
    return IsBelow(*this, RuleType_Paragraph);
}

bool CAppParseRuleFilter::IsVisualVariable() const {
    return !IsBelow(*this, RuleType_Table);
}

bool CAppParseRuleFilter::AddToVariableTree(CAppVariableDef* def) {
    if (!IsVisualVariable()) return true;
    auto node = std::make_unique<CAppVariableDef>(def, "$" + m_definition->name, AppDataType_Node17,
                                                  AppVariableType_Parser, "");
    if (def->AddChild(node.get())) node.release();
    if (IsUseMultiLineStatus()) return true;
    for (const auto& child : Children()) child->AddToVariableTree(def);
    return true;
}
