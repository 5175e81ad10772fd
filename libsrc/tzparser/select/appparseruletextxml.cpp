// The rule's XML form, which is only read: saving writes what stands below the rule, by the base.
#include "host/xml/markup.h"
#include "tzparser/rule/markuplists.h"
#include "tzparser/select/appparseruletext.h"
#include "tzparser/select/textkeys.h"

bool CAppParseRuleText::LoadFromXml(CMarkup& xml) {
    xml.ResetChildPos();
    auto& definition = m_definition.Edit();
    xml.GetData(TextKey::Name, definition.name);
    while (xml.FindElem(TextKey::Lines)) {
        TextRecord record;
        record.m_row = -1;
        xml.GetData(TextKey::Row, record.m_row);
        xml.GetData(TextKey::Text, record.m_text);
        definition.records.push_back(std::move(record));
    }
    SetRuleModify();
    return CAppParseRule::LoadFromXml(xml);
}
