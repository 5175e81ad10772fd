// The rule's XML form, which is only read: saving writes what stands below the rule, by the base.
#include "host/xml/markup.h"
#include "tzparser/rule/markuplists.h"
#include "tzparser/select/appparseruledifffilter.h"
#include "tzparser/select/difffilterkeys.h"

bool CAppParseRuleDiffFilter::LoadFromXml(CMarkup& xml) {
    xml.ResetChildPos();
    auto& definition = m_definition.Edit();
    xml.GetData(DiffFilterKey::Name, definition.name);
    while (xml.FindElem(DiffFilterKey::Lines)) {
        int row = -1;
        std::string text;
        bool isAdded = false;
        xml.GetData(DiffFilterKey::Row, row);
        xml.GetData(DiffFilterKey::Text, text);
        xml.GetData(DiffFilterKey::Added, isAdded);
        definition.lines.m_rows[row] = std::move(text);
        if (isAdded) definition.lines.m_addedRows.insert(row);
    }
    SetRuleModify();
    PrepareBaseline();
    return CAppParseRule::LoadFromXml(xml);
}
