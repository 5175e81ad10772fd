// Tables in the variable tree. They hang at the root of what is parsed, whatever rules they are
// nested in; what the first rule of a name says about keys and comparison holds.
#include "tzparser/engine/tzparser.h"
#include "tzparser/table/appparseruletable.h"
#include "tzparser/variable/appdatatypehelper.h"
#include "tzparser/variable/appvariabletabledef.h"

namespace {

CAppVariableDef& FindAnchor(CAppVariableDef& def) {
    for (auto* node = &def; node != nullptr; node = node->GetParent())
        if (node->GetDataType() == AppDataType_Parsing) return *node;
    return def;
}

}  // namespace

std::set<std::string> CTzParser::CleanKeys(const std::set<std::string>& keys) {
    std::set<std::string> cleaned;
    for (const auto& key : keys) cleaned.insert(WithoutDollars(key));
    cleaned.erase(std::string());
    return cleaned;
}

CAppVariableDef& CTzParser::AddTable(CAppVariableDef& def, const TableSource& source) {
    auto& anchor = FindAnchor(def);
    if (auto* known = anchor.GetChild(source.name)) return *known;
    auto table = std::make_unique<CAppVariableTableDef>(&anchor, source.name,
                                                        AppVariableType_Parser, "", false);
    if (source.hasPythonName) table->SetPyName(GeneratePythonName(source.name));
    SetTableKeys(table.get(), source.keyVars);
    std::set<std::string> keys;
    std::set<std::string> interfaceKeys;
    source.rule.GetTableKeys(keys);
    source.rule.GetTableInterfaceKeys(interfaceKeys);
    SetTableKeys2(table.get(), keys, interfaceKeys);
    std::set<std::string> columns;
    source.rule.GetTableCmpColumns(columns);
    SetTableCmpProperty(table.get(), columns, source.rule.IsTableCmpSort());
    auto& added = *table;
    if (anchor.AddChild(table.get())) table.release();
    return added;
}

void CTzParser::SetTableKeys(CAppVariableTableDef* table, const std::set<std::string>& keys) {
    table->SetKeys(CleanKeys(keys));
}

void CTzParser::SetTableKeys2(CAppVariableTableDef* table, const std::set<std::string>& tableKeys,
                              const std::set<std::string>& interfaceKeys) {
    table->SetTableKeys(CleanKeys(tableKeys));
    table->SetIntefTableKeys(CleanKeys(interfaceKeys));
}

void CTzParser::SetTableCmpProperty(CAppVariableTableDef* table,
                                    const std::set<std::string>& columns, bool sort) {
    if (table == nullptr) return;
    table->SetTableCmpColumns(columns);
    table->SetTableCmpSort(sort);
}

// The type words of a table's columns are read as Python names of types, unlike those of keyword
// rules. What stands below a table selects lines and yields no variable.
void CTzParser::AddTableVariables(CAppParseRule& rule, CAppVariableDef& def, bool) const {
    auto& tableRule = dynamic_cast<CAppParseRuleTable&>(rule);
    auto& table = AddTable(def, {tableRule.GetName(), tableRule.GetKeyVars(), rule, true});
    for (const auto& variable : tableRule.GetVariableNames()) {
        const auto name = WithoutDollars(variable);
        if (table.GetChild(name) != nullptr) continue;
        const auto type =
            CAppDataTypeHelper::GetAppDataTypeFromPythonType(tableRule.GetVariableType(variable));
        auto column = MakeVariable(table, name, type, true);
        column->SetPyName(GeneratePythonName(name));
        if (table.AddChild(column.get())) column.release();
    }
}
