// What a parse found: look-ups by name, lines, and the result document.
#include "host/xml/markup.h"
#include "tzparser/keyword/appparserulekeyword.h"
#include "tzparser/rule/paragraphscope.h"
#include "tzparser/rule/rulekeys.h"

namespace {

std::string WithDollar(const std::string& name) {
    return !name.empty() && name.front() == '$' ? name : "$" + name;
}

std::vector<CAppTextLet> CopyValues(const std::map<int, CAppTextLet>& values) {
    std::vector<CAppTextLet> copies;
    copies.reserve(values.size());
    for (const auto& entry : values) copies.push_back(entry.second);
    return copies;
}

}  // namespace

std::vector<CAppTextLet> CAppParseRuleKeyWord::GetVariableValue(const std::string& name) {
    const auto full = WithDollar(name);
    const auto at = m_variablePos.find(full);
    if (at != m_variablePos.end()) return CopyValues(at->second);
    std::vector<CAppTextLet> values;
    if (IsFirstChildOfParagraph()) AppendOuterValues(full, values);
    return values;
}

// The lines of the paragraphs: those of the first variable of the first keyword rule that found
// anything.
std::vector<int> CAppParseRuleKeyWord::ParagraphLines() const {
    std::vector<int> lines;
    for (const auto& child : GetParentRule()->Children()) {
        if (child->GetRuleType() != RuleType_KeyWord) continue;
        const auto* rule = dynamic_cast<const CAppParseRuleKeyWord*>(child.get());
        if (rule == nullptr || rule->m_variablePos.empty()) continue;
        for (const auto& entry : rule->m_variablePos.begin()->second) lines.push_back(entry.first);
        break;
    }
    return lines;
}

void CAppParseRuleKeyWord::AppendOuterValues(const std::string& name,
                                             std::vector<CAppTextLet>& values) const {
    const auto lines = ParagraphLines();
    const auto* inner = GetParentRule();
    for (const auto* outer = inner->GetParentRule();
         outer != nullptr && outer->GetRuleType() == RuleType_Paragraph;
         outer = outer->GetParentRule()) {
        const auto* scope = outer->AsParagraphScope();
        for (const auto& child : outer->Children()) {
            if (scope == nullptr || child.get() == inner ||
                child->GetRuleType() != RuleType_KeyWord)
                continue;
            const auto* rule = dynamic_cast<const CAppParseRuleKeyWord*>(child.get());
            if (rule == nullptr) continue;
            const auto at = rule->m_variablePos.find(name);
            if (at != rule->m_variablePos.end())
                ::AppendOuterValues(at->second, *scope, lines, values);
        }
        inner = outer;
    }
}

bool CAppParseRuleKeyWord::GetVariableLine(const std::string& name, int& line) {
    line = -1;
    const auto at = m_variablePos.find(name);
    if (at == m_variablePos.end()) return false;
    if (!at->second.empty()) line = at->second.begin()->first;
    return true;
}

bool CAppParseRuleKeyWord::IsNoneExist() {
    for (const auto& variable : m_variablePos)
        for (const auto& entry : variable.second)
            if (entry.second.IsEmpty() && entry.second.text.empty()) return true;
    return false;
}

CAppParseRule* CAppParseRuleKeyWord::GetChildRuleByVariableName(const std::string& name) {
    const auto full = WithDollar(name);
    const bool mine =
        m_variablePos.count(full) != 0 || m_definition->variableTypes.count(full) != 0;
    return mine ? this : nullptr;
}

// The lines of a block variable count as context, those of all others as lines of variables.
void CAppParseRuleKeyWord::GetAllVarLineNums(std::set<int>& varLines,
                                             std::set<int>& extendLines) const {
    auto context = OriTextLines();
    extendLines.merge(context);
    for (const auto& [name, values] : m_variablePos) {
        auto& target = m_definition->mlineDefine.count(name) != 0 ? extendLines : varLines;
        for (const auto& [line, let] : values) {
            for (int row = let.beginRow; row <= let.endRow; ++row) target.insert(row);
            target.insert(let.lines.begin(), let.lines.end());
            target.insert(line);
        }
    }
    CAppParseRule::GetAllVarLineNums(varLines, extendLines);
}

void CAppParseRuleKeyWord::SaveResultAsXML(CMarkup& xml) {
    xml.AddElem(ResultKey::ParseResult);
    xml.IntoElem();
    xml.AddElem(ResultKey::ParserType, static_cast<int>(GetRuleType()));
    SaveResultAsXml(m_variablePos, xml, m_definition->variableTypes);
    CAppParseRule::SaveResultAsXML(xml);
    xml.OutOfElem();
}

bool CAppParseRuleKeyWord::SaveResultAsJson(hxJson::Value& node) {
    auto& result = node[ResultKey::ParseResult];
    result[ResultKey::ParserType] = static_cast<int>(GetRuleType());
    return SaveResultAsJSON(m_variablePos, result, m_definition->variableTypes, {});
}

bool CAppParseRuleKeyWord::SaveLineNumberAndResult(hxJson::Value& node) {
    for (const int line : OriTextLines()) {
        const auto text = OriginalLineView(line);
        if (!text.empty()) node[std::to_string(line)] = hxJson::Value(std::string(text));
    }
    return CAppParseRule::SaveLineNumberAndResult(node);
}
