// The tree: children, levels, look-ups and what the base answers for kinds that have nothing to
// say.
#include "tzparser/rule/appparserule.h"

#include "tzparser/pattern/parserpatternhelper.h"
#include "tzparser/rule/appparserulesample.h"

#include <algorithm>

namespace {

bool IsBlockKind(RuleType type) {
    return type == RuleType_Table || type == RuleType_Paragraph;
}

// Filters and design readers don't indent what stands below them, nor does a block inside a block.
int LevelBelow(const CAppParseRule* parent, RuleType type) {
    if (parent == nullptr) return 0;
    const auto parentType = parent->GetRuleType();
    const bool same = parentType == RuleType_Filter || parentType == RuleType_DesignReader ||
                      (IsBlockKind(type) && IsBlockKind(parentType));
    return parent->GetRuleLevel() + (same ? 0 : 1);
}

const std::string& EmptyText() {
    static const std::string empty;
    return empty;
}

}  // namespace

CAppParseRule::CAppParseRule(RuleType ruleType, CAppParseRule* parent)
    : m_parent(parent), m_ruleType(ruleType), m_ruleLevel(LevelBelow(parent, ruleType)) {}

CAppParseRule::~CAppParseRule() = default;

bool CAppParseRule::LoadParseRule(const hxJson::Value&) {
    return true;
}

bool CAppParseRule::SaveParseRule(hxJson::Value&) {
    return true;
}

bool CAppParseRule::Parse(const std::string& text, int startLine, int endLine,
                          IAppVariableCallback* callback) {
    for (const auto& child : m_children) child->Parse(text, startLine, endLine, callback);
    return true;
}

bool CAppParseRule::AddChildRule(CAppParseRule* child) {
    if (child == nullptr) return true;
    m_children.emplace_back(child);
    SetRuleModify();
    return true;
}

bool CAppParseRule::DelChildRule(CAppParseRule* child) {
    const auto at =
        std::find_if(m_children.begin(), m_children.end(),
                     [child](const auto& candidate) { return candidate.get() == child; });
    if (at == m_children.end()) return true;
    m_children.erase(at);
    SetRuleModify();
    return true;
}

void CAppParseRule::DeleteChildren() {
    m_children.clear();
}

void CAppParseRule::GetChildRules(std::vector<CAppParseRule*>& children) {
    children.clear();
    children.reserve(m_children.size());
    for (const auto& child : m_children) children.push_back(child.get());
}

std::vector<CAppTextLet> CAppParseRule::GetVariableValue(const std::string& name) {
    return FindValuesBelow(name).TakeLets();
}

CLetList CAppParseRule::FindValues(const std::string& name) {
    return CLetList(GetVariableValue(name));
}

CLetList CAppParseRule::FindValuesBelow(const std::string& name) {
    for (const auto& child : m_children) {
        auto values = child->FindValues(name);
        if (!values.IsEmpty()) return values;
    }
    return {};
}

CAppParseRule* CAppParseRule::GetChildRuleByVariableName(const std::string& name) {
    for (const auto& child : m_children)
        if (auto* rule = child->GetChildRuleByVariableName(name)) return rule;
    return nullptr;
}

CAppParseRule* CAppParseRule::GetChildRuleByRuleId(const std::string& id) {
    if (id.empty()) return nullptr;
    if (m_definition->ruleGuid == id) return this;
    for (const auto& child : m_children)
        if (child->m_definition->ruleGuid == id) return child.get();
    return nullptr;
}

bool CAppParseRule::IsNoneExist() {
    return false;
}

void CAppParseRule::ClearVariablePosition() {}

void CAppParseRule::SetRuleModify() {
    if (m_parent != nullptr) m_parent->SetRuleModify();
}

CAppParseRule* CAppParseRule::GetRootParentRule() {
    auto* rule = this;
    while (rule->m_parent != nullptr) rule = rule->m_parent;
    return rule;
}

const CAppParseRule* CAppParseRule::GetRootParentRule() const {
    const auto* rule = this;
    while (rule->m_parent != nullptr) rule = rule->m_parent;
    return rule;
}

CAppParseRuleSample* CAppParseRule::GetSampleRoot() {
    return GetRootParentRule()->AsSample();
}

const CAppParseRuleSample* CAppParseRule::GetSampleRoot() const {
    return GetRootParentRule()->AsSample();
}

AppDataType_e CAppParseRule::GetDataType(const std::string& typeName) {
    return CParserPatternHelper::GetDataType(typeName);
}

bool CAppParseRule::HasChildParser(int) const {
    return std::any_of(m_children.begin(), m_children.end(), [](const auto& child) {
        return child->m_ruleType == RuleType_Script || child->HasChildParser(0);
    });
}

bool CAppParseRule::GetVariableLine(const std::string&, int&) {
    return false;
}

CAppParseRuleSample* CAppParseRule::AsSample() {
    return nullptr;
}

const CAppParseRuleSample* CAppParseRule::AsSample() const {
    return nullptr;
}

IParagraphScope* CAppParseRule::AsParagraphScope() {
    return nullptr;
}

const IParagraphScope* CAppParseRule::AsParagraphScope() const {
    return nullptr;
}

void CAppParseRule::GetTableKeys(std::set<std::string>&) const {}
void CAppParseRule::AddTableKey(const std::string&) {}
void CAppParseRule::GetTableKeysEx(std::set<std::string>&) const {}
int CAppParseRule::GetTableCmpColumns(std::set<std::string>&) const {
    return 0;
}
void CAppParseRule::SetTableCmpColumns(std::set<std::string>&) {}
bool CAppParseRule::IsTableCmpSort() const {
    return false;
}
void CAppParseRule::SetTableCmpSort(bool) {}
int CAppParseRule::GetTableRowCount() const {
    return -1;
}
void CAppParseRule::SetTableRowCount(int) {}
const std::string& CAppParseRule::GetTableHash() const {
    return EmptyText();
}
void CAppParseRule::SetTableHash(const std::string&) {}
void CAppParseRule::GetTableInterfaceKeys(std::set<std::string>&) const {}
void CAppParseRule::AddTableInterfaceKey(const std::string&) {}
