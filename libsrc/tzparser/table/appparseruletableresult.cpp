// What parses found: look-ups by name and the result documents.
#include "host/xml/markup.h"
#include "tzparser/keyword/appparserulekeyword.h"
#include "tzparser/rule/paragraphscope.h"
#include "tzparser/rule/rulekeys.h"
#include "tzparser/table/appparseruletable.h"
#include "tzparser/table/tablekeys.h"

#include <algorithm>
#include <string_view>

namespace {

bool BeginsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

std::string WithDollar(const std::string& name) {
    return !name.empty() && name.front() == '$' ? name : "$" + name;
}

// A rule's name as it stands in front of a full name, with the dot when that has one.
std::string Prefix(const std::string& ruleName, const std::string& name) {
    return name.find('.') == std::string::npos ? ruleName : ruleName + ".";
}

}  // namespace

// The variable that a name means, without the rule's name in front. One character behind the rule's
// name is dropped whatever it is: of a name without a dot that merely begins with the rule's name,
// only the end is looked up.
std::string CAppParseRuleTable::KeyOf(const std::string& name) const {
    const auto prefix = Prefix(m_definition->name, name);
    const std::string_view view = name;
    std::size_t begin = 0;
    if (!BeginsWith(view, prefix)) {
        if (!BeginsWith(view, "$") || !BeginsWith(view.substr(1), prefix)) return name;
        begin = 1;
    }
    const auto behind = begin + m_definition->name.size();
    return WithDollar(behind < name.size() ? name.substr(behind + 1) : name);
}

std::vector<CAppTextLet> CAppParseRuleTable::GetVariableValue(const std::string& name) {
    return FindValues(name).TakeLets();
}

CLetList CAppParseRuleTable::FindValues(const std::string& name) {
    const auto key = KeyOf(name);
    if (const auto* known = Values().Find(key)) return CLetList(*known);
    CLetList values;
    AppendParagraphValues(key, values);
    return values;
}

// The rows are those of the first variable: all variables have the same lines but where rows went
// on in the next line.
void CAppParseRuleTable::AppendParagraphValues(const std::string& name, CLetList& values) const {
    const auto* rule = GetParentRule();
    if (rule != nullptr && rule->GetRuleType() == RuleType_Filter) rule = rule->GetParentRule();
    const auto& columns = Values().All();
    const auto rows = columns.empty() ? std::vector<int>() : columns.begin()->second.Lines();
    for (; rule != nullptr && rule->GetRuleType() == RuleType_Paragraph;
         rule = rule->GetParentRule()) {
        const auto* scope = rule->AsParagraphScope();
        for (const auto& child : rule->Children()) {
            if (scope == nullptr || child->GetRuleType() != RuleType_KeyWord) continue;
            auto* keyword = dynamic_cast<CAppParseRuleKeyWord*>(child.get());
            if (keyword == nullptr) continue;
            if (const auto* outerValues = keyword->Values().Find(name))
                AppendOuterValues(*outerValues, *scope, rows, values);
        }
    }
}

CAppParseRule* CAppParseRuleTable::GetChildRuleByVariableName(const std::string& name) {
    const auto prefix = (BeginsWith(name, "$") ? "$" : "") + Prefix(m_definition->name, name);
    if (name == prefix) return this;
    if (prefix.empty() || prefix.back() != '.' || !BeginsWith(name, prefix))
        return CAppParseRule::GetChildRuleByVariableName(name);
    const auto key = WithDollar(name.substr(prefix.size()));
    const bool isMine =
        Values().Find(key) != nullptr || m_definition->variableTypes.count(key) != 0;
    return isMine ? this : nullptr;
}

// An empty cell of a row counts as well as a value that was filled in: the text isn't looked at.
bool CAppParseRuleTable::IsNoneExist() {
    const auto& columns = Values().All();
    return std::any_of(columns.begin(), columns.end(),
                       [](const auto& column) { return column.second.HasEmptySpan(); });
}

// Only a name that begins with ".start" asks for the end: one that ends in ".start" or ".end",
// behind a rule's name, yields the header line, as it does of a paragraph.
bool CAppParseRuleTable::GetVariableLine(const std::string& name, int& line) {
    line = -1;
    if (name.empty()) return false;
    line = BeginsWith(name, ".start") ? m_endLine : m_beginLine;
    return line != -1;
}

bool CAppParseRuleTable::SaveResultAsJson(hxJson::Value& node) {
    auto& result = node[ResultKey::ParseResult];
    result[TableKey::ParserName] = m_definition->name;
    result[ResultKey::ParserType] = static_cast<int>(GetRuleType());
    if (!SaveResultAsJSON(Values().ToPositions(), result, m_definition->variableTypes, {}))
        return false;
    return CAppParseRule::SaveResultAsJson(result);
}

void CAppParseRuleTable::SaveResultAsXML(CMarkup& xml) {
    xml.AddElem(ResultKey::ParseResult);
    xml.IntoElem();
    xml.AddElem(TableKey::ParserName, m_definition->name);
    xml.AddElem(ResultKey::ParserType, static_cast<int>(GetRuleType()));
    SaveResultAsXml(Values().ToPositions(), xml, m_definition->variableTypes);
    CAppParseRule::SaveResultAsXML(xml);
    xml.OutOfElem();
}
