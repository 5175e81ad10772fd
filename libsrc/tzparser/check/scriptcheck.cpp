#include "tzparser/check/scriptcheck.h"

#include "host/text/stlhelper.h"
#include "tzparser/check/checkshape.h"
#include "tzparser/rule/rulekeys.h"
#include "tzparser/script/scriptdeclaration.h"
#include "tzparser/script/scriptkeys.h"
#include "tzparser/script/scriptsyntax.h"
#include "tzparser/variable/appdatatypehelper.h"

#include <algorithm>

namespace {

constexpr const char* Function = "ParseText";
constexpr const char* ColumnMembers[] = {ScriptKey::HashColumns, ScriptKey::InterfaceKey,
                                         ScriptKey::TableKeys};
constexpr const char* TableMembers[] = {ScriptKey::HashColumns, ScriptKey::HashSort,
                                        ScriptKey::InterfaceKey, ScriptKey::TableKeys};

std::string Element(const std::string& path, std::size_t index) {
    return path + "[" + std::to_string(index) + "]";
}

std::string Trimmed(std::string name) {
    StlHelper::trim(name, "$");
    return name;
}

// Calls `use` with each element and its place; one object stands for an array of it.
template <class Use>
void ForEachElement(const hxJson::Value& list, const std::string& where, Use use) {
    if (list.isNull()) return;
    if (!list.isArray()) {
        use(list, where);
        return;
    }
    for (std::size_t i = 0; i < list.size(); ++i) use(list[i], Element(where, i));
}

}  // namespace

void CScriptCheck::Check(const hxJson::Value& node) {
    for (const auto* key : {RuleKey::NiStart, RuleKey::NiEnd, RuleKey::Operations, RuleKey::Child})
        if (!node[key].empty()) m_report.Add(m_path + "." + key, CheckMessage_NotForScript);
    const auto script = node[ScriptKey::Script].asString();
    CheckSource(script);
    CheckDeclaration(script);
    const auto where = m_path + "." + ScriptKey::VariableTypes;
    for (const auto& name : CheckTypes(node[ScriptKey::VariableTypes], where))
        if (m_hasDeclaration && m_declared.count(ScriptVariableName(name)) == 0)
            m_report.Add(where, CheckMessage_ScriptNotDeclared, {name});
    CheckTables(node);
    CheckMembers(node);
}

void CScriptCheck::CheckSource(const std::string& script) {
    const auto where = m_path + "." + ScriptKey::Script;
    if (script.find(Function) == std::string::npos) {
        m_report.Add(where, CheckMessage_ScriptWithoutFunction);
        return;
    }
    const auto fault = ScriptFault::Of(script);
    if (fault.reason.empty()) return;
    m_report.Add(where + (fault.line > 0 ? ", line " + std::to_string(fault.line) : std::string()),
                 CheckMessage_ScriptBroken, {fault.reason}, fault.source,
                 fault.column > 0 && !fault.source.empty()
                     ? static_cast<std::size_t>(fault.column) - 1
                     : DefinitionFinding::NoCaret);
}

void CScriptCheck::CheckDeclaration(const std::string& script) {
    std::string json;
    std::size_t begin = 0;
    m_hasDeclaration = ScriptDeclaration::Find(script, json, begin);
    if (!m_hasDeclaration) return;
    const auto where = m_path + "." + ScriptKey::Script + ", declaration";
    hxJson::Value list;
    hxJson::Reader reader;
    if (!reader.parse(json, list, true)) {
        m_report.AddJsonError(where, CheckMessage_DeclarationNotJson, reader, json);
    } else if (!list.isArray()) {
        m_report.Add(where, CheckMessage_DeclarationNotArray);
    } else {
        for (std::size_t i = 0; i < list.size(); ++i) CheckDeclared(list[i], Element(where, i));
    }
}

void CScriptCheck::CheckDeclared(const hxJson::Value& element, const std::string& where) {
    const auto name = element[ScriptKey::Name].asString();
    if (name.empty()) {
        m_report.Add(where, CheckMessage_DeclaredWithoutName);
        return;
    }
    m_declared.insert(ScriptVariableName(name));
    const auto word = element[ScriptKey::Type].asString();
    if (StlHelper::toLower(word) != ScriptKey::Table) {
        CheckDeclaredType(word, where);
        return;
    }
    const auto& columns = element[ScriptKey::Columns];
    if (!columns.isArray() || columns.size() == 0) {
        m_report.Add(where, CheckMessage_DeclaredWithoutColumns, {name});
        return;
    }
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const auto at = Element(where + "." + ScriptKey::Columns, i);
        if (columns[i][ScriptKey::Name].asString().empty())
            m_report.Add(at, CheckMessage_DeclaredWithoutName);
        else
            CheckDeclaredType(columns[i][ScriptKey::Type].asString(), at);
    }
}

// A type that has no name of its own ends as string, as an unknown one does.
void CScriptCheck::CheckDeclaredType(const std::string& word, const std::string& where) {
    const auto type = CAppDataTypeHelper::GetAppDataTypeFromPythonType(word);
    if (CAppDataTypeHelper::GetDataTypeStr(type).empty())
        m_report.Add(where, CheckMessage_TypeUnknown, {word});
}

void CScriptCheck::CheckTables(const hxJson::Value& node) {
    const auto where = m_path + "." + ScriptKey::TableVariableTypes;
    const auto& holder = node[ScriptKey::TableVariableTypes];
    if (!HasShape(holder, CheckShape_Object, m_report, where)) return;
    ForEachElement(holder[ScriptKey::TableVariableType], where + "." + ScriptKey::TableVariableType,
                   [this, &node](const hxJson::Value& table, const std::string& at) {
                       if (HasShape(table, CheckShape_Object, m_report, at))
                           CheckTable(table, node, at);
                   });
}

void CScriptCheck::CheckTable(const hxJson::Value& table, const hxJson::Value& node,
                              const std::string& where) {
    const auto name = table[ScriptKey::Name].asString();
    const auto at = where + "." + ScriptKey::VariableTypes;
    const auto& holder = table[ScriptKey::VariableTypes];
    auto columns = CheckTypes(holder, at);
    if (holder.isObject())
        CheckColumns(holder[ScriptKey::TableColumns], columns, at + "." + ScriptKey::TableColumns);
    Names trimmed;
    for (const auto& column : columns) trimmed.insert(Trimmed(column));
    const auto member = StlHelper::toLower(Trimmed(name));
    m_tables.insert(member);
    for (const auto* key : ColumnMembers) {
        if (!node[key].isObject()) continue;
        ForEachElement(node[key][member], m_path + "." + key + "." + member,
                       [&](const hxJson::Value& column, const std::string& place) {
                           if (trimmed.count(Trimmed(column.asString())) == 0)
                               m_report.Add(place, CheckMessage_ColumnUnknown, {column.asString()});
                       });
    }
}

// The names of the entries that count.
CScriptCheck::Names CScriptCheck::CheckTypes(const hxJson::Value& holder,
                                             const std::string& where) {
    Names names;
    if (!HasShape(holder, CheckShape_Object, m_report, where) || holder.isNull()) return names;
    ForEachElement(holder[ScriptKey::VariableType], where + "." + ScriptKey::VariableType,
                   [&](const hxJson::Value& entry, const std::string& at) {
                       const auto name = entry[ScriptKey::Name].asString();
                       const auto word = entry[ScriptKey::Type].asString();
                       if (name.empty() || word.empty()) {
                           m_report.Add(at, CheckMessage_EntryIncomplete);
                           return;
                       }
                       names.insert(name);
                       if (!IsVariableTypeWord(word))
                           m_report.Add(at, CheckMessage_TypeUnknown, {word});
                   });
    return names;
}

void CScriptCheck::CheckColumns(const hxJson::Value& list, const Names& columns,
                                const std::string& where) {
    if (!HasShape(list, CheckShape_Array, m_report, where)) return;
    ForEachElement(list, where, [&](const hxJson::Value& column, const std::string& at) {
        if (columns.count(column.asString()) == 0)
            m_report.Add(at, CheckMessage_ColumnUnknown, {column.asString()});
    });
}

void CScriptCheck::CheckMembers(const hxJson::Value& node) {
    for (const auto* key : TableMembers) {
        const auto where = m_path + "." + key;
        if (!HasShape(node[key], CheckShape_Object, m_report, where) || node[key].isNull())
            continue;
        for (const auto& member : node[key].getMemberNames())
            if (m_tables.count(member) == 0)
                m_report.Add(where, CheckMessage_TableUnknown, {member});
    }
}
