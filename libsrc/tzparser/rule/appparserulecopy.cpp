// Clones and the cache of compiled expressions.
//
// A clone shares the definition half and the expressions that the definition compiled; what it
// compiles itself goes into a map of its own. So a clone of a tree that was never parsed copies a
// few pointers a rule.
//
// The cache of a tree sits at its root: a rule asks its parent first, and only the root stores. A
// pattern that doesn't compile isn't remembered at all; each rule on the way down tries it again
// and says so on the debugger output.
#include "host/runtime/diagnostics.h"
#include "tzparser/rule/appparserule.h"

CAppParseRule* CAppParseRule::Clone(CAppParseRule* parent) {
    std::unique_ptr<CAppParseRule> copy(CreateObject(parent));
    if (!CopyTo(copy.get())) return nullptr;
    return copy.release();
}

bool CAppParseRule::CopyTo(CAppParseRule* target) {
    if (target == nullptr || target->m_ruleType != m_ruleType) return false;
    CopyOwnFieldsTo(*target);
    OnCopyTo(target);
    // The constructors of some kinds make a first child; the copy has the source's children and no
    // other.
    target->m_children.clear();
    target->m_children.reserve(m_children.size());
    for (const auto& child : m_children) {
        std::unique_ptr<CAppParseRule> copy(child->CreateObject(target));
        if (!child->CopyTo(copy.get())) return false;
        target->AddChildRule(copy.release());
    }
    return true;
}

void CAppParseRule::CopyOwnFieldsTo(CAppParseRule& target) const {
    target.m_lineStatus = m_lineStatus;
    target.m_sharedRegex = m_sharedRegex;
    target.m_cachedRegex = m_cachedRegex;
    target.m_definition = m_definition;
    target.m_niStartLine = m_niStartLine;
    target.m_niEndLine = m_niEndLine;
    target.m_searchReplaceResult = m_searchReplaceResult;
    target.m_saveExBuiltInInfo = m_saveExBuiltInInfo;
}

bool CAppParseRule::OnCopyTo(CAppParseRule*) {
    return true;
}

std::shared_ptr<const CAppRegex> CAppParseRule::FindCachedRegex(const std::string& pattern) const {
    const auto own = m_cachedRegex.find(pattern);
    if (own != m_cachedRegex.end()) return *own;
    if (!m_sharedRegex) return nullptr;
    const auto shared =
        std::lower_bound(m_sharedRegex->begin(), m_sharedRegex->end(), pattern, ByText());
    const bool isKnown = shared != m_sharedRegex->end() && (*shared)->GetText() == pattern;
    return isKnown ? *shared : nullptr;
}

std::shared_ptr<const CAppRegex> CAppParseRule::GetCachedRegex(const std::string& pattern,
                                                               unsigned flags) {
    if (auto known = FindCachedRegex(pattern)) return known;
    if (m_parent != nullptr)
        if (auto known = m_parent->GetCachedRegex(pattern, flags)) return known;
    auto regex = std::make_shared<const CAppRegex>(pattern, flags);
    if (!regex->IsValid()) {
        DiagnosticOutput("Invalid regex expression:" + pattern + "\n");
        return nullptr;
    }
    SetCachedRegex(regex);
    return regex;
}

void CAppParseRule::SetCachedRegex(std::shared_ptr<const CAppRegex> regex) {
    if (regex) m_cachedRegex.insert(std::move(regex));
}

void CAppParseRule::ShareCachedRegex() {
    if (m_cachedRegex.empty()) return;
    if (m_sharedRegex) m_cachedRegex.insert(m_sharedRegex->begin(), m_sharedRegex->end());
    m_sharedRegex = std::make_shared<const RegexList>(m_cachedRegex.begin(), m_cachedRegex.end());
    m_cachedRegex.clear();
}
