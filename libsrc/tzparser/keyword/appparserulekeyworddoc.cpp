// The rule's document.
#include "tzparser/keyword/appparserulekeyword.h"
#include "tzparser/keyword/keywordkeys.h"

namespace {

std::vector<std::string> ReadTexts(const hxJson::Value& object, const char* key) {
    std::vector<std::string> texts;
    const auto& list = object[key];
    if (!list.isArray()) return texts;
    texts.reserve(list.size());
    for (const auto& text : list) texts.push_back(text.asString());
    return texts;
}

void WriteTexts(const std::vector<std::string>& texts, hxJson::Value& object, const char* key) {
    auto& list = object[key] = hxJson::Value(hxJson::arrayValue, false);
    for (const auto& text : texts) list.append(hxJson::Value(text));
}

}  // namespace

// Entries are appended to what the rule already holds: loading twice doubles the KVPs.
bool CAppParseRuleKeyWord::LoadParseRule(const hxJson::Value& node) {
    const auto& keywords = node[KeyWordKey::KeyWords];
    if (keywords.isObject())
        for (const auto& kvp : ReadTexts(keywords, KeyWordKey::KeyWord)) AddKVP(kvp);
    const auto& statements = node[KeyWordKey::Statements];
    if (statements.isObject())
        for (const auto& statement : ReadTexts(statements, KeyWordKey::Statement))
            AddStatement(statement);
    const auto& types = node[KeyWordKey::VariableTypes];
    if (types.isObject()) LoadVariableTypes(ReadTexts(types, KeyWordKey::VariableType));
    PreparePlan();
    return true;
}

void CAppParseRuleKeyWord::LoadVariableTypes(const std::vector<std::string>& entries) {
    auto& definition = EditDefinition();
    definition.variableTypes.clear();
    for (const auto& entry : entries) {
        const auto colon = entry.find(':');
        if (colon != std::string::npos)
            definition.variableTypes.try_emplace(entry.substr(0, colon), entry.substr(colon + 1));
    }
}

bool CAppParseRuleKeyWord::SaveParseRule(hxJson::Value& node) {
    WriteTexts(m_definition->kvps, node[KeyWordKey::KeyWords], KeyWordKey::KeyWord);
    WriteTexts(m_definition->statements, node[KeyWordKey::Statements], KeyWordKey::Statement);
    WriteTexts(VariableTypeEntries(), node[KeyWordKey::VariableTypes], KeyWordKey::VariableType);
    return true;
}

std::vector<std::string> CAppParseRuleKeyWord::VariableTypeEntries() const {
    std::vector<std::string> entries;
    entries.reserve(m_definition->variableTypes.size());
    for (const auto& [name, type] : m_definition->variableTypes)
        entries.push_back(name + ":" + type);
    return entries;
}
