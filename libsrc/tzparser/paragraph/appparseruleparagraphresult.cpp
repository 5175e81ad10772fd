// What a parse found: look-ups by name and the result documents.
#include "host/text/strformat.h"
#include "host/xml/markup.h"
#include "tzparser/keyword/appparserulekeyword.h"
#include "tzparser/paragraph/appparseruleparagraph.h"
#include "tzparser/paragraph/paragraphkeys.h"
#include "tzparser/rule/rulekeys.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr const char* StartMark = ".start";
constexpr const char* EndMark = ".end";

bool BeginsWith(const std::string& text, const std::string& prefix, std::size_t at = 0) {
    return text.compare(std::min(at, text.size()), prefix.size(), prefix) == 0;
}

// A rule's name as a full name begins with it; without a "." in the full name it is all of it.
std::string PrefixFor(const std::string& ruleName, const std::string& name) {
    return name.find('.') != std::string::npos ? ruleName + "." : ruleName;
}

bool AnswersForeignNames(const CAppParseRule& rule) {
    const auto type = rule.GetRuleType();
    return type == RuleType_Filter || type == RuleType_Table || type == RuleType_Paragraph;
}

std::string TextOfRange(int begin, int end) {
    StrFormat format("{0},{1}");
    format << begin << end;
    return format.str();
}

}  // namespace

std::vector<CAppTextLet> CAppParseRuleParagraph::GetVariableValue(const std::string& name) {
    return FindValues(name).TakeLets();
}

// The name addresses this rule when it begins with the rule's, which a longer name may do too. The
// children are then asked for what stands behind the name and one character more. Otherwise keyword
// rules aren't asked.
CLetList CAppParseRuleParagraph::FindValues(const std::string& name) {
    const auto& mine = m_definition->name;
    const auto prefix = PrefixFor(mine, name);
    const bool atFront = BeginsWith(name, prefix);
    const bool behindDollar = !name.empty() && name.front() == '$' && BeginsWith(name, prefix, 1);
    const bool isMine = atFront || behindDollar;
    const auto behind = mine.size() + (atFront ? 0 : 1);
    const auto key = isMine && name.size() > behind ? name.substr(behind + 1) : name;
    for (const auto& child : Children()) {
        if (!isMine && !AnswersForeignNames(*child)) continue;
        auto values = child->FindValues(key);
        if (!values.IsEmpty()) return values;
    }
    return {};
}

CAppParseRule* CAppParseRuleParagraph::GetChildRuleByVariableName(const std::string& name) {
    auto prefix = PrefixFor(m_definition->name, name);
    if (!name.empty() && name.front() == '$') prefix.insert(prefix.begin(), '$');
    if (name == prefix) return this;
    const bool isMine = BeginsWith(name, prefix) && !prefix.empty() && prefix.back() == '.';
    const auto key = isMine ? name.substr(prefix.size()) : name;
    for (const auto& child : Children()) {
        const auto type = child->GetRuleType();
        const bool isAsked = isMine ? type == RuleType_KeyWord
                                    : type == RuleType_Table || type == RuleType_Paragraph;
        if (!isAsked) continue;
        if (auto* owner = child->GetChildRuleByVariableName(key)) return owner;
    }
    return nullptr;
}

bool CAppParseRuleParagraph::IsNoneExist() {
    return std::any_of(Children().begin(), Children().end(),
                       [](const auto& child) { return child->IsNoneExist(); });
}

// The test reads as if it were inverted, and bounds of definitions in use rely on it: any name that
// doesn't begin with ".start", one that ends in ".end" too, gives the first begin line. Both lists
// ascend, so the smallest begin is the first.
bool CAppParseRuleParagraph::GetVariableLine(const std::string& name, int& line) {
    line = -1;
    if (m_ranges.begins.empty() || m_ranges.ends.empty()) return false;
    if (name.find(StartMark) != 0)
        line = m_ranges.begins.front();
    else if (name.find(EndMark) != 0)
        line = m_ranges.ends.front();
    return true;
}

std::string CAppParseRuleParagraph::GetKeyVariableValue(const std::string& name, int index) const {
    auto* keyword = GetFirstKeywordRule();
    if (keyword == nullptr || index < 0) return {};
    const auto* values = keyword->Values().Find(name);
    return values != nullptr ? values->AtIndex(static_cast<std::size_t>(index)).text
                             : std::string();
}

bool CAppParseRuleParagraph::SaveResultAsJson(hxJson::Value& node) {
    auto& result = node[ResultKey::ParseResult];
    result[ParagraphKey::ParserName] = m_definition->name;
    result[ResultKey::ParserType] = static_cast<int>(GetRuleType());
    auto& paragraphs = result[ParagraphKey::Paragraphs] = hxJson::Value(hxJson::arrayValue, false);
    const auto& [begins, ends] = m_ranges;
    if (begins.size() == ends.size())
        for (std::size_t i = 0; i < begins.size(); ++i)
            paragraphs.append(hxJson::Value(TextOfRange(begins[i], ends[i])));
    return CAppParseRule::SaveResultAsJson(result);
}

void CAppParseRuleParagraph::SaveResultAsXML(CMarkup& xml) {
    xml.AddElem(ResultKey::ParseResult);
    xml.IntoElem();
    xml.AddElem(ParagraphKey::ParserName, m_definition->name);
    xml.AddElem(ResultKey::ParserType, static_cast<int>(GetRuleType()));
    xml.AddElem(ParagraphKey::Paragraphs);
    xml.IntoElem();
    const auto& [begins, ends] = m_ranges;
    if (begins.size() == ends.size())
        for (std::size_t i = 0; i < begins.size(); ++i)
            xml.AddElem(ParagraphKey::XmlParagraph, TextOfRange(begins[i], ends[i]));
    xml.OutOfElem();
    CAppParseRule::SaveResultAsXML(xml);
    xml.OutOfElem();
}
