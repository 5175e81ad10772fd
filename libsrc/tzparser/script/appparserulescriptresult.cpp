// What a run found: look-ups by name and the result document.
#include "tzparser/rule/rulekeys.h"
#include "tzparser/script/appparserulescript.h"
#include "tzparser/script/scriptdeclaration.h"
#include "tzparser/script/scriptkeys.h"

namespace {

constexpr const char* KindName = "Script";

std::vector<CAppTextLet> LetsFrom(const std::map<int, CAppTextLet>& lets, int firstRow) {
    std::vector<CAppTextLet> values;
    values.reserve(lets.size());
    for (auto at = lets.lower_bound(firstRow); at != lets.end(); ++at) values.push_back(at->second);
    return values;
}

std::string NameOrNothing(const std::string& name) {
    return name.empty() ? name : ScriptVariableName(name);
}

}  // namespace

std::vector<CAppTextLet> CAppParseRuleScript::GetVariableValue(const std::string& name) {
    const auto dot = name.find('.');
    const auto table = NameOrNothing(dot == std::string::npos ? "" : name.substr(0, dot));
    const auto variable = NameOrNothing(dot == std::string::npos ? name : name.substr(dot + 1));
    if (table.empty()) {
        const auto lets = m_variablePos.find(variable);
        if (lets == m_variablePos.end() || lets->second.empty()) return {};
        return LetsFrom(lets->second, lets->second.begin()->first);
    }
    const auto columns = m_tableVariablePos.find(table);
    if (columns == m_tableVariablePos.end()) return {};
    const auto lets = columns->second.find(variable);
    return lets != columns->second.end() ? LetsFrom(lets->second, 0) : std::vector<CAppTextLet>();
}

bool CAppParseRuleScript::SaveResultAsJson(hxJson::Value& node) {
    hxJson::Value result;
    result[ScriptKey::ParserName] = KindName;
    result[ResultKey::ParserType] = static_cast<int>(GetRuleType());
    const bool isSaved = SaveResultAsJSON(m_variablePos, result, m_types->variables, {});
    for (const auto& [table, types] : m_types->tables) {
        auto& tables = result[ScriptKey::Tables];
        auto& object = tables.append(hxJson::Value());
        object[ResultKey::Name] = table;
        const auto columns = m_types->columns.find(table);
        SaveResultAsJSON(
            m_tableVariablePos[table], object, types,
            columns != m_types->columns.end() ? columns->second : std::vector<std::string>());
    }
    node[ResultKey::ParseResult] = result;
    return isSaved;
}
