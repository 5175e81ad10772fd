// The walk goes by a stack of its own, children pushed from the last to the first. The rules of a
// document's array stand in the tree in the same order from the first; where a rule made its first
// child by itself and the document has none for it, the document's rules stand one place further.
#include "tzparser/explain/rulewalk.h"

#include "tzparser/explain/kindexplain.h"
#include "tzparser/rule/rulekeys.h"

#include <stdexcept>

namespace {

bool IsKeyWordNode(const hxJson::Value& node) {
    return hxJson::Value(node[RuleKey::Type].asString()).asInt() == RuleType_KeyWord;
}

// The rule nodes of a "child" object.
class CNodeList {
public:
    explicit CNodeList(const hxJson::Value& holder) : m_rules(holder[RuleKey::ParseRule]) {}

    std::size_t Count() const {
        if (m_rules.isArray()) return m_rules.size();
        return m_rules.isObject() ? 1 : 0;
    }
    const hxJson::Value& Node(std::size_t i) const {
        return m_rules.isArray() ? m_rules[static_cast<unsigned>(i)] : m_rules;
    }
    std::string Path(const std::string& holder, std::size_t i) const {
        auto path = holder + "." + RuleKey::ParseRule;
        if (m_rules.isArray()) path += "[" + std::to_string(i) + "]";
        return path;
    }

private:
    const hxJson::Value& m_rules;
};

}  // namespace

void CRuleWalk::Explain(CAppParseRule& root, const hxJson::Value& document, const std::string& path,
                        int lineCount) {
    m_pending.push_back({&root, &document, path, path, -1,
                         std::make_shared<const ExplainRuns>(ExplainRuns{{0, lineCount}})});
    while (!m_pending.empty()) {
        const auto pending = std::move(m_pending.back());
        m_pending.pop_back();
        ExplainOne(pending);
    }
}

void CRuleWalk::ExplainOne(const Pending& pending) {
    const auto& explainer = FindExplainer(pending.rule->GetRuleType());
    const auto index = static_cast<int>(m_rules.size());
    auto& found = m_rules.emplace_back();
    found.parent = pending.parent;
    found.type = pending.rule->GetRuleType();
    found.kind = explainer.kind;
    found.name = explainer.name(*pending.rule);
    found.path = pending.path;
    m_indexes.emplace(pending.rule, index);
    CExplainScope scope(*pending.rule, found, *pending.runs, m_nearest);
    try {
        explainer.explain(scope);
    } catch (const std::runtime_error& error) {
        scope.Warn(std::string("the matcher gave up: ") + error.what());
    }
    PushChildren(pending, index, std::move(scope.Below()));
}

void CRuleWalk::PushChildren(const Pending& pending, int index, ExplainRuns&& runs) {
    const auto& children = pending.rule->Children();
    if (children.empty()) return;
    const auto shared = std::make_shared<const ExplainRuns>(std::move(runs));
    // Of what stands below a table only filters run.
    const auto noRuns = std::make_shared<const ExplainRuns>();
    const CNodeList nodes(*pending.document);
    const bool isOwnFirst = HasDefaultKeyWord(pending.rule->GetRuleType()) &&
                            (nodes.Count() == 0 || !IsKeyWordNode(nodes.Node(0)));
    for (auto i = children.size(); i-- > 0;) {
        static const hxJson::Value none;
        const bool mayRun = pending.rule->GetRuleType() != RuleType_Table ||
                            children[i]->GetRuleType() == RuleType_Filter;
        Pending child{children[i].get(), &none, pending.path,
                      pending.path,      index, mayRun ? shared : noRuns};
        const auto place = isOwnFirst ? i - 1 : i;
        if (!(isOwnFirst && i == 0) && place < nodes.Count()) {
            child.document = &nodes.Node(place)[RuleKey::Child];
            child.path = nodes.Path(pending.childPath, place);
            child.childPath = child.path + "." + RuleKey::Child;
        }
        m_pending.push_back(std::move(child));
    }
}

int CRuleWalk::IndexOf(const CAppParseRule* rule) const {
    const auto at = m_indexes.find(rule);
    return at != m_indexes.end() ? at->second : -1;
}
