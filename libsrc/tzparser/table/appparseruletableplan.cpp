// What the definition is compiled to.
#include "host/text/stlhelper.h"
#include "tzparser/pattern/parserpatternhelper.h"
#include "tzparser/table/appparseruletable.h"
#include "tzparser/table/tableplan.h"
#include "tzparser/text/appstrutil.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

constexpr const char* HeaderGap = "  ";
constexpr const char* AnyWhiteSpace = "\\s+";
constexpr const char* Anything = ".*";

// The text of a header line as an expression to be found in a line: runs of white space stand for
// any run of it.
std::string LiteralHeaderRegex(const std::string& joined) {
    std::string expression;
    bool inWhiteSpace = false;
    for (const char c : StlHelper::RegexEscape(joined)) {
        const bool isWhiteSpace = WhiteSpace.Has(c);
        if (!isWhiteSpace)
            expression += c;
        else if (!inWhiteSpace)
            expression += AnyWhiteSpace;
        inWhiteSpace = isWhiteSpace;
    }
    return expression;
}

// The expression of a header line that is a statement; empty when it is none.
std::string StatementHeaderRegex(const std::string& joined, bool& isStatement) {
    CParserPatternHelper helper;
    std::string error;
    isStatement = helper.Parse(joined, error);
    return isStatement ? helper.GetRegex() : std::string();
}

// A statement that doesn't compile yields its expression all the same, so that it fits no line;
// a text that is none is looked for as it stands.
std::string ExcludeRegex(const std::string& pattern) {
    CParserPatternHelper helper;
    std::string error;
    helper.Parse(pattern, error);
    return helper.GetRegex().empty() ? CParserPatternHelper::RegexEscape(pattern, true, true)
                                     : helper.GetRegex();
}

}  // namespace

std::string CAppParseRuleTable::GetTableHeaderRegex() const {
    const auto joined = AppStrUtil::StrJoin(m_definition->headers, HeaderGap);
    bool isStatement = false;
    auto expression = StatementHeaderRegex(joined, isStatement);
    return isStatement ? expression : Anything + LiteralHeaderRegex(joined) + Anything;
}

// An expression that may have anything on both sides is found in a line rather than laid on all of
// it, which says the same in less time.
CTableHeader CAppParseRuleTable::MakeHeader() {
    const auto joined = AppStrUtil::StrJoin(m_definition->headers, HeaderGap);
    bool isStatement = false;
    auto expression = StatementHeaderRegex(joined, isStatement);
    if (!isStatement) expression = LiteralHeaderRegex(joined);
    CTableHeader header(GetCachedRegex(expression, CAppRegex::RuleFlags),
                        isStatement ? CTableHeader::Fit::Whole : CTableHeader::Fit::Found);
    for (const auto& text : m_definition->headers) {
        const auto regexText = AppStrUtil::StrTransRegex(text, true, true);
        header.Add(text, regexText, GetCachedRegex(regexText, CAppRegex::RuleFlags));
    }
    return header;
}

std::shared_ptr<const CAppParseRuleTable::Plan> CAppParseRuleTable::MakePlan() {
    auto plan = std::make_shared<Plan>();
    plan->headers = m_definition->headers;
    plan->header = MakeHeader();
    AddColumns(*plan);
    for (const auto& piece : AppStrUtil::StrSplit(m_definition->alignRange, ";", false))
        plan->range.push_back(TableText::LeadingNumber(piece));
    AddEndCond(*plan);
    AddExcludes(*plan);
    return plan;
}

// A host that holds the headers may have changed them since the last run.
std::shared_ptr<const CAppParseRuleTable::Plan> CAppParseRuleTable::PlanOfRun() {
    const auto& known = m_definition->plan ? m_definition->plan : m_runPlan;
    const bool isOfHeaders =
        known && (!m_isHeaderHosted || known->headers == m_definition->headers);
    if (isOfHeaders) return known;
    if (m_definition->plan) EditDefinition();
    m_runPlan = MakePlan();
    m_slotPlan = nullptr;
    return m_runPlan;
}

void CAppParseRuleTable::AddColumns(Plan& plan) const {
    for (const auto& header : m_definition->headers) {
        TableColumn column;
        column.headerLength = TableText::Size(header);
        const auto variable = m_definition->headerVars.find(header);
        if (variable != m_definition->headerVars.end())
            column.variable = SlotOf(plan, variable->second);
        plan.columns.push_back(column);
    }
}

std::size_t CAppParseRuleTable::SlotOf(Plan& plan, const std::string& name) const {
    auto& variables = plan.variables;
    const auto known =
        std::find_if(variables.begin(), variables.end(),
                     [&name](const Plan::Variable& variable) { return variable.name == name; });
    const auto slot = static_cast<std::size_t>(std::distance(variables.begin(), known));
    if (known == variables.end())
        variables.push_back(
            {name, m_definition->isUsePreVars && m_definition->followVars.count(name) != 0});
    return slot;
}

void CAppParseRuleTable::AddEndCond(Plan& plan) {
    const auto& endCond = m_definition->endCond;
    plan.end.exists = !endCond.empty();
    if (!plan.end.exists) return;
    std::map<std::string, std::string> regexByLine;
    std::set<std::string> multiLine;
    plan.end.regexText = GetRegexByLine(endCond, regexByLine, multiLine);
    plan.end.regex = GetCachedRegex(plan.end.regexText, CAppRegex::RuleFlags);
    plan.end.isMultiLine = multiLine.count(endCond) != 0;
}

void CAppParseRuleTable::AddExcludes(Plan& plan) {
    for (const auto& pattern : m_definition->excludeLines) {
        if (pattern.empty()) continue;
        auto regex = GetCachedRegex(ExcludeRegex(pattern), CAppRegex::RuleFlags);
        if (regex) plan.excludes.push_back(std::move(regex));
    }
}
