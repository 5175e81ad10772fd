// What the node of a text rule says: its name and the lines that it looks for.
#include "tzparser/check/checkshape.h"
#include "tzparser/check/samplecheck.h"
#include "tzparser/rule/rulekeys.h"
#include "tzparser/select/textkeys.h"

void CSampleCheck::CheckTextRule(const hxJson::Value& node, const std::string& path) {
    if (node[TextKey::Name].asString().empty()) m_report.Add(path, CheckMessage_TextWithoutName);
    if (!node[RuleKey::Operations].empty())
        m_report.Add(path + "." + RuleKey::Operations, CheckMessage_TextWithOperations);
    if (!node[RuleKey::Child].empty())
        m_report.Add(path + "." + RuleKey::Child, CheckMessage_BelowText);
    const auto& lines = node[TextKey::Lines];
    const auto listPath = path + "." + TextKey::Lines;
    HasShape(lines, CheckShape_Array, m_report, listPath);
    if (!lines.isArray() || lines.empty()) m_report.Add(path, CheckMessage_TextWithoutLines);
    if (!lines.isArray()) return;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const auto linePath = listPath + "[" + std::to_string(i) + "]";
        if (!HasShape(lines[i], CheckShape_Object, m_report, linePath)) continue;
        const auto text = lines[i][TextKey::Text].asString();
        const auto at = text.find_first_of("\r\n");
        if (at != std::string::npos)
            m_report.Add(linePath + "." + TextKey::Text, CheckMessage_TextOverLines, {}, text, at);
    }
}
