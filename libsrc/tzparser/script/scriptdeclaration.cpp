#include "tzparser/script/scriptdeclaration.h"

#include "host/json/hxjson.h"
#include "host/text/stlhelper.h"
#include "tzparser/script/scriptkeys.h"
#include "tzparser/variable/appdatatypehelper.h"

#include <algorithm>

namespace {

constexpr std::string_view BlockBegin = "Begin Declare Variable";
constexpr std::string_view BlockEnd = "End Declare";

AppDataType_e TypeOf(const std::string& word) {
    return CAppDataTypeHelper::GetAppDataTypeFromPythonType(word);
}

std::vector<ScriptDeclaration::Column> ReadColumns(const hxJson::Value& list) {
    std::vector<ScriptDeclaration::Column> columns;
    if (!list.isArray()) return columns;
    for (const auto& element : list) {
        auto name = element[ScriptKey::Name].asString();
        if (name.empty()) continue;
        columns.push_back(
            {ScriptVariableName(std::move(name)), TypeOf(element[ScriptKey::Type].asString())});
    }
    return columns;
}

}  // namespace

bool ScriptDeclaration::Find(std::string_view script, std::string& json, std::size_t& begin) {
    begin = StlHelper::findIgnoreCase(script, BlockBegin);
    if (begin == std::string::npos) return false;
    begin += BlockBegin.size();
    const auto end = StlHelper::findIgnoreCase(script, BlockEnd, begin);
    if (end == std::string::npos) return false;
    json = script.substr(begin, end - begin);
    std::replace(json.begin(), json.end(), '\'', '"');
    return true;
}

ScriptDeclaration ScriptDeclaration::Of(std::string_view script) {
    ScriptDeclaration declaration;
    std::string json;
    std::size_t begin = 0;
    if (!Find(script, json, begin)) return declaration;
    declaration.isThere = true;
    hxJson::Value list;
    hxJson::Reader reader;
    if (!reader.parse(json, list, true) || !list.isArray()) return declaration;
    for (const auto& element : list) {
        auto name = element[ScriptKey::Name].asString();
        if (name.empty()) continue;
        const auto word = StlHelper::toLower(element[ScriptKey::Type].asString());
        auto& variable = declaration.variables.emplace_back();
        variable.name = ScriptVariableName(std::move(name));
        variable.isTable = word == ScriptKey::Table;
        variable.type = TypeOf(word);
        if (variable.isTable) variable.columns = ReadColumns(element[ScriptKey::Columns]);
    }
    return declaration;
}

std::string ScriptVariableName(std::string name) {
    if (name.compare(0, 1, "$") != 0) name.insert(0, 1, '$');
    return name;
}
