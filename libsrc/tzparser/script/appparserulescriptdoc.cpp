// The rule's document.
#include "host/text/stlhelper.h"
#include "tzparser/script/appparserulescript.h"
#include "tzparser/script/appparserulescriptplan.h"
#include "tzparser/script/scriptkeys.h"

namespace {

// One object stands for an array of it.
template <class Use>
void ForEachElement(const hxJson::Value& holder, const char* key, Use use) {
    if (!holder.isObject()) return;
    const auto& list = holder[key];
    if (!list.isArray()) {
        use(list);
        return;
    }
    for (const auto& element : list) use(element);
}

// The first of two entries with one name stays.
void ReadTypes(const hxJson::Value& holder, CAppParseRuleScript::TypeMap& types) {
    ForEachElement(holder, ScriptKey::VariableType, [&types](const hxJson::Value& entry) {
        if (!entry.isObject()) return;
        auto name = entry[ScriptKey::Name].asString();
        auto type = entry[ScriptKey::Type].asString();
        if (!name.empty() && !type.empty()) types.try_emplace(std::move(name), std::move(type));
    });
}

std::string Trimmed(std::string name) {
    StlHelper::trim(name, "$");
    return name;
}

// What a member such as "tablekeys" has for a table; null when it has nothing.
const hxJson::Value* MemberOf(const hxJson::Value& node, const char* member,
                              const std::string& table) {
    const auto& tables = node[member];
    const auto name = StlHelper::toLower(table);
    return tables.isObject() && tables.isMember(name) ? &tables[name] : nullptr;
}

std::set<std::string> ReadColumns(const hxJson::Value& list) {
    std::set<std::string> columns;
    if (!list.isArray()) return columns;
    for (const auto& column : list) columns.insert(Trimmed(column.asString()));
    return columns;
}

}  // namespace

bool CAppParseRuleScript::LoadParseRule(const hxJson::Value& node) {
    SetScript(node[ScriptKey::Script].asString());
    ClearVariablePosition();
    m_types = {};
    ReadTypes(node[ScriptKey::VariableTypes], m_types.Edit().variables);
    LoadTables(node);
    CheckVariableType();
    CheckTableColumns();
    m_definition.Edit().plan = MakePlan(m_definition->script);
    SetRuleModify();
    return true;
}

void CAppParseRuleScript::LoadTables(const hxJson::Value& node) {
    ForEachElement(node[ScriptKey::TableVariableTypes], ScriptKey::TableVariableType,
                   [this, &node](const hxJson::Value& element) {
                       if (element.isObject()) LoadTable(element, node);
                   });
}

// The members of the four maps are looked up by the name in small letters; what is found is kept
// under the name with its case.
void CAppParseRuleScript::LoadTable(const hxJson::Value& element, const hxJson::Value& node) {
    const auto name = element[ScriptKey::Name].asString();
    const auto& holder = element[ScriptKey::VariableTypes];
    auto& types = m_types.Edit();
    TypeMap columns;
    ReadTypes(holder, columns);
    if (!columns.empty()) types.tables.try_emplace(name, std::move(columns));
    auto& order = types.columns[name];
    if (holder.isObject() && holder[ScriptKey::TableColumns].isArray())
        for (const auto& column : holder[ScriptKey::TableColumns])
            if (auto text = column.asString(); !text.empty()) order.push_back(std::move(text));
    const auto table = Trimmed(name);
    if (const auto* list = MemberOf(node, ScriptKey::HashColumns, table))
        SetTableCmpColumnsByTable(table, ReadColumns(*list));
    if (const auto* sort = MemberOf(node, ScriptKey::HashSort, table))
        SetTableCmpSort(table, sort->asBool());
    if (const auto* key = MemberOf(node, ScriptKey::InterfaceKey, table))
        m_keys.Edit().interfaceKeys[table] = Trimmed(key->asString());
    if (const auto* keys = MemberOf(node, ScriptKey::TableKeys, table))
        m_keys.Edit().tableKeys[table] = ReadColumns(*keys);
}
