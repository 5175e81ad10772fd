// What a parse found: look-ups by name, lines, and the result document.
#include "host/xml/markup.h"
#include "tzparser/keyword/appparserulekeyword.h"
#include "tzparser/rule/paragraphscope.h"
#include "tzparser/rule/rulekeys.h"

#include <limits>

namespace {

std::string WithDollar(const std::string& name) {
    return !name.empty() && name.front() == '$' ? name : "$" + name;
}

}  // namespace

std::vector<CAppTextLet> CAppParseRuleKeyWord::GetVariableValue(const std::string& name) {
    return FindValues(name).TakeLets();
}

CLetList CAppParseRuleKeyWord::FindValues(const std::string& name) {
    if (const auto* known = m_values.FindWithDollar(name)) return CLetList(*known);
    CLetList values;
    if (IsFirstChildOfParagraph()) AppendOuterValues(WithDollar(name), values);
    return values;
}

// The lines of the paragraphs: those of the first variable of the first keyword rule that found
// anything.
std::vector<int> CAppParseRuleKeyWord::ParagraphLines() const {
    for (const auto& child : GetParentRule()->Children()) {
        if (child->GetRuleType() != RuleType_KeyWord) continue;
        const auto* rule = dynamic_cast<const CAppParseRuleKeyWord*>(child.get());
        if (rule == nullptr || rule->m_values.All().empty()) continue;
        return rule->m_values.All().begin()->second.Lines();
    }
    return {};
}

void CAppParseRuleKeyWord::AppendOuterValues(const std::string& name, CLetList& values) const {
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
            if (const auto* outerValues = rule->m_values.Find(name))
                ::AppendOuterValues(*outerValues, *scope, lines, values);
        }
        inner = outer;
    }
}

bool CAppParseRuleKeyWord::GetVariableLine(const std::string& name, int& line) {
    line = -1;
    const auto* values = m_values.Find(name);
    if (values == nullptr) return false;
    if (!values->IsEmpty()) line = values->FirstLine(std::numeric_limits<int>::min());
    return true;
}

bool CAppParseRuleKeyWord::IsNoneExist() {
    bool found = false;
    for (const auto& column : m_values.All())
        column.second.ForEach([&found](int, const CAppTextLet& let) {
            found = found || (let.IsEmpty() && let.text.empty());
        });
    return found;
}

CAppParseRule* CAppParseRuleKeyWord::GetChildRuleByVariableName(const std::string& name) {
    const auto full = WithDollar(name);
    const bool mine =
        m_values.Find(full) != nullptr || m_definition->variableTypes.count(full) != 0;
    return mine ? this : nullptr;
}

// The lines of a block variable count as context, those of all others as lines of variables.
void CAppParseRuleKeyWord::GetAllVarLineNums(std::set<int>& varLines,
                                             std::set<int>& extendLines) const {
    auto context = OriTextLines();
    extendLines.merge(context);
    for (const auto& [name, values] : m_values.All()) {
        auto& target = m_definition->mlineDefine.count(name) != 0 ? extendLines : varLines;
        values.ForEach([&target](int line, const CAppTextLet& let) {
            for (int row = let.beginRow; row <= let.endRow; ++row) target.insert(row);
            target.insert(let.lines.begin(), let.lines.end());
            target.insert(line);
        });
    }
    CAppParseRule::GetAllVarLineNums(varLines, extendLines);
}

void CAppParseRuleKeyWord::SaveResultAsXML(CMarkup& xml) {
    xml.AddElem(ResultKey::ParseResult);
    xml.IntoElem();
    xml.AddElem(ResultKey::ParserType, static_cast<int>(GetRuleType()));
    SaveResultAsXml(m_values.ToPositions(), xml, m_definition->variableTypes);
    CAppParseRule::SaveResultAsXML(xml);
    xml.OutOfElem();
}

bool CAppParseRuleKeyWord::SaveResultAsJson(hxJson::Value& node) {
    auto& result = node[ResultKey::ParseResult];
    result[ResultKey::ParserType] = static_cast<int>(GetRuleType());
    return SaveResultAsJSON(m_values.ToPositions(), result, m_definition->variableTypes, {});
}

bool CAppParseRuleKeyWord::SaveLineNumberAndResult(hxJson::Value& node) {
    for (const int line : OriTextLines()) {
        const auto text = OriginalLineView(line);
        if (!text.empty()) node[std::to_string(line)] = hxJson::Value(std::string(text));
    }
    return CAppParseRule::SaveLineNumberAndResult(node);
}
