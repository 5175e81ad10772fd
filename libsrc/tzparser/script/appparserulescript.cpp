// The rule as a definition: the script, its copies, the keys of its tables.
#include "tzparser/script/appparserulescript.h"

#include "host/text/stlhelper.h"
#include "tzparser/pattern/parserpatternhelper.h"
#include "tzparser/script/appparserulescriptplan.h"
#include "tzparser/variable/appvariablearraydef.h"
#include "tzparser/variable/appvariabletabledef.h"

namespace {

std::string WithoutDollars(std::string name) {
    StlHelper::trimLeft(name, "$");
    return name;
}

template <class Map>
auto FindTable(const Map& map, const std::string& table) {
    return map.find(WithoutDollars(table));
}

template <class Map>
std::vector<std::string> NamesOf(const Map& map) {
    std::vector<std::string> names;
    names.reserve(map.size());
    for (const auto& entry : map) names.push_back(entry.first);
    return names;
}

std::set<std::string> KeysWithoutDollars(const std::set<std::string>& keys) {
    std::set<std::string> result;
    for (const auto& key : keys)
        if (auto name = WithoutDollars(key); !name.empty()) result.insert(std::move(name));
    return result;
}

void AddTo(CAppVariableDef& parent, std::unique_ptr<CAppVariableDef> child) {
    if (parent.AddChild(child.get())) child.release();
}

std::unique_ptr<CAppVariableDef> MakeColumn(CAppVariableDef* table, const std::string& name,
                                            const std::string& type) {
    auto column = std::make_unique<CAppVariableArrayDef>(table, name, AppVariableType_Parser, "");
    std::string pythonName = name;
    column->SetPyName(StlHelper::trim(pythonName, " \t$"));
    column->SetBaseType(CParserPatternHelper::GetDataType(type));
    return column;
}

}  // namespace

CAppParseRuleScript::CAppParseRuleScript(CAppParseRule* parent)
    : CAppParseRule(RuleType_Script, parent) {}

CAppParseRuleScript::~CAppParseRuleScript() = default;

CAppParseRule* CAppParseRuleScript::CreateObject(CAppParseRule* parent) {
    return new CAppParseRuleScript(parent);
}

// The keys of tables stay behind: it is the definition that is asked for them, not what runs.
bool CAppParseRuleScript::OnCopyTo(CAppParseRule* target) {
    auto* other = dynamic_cast<CAppParseRuleScript*>(target);
    if (other == nullptr) return false;
    if (other == this) return true;
    other->m_definition = m_definition;
    other->m_types = m_types;
    other->m_variablePos = m_variablePos;
    other->m_tableVariablePos = m_tableVariablePos;
    other->m_pyErrorMsg = m_pyErrorMsg;
    other->m_hasPresentImports = m_hasPresentImports;
    other->m_runPlan = m_runPlan;
    other->SetRuleModify();
    return true;
}

std::shared_ptr<const CAppParseRuleScript::Plan> CAppParseRuleScript::MakePlan(
    const std::string& script) {
    auto plan = std::make_shared<Plan>();
    plan->script = WithPresentImports(script);
    plan->declaration = ScriptDeclaration::Of(plan->script);
    plan->code = std::make_unique<CScriptCode>(plan->script);
    return plan;
}

std::shared_ptr<const CAppParseRuleScript::Plan> CAppParseRuleScript::PlanOfRun() {
    if (m_definition->plan) return m_definition->plan;
    if (!m_runPlan) m_runPlan = MakePlan(m_definition->script);
    return m_runPlan;
}

const std::string& CAppParseRuleScript::GetScript() const {
    if (!m_hasPresentImports) return m_definition->script;
    return m_definition->plan ? m_definition->plan->script : m_runPlan->script;
}

void CAppParseRuleScript::SetScript(const std::string& script) {
    if (script == GetScript()) return;
    auto& definition = m_definition.Edit();
    definition.script = script;
    definition.plan.reset();
    m_runPlan.reset();
    m_hasPresentImports = false;
    SetRuleModify();
}

void CAppParseRuleScript::Reset() {
    SetScript({});
    m_pyErrorMsg.clear();
    m_types = {};
    ClearVariablePosition();
    SetRuleModify();
}

void CAppParseRuleScript::ClearVariablePosition() {
    m_variablePos.clear();
    m_tableVariablePos.clear();
}

std::string CAppParseRuleScript::GetVariableType(const std::string& name) const {
    const auto at = m_types->variables.find(name);
    return at != m_types->variables.end() ? at->second : std::string();
}

std::string CAppParseRuleScript::GetTableVariableType(const std::string& table,
                                                      const std::string& column) const {
    const auto at = m_types->tables.find(table);
    if (at == m_types->tables.end()) return {};
    const auto type = at->second.find(column);
    return type != at->second.end() ? type->second : std::string();
}

std::vector<std::string> CAppParseRuleScript::GetVariableNames() const {
    return NamesOf(m_types->variables);
}

std::vector<std::string> CAppParseRuleScript::GetTableNames() const {
    return NamesOf(m_types->tables);
}

std::vector<std::string> CAppParseRuleScript::GetTableVariableNames(const std::string& table) {
    const auto columns = m_types->columns.find(table);
    if (columns == m_types->columns.end())
        m_types.Edit().columns[table];
    else if (!columns->second.empty())
        return columns->second;
    const auto types = m_types->tables.find(table);
    return types != m_types->tables.end() ? NamesOf(types->second) : std::vector<std::string>();
}

void CAppParseRuleScript::GetTableKeys(const std::string& table,
                                       std::set<std::string>& keys) const {
    const auto at = FindTable(m_keys->tableKeys, table);
    if (at != m_keys->tableKeys.end()) keys = at->second;
}

void CAppParseRuleScript::GetTableInterfaceKeys(const std::string& table, std::string& key) const {
    const auto at = FindTable(m_keys->interfaceKeys, table);
    if (at != m_keys->interfaceKeys.end()) key = at->second;
}

void CAppParseRuleScript::GetTableKeysEx(const std::string& table,
                                         std::set<std::string>& keys) const {
    const auto at = FindTable(m_keys->tableKeys, table);
    if (at != m_keys->tableKeys.end()) keys.insert(at->second.begin(), at->second.end());
    const auto interfaceKey = FindTable(m_keys->interfaceKeys, table);
    if (interfaceKey != m_keys->interfaceKeys.end()) keys.insert(interfaceKey->second);
}

void CAppParseRuleScript::SetTableKey(const ColumnSetMap& keys) {
    m_keys.Edit().tableKeys = keys;
}

void CAppParseRuleScript::SetTableInterfaceKey(const TypeMap& keys) {
    m_keys.Edit().interfaceKeys = keys;
}

void CAppParseRuleScript::GetTableCmpColumns(ColumnSetMap& columns) const {
    columns = m_keys->cmpColumns;
}

void CAppParseRuleScript::SetTableCmpColumns(const ColumnSetMap& columns) {
    m_keys.Edit().cmpColumns = columns;
}

void CAppParseRuleScript::GetTableCmpColumnsByTable(const std::string& table,
                                                    std::set<std::string>& columns) const {
    const auto at = FindTable(m_keys->cmpColumns, table);
    if (at != m_keys->cmpColumns.end()) columns = at->second;
}

void CAppParseRuleScript::SetTableCmpColumnsByTable(const std::string& table,
                                                    const std::set<std::string>& columns) {
    m_keys.Edit().cmpColumns[WithoutDollars(table)] = columns;
}

bool CAppParseRuleScript::IsTableCmpSort(const std::string& table) const {
    const auto at = FindTable(m_keys->cmpSort, table);
    return at != m_keys->cmpSort.end() && at->second;
}

void CAppParseRuleScript::SetTableCmpSort(const std::string& table, bool sort) {
    m_keys.Edit().cmpSort[WithoutDollars(table)] = sort;
    SetRuleModify();
}

// Plain variables lose their "$" here, tables and columns keep it.
bool CAppParseRuleScript::AddToVariableTree(CAppVariableDef* def) {
    for (const auto& [variable, type] : m_types->variables) {
        const auto name = WithoutDollars(variable);
        if (name.empty() || type.empty()) continue;
        AddTo(*def,
              std::make_unique<CAppVariableDef>(def, name, CParserPatternHelper::GetDataType(type),
                                                AppVariableType_Parser, ""));
    }
    for (const auto& [table, types] : m_types->tables) AddTo(*def, MakeTableDef(table, types, def));
    return true;
}

std::unique_ptr<CAppVariableDef> CAppParseRuleScript::MakeTableDef(const std::string& table,
                                                                   const TypeMap& types,
                                                                   CAppVariableDef* parent) const {
    auto node =
        std::make_unique<CAppVariableTableDef>(parent, table, AppVariableType_Default, "", false);
    const auto columns = m_types->columns.find(table);
    if (columns != m_types->columns.end())
        for (const auto& name : columns->second) {
            const auto type = types.find(name);
            if (type == types.end() || name.empty() || type->second.empty()) continue;
            AddTo(*node, MakeColumn(node.get(), name, type->second));
        }
    std::set<std::string> keys;
    GetTableKeys(table, keys);
    node->SetTableKeys(KeysWithoutDollars(keys));
    std::string interfaceKey;
    GetTableInterfaceKeys(table, interfaceKey);
    node->SetIntefTableKeys(KeysWithoutDollars({interfaceKey}));
    std::set<std::string> hashColumns;
    GetTableCmpColumnsByTable(table, hashColumns);
    node->SetTableCmpColumns(hashColumns);
    node->SetTableCmpSort(IsTableCmpSort(table));
    return node;
}
