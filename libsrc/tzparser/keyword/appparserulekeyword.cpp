// The rule as a definition: compiling KVPs, the names and types they declare.
#include "tzparser/keyword/appparserulekeyword.h"

#include "tzparser/pattern/parserpatternhelper.h"
#include "tzparser/rule/paragraphscope.h"
#include "tzparser/variable/appvariabledef.h"

#include <algorithm>

namespace {

// Statement variables carry this number in definition trees; no type has it.
constexpr auto StatementDataType = static_cast<AppDataType_e>(9);

bool IsBelowParagraph(const CAppParseRule* rule) {
    for (; rule != nullptr; rule = rule->GetParentRule())
        if (rule->GetRuleType() == RuleType_Paragraph) return true;
    return false;
}

void AppendNew(const std::vector<std::string>& from, std::vector<std::string>& names) {
    for (const auto& name : from)
        if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
}

}  // namespace

CAppParseRuleKeyWord::CAppParseRuleKeyWord(CAppParseRule* parent)
    : CAppParseRuleKeyWord(RuleType_KeyWord, parent) {}

CAppParseRuleKeyWord::CAppParseRuleKeyWord(RuleType ruleType, CAppParseRule* parent)
    : CAppParseRule(ruleType, parent), m_isSingle(!IsBelowParagraph(parent)) {}

CAppParseRuleKeyWord::~CAppParseRuleKeyWord() = default;

CAppParseRule* CAppParseRuleKeyWord::CreateObject(CAppParseRule* parent) {
    return new CAppParseRuleKeyWord(parent);
}

bool CAppParseRuleKeyWord::OnCopyTo(CAppParseRule* target) {
    auto* other = dynamic_cast<CAppParseRuleKeyWord*>(target);
    if (other == nullptr) return false;
    if (other == this) return true;
    other->m_definition = m_definition;
    other->m_values = m_values;
    other->m_longestSpan = m_longestSpan;
    other->m_runPlan = m_runPlan;
    other->m_slotPlan = nullptr;
    other->SetRuleModify();
    return true;
}

CAppParseRuleKeyWord::Definition& CAppParseRuleKeyWord::EditDefinition() {
    auto& definition = m_definition.Edit();
    definition.plan.reset();
    m_runPlan.reset();
    m_slotPlan = nullptr;
    return definition;
}

const CAppParseRuleKeyWord::Kvp* CAppParseRuleKeyWord::FindResolved(const std::string& kvp) const {
    const auto at = m_definition->resolved.find(kvp);
    return at != m_definition->resolved.end() ? &at->second : nullptr;
}

bool CAppParseRuleKeyWord::ExtractVariableNames(const std::string& kvp,
                                                std::vector<std::string>& names) {
    if (kvp.empty()) return false;
    if (const auto* known = FindResolved(kvp); known != nullptr && !known->names.empty()) {
        names = known->names;
        return true;
    }
    return ResolveKeywordLine(kvp, names);
}

// The one place where a KVP is compiled. What it says of a variable's type overrides what the
// document said. A KVP without variables comes here each time it is asked for; the definition is
// only written when something is new.
bool CAppParseRuleKeyWord::ResolveKeywordLine(const std::string& kvp,
                                              std::vector<std::string>& names) {
    names.clear();
    CParserPatternHelper helper;
    std::string error;
    if (!helper.Parse(kvp, error)) return false;
    auto groupNames = helper.GetVarNames();
    for (const auto& name : groupNames)
        if (name != DummyVariableName) names.push_back(name);
    const auto* former = names.empty() ? FindResolved(kvp) : nullptr;
    if (former != nullptr && former->RegexText() == helper.GetRegex() &&
        former->NamesWithDummy() == groupNames)
        return true;
    auto& definition = EditDefinition();
    for (auto& [name, type] : helper.GetVarTypesWithOrder())
        if (name != DummyVariableName) definition.variableTypes[name] = std::move(type);
    Kvp known;
    known.regexText = helper.GetRegex();
    known.names = names;
    known.hasDummy = groupNames != names;
    if (known.hasDummy) known.groupNames = std::move(groupNames);
    known.isMultiLine = helper.IsMultiLineRegex();
    definition.resolved[kvp] = std::move(known);
    std::string mlineName;
    Spans spans;
    if (helper.GetMlineVariables(mlineName, spans))
        definition.mlineDefine[mlineName] = std::move(spans);
    return true;
}

void CAppParseRuleKeyWord::Kvp::SetNames(std::vector<std::string> other) {
    if (!hasDummy) groupNames = std::move(names);
    hasDummy = true;
    names = std::move(other);
}

bool CAppParseRuleKeyWord::ParseStatement() {
    if (m_definition->statements.empty()) return true;
    auto& definition = EditDefinition();
    for (const auto& statement : definition.statements) {
        const auto equals = statement.find('=');
        std::string left = statement.substr(0, equals);
        std::string right = equals == std::string::npos ? statement : statement.substr(equals + 1);
        const auto colon = left.find(':');
        if (colon != std::string::npos)
            left.erase(std::min<std::size_t>(1, colon),
                       colon + 1 - std::min<std::size_t>(1, colon));
        definition.statementExpressions[left] = std::move(right);
    }
    return true;
}

std::string CAppParseRuleKeyWord::GetKVPRegex(const std::string& kvp) const {
    const auto* known = FindResolved(kvp);
    return known != nullptr ? known->RegexText() : std::string();
}

std::vector<std::string> CAppParseRuleKeyWord::GetKVPVariableDefineWithDummy(
    const std::string& kvp) const {
    const auto* known = FindResolved(kvp);
    return known != nullptr ? known->NamesWithDummy() : std::vector<std::string>();
}

std::string CAppParseRuleKeyWord::GetEnumVariableValue(const std::string& name) const {
    const auto at = m_definition->enumVariableValues.find(name);
    return at != m_definition->enumVariableValues.end() ? at->second : std::string();
}

// The keyword rules in the paragraphs above the one that this rule stands in, nearest paragraph
// first; those without any are left out. Other kinds between the paragraphs are passed over, or end
// the walk.
std::vector<std::vector<CAppParseRuleKeyWord*>> CAppParseRuleKeyWord::KeyWordsAbove(
    bool passesOthers) const {
    std::vector<std::vector<CAppParseRuleKeyWord*>> levels;
    const auto* inner = GetParentRule();
    if (inner == nullptr || inner->GetRuleType() != RuleType_Paragraph) return levels;
    for (const auto* outer = inner->GetParentRule(); outer != nullptr;
         outer = outer->GetParentRule()) {
        if (outer->GetRuleType() != RuleType_Paragraph) {
            if (passesOthers) continue;
            break;
        }
        std::vector<CAppParseRuleKeyWord*> rules;
        for (const auto& child : outer->Children())
            if (auto* rule = dynamic_cast<CAppParseRuleKeyWord*>(child.get()))
                rules.push_back(rule);
        if (!rules.empty()) levels.push_back(std::move(rules));
    }
    return levels;
}

std::string CAppParseRuleKeyWord::OwnVariableType(const std::string& name) const {
    const auto at = m_definition->variableTypes.find(name);
    return at != m_definition->variableTypes.end() ? at->second : std::string();
}

// A rule in a paragraph inside a paragraph knows the types of the outer paragraphs' keyword rules
// too. Each of those would ask the ones above it before its neighbour is asked, so the first of
// every paragraph come first, upward, then the others from the top down. A rule that finds nothing
// tries the name with a "$" in front.
std::string CAppParseRuleKeyWord::GetVariableType(const std::string& name) const {
    if (m_definition->variableTypes.count(name) != 0) return OwnVariableType(name);
    const auto levels = KeyWordsAbove(false);
    const bool triesDollar = !name.empty() && name.front() != '$';
    const auto withDollar = triesDollar ? "$" + name : name;
    for (const auto& rules : levels)
        if (auto type = rules.front()->OwnVariableType(name); !type.empty()) return type;
    for (auto level = levels.rbegin(); level != levels.rend(); ++level) {
        for (const auto* rule : *level) {
            auto type = rule->OwnVariableType(name);
            if (type.empty()) type = rule->OwnVariableType(withDollar);
            if (!type.empty()) return type;
        }
    }
    return triesDollar ? GetVariableType(withDollar) : std::string();
}

std::vector<std::string> CAppParseRuleKeyWord::OwnVariableNames() {
    std::vector<std::string> kvps = m_definition->kvps;
    InsertParentStartExpression(kvps, true);
    std::vector<std::string> result;
    std::vector<std::string> names;
    for (const auto& kvp : kvps)
        if (ExtractVariableNames(kvp, names)) AppendNew(names, result);
    return result;
}

std::vector<std::string> CAppParseRuleKeyWord::GetVariableNames() {
    auto result = OwnVariableNames();
    AppendOuterVariableNames(result);
    AppendKeywordVariables(result);
    return result;
}

// Each rule above would add the names of those above it before its neighbour's: hence the first of
// every paragraph upward, then what is left from the top down.
void CAppParseRuleKeyWord::AppendOuterVariableNames(std::vector<std::string>& names) const {
    const auto levels = KeyWordsAbove(true);
    for (const auto& rules : levels) AppendNew(rules.front()->OwnVariableNames(), names);
    for (auto level = levels.rbegin(); level != levels.rend(); ++level) {
        for (auto* rule : *level) {
            if (rule != level->front()) AppendNew(rule->OwnVariableNames(), names);
            std::vector<std::string> builtIn;
            rule->AppendKeywordVariables(builtIn);
            AppendNew(builtIn, names);
        }
    }
}

void CAppParseRuleKeyWord::AppendKeywordVariables(std::vector<std::string>&) {}

IParagraphScope* CAppParseRuleKeyWord::GetParagraphParent() {
    auto* parent = GetParentRule();
    if (parent == nullptr || parent->GetRuleType() != RuleType_Paragraph) return nullptr;
    return parent->AsParagraphScope();
}

const IParagraphScope* CAppParseRuleKeyWord::GetParagraphParent() const {
    const auto* parent = GetParentRule();
    if (parent == nullptr || parent->GetRuleType() != RuleType_Paragraph) return nullptr;
    return parent->AsParagraphScope();
}

bool CAppParseRuleKeyWord::IsFirstChildOfParagraph() const {
    const auto* parent = GetParentRule();
    return parent != nullptr && parent->GetRuleType() == RuleType_Paragraph && !parent->IsLeaf() &&
           parent->Children().front().get() == this;
}

// The first keyword rule of a paragraph also reads what the paragraph's own start and identifying
// lines declare.
void CAppParseRuleKeyWord::InsertParentStartExpression(std::vector<std::string>& kvps,
                                                       bool withParentLine) const {
    if (!IsFirstChildOfParagraph()) return;
    const auto* paragraph = GetParagraphParent();
    if (paragraph == nullptr) return;
    auto lines = paragraph->GetIDLines();
    if (withParentLine && !paragraph->GetParentLine().empty())
        lines.insert(lines.begin(), paragraph->GetParentLine());
    kvps.insert(kvps.begin(), lines.begin(), lines.end());
}

const std::set<std::string>& CAppParseRuleKeyWord::UsePreVars() const {
    static const std::set<std::string> none;
    const auto* paragraph = GetParagraphParent();
    return paragraph != nullptr && paragraph->IsUsePreVars() ? paragraph->GetUsePreVars() : none;
}

void CAppParseRuleKeyWord::FillAllVariables(std::set<std::string>& names) const {
    for (const auto& entry : m_definition->variableTypes) names.insert(entry.first);
}

bool CAppParseRuleKeyWord::AddToVariableTree(CAppVariableDef* parent) {
    std::vector<std::string> names;
    const auto kvps = m_definition->kvps;
    for (const auto& kvp : kvps) {
        names.clear();
        ExtractVariableNames(kvp, names);
        for (const auto& name : names) {
            const auto type = m_definition->variableTypes.find(name);
            const bool known = type != m_definition->variableTypes.end();
            AddDefinition(parent, name,
                          CParserPatternHelper::GetDataType(known ? type->second : std::string()));
        }
    }
    ParseStatement();
    for (const auto& entry : m_definition->statementExpressions)
        AddDefinition(parent, entry.first, StatementDataType);
    return true;
}

void CAppParseRuleKeyWord::AddDefinition(CAppVariableDef* parent, const std::string& name,
                                         AppDataType_e type) const {
    auto def = std::make_unique<CAppVariableDef>(parent, name, type, AppVariableType_Parser, "");
    if (parent->AddChild(def.get())) def.release();
}
