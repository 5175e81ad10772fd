// Copying a tree, and giving a tree a definition of its own. The copy of a tree has a definition of
// its own, and its nodes are matched to it by name: a node whose definition isn't there is left out
// with all below it. Properties are copied, not shared: either tree may die first.
#include "tzparser/value/appvariablevalue.h"
#include "tzparser/variable/appvariabletabledef.h"

#include <algorithm>

namespace {

using DefinitionMap = std::unordered_map<const CAppVariableDef*, const CAppVariableDef*>;

const CAppVariableDef* FindByName(const std::vector<CAppVariableDef*>& definitions,
                                  const std::string& name) {
    for (const auto* def : definitions)
        if (def->GetName() == name) return def;
    return nullptr;
}

std::vector<CAppVariableDef*> PropertiesOf(const CAppVariableDef& def) {
    const auto* table = dynamic_cast<const CAppVariableTableDef*>(&def);
    return table != nullptr ? table->GetProperties() : std::vector<CAppVariableDef*>();
}

void PairInOrder(const std::vector<CAppVariableDef*>& from, const std::vector<CAppVariableDef*>& to,
                 DefinitionMap& pairs) {
    for (std::size_t i = 0; i < std::min(from.size(), to.size()); ++i) pairs[from[i]] = to[i];
}

// Each definition of a tree with its counterpart in a deep copy. A copy leaves children out whose
// name was taken; these have none.
DefinitionMap PairWithCopy(const CAppVariableDef& from, const CAppVariableDef& to) {
    DefinitionMap pairs;
    std::vector<std::pair<const CAppVariableDef*, const CAppVariableDef*>> pending{{&from, &to}};
    while (!pending.empty()) {
        const auto [source, copy] = pending.back();
        pending.pop_back();
        pairs[source] = copy;
        PairInOrder(PropertiesOf(*source), PropertiesOf(*copy), pairs);
        PairInOrder(source->GetBuiltInProperties(), copy->GetBuiltInProperties(), pairs);
        auto next = copy->GetChildren().begin();
        for (const auto& child : source->GetChildren()) {
            if (next == copy->GetChildren().end()) break;
            if ((*next)->GetName() != child->GetName()) continue;
            pending.emplace_back(child.get(), (next++)->get());
        }
    }
    return pairs;
}

}  // namespace

// What is shared stays alive, so that pointers handed out, and nodes without a counterpart in the
// copy, stay valid.
void CAppVariableValue::MakeDefinitionWritable() {
    auto* root = this;
    while (root->m_parentValue != nullptr) root = root->m_parentValue;
    if (!root->m_sharedDef || root->m_ownDef) return;
    std::unique_ptr<CAppVariableDef> own(root->m_sharedDef->Copy(true));
    const auto pairs = PairWithCopy(*root->m_sharedDef, *own);
    root->m_ownDef = std::move(own);
    root->m_valueByDef.reset();
    std::vector<CAppVariableValue*> pending{root};
    while (!pending.empty()) {
        auto* node = pending.back();
        pending.pop_back();
        const auto at = pairs.find(node->m_varDef);
        if (at != pairs.end()) node->m_varDef = at->second;
        for (const auto* below :
             {&node->m_childValues, &node->m_properties, &node->m_builtInProperties})
            for (const auto& child : *below) pending.push_back(child.get());
    }
}

CAppVariableValue::CAppVariableValue(const CAppVariableValue* other) {
    if (other == nullptr || other->m_varDef == nullptr) return;
    m_ownDef.reset(other->m_varDef->Copy(true));
    m_varDef = m_ownDef.get();
    m_rowCountLimitForHash = other->m_rowCountLimitForHash;
    CopyBelow(*other);
}

void CAppVariableValue::CopyBelow(const CAppVariableValue& other) {
    struct Pair {
        CAppVariableValue* node;
        const CAppVariableValue* source;
    };
    std::vector<Pair> pending{{this, &other}};
    while (!pending.empty()) {
        const auto [node, source] = pending.back();
        pending.pop_back();
        node->m_values = source->m_values;
        node->CopyProperties(*source);
        for (const auto& child : source->m_childValues) {
            const auto* def = node->m_varDef->GetChild(child->GetName());
            if (def == nullptr) continue;
            node->m_childValues.push_back(MakeNode(def, node));
            pending.push_back({node->m_childValues.back().get(), child.get()});
        }
    }
}

void CAppVariableValue::CopyProperties(const CAppVariableValue& other) {
    const auto copy = [this](const Nodes& from, const std::vector<CAppVariableDef*>& definitions,
                             Nodes& to) {
        for (const auto& property : from) {
            const auto* def = FindByName(definitions, property->GetName());
            if (def == nullptr) continue;
            auto node = MakeNode(def, property->m_parentValue != nullptr ? this : nullptr);
            node->m_values = property->m_values;
            node->m_rowCountLimitForHash = property->m_rowCountLimitForHash;
            to.push_back(std::move(node));
        }
    };
    copy(other.m_properties, PropertiesOf(*m_varDef), m_properties);
    copy(other.m_builtInProperties, m_varDef->GetBuiltInProperties(), m_builtInProperties);
}
