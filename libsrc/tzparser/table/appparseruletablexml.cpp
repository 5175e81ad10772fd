// The rule's XML form. It holds the alignment and the hash settings, which the JSON form loses, but
// no exclude lines. Numbers and the flag of follow variables are texts that begin with a number, as
// in JSON; "true" under that flag is thus false.
#include "host/xml/markup.h"
#include "tzparser/rule/delimitedset.h"
#include "tzparser/rule/markuplists.h"
#include "tzparser/table/appparseruletable.h"
#include "tzparser/table/tablekeys.h"
#include "tzparser/table/tabletext.h"
#include "tzparser/text/appstrutil.h"

namespace {

constexpr const char* ListSeparator = ";";

}  // namespace

bool CAppParseRuleTable::LoadFromXml(CMarkup& xml) {
    xml.ResetChildPos();
    auto& definition = EditDefinition();
    std::string text;
    xml.GetData(TableKey::Name, definition.name);
    if (xml.GetData(TableKey::Headers, text)) SetHeader(text);
    xml.GetData(TableKey::EndLine, definition.endCond);
    xml.GetData(TableKey::IsSkipLine, definition.isSkipLine);
    if (xml.GetData(TableKey::SkipLine, text)) SetSkipLine(text);
    LoadColumnsFromXml(xml);
    LoadHashSettings(xml, *this);
    SetRuleModify();
    return CAppParseRule::LoadFromXml(xml);
}

void CAppParseRuleTable::LoadColumnsFromXml(CMarkup& xml) {
    auto& definition = EditDefinition();
    std::string text;
    if (xml.GetData(TableKey::HeaderToVariables, text)) LoadHeaderVars(text);
    xml.GetData(TableKey::LeftAlign, definition.alignLeft);
    if (xml.GetData(TableKey::AlignType, text)) SetAlign(text);
    xml.GetData(TableKey::AlignRange, definition.alignRange);
    if (xml.GetData(TableKey::KeyVariables, text)) InsertPieces(text, definition.keyVars);
    if (xml.GetData(TableKey::IsUsePreVars, text))
        definition.isUsePreVars = TableText::LeadingNumber(text) != 0;
    if (xml.GetData(TableKey::UsePreVars, text)) InsertPieces(text, definition.followVars);
    std::vector<std::string> types;
    if (ReadTextList(xml, TableKey::VariableTypes, TableKey::VariableType, types))
        LoadVariableTypes(types);
}

bool CAppParseRuleTable::SaveToXml(CMarkup& xml) {
    const AppMarkupRule rule(xml, GetRuleType());
    if (!rule) return false;
    xml.AddElem(TableKey::Name, m_definition->name);
    xml.AddElem(TableKey::Headers, AppStrUtil::StrJoin(m_definition->headers, ListSeparator));
    xml.AddElem(TableKey::EndLine, m_definition->endCond);
    AddFlag(xml, TableKey::IsSkipLine, m_definition->isSkipLine);
    xml.AddElem(TableKey::SkipLine, m_definition->skipLine);
    xml.AddElem(TableKey::HeaderToVariables, HeaderVarsText());
    AddFlag(xml, TableKey::LeftAlign, m_definition->alignLeft);
    xml.AddElem(TableKey::AlignType, m_definition->align);
    xml.AddElem(TableKey::AlignRange, m_definition->alignRange);
    xml.AddElem(TableKey::KeyVariables, JoinPieces(m_definition->keyVars));
    AddFlag(xml, TableKey::IsUsePreVars, m_definition->isUsePreVars);
    xml.AddElem(TableKey::UsePreVars, JoinPieces(m_definition->followVars));
    const bool hasTypes =
        AddTextList(xml, TableKey::VariableTypes, TableKey::VariableType, VariableTypeEntries());
    SaveHashSettings(xml, *this);
    return CAppParseRule::SaveToXml(xml) && hasTypes;
}
