// The rule's XML form. Unlike the JSON form it is read in the shape in which it is written; what
// has no element keeps its value, so that the end line stays excluded by default.
#include "host/xml/markup.h"
#include "tzparser/rule/markuplists.h"
#include "tzparser/select/appparserulefilter.h"
#include "tzparser/select/filterkeys.h"

bool CAppParseRuleFilter::LoadFromXml(CMarkup& xml) {
    xml.ResetChildPos();
    auto& definition = EditDefinition();
    xml.GetData(FilterKey::Name, definition.name);
    xml.GetData(FilterKey::StartLine, definition.beginLine);
    xml.GetData(FilterKey::EndLine, definition.endLine);
    ReadTextList(xml, FilterKey::SkipLines, FilterKey::SkipLine, definition.skipLines);
    ReadTextList(xml, FilterKey::IncludeLines, FilterKey::IncludeLine, definition.includeLines);
    ReadTextList(xml, FilterKey::ExcludeLines, FilterKey::ExcludeLine, definition.excludeLines);
    xml.ResetChildPos();
    xml.GetData(FilterKey::FilterLoop, definition.isFilterLoop);
    xml.GetData(FilterKey::ExcludeEndLine, definition.isExcludeEndLine);
    xml.GetData(FilterKey::ExcludeBeginLine, definition.isExcludeBeginLine);
    SetRuleModify();
    std::string configlet;
    if (xml.GetData(FilterKey::AsConfiglet, configlet)) SetAsConfiglet(configlet);
    return CAppParseRule::LoadFromXml(xml);
}

bool CAppParseRuleFilter::SaveToXml(CMarkup& xml) {
    const AppMarkupRule rule(xml, GetRuleType());
    if (!rule) return false;
    xml.AddElem(FilterKey::Name, m_definition->name);
    xml.AddElem(FilterKey::StartLine, m_definition->beginLine);
    xml.AddElem(FilterKey::EndLine, m_definition->endLine);
    const bool hasLists =
        AddTextList(xml, FilterKey::SkipLines, FilterKey::SkipLine, m_definition->skipLines) &&
        AddTextList(xml, FilterKey::IncludeLines, FilterKey::IncludeLine,
                    m_definition->includeLines) &&
        AddTextList(xml, FilterKey::ExcludeLines, FilterKey::ExcludeLine,
                    m_definition->excludeLines);
    AddFlag(xml, FilterKey::FilterLoop, m_definition->isFilterLoop);
    AddFlag(xml, FilterKey::ExcludeEndLine, m_definition->isExcludeEndLine);
    AddFlag(xml, FilterKey::ExcludeBeginLine, m_definition->isExcludeBeginLine);
    AddFlag(xml, FilterKey::AsConfiglet, m_definition->asConfiglet);
    return CAppParseRule::SaveToXml(xml) && hasLists;
}
