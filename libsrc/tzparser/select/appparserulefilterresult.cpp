// What a parse found: look-ups by name and the result documents.
#include "host/xml/markup.h"
#include "tzparser/rule/rulekeys.h"
#include "tzparser/select/appparserulefilter.h"
#include "tzparser/select/filterkeys.h"
#include "tzparser/variable/appdatatypehelper.h"

#include <algorithm>

std::vector<CAppTextLet> CAppParseRuleFilter::GetVariableValue(const std::string& name) {
    return FindValues(name).TakeLets();
}

CLetList CAppParseRuleFilter::FindValues(const std::string& name) {
    if (!IsAskedForValue(name)) return FindValuesBelow(name);
    const auto statuses = RunStatuses();
    std::vector<CAppTextLet> values;
    values.reserve(statuses.size());
    for (const auto& status : statuses) values.emplace_back(0, 0, 0, 0, TextOf(status));
    return CLetList(std::move(values));
}

bool CAppParseRuleFilter::IsNoneExist() {
    if (!m_lineStatus.HasOpen()) return true;
    return std::any_of(Children().begin(), Children().end(),
                       [](const auto& child) { return child->IsNoneExist(); });
}

void CAppParseRuleFilter::ClearVariablePosition() {
    m_lineStatus.Close(0, LineCount());
    m_multiLineStatus.clear();
    m_runRanges.clear();
}

bool CAppParseRuleFilter::SaveResultAsJson(hxJson::Value& node) {
    auto& result = node[ResultKey::ParseResult];
    result[ResultKey::ParserName] = m_definition->name;
    result[ResultKey::ParserType] = static_cast<int>(GetRuleType());
    result[ResultKey::ValueType] = CAppDataTypeHelper::GetDataTypeStr(
        m_definition->asConfiglet ? AppDataType_ConfigLet : AppDataType_String);
    auto& lines = result[ResultKey::Lines];
    if (IsUseMultiLineStatus() && !m_multiLineStatus.empty()) {
        lines = hxJson::Value(hxJson::arrayValue, false);
        for (const auto& status : m_multiLineStatus)
            WriteOpenLines(status, lines.append(hxJson::Value()));
    } else {
        WriteOpenLines(LineStatus(), lines);
    }
    return CAppParseRule::SaveResultAsJson(result);
}

// The element's name is in small letters here, unlike that of the other kinds.
void CAppParseRuleFilter::SaveResultAsXML(CMarkup& xml) {
    xml.AddElem(FilterKey::XmlParseResult);
    xml.IntoElem();
    xml.AddElem(FilterKey::Name, m_definition->name);
    xml.AddElem(FilterKey::XmlType, static_cast<int>(GetRuleType()));
    xml.AddElem(ResultKey::Lines);
    xml.IntoElem();
    ForEachOpenLine(LineStatus(), [&xml](int line) { xml.AddElem(FilterKey::XmlLine, line); });
    xml.OutOfElem();
    CAppParseRule::SaveResultAsXML(xml);
    xml.OutOfElem();
}
