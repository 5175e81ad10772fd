// The rule's XML form. It is older than the id lines and the parent line, which it doesn't have,
// and truer than the JSON form in all else: each flag stands under its own name, and the number of
// lines of a paragraph is a number.
#include "host/xml/markup.h"
#include "tzparser/paragraph/appparseruleparagraph.h"
#include "tzparser/paragraph/paragraphkeys.h"
#include "tzparser/rule/delimitedset.h"
#include "tzparser/rule/markuplists.h"

namespace {

void ReadPieces(CMarkup& xml, const char* name, std::set<std::string>& pieces) {
    std::string text;
    if (xml.GetData(name, text)) InsertPieces(text, pieces);
}

}  // namespace

bool CAppParseRuleParagraph::LoadFromXml(CMarkup& xml) {
    xml.ResetChildPos();
    auto& definition = EditDefinition();
    xml.GetData(ParagraphKey::Name, definition.name);
    ReadPieces(xml, ParagraphKey::KeyVariables, definition.keyVars);
    xml.GetData(ParagraphKey::StartLine, definition.startExpr);
    xml.GetData(ParagraphKey::EndLine, definition.endExpr);
    xml.GetData(ParagraphKey::IsLineAsParagraph, definition.isLineAsParagraph);
    xml.GetData(ParagraphKey::LineAsParagraph, definition.lineAsParagraph);
    xml.GetData(ParagraphKey::ExcludeEndLine, definition.isExcludeEndLine);
    xml.GetData(ParagraphKey::IsUsePreVars, definition.isUsePreVars);
    ReadPieces(xml, ParagraphKey::UsePreVars, definition.followVars);
    LoadHashSettings(xml, *this);
    SetRuleModify();
    return CAppParseRule::LoadFromXml(xml);
}

bool CAppParseRuleParagraph::SaveToXml(CMarkup& xml) {
    const AppMarkupRule rule(xml, GetRuleType());
    if (!rule) return false;
    xml.AddElem(ParagraphKey::Name, m_definition->name);
    xml.AddElem(ParagraphKey::KeyVariables, JoinPieces(m_definition->keyVars));
    xml.AddElem(ParagraphKey::StartLine, m_definition->startExpr);
    xml.AddElem(ParagraphKey::EndLine, m_definition->endExpr);
    AddFlag(xml, ParagraphKey::IsLineAsParagraph, m_definition->isLineAsParagraph);
    xml.AddElem(ParagraphKey::LineAsParagraph, m_definition->lineAsParagraph);
    AddFlag(xml, ParagraphKey::ExcludeEndLine, m_definition->isExcludeEndLine);
    AddFlag(xml, ParagraphKey::IsUsePreVars, m_definition->isUsePreVars);
    xml.AddElem(ParagraphKey::UsePreVars, JoinPieces(m_definition->followVars));
    SaveHashSettings(xml, *this);
    return CAppParseRule::SaveToXml(xml);
}
