#include "tzparser/variable/siblingnames.h"

namespace {

// Up to here comparing with each sibling costs less than keeping a set of names.
constexpr std::size_t kFewChildren = 16;

}  // namespace

bool IsNameOrAlternative(std::string_view childName, std::string_view name) {
    if (childName == name) return true;
    if (name.substr(0, 1) == "$") return childName == WithoutDollars(name);
    return childName.size() == name.size() + 1 && childName[0] == '$' &&
           childName.substr(1) == name;
}

SiblingNames::SiblingNames(const CAppVariableDef& node, std::size_t adding)
    : m_node(node), m_isWide(node.GetChildCount() + adding > kFewChildren) {
    if (!m_isWide) return;
    for (const auto& sibling : node.GetChildren()) m_names.insert(sibling->GetName());
}

bool SiblingNames::Claim(const std::string& name) {
    if (!m_isWide) return m_node.GetChild(name) == nullptr;
    if (!name.empty()) {
        const std::string alternative =
            name[0] == '$' ? std::string(WithoutDollars(name)) : '$' + name;
        if (m_names.count(name) > 0 || m_names.count(alternative) > 0) return false;
    }
    m_names.insert(name);
    return true;
}
