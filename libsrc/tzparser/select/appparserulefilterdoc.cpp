// The rule's document.
#include "tzparser/select/appparserulefilter.h"
#include "tzparser/select/filterkeys.h"

namespace {

void AppendText(const hxJson::Value& value, std::vector<std::string>& texts) {
    auto text = value.asString();
    if (!text.empty()) texts.push_back(std::move(text));
}

// An object that holds, under a key, one text or an array of them.
void ReadTexts(const hxJson::Value& holder, const char* key, std::vector<std::string>& texts) {
    if (!holder.isObject()) return;
    const auto& value = holder[key];
    if (value.isString()) AppendText(value, texts);
    if (!value.isArray()) return;
    for (const auto& text : value) AppendText(text, texts);
}

// An array of objects that hold a text each.
void ReadTextObjects(const hxJson::Value& list, const char* key, std::vector<std::string>& texts) {
    if (!list.isArray()) return;
    for (const auto& element : list)
        if (element.isObject()) texts.push_back(element[key].asString());
}

void WriteTexts(const std::vector<std::string>& texts, hxJson::Value& list) {
    list = hxJson::Value(hxJson::arrayValue, false);
    for (const auto& text : texts) list.append(hxJson::Value(text));
}

}  // namespace

// Entries of the lists are appended to what the rule already holds.
bool CAppParseRuleFilter::LoadParseRule(const hxJson::Value& node) {
    auto& definition = EditDefinition();
    definition.name = node[FilterKey::Name].asString();
    definition.beginLine = node[FilterKey::StartLine].asString();
    definition.endLine = node[FilterKey::EndLine].asString();
    ReadTextObjects(node[FilterKey::SkipLines], FilterKey::SkipLine, definition.skipLines);
    ReadTexts(node[FilterKey::IncludeLines], FilterKey::IncludeLine, definition.includeLines);
    ReadTexts(node[FilterKey::ExcludeLines], FilterKey::ExcludeLine, definition.excludeLines);
    definition.isFilterLoop = node[FilterKey::FilterLoop].asBool();
    definition.isExcludeEndLine = node[FilterKey::ExcludeEndLine].asBool();
    definition.isExcludeBeginLine = node[FilterKey::ExcludeBeginLine].asBool();
    definition.asConfiglet = node[FilterKey::AsConfiglet].asBool();
    SetRuleModify();
    auto plan = MakePlan();
    m_definition.Edit().plan = std::move(plan);
    return true;
}

bool CAppParseRuleFilter::SaveParseRule(hxJson::Value& node) {
    node[FilterKey::Name] = m_definition->name;
    node[FilterKey::StartLine] = m_definition->beginLine;
    node[FilterKey::EndLine] = m_definition->endLine;
    WriteTexts(m_definition->skipLines, node[FilterKey::SkipLines]);
    WriteTexts(m_definition->includeLines, node[FilterKey::IncludeLines]);
    WriteTexts(m_definition->excludeLines, node[FilterKey::ExcludeLines]);
    node[FilterKey::FilterLoop] = m_definition->isFilterLoop;
    node[FilterKey::ExcludeEndLine] = m_definition->isExcludeEndLine;
    node[FilterKey::ExcludeBeginLine] = m_definition->isExcludeBeginLine;
    node[FilterKey::AsConfiglet] = m_definition->asConfiglet;
    return true;
}
