// The rule's document.
#include "tzparser/rule/delimitedset.h"
#include "tzparser/table/appparseruletable.h"
#include "tzparser/table/tablekeys.h"
#include "tzparser/table/tabletext.h"
#include "tzparser/text/appstrutil.h"

#include <cstddef>
#include <utility>

namespace {

constexpr const char* ListSeparator = ";";
constexpr const char* EnumType = "enum";

// An entry cut at its first colon.
std::pair<std::string, std::string> CutAtColon(const std::string& entry, std::size_t colon) {
    return {entry.substr(0, colon), entry.substr(colon + 1)};
}

std::vector<std::string> ReadTypes(const hxJson::Value& list) {
    std::vector<std::string> entries;
    for (const auto& element : list)
        if (element.isObject()) entries.push_back(element[TableKey::VariableType].asString());
    return entries;
}

std::set<std::string> ReadTexts(const hxJson::Value& list) {
    std::set<std::string> texts;
    for (const auto& text : list) texts.insert(text.asString());
    return texts;
}

}  // namespace

// Exclude lines, key and follow variables are added to what the rule already holds. "isuseprevars"
// is a number as a text, unlike the other flags: true and false both read as 0.
bool CAppParseRuleTable::LoadParseRule(const hxJson::Value& node) {
    auto& definition = EditDefinition();
    definition.name = node[TableKey::Name].asString();
    SetHeader(node[TableKey::Headers].asString());
    definition.endCond = node[TableKey::EndLine].asString();
    definition.isSkipLine = node[TableKey::IsSkipLine].asBool();
    definition.skipLine = TableText::LeadingNumber(node[TableKey::SkipLine].asString());
    if (const auto& columns = node[TableKey::HashColumns]; columns.isArray()) {
        auto texts = ReadTexts(columns);
        SetTableCmpColumns(texts);
    }
    SetTableCmpSort(node[TableKey::HashSort].asBool());
    LoadHeaderVars(node[TableKey::HeaderToVariables].asString());
    definition.alignLeft = node[TableKey::LeftAlign].asBool();
    definition.align = TableText::LeadingNumber(node[TableKey::AlignType].asString());
    definition.alignRange = node[TableKey::AlignRange].asString();
    InsertPieces(node[TableKey::KeyVariables].asString(), definition.keyVars);
    definition.isUsePreVars =
        TableText::LeadingNumber(node[TableKey::IsUsePreVars].asCString()) != 0;
    InsertPieces(node[TableKey::UsePreVars].asString(), definition.followVars);
    if (const auto& types = node[TableKey::VariableTypes]; types.isArray())
        LoadVariableTypes(ReadTypes(types));
    LoadExcludeLines(node);
    SetRuleModify();
    auto plan = MakePlan();
    m_definition.Edit().plan = std::move(plan);
    return true;
}

// An entry is a header, a colon and a pattern; one without a colon is both.
void CAppParseRuleTable::LoadHeaderVars(const std::string& text) {
    for (const auto& entry : AppStrUtil::StrSplit(text, ListSeparator, false)) {
        const auto colon = entry.find(':');
        const auto [header, pattern] =
            colon == std::string::npos ? std::pair(entry, entry) : CutAtColon(entry, colon);
        AddHeaderVar(header, pattern);
    }
}

// Of two entries with one name the last stays; one without a colon is passed over.
void CAppParseRuleTable::LoadVariableTypes(const std::vector<std::string>& entries) {
    auto& types = EditDefinition().variableTypes;
    types.clear();
    for (const auto& entry : entries) {
        const auto colon = entry.find(':');
        if (colon == std::string::npos) continue;
        auto [name, type] = CutAtColon(entry, colon);
        types[name] = std::move(type);
    }
}

std::vector<std::string> CAppParseRuleTable::VariableTypeEntries() const {
    std::vector<std::string> entries;
    entries.reserve(m_definition->variableTypes.size());
    for (const auto& [name, type] : m_definition->variableTypes)
        entries.push_back(name + ":" + type);
    return entries;
}

void CAppParseRuleTable::LoadExcludeLines(const hxJson::Value& node) {
    if (!node[TableKey::EnableExcludeLines].asBool()) return;
    const auto& holder = node[TableKey::ExcludeLines];
    if (!holder.isObject()) return;
    const auto& list = holder[TableKey::ExcludeLine];
    if (!list.isArray()) return;
    for (const auto& line : list) {
        auto text = line.asString();
        if (!text.empty()) EditDefinition().excludeLines.push_back(std::move(text));
    }
}

// The alignment goes out under one key, of which the last to be written is the range: the kind of
// alignment isn't saved, and the flag that "leftalign" is when loaded comes back false from an
// empty range. Types go out as plain texts, which loading passes over.
bool CAppParseRuleTable::SaveParseRule(hxJson::Value& node) {
    node[TableKey::Name] = m_definition->name;
    node[TableKey::Headers] = AppStrUtil::StrJoin(m_definition->headers, ListSeparator);
    node[TableKey::EndLine] = m_definition->endCond;
    node[TableKey::IsSkipLine] = m_definition->isSkipLine;
    node[TableKey::SkipLine] = m_definition->skipLine;
    node[TableKey::HeaderToVariables] = HeaderVarsText();
    node[TableKey::LeftAlign] = m_definition->alignRange;
    node[TableKey::KeyVariables] = JoinPieces(m_definition->keyVars);
    node[TableKey::UsePreVars] = JoinPieces(m_definition->followVars);
    node[TableKey::IsUsePreVars] = m_definition->isUsePreVars;
    auto& types = node[TableKey::VariableTypes] = hxJson::Value(hxJson::arrayValue, false);
    for (const auto& entry : VariableTypeEntries()) types.append(hxJson::Value(entry));
    return true;
}

std::string CAppParseRuleTable::HeaderVarsText() const {
    std::vector<std::string> entries;
    entries.reserve(m_definition->headerVars.size());
    for (const auto& [header, variable] : m_definition->headerVars) {
        const auto type = GetVariableType(variable);
        auto entry = header + ":" + variable;
        entry.insert(header.size() + 2, type + ":");
        if (type == EnumType) entry += GetEnumVariableValue(variable);
        entries.push_back(std::move(entry));
    }
    return AppStrUtil::StrJoin(entries, ListSeparator);
}
