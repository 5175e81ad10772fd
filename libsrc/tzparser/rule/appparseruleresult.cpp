// Parse result documents: what the base writes, and the form of variables that kinds share.
#include "host/python/tzp3typeobject.h"
#include "host/xml/markup.h"
#include "tzparser/rule/appparserule.h"
#include "tzparser/rule/rulekeys.h"
#include "tzparser/variable/appdatatypehelper.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr int MostValuesTried = 99;

bool AnyValueFits(const TzP3TypeObject& type, const std::set<std::string>& values) {
    const auto count = std::min<std::size_t>(values.size(), MostValuesTried);
    return std::any_of(values.begin(),
                       std::next(values.begin(), static_cast<std::ptrdiff_t>(count)),
                       [&type](const std::string& value) { return type.Check(value); });
}

std::string TypeOf(const std::map<std::string, std::string>& types, const std::string& name) {
    const auto type = types.find(name);
    return type != types.end() ? type->second : "string";
}

}  // namespace

bool CAppParseRule::SaveResultAsJson(hxJson::Value& node) {
    if (m_children.empty()) return true;
    auto& results = node[ResultKey::Children] = hxJson::Value(hxJson::arrayValue, false);
    bool all = true;
    for (const auto& child : m_children)
        all &= child->SaveResultAsJson(results.append(hxJson::Value()));
    return all;
}

void CAppParseRule::SaveResultAsXML(CMarkup& xml) {
    if (m_children.empty()) return;
    xml.AddElem(ResultKey::Child);
    xml.IntoElem();
    for (const auto& child : m_children) child->SaveResultAsXML(xml);
    xml.OutOfElem();
}

void CAppParseRule::SaveResultAsXml(const std::map<std::string, std::map<int, CAppTextLet>>& values,
                                    CMarkup& xml, const std::map<std::string, std::string>& types) {
    xml.AddElem(ResultKey::Variables);
    xml.IntoElem();
    for (const auto& [name, lets] : values) {
        xml.AddElem(ResultKey::Variable);
        xml.IntoElem();
        xml.AddElem(ResultKey::Name, name);
        xml.AddElem(ResultKey::ValueType, TypeOf(types, name));
        xml.AddElem(ResultKey::Details);
        xml.IntoElem();
        for (const auto& entry : lets) {
            xml.AddElem(ResultKey::Detail);
            entry.second.SaveToXml(xml);
        }
        xml.OutOfElem();
        xml.OutOfElem();
    }
    xml.OutOfElem();
}

bool CAppParseRule::SaveLineNumberAndResult(hxJson::Value& node) {
    bool all = true;
    for (const auto& child : m_children) all &= child->SaveLineNumberAndResult(node);
    return all;
}

void CAppParseRule::GetAllVarLineNums(std::set<int>& varLines, std::set<int>& extendLines) const {
    for (const auto& child : m_children) {
        std::set<int> childLines;
        std::set<int> childExtendLines;
        child->GetAllVarLineNums(childLines, childExtendLines);
        varLines.merge(childLines);
        extendLines.merge(childExtendLines);
    }
    for (const int line : varLines) extendLines.erase(line);
}

// With the extended information a result gives positions only: the text of a hit is left out.
bool CAppParseRule::SaveResultAsJSON(
    const std::map<std::string, std::map<int, CAppTextLet>>& values, hxJson::Value& node,
    const std::map<std::string, std::string>& types, std::vector<std::string> order) {
    if (order.empty())
        std::transform(values.begin(), values.end(), std::back_inserter(order),
                       [](const auto& entry) { return entry.first; });
    auto& variables = node[ResultKey::Variables] = hxJson::Value(hxJson::arrayValue, false);
    for (const auto& name : order) {
        const auto found = values.find(name);
        if (found == values.end()) continue;
        auto& variable = variables.append(hxJson::Value(hxJson::objectValue, false));
        variable[ResultKey::Name] = name;
        variable[ResultKey::ValueType] = TypeOf(types, name);
        auto& details = variable[ResultKey::Details] = hxJson::Value(hxJson::arrayValue, false);
        for (const auto& [line, let] : found->second)
            if (line >= 0) details.append(let.SaveToJson(!m_saveExBuiltInInfo));
    }
    return true;
}

std::map<std::string, std::vector<std::string>> CAppParseRule::GetPosibleVariableTypes(
    const std::map<std::string, std::set<std::string>>& values) {
    std::map<std::string, std::set<std::string>> candidates;
    for (const auto& entry : values) candidates[entry.first].insert("string");
    for (const auto type : CAppDataTypeHelper::GetValidInputDataType()) {
        const std::unique_ptr<TzP3TypeObject> object(
            TzP3TypeObject::CreateObj(CAppDataTypeHelper::GetObjectTypeFromAppDataType(type)));
        if (!object) continue;
        for (const auto& [name, texts] : values)
            if (AnyValueFits(*object, texts))
                candidates[name].insert(CAppDataTypeHelper::GetDataTypeStr(type));
    }
    std::map<std::string, std::vector<std::string>> types;
    for (const auto& [name, names] : candidates) types[name].assign(names.begin(), names.end());
    return types;
}
