#include "host/json/hxjson.h"
#include "tzparser/variable/appvariabledef.h"
#include "tzparser/variable/definitionkeys.h"
#include "tzparser/variable/siblingnames.h"

#include <utility>

// The JSON form of a definition tree, read and written from the top down with an explicit stack: a
// document may be deeper than the thread's own stack.

bool CAppVariableDef::LoadVariable(const hxJson::Value&) {
    return true;
}

bool CAppVariableDef::SaveVariable(hxJson::Value&) {
    return true;
}

void CAppVariableDef::LoadFields(const hxJson::Value& value) {
    m_dataType = static_cast<AppDataType_e>(value[DefinitionKeys::kDataType].asInt());
    m_varType = static_cast<AppVariableType_e>(value[DefinitionKeys::kVarType].asInt());
    m_name = value[DefinitionKeys::kName].asString();
    m_desc = value[DefinitionKeys::kDesc].asString();
}

void CAppVariableDef::SaveFields(hxJson::Value& value) const {
    value[DefinitionKeys::kDataType] = static_cast<int>(m_dataType);
    value[DefinitionKeys::kVarType] = static_cast<int>(m_varType);
    value[DefinitionKeys::kName] = m_name;
    value[DefinitionKeys::kDesc] = m_desc;
}

bool CAppVariableDef::Load(const hxJson::Value& value) {
    struct Pending {
        CAppVariableDef* node;
        const hxJson::Value* value;
    };
    LoadFields(value);
    std::vector<Pending> pending = {{this, &value}};
    while (!pending.empty()) {
        const auto [node, nodeValue] = pending.back();
        pending.pop_back();
        if (node != this) node->LoadVariable(*nodeValue);
        const hxJson::Value& childs = (*nodeValue)[DefinitionKeys::kChilds];
        if (!childs.isArray() || childs.empty()) continue;
        SiblingNames names(*node, childs.size());
        for (const hxJson::Value& element : childs) {
            const hxJson::Value& childValue = element[DefinitionKeys::kVariable];
            // A duplicate is nobody's child, so nothing of it is read.
            if (!names.Claim(childValue[DefinitionKeys::kName].asString())) continue;
            const int dataType = childValue[DefinitionKeys::kDataType].asInt();
            std::unique_ptr<CAppVariableDef> made(
                CreateVariableDefByType(static_cast<AppDataType_e>(dataType)));
            made->m_parent = node;
            node->LinkChild(made.get());
            CAppVariableDef* child = made.release();
            // The child's own fields are read after it was linked, so under a table the document's
            // type wins over the type of a column.
            child->LoadFields(childValue);
            pending.push_back({child, &childValue});
        }
    }
    return LoadVariable(value);
}

bool CAppVariableDef::Save(hxJson::Value& value) {
    struct Pending {
        CAppVariableDef* node;
        hxJson::Value* value;
    };
    std::vector<Pending> pending = {{this, &value}};
    while (!pending.empty()) {
        const auto [node, nodeValue] = pending.back();
        pending.pop_back();
        node->SaveFields(*nodeValue);
        if (node != this) node->SaveVariable(*nodeValue);
        hxJson::Value& childs = (*nodeValue)[DefinitionKeys::kChilds];
        childs = hxJson::Value();
        for (std::size_t index = 0; index < node->m_children.size(); ++index) {
            childs.append(hxJson::Value(hxJson::objectValue));
        }
        // Elements stay where they are only once the array has its full length.
        std::size_t index = 0;
        for (hxJson::Value& element : childs) {
            pending.push_back({node->m_children[index].get(), &element[DefinitionKeys::kVariable]});
            ++index;
        }
    }
    return SaveVariable(value);
}
