// Which variable a column feeds, of what type, and what the table adds to a variable tree.
#include "host/text/asciicase.h"
#include "tzparser/keyword/appparserulekeyword.h"
#include "tzparser/pattern/parserpatternhelper.h"
#include "tzparser/table/appparseruletable.h"
#include "tzparser/table/tabletext.h"
#include "tzparser/text/appstrutil.h"
#include "tzparser/variable/appvariabletabledef.h"

#include <algorithm>

namespace {

struct NamedType {
    std::string name;
    std::string type;
};

bool IsNameCharacter(char c) {
    return AsciiIsAlnum(c) || c == '_' || c == '$';
}

// The variable of a pattern that the statement language refuses. Only the first character that no
// name has is taken out.
NamedType ReadRefusedPattern(const std::string& pattern) {
    const auto begin = pattern.find('$');
    if (begin == std::string::npos) return {};
    const auto end = pattern.find_first_of(TableText::SpaceCharacters, begin);
    NamedType variable{pattern.substr(begin, end - begin), "string"};
    const auto colon = variable.name.find(':');
    if (colon != std::string::npos) {
        variable.type = variable.name.substr(1, colon - 1);
        variable.name.erase(1, colon);
    }
    const auto stray =
        std::find_if_not(variable.name.begin(), variable.name.end(), IsNameCharacter);
    if (stray != variable.name.end()) variable.name.erase(stray);
    return variable;
}

// No name for a pattern that feeds no column, or more than one.
NamedType ReadPattern(const std::string& pattern) {
    CParserPatternHelper helper;
    std::string error;
    if (!helper.Parse(pattern, error)) return ReadRefusedPattern(pattern);
    if (helper.IsRegex()) return {};
    const auto types = helper.GetVarTypesWithOrder();
    return types.size() == 1 ? NamedType{types[0].first, types[0].second} : NamedType{};
}

bool IsHeaderSeparator(char c) {
    return c == ' ' || c == '\t' || c == ';';
}

// Calls `take` with each keyword rule that stands in a paragraph above a rule, from the nearest
// paragraph outward, until it returns true. Filters between are passed over.
template <class Take>
void ForEachKeyWordAbove(const CAppParseRule& rule, Take take) {
    for (const auto* above = rule.GetParentRule(); above != nullptr;
         above = above->GetParentRule()) {
        if (above->GetRuleType() == RuleType_Filter) continue;
        if (above->GetRuleType() != RuleType_Paragraph) return;
        for (const auto& child : above->Children()) {
            if (child.get() == &rule || child->GetRuleType() != RuleType_KeyWord) continue;
            auto* keyword = dynamic_cast<CAppParseRuleKeyWord*>(child.get());
            if (keyword != nullptr && take(*keyword)) return;
        }
    }
}

void AppendOnce(std::vector<std::string>& names, std::set<std::string>& seen,
                const std::string& name) {
    if (seen.insert(name).second) names.push_back(name);
}

}  // namespace

void CAppParseRuleTable::AddHeaderVar(const std::string& header, const std::string& pattern) {
    const auto variable = ReadPattern(pattern);
    if (variable.name.empty()) return;
    auto& definition = EditDefinition();
    definition.variableTypes[variable.name] = variable.type;
    definition.headerVars[header] = variable.name;
}

// The root isn't told, unlike by other operations that take something out.
void CAppParseRuleTable::DelHeaderVar(const std::string& header) {
    EditDefinition().headerVars.erase(header);
}

std::string CAppParseRuleTable::GetVariableType(const std::string& name) const {
    auto type = FindVariableType(name);
    if (type.empty() && !name.empty() && name.front() != '$' &&
        m_definition->variableTypes.count(name) == 0)
        type = FindVariableType("$" + name);
    return type;
}

std::string CAppParseRuleTable::FindVariableType(const std::string& name) const {
    const auto known = m_definition->variableTypes.find(name);
    if (known != m_definition->variableTypes.end()) return known->second;
    std::string type;
    ForEachKeyWordAbove(*this, [&](const CAppParseRuleKeyWord& keyword) {
        type = keyword.GetVariableType(name);
        return !type.empty();
    });
    return type;
}

std::string CAppParseRuleTable::GetEnumVariableValue(const std::string& name) const {
    const auto known = m_definition->enumValues.find(name);
    return known == m_definition->enumValues.end() ? std::string() : known->second;
}

std::vector<std::string> CAppParseRuleTable::GetVariableNames() const {
    std::vector<std::string> names;
    std::set<std::string> seen;
    for (const auto& header : m_definition->headers) {
        const auto variable = m_definition->headerVars.find(header);
        if (variable != m_definition->headerVars.end()) AppendOnce(names, seen, variable->second);
    }
    ForEachKeyWordAbove(*this, [&](CAppParseRuleKeyWord& keyword) {
        for (const auto& name : keyword.GetVariableNames()) AppendOnce(names, seen, name);
        return false;
    });
    return names;
}

std::string CAppParseRuleTable::GetDefaultColumnVariableName(const std::string& header) {
    std::string name = "$" + header;
    std::transform(name.begin() + 1, name.end(), name.begin() + 1,
                   [](char c) { return AsciiIsAlnum(c) ? AsciiLower(c) : '_'; });
    return name;
}

std::string CAppParseRuleTable::GetHeaderByALineText(const std::string& line) {
    std::vector<std::string> headers;
    std::string header;
    for (std::size_t at = 0; at < line.size(); ++at) {
        if (!IsHeaderSeparator(line[at])) {
            header += line[at];
        } else if (header.empty() || at + 1 == line.size()) {
            continue;
        } else if (IsHeaderSeparator(line[at + 1])) {
            headers.push_back(std::move(header));
            header.clear();
        } else {
            header += line[at];
        }
    }
    if (!header.empty()) headers.push_back(std::move(header));
    return AppStrUtil::StrJoin(headers, ";");
}

// Columns are texts here, whatever the types of their variables are.
bool CAppParseRuleTable::AddToVariableTree(CAppVariableDef* parent) {
    auto table = std::make_unique<CAppVariableDef>(parent, "$" + m_definition->name,
                                                   AppDataType_Node19, AppVariableType_Parser, "");
    for (const auto& entry : m_definition->headerVars) {
        auto column = std::make_unique<CAppVariableDef>(
            table.get(), entry.second, AppDataType_String, AppVariableType_Parser, "");
        if (table->AddChild(column.get())) column.release();
    }
    if (parent->AddChild(table.get())) table.release();
    return true;
}
