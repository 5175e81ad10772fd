// The rule's XML form.
#include "host/xml/markup.h"
#include "tzparser/rule/markuplists.h"
#include "tzparser/select/appparseruledesignreader.h"
#include "tzparser/select/readerkeys.h"

bool CAppParseRuleDesignReader::LoadFromXml(CMarkup& xml) {
    xml.ResetChildPos();
    auto& definition = m_definition.Edit();
    xml.GetData(ReaderKey::Name, definition.name);
    xml.GetData(ReaderKey::ReaderName, definition.readerName);
    xml.GetData(ReaderKey::ReaderCode, definition.readerCode);
    SetRuleModify();
    return CAppParseRule::LoadFromXml(xml);
}

bool CAppParseRuleDesignReader::SaveToXml(CMarkup& xml) {
    const AppMarkupRule rule(xml, GetRuleType());
    return rule && xml.AddElem(ReaderKey::Name, m_definition->name) &&
           xml.AddElem(ReaderKey::ReaderName, m_definition->readerName) &&
           xml.AddElem(ReaderKey::ReaderCode, m_definition->readerCode) &&
           CAppParseRule::SaveToXml(xml);
}
