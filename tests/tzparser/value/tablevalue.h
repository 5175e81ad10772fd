#pragma once

#include "tzparser/value/appvariablevalue.h"
#include "tzparser/variable/appvariablearraydef.h"
#include "tzparser/variable/appvariabletabledef.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

// Trees with tables, made by hand.

inline CAppVariableDef* AddDef(CAppVariableDef& parent, CAppVariableDef* child) {
    child->SetParent(&parent);
    EXPECT_TRUE(parent.AddChild(child));
    return child;
}

inline CAppVariableArrayDef* AddColumnDef(CAppVariableDef& parent, const std::string& name,
                                          AppDataType_e type) {
    auto* column = new CAppVariableArrayDef(nullptr, name, AppVariableType_Parser, "");
    column->SetBaseType(type);
    AddDef(parent, column);
    return column;
}

using Cells = std::vector<std::string>;

// A root "parser" with one table of text columns.
struct TableTree {
    std::shared_ptr<CAppVariableDef> def = std::make_shared<CAppVariableDef>(
        nullptr, "parser", AppDataType_Parsing, AppVariableType_Default, "");
    CAppVariableTableDef* table = nullptr;

    explicit TableTree(const std::vector<std::string>& columns, const std::string& name = "t") {
        table = new CAppVariableTableDef(nullptr, name, AppVariableType_Parser, "", false);
        AddDef(*def, table);
        for (const auto& column : columns) AddColumnDef(*table, column, AppDataType_String);
    }

    // A tree with a copy of the definition and the cells of each column.
    std::unique_ptr<CAppVariableValue> Value(const std::vector<Cells>& columns) const {
        auto root = std::make_unique<CAppVariableValue>(def.get(), true, nullptr, nullptr, 10);
        Fill(*root, columns);
        return root;
    }

    static CAppVariableValue& Table(const CAppVariableValue& root) {
        return *root.GetChildValues().front();
    }

    static void Fill(const CAppVariableValue& root, const std::vector<Cells>& columns) {
        const auto values = Table(root).GetChildValues();
        for (std::size_t column = 0; column < columns.size(); ++column)
            for (const auto& cell : columns[column])
                values.at(column)->GetValues().emplace_back(cell);
    }
};
