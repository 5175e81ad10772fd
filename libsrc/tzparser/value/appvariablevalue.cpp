// Reading a tree.
#include "tzparser/value/appvariablevalue.h"

#include "tzparser/variable/appvariabledef.h"

#include <string_view>

#include <boost/container/small_vector.hpp>

namespace {

// A name without its leading dollar signs; a name of dollar signs only stays.
std::string_view WithoutDollars(std::string_view name) {
    const auto begin = name.find_first_not_of('$');
    return begin == std::string_view::npos ? name : name.substr(begin);
}

}  // namespace

const std::string& CAppVariableValue::GetName() const {
    static const std::string none;
    return m_varDef != nullptr ? m_varDef->GetName() : none;
}

AppDataType_e CAppVariableValue::GetDataType() const {
    return m_varDef != nullptr ? m_varDef->GetDataType() : AppDataType_None;
}

std::string CAppVariableValue::GetVariableFullName() const {
    constexpr std::size_t usualDepth = 4;
    boost::container::small_vector<std::string_view, usualDepth> parts;
    std::size_t length = 0;
    for (const auto* node = this; node != nullptr; node = node->m_parentValue) {
        if (node->GetDataType() == AppDataType_Parsing) continue;
        parts.push_back(WithoutDollars(node->GetName()));
        length += parts.back().size() + 1;
    }
    std::string name;
    name.reserve(length);
    for (auto part = parts.rbegin(); part != parts.rend(); ++part) {
        if (part != parts.rbegin()) name.push_back('.');
        name.append(*part);
    }
    return name;
}

std::vector<CAppVariableValue*> CAppVariableValue::Pointers(const Nodes& nodes) {
    std::vector<CAppVariableValue*> pointers;
    pointers.reserve(nodes.size());
    for (const auto& node : nodes) pointers.push_back(node.get());
    return pointers;
}

int CAppVariableValue::GetValueCount() const {
    if (GetDataType() != AppDataType_Table) return static_cast<int>(m_values.Count());
    for (const auto& child : m_childValues)
        if (!child->m_values.IsEmpty()) return static_cast<int>(child->m_values.Count());
    return 0;
}

CAppTextLet* CAppVariableValue::GetVariableValue(int index) {
    const int i = GetDataType() == AppDataType_Array ? index : 0;
    if (i < 0 || static_cast<std::size_t>(i) >= m_values.Count()) return nullptr;
    return &m_values.Lets()[static_cast<std::size_t>(i)];
}

std::optional<std::string_view> CAppVariableValue::GetVariableText(int index) const {
    const int i = GetDataType() == AppDataType_Array ? index : 0;
    if (i < 0 || static_cast<std::size_t>(i) >= m_values.Count()) return std::nullopt;
    return m_values.Text(static_cast<std::size_t>(i));
}

CAppVariableValue* CAppVariableValue::GetChildByName(const std::string& name) const {
    for (const auto& child : m_childValues)
        if (child->GetName() == name) return child.get();
    return nullptr;
}

CAppVariableValue* CAppVariableValue::GetChildValueByName(const std::string& name) {
    auto* node = this;
    if (name.empty()) return node;
    for (std::size_t begin = 0; node != nullptr;) {
        const auto end = name.find('.', begin);
        node =
            node->GetChildByName(name.substr(begin, end == std::string::npos ? end : end - begin));
        if (end == std::string::npos) break;
        begin = end + 1;
    }
    return node;
}

CAppVariableValue* CAppVariableValue::GetValueByName(const std::string& name) {
    const auto dot = name.find('.');
    if (name.compare(0, dot, GetName()) != 0) return nullptr;
    return GetChildValueByName(dot == std::string::npos ? std::string() : name.substr(dot + 1));
}

const CAppVariableValue* CAppVariableValue::GetRoot() const {
    const auto* node = this;
    while (node->m_parentValue != nullptr) node = node->m_parentValue;
    return node;
}

CAppVariableValue* CAppVariableValue::GetValueByDef(const CAppVariableDef* def) const {
    const auto* root = GetRoot();
    if (!root->m_valueByDef) {
        auto nodes = std::make_unique<NodeByDef>();
        std::vector<const CAppVariableValue*> pending{root};
        while (!pending.empty()) {
            const auto* node = pending.back();
            pending.pop_back();
            for (const auto& child : node->m_childValues) {
                nodes->emplace(child->m_varDef, child.get());
                pending.push_back(child.get());
            }
        }
        root->m_valueByDef = std::move(nodes);
    }
    const auto at = root->m_valueByDef->find(def);
    return at != root->m_valueByDef->end() ? at->second : nullptr;
}

std::map<std::string, CAppVariableValue*> CAppVariableValue::GetTableChildValues() const {
    std::map<std::string, CAppVariableValue*> columns;
    for (const auto& child : m_childValues)
        if (child->GetDataType() == AppDataType_Array) columns[child->GetName()] = child.get();
    return columns;
}

void CAppVariableValue::ClearValue(bool bChildren) {
    std::vector<CAppVariableValue*> pending{this};
    while (!pending.empty()) {
        auto* node = pending.back();
        pending.pop_back();
        node->m_values.Clear();
        if (!bChildren) continue;
        for (const auto& child : node->m_childValues) pending.push_back(child.get());
    }
}
