#pragma once

#include "tzparser/variable/appvariablearraydef.h"
#include "tzparser/variable/appvariabledef.h"
#include "tzparser/variable/appvariabletabledef.h"

#include <memory>
#include <string>

// Short forms for the tests of definition trees.

/// "name/dataType/varType" of a node, "[...]" with its children behind it, "{...}" with its
/// properties.
inline std::string Dump(const CAppVariableDef& node) {
    std::string dump = node.GetName() + "/" + std::to_string(node.GetDataType()) + "/" +
                       std::to_string(node.GetVarType());
    if (!node.GetDesc().empty()) dump += "'" + node.GetDesc() + "'";
    if (const auto* array = dynamic_cast<const CAppVariableArrayDef*>(&node)) {
        dump += "<" + std::to_string(array->GetBaseType()) + ">";
    }
    if (dynamic_cast<const CAppVariableTableDef*>(&node) != nullptr) dump += "T";
    std::string children;
    for (const auto& child : node.GetChildren()) children += " " + Dump(*child);
    if (!children.empty()) dump += "[" + children.substr(1) + "]";
    for (const CAppVariableDef* property : node.GetBuiltInProperties()) {
        dump += "{" + property->GetName() + "}";
    }
    return dump;
}

/// Links a node under its parent, with its parent set; the parent must take it.
template <class Def>
Def* Link(CAppVariableDef& parent, std::unique_ptr<Def> child) {
    Def* raw = child.release();
    raw->SetParent(&parent);
    if (!parent.AddChild(raw)) {
        delete raw;
        return nullptr;
    }
    return raw;
}

inline CAppVariableDef* Add(CAppVariableDef& parent, const std::string& name,
                            int dataType = AppDataType_String,
                            int varType = AppVariableType_Parser) {
    return Link(parent, std::make_unique<CAppVariableDef>(
                            &parent, name, static_cast<AppDataType_e>(dataType),
                            static_cast<AppVariableType_e>(varType), ""));
}

inline CAppVariableTableDef* AddTable(CAppVariableDef& parent, const std::string& name) {
    return Link(parent, std::make_unique<CAppVariableTableDef>(&parent, name,
                                                               AppVariableType_Parser, "", false));
}

inline CAppVariableArrayDef* AddColumn(CAppVariableDef& parent, const std::string& name) {
    return Link(parent,
                std::make_unique<CAppVariableArrayDef>(&parent, name, AppVariableType_Parser, ""));
}
