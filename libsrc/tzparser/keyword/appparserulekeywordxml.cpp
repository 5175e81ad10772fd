// The rule's XML form. The built-in forms share it and differ in the number alone.
#include "host/xml/markup.h"
#include "tzparser/keyword/appparserulekeyword.h"
#include "tzparser/keyword/keywordkeys.h"
#include "tzparser/rule/markuplists.h"

bool CAppParseRuleKeyWord::LoadFromXml(CMarkup& xml) {
    std::vector<std::string> kvps;
    ReadTextList(xml, KeyWordKey::KeyWords, KeyWordKey::KeyWord, kvps);
    for (const auto& kvp : kvps) AddKVP(kvp);
    std::vector<std::string> statements;
    ReadTextList(xml, KeyWordKey::Statements, KeyWordKey::Statement, statements);
    for (const auto& statement : statements) AddStatement(statement);
    std::vector<std::string> types;
    if (ReadTextList(xml, KeyWordKey::VariableTypes, KeyWordKey::VariableType, types))
        LoadVariableTypes(types);
    return CAppParseRule::LoadFromXml(xml);
}

bool CAppParseRuleKeyWord::SaveToXml(CMarkup& xml) {
    const AppMarkupRule rule(xml, GetRuleType());
    return rule &&
           AddTextList(xml, KeyWordKey::KeyWords, KeyWordKey::KeyWord, m_definition->kvps) &&
           AddTextList(xml, KeyWordKey::Statements, KeyWordKey::Statement,
                       m_definition->statements) &&
           AddTextList(xml, KeyWordKey::VariableTypes, KeyWordKey::VariableType,
                       VariableTypeEntries()) &&
           CAppParseRule::SaveToXml(xml);
}
