// Copying a tree. The copy has a definition of its own, and its nodes are matched to it by name: a
// node whose definition isn't there is left out with all below it. Properties are copied, not
// shared: either tree may die first.
#include "tzparser/value/appvariablevalue.h"
#include "tzparser/variable/appvariabletabledef.h"

namespace {

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

}  // namespace

CAppVariableValue::CAppVariableValue(const CAppVariableValue* other) {
    if (other == nullptr || other->m_varDef == nullptr) return;
    m_ownedDef.reset(other->m_varDef->Copy(true));
    m_varDef = m_ownedDef.get();
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
