#include "host/text/asciicase.h"
#include "host/text/stlhelper.h"
#include "tzparser/variable/appvariabledef.h"
#include "tzparser/variable/siblingnames.h"

namespace {

bool IsStepNode(const CAppVariableDef& node) {
    const AppDataType_e dataType = node.GetDataType();
    return dataType == AppDataType_StepNode13 || dataType == AppDataType_Parsing ||
           dataType == AppDataType_StepNode15;
}

bool BeginsWith(std::string_view text, std::string_view beginning) {
    return AsciiEqualIgnoreCase(text.substr(0, beginning.size()), beginning);
}

}  // namespace

CAppVariableDef* CAppVariableDef::WalkDown(const std::string* begin, const std::string* end) {
    CAppVariableDef* node = this;
    for (const std::string* name = begin; name != end && node != nullptr; ++name) {
        node = node->GetChild(*name);
    }
    return node;
}

CAppVariableDef* CAppVariableDef::GetFirstStepOverNode(const std::vector<std::string>& path) {
    CAppVariableDef* node = FindVarNodeFromLayerName(path);
    if (node == nullptr) return nullptr;
    for (const auto& child : node->m_children) {
        if (IsStepNode(*child)) return child.get();
    }
    return nullptr;
}

CAppVariableDef* CAppVariableDef::GetNextStepOverNode(const std::vector<std::string>& path) {
    if (path.empty()) return nullptr;
    CAppVariableDef* node = WalkDown(path.data(), path.data() + path.size() - 1);
    if (node == nullptr) return nullptr;
    bool passedCurrent = false;
    for (const auto& child : node->m_children) {
        if (!IsStepNode(*child)) continue;
        if (passedCurrent) return child.get();
        passedCurrent = child->m_name == path.back();
    }
    return nullptr;
}

CAppVariableDef* CAppVariableDef::GetVarNodeFromLayerName(const std::string& name) {
    if (name.empty()) return nullptr;
    std::vector<std::string> path;
    StlHelper::splitString(name, ".", path);
    return FindVarNodeFromLayerName(path);
}

CAppVariableDef* CAppVariableDef::FindVarNodeFromLayerName(const std::vector<std::string>& path) {
    return WalkDown(path.data(), path.data() + path.size());
}

CAppVariableDef* CAppVariableDef::GetVarNodeFromPyVarName(const std::string& name) {
    // The nodes still to visit, the next one at the end.
    std::vector<CAppVariableDef*> pending;
    const auto pushChildren = [&](const CAppVariableDef& node) {
        for (auto child = node.m_children.rbegin(); child != node.m_children.rend(); ++child) {
            pending.push_back(child->get());
        }
    };
    pushChildren(*this);
    while (!pending.empty()) {
        CAppVariableDef* node = pending.back();
        pending.pop_back();
        if (node->HasGlobalName(name)) return node;
        pushChildren(*node);
    }
    return nullptr;
}

CAppVariableDef* CAppVariableDef::GetParentVar(AppDataType_e dataType) {
    CAppVariableDef* node = this;
    while (node != nullptr && node->m_dataType != dataType) node = node->m_parent;
    return node;
}

std::vector<CAppVariableDef*> CAppVariableDef::GetIntellisenseChilds(const std::string& filter) {
    const bool hasDollar = !filter.empty() && filter[0] == '$';
    const std::string alternative = hasDollar ? std::string(WithoutDollars(filter)) : '$' + filter;
    std::vector<CAppVariableDef*> offered;
    for (const auto& child : m_children) {
        if (child->m_varType == AppVariableType_Hidden) continue;
        if (BeginsWith(child->m_name, filter)) offered.push_back(child.get());
        if (filter.empty()) continue;
        // The second test is one of its own: what passes both is offered twice.
        if (BeginsWith(child->m_name, alternative)) offered.push_back(child.get());
    }
    return offered;
}
