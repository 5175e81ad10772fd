// The rule's XML form. The list of a table's columns and its items have one name, "tablecolumns":
//
//     <tablevariabletype>
//       <name>ports</name>
//       <variabletypes><variabletype><name>$name</name><type>string</type></variabletype></variabletypes>
//       <tablecolumns><tablecolumns>$name</tablecolumns></tablecolumns>
//     </tablevariabletype>
//
// Elements are searched for from where the cursor stands, never from the start again.
#include "host/xml/markup.h"
#include "tzparser/rule/markuplists.h"
#include "tzparser/script/appparserulescript.h"
#include "tzparser/script/appparserulescriptplan.h"
#include "tzparser/script/scriptkeys.h"

namespace {

using TypeMap = CAppParseRuleScript::TypeMap;

// The first of two entries with one name stays; one that lacks a text is dropped.
void ReadTypes(CMarkup& xml, TypeMap& types) {
    const AppMarkupLevel level(xml);
    while (xml.FindElem(ScriptKey::VariableType)) {
        std::string name;
        std::string type;
        xml.GetData(ScriptKey::Name, name);
        xml.GetData(ScriptKey::Type, type);
        if (!name.empty() && !type.empty()) types.try_emplace(std::move(name), std::move(type));
    }
}

bool AddType(CMarkup& xml, const std::string& name, const std::string& type) {
    const AppMarkupLevel level(xml, ScriptKey::VariableType);
    return level && xml.AddElem(ScriptKey::Name, name) && xml.AddElem(ScriptKey::Type, type);
}

bool AddTypes(CMarkup& xml, const TypeMap& types) {
    const AppMarkupLevel level(xml, ScriptKey::VariableTypes);
    bool isComplete = static_cast<bool>(level);
    for (const auto& [name, type] : types) isComplete = isComplete && AddType(xml, name, type);
    return isComplete;
}

}  // namespace

bool CAppParseRuleScript::LoadFromXml(CMarkup& xml) {
    if (FindFirstElem(xml, ScriptKey::Script)) SetScript(xml.GetData());
    if (xml.FindElem(ScriptKey::VariableTypes)) {
        auto& types = m_types.Edit().variables;
        types.clear();
        ReadTypes(xml, types);
    }
    if (xml.FindElem(ScriptKey::TableVariableTypes)) LoadTablesFromXml(xml);
    CheckVariableType();
    CheckTableColumns();
    m_definition.Edit().plan = MakePlan(m_definition->script);
    SetRuleModify();
    return CAppParseRule::LoadFromXml(xml);
}

void CAppParseRuleScript::LoadTablesFromXml(CMarkup& xml) {
    m_types.Edit().tables.clear();
    const AppMarkupLevel level(xml);
    while (xml.FindElem(ScriptKey::TableVariableType)) LoadTableFromXml(xml);
}

// As in the JSON form, a table without typed columns has no types, but a list of columns.
void CAppParseRuleScript::LoadTableFromXml(CMarkup& xml) {
    const AppMarkupLevel level(xml);
    std::string name;
    xml.GetData(ScriptKey::Name, name);
    auto& types = m_types.Edit();
    TypeMap columns;
    if (xml.FindElem(ScriptKey::VariableTypes)) ReadTypes(xml, columns);
    if (!columns.empty()) types.tables.try_emplace(name, std::move(columns));
    auto& order = types.columns[name];
    if (!xml.FindElem(ScriptKey::TableColumns)) return;
    const AppMarkupLevel list(xml);
    while (xml.FindElem(ScriptKey::TableColumns))
        if (auto text = xml.GetData(); !text.empty()) order.push_back(std::move(text));
}

bool CAppParseRuleScript::SaveToXml(CMarkup& xml) {
    const AppMarkupRule rule(xml, GetRuleType());
    if (!rule) return false;
    xml.AddElem(ScriptKey::Script, GetScript());
    bool isComplete = AddTypes(xml, m_types->variables);
    {
        const AppMarkupLevel tables(xml, ScriptKey::TableVariableTypes);
        for (const auto& [name, types] : m_types->tables)
            isComplete = isComplete && SaveTableToXml(xml, name, types);
    }
    return CAppParseRule::SaveToXml(xml) && isComplete;
}

bool CAppParseRuleScript::SaveTableToXml(CMarkup& xml, const std::string& name,
                                         const TypeMap& types) const {
    const AppMarkupLevel table(xml, ScriptKey::TableVariableType);
    if (!table || !xml.AddElem(ScriptKey::Name, name)) return false;
    const auto columns = m_types->columns.find(name);
    const bool hasTypes = AddTypes(xml, types);
    return AddTextList(
               xml, ScriptKey::TableColumns, ScriptKey::TableColumns,
               columns != m_types->columns.end() ? columns->second : std::vector<std::string>()) &&
           hasTypes;
}
