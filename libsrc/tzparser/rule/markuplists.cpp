#include "tzparser/rule/markuplists.h"

#include "host/xml/markup.h"
#include "tzparser/rule/appparserule.h"
#include "tzparser/rule/rulekeys.h"

#include <set>

AppMarkupLevel::AppMarkupLevel(CMarkup& xml) : m_xml(xml), m_isInside(xml.IntoElem()) {}

// An element that can't be added leaves the cursor on the one before it, which must not be entered.
AppMarkupLevel::AppMarkupLevel(CMarkup& xml, const char* name)
    : m_xml(xml), m_isInside(xml.AddElem(name) && xml.IntoElem()) {}

AppMarkupLevel::~AppMarkupLevel() {
    if (m_isInside) m_xml.OutOfElem();
}

AppMarkupRule::AppMarkupRule(CMarkup& xml, int ruleType)
    : AppMarkupLevel(xml, RuleKey::ParseRule),
      m_isComplete(m_isInside && xml.AddElem(RuleKey::Type, ruleType)) {}

bool FindFirstElem(CMarkup& xml, const char* name) {
    xml.ResetChildPos();
    return xml.FindElem(name);
}

void ReadTexts(CMarkup& xml, const char* name, std::vector<std::string>& texts) {
    xml.ResetChildPos();
    while (xml.FindElem(name)) texts.push_back(xml.GetData());
}

bool ReadTextList(CMarkup& xml, const char* container, const char* name,
                  std::vector<std::string>& texts) {
    if (!FindFirstElem(xml, container)) return false;
    const AppMarkupLevel level(xml);
    ReadTexts(xml, name, texts);
    return true;
}

bool AddTextList(CMarkup& xml, const char* container, const char* name,
                 const std::vector<std::string>& texts) {
    const AppMarkupLevel level(xml, container);
    bool isComplete = static_cast<bool>(level);
    for (const auto& text : texts) isComplete = isComplete && xml.AddElem(name, text);
    return isComplete;
}

void AddFlag(CMarkup& xml, const char* name, bool flag) {
    xml.AddElem(name, flag ? 1 : 0);
}

void LoadHashSettings(CMarkup& xml, CAppParseRule& rule) {
    std::vector<std::string> texts;
    ReadTexts(xml, RuleKey::XmlHashColumns, texts);
    std::set<std::string> columns(texts.begin(), texts.end());
    if (!columns.empty()) rule.SetTableCmpColumns(columns);
    xml.ResetChildPos();
    bool sort = false;
    if (xml.GetData(RuleKey::XmlHashSort, sort)) rule.SetTableCmpSort(sort);
}

void SaveHashSettings(CMarkup& xml, const CAppParseRule& rule) {
    std::set<std::string> columns;
    rule.GetTableCmpColumns(columns);
    for (const auto& column : columns) xml.AddElem(RuleKey::XmlHashColumns, column);
    xml.AddElem(RuleKey::XmlHashSort, rule.IsTableCmpSort() ? "true" : "false");
}
