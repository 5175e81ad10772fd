// A walk from the top down with the open objects on a stack of its own; tables and arrays have no
// nodes with children below them, so each is written in one go.
#include "valueformat.h"

#include "tzparser/value/appvariablevalue.h"
#include "tzparser/variable/appvariablearraydef.h"

#include "jsonlayout.h"
#include "scalarjson.h"

#include <algorithm>

namespace {

std::string_view JsonName(const CAppVariableValue& node) {
    std::string_view name = node.GetName();
    name.remove_prefix(std::min(name.find_first_not_of('$'), name.size()));
    return name;
}

// The type of a node's values: of a column or another array that of its elements.
AppDataType_e ElementType(const CAppVariableValue& node) {
    const auto* array = dynamic_cast<const CAppVariableArrayDef*>(node.GetVarDef());
    return array != nullptr ? array->GetBaseType() : node.GetDataType();
}

bool IsObject(const CAppVariableValue& node) {
    return node.GetDataType() == AppDataType_Parsing || node.GetVarDef()->IsNode() ||
           !node.GetChildValues().empty();
}

// Makes no lets for good: a result is mostly written once and then gone.
void WriteScalar(const CAppVariableValue& node, AppDataType_e type, std::size_t index,
                 CJsonLayout& json) {
    if (index < node.GetLetCount())
        AppendScalar(json.Value(), type, node.CopyLet(index));
    else
        AppendScalarAt(json.Value(), type, {}, 0);
}

void WriteRow(const std::vector<CAppVariableValue*>& columns, std::size_t row, CJsonLayout& json) {
    json.Begin('{');
    for (const auto* column : columns) {
        json.Key(JsonName(*column));
        WriteScalar(*column, ElementType(*column), row, json);
    }
    json.End();
}

// As many rows as the longest column has cells: a result shows all that was found.
void WriteTable(const CAppVariableValue& table, CJsonLayout& json) {
    const auto columns = table.GetChildValues();
    std::size_t rows = 0;
    for (const auto* column : columns) rows = std::max(rows, column->GetLetCount());
    json.Begin('[');
    for (std::size_t row = 0; row < rows; ++row) WriteRow(columns, row, json);
    json.End();
}

void WriteArray(const CAppVariableValue& array, CJsonLayout& json) {
    const auto type = ElementType(array);
    json.Begin('[');
    for (std::size_t i = 0; i < array.GetLetCount(); ++i) WriteScalar(array, type, i, json);
    json.End();
}

void WriteLeaf(const CAppVariableValue& node, CJsonLayout& json) {
    switch (node.GetDataType()) {
        case AppDataType_Table:
            WriteTable(node, json);
            break;
        case AppDataType_Array:
            WriteArray(node, json);
            break;
        default:
            WriteScalar(node, node.GetDataType(), 0, json);
    }
}

struct OpenObject {
    explicit OpenObject(const CAppVariableValue& node) : members(node.GetChildValues()) {}

    std::vector<CAppVariableValue*> members;
    std::size_t next = 0;
};

}  // namespace

void WriteValues(const CAppVariableValue& root, COutputWriter& out) {
    CJsonLayout json(out);
    std::vector<OpenObject> open;
    json.Begin('{');
    open.emplace_back(root);
    while (!open.empty()) {
        auto& object = open.back();
        if (object.next == object.members.size()) {
            json.End();
            open.pop_back();
            continue;
        }
        const auto& node = *object.members[object.next++];
        json.Key(JsonName(node));
        if (node.GetDataType() != AppDataType_Table && IsObject(node)) {
            json.Begin('{');
            open.emplace_back(node);
        } else {
            WriteLeaf(node, json);
        }
    }
}
