// Save writes the tree; then each rule whose own keys loading would misread gets them anew.
#include "tzparser/convert/loadablerules.h"

#include "host/text/stlhelper.h"
#include "tzparser/convert/rulewords.h"
#include "tzparser/keyword/appparserulekeyword.h"
#include "tzparser/keyword/keywordkeys.h"
#include "tzparser/paragraph/appparseruleparagraph.h"
#include "tzparser/paragraph/paragraphkeys.h"
#include "tzparser/rule/appparserulesample.h"
#include "tzparser/rule/rulekeys.h"
#include "tzparser/script/appparserulescript.h"
#include "tzparser/script/scriptkeys.h"
#include "tzparser/select/appparserulefilter.h"
#include "tzparser/select/filterkeys.h"
#include "tzparser/table/appparseruletable.h"
#include "tzparser/table/tablekeys.h"
#include "tzparser/variable/appvariabledef.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace {

template <class Range>
hxJson::Value List(const Range& texts) {
    hxJson::Value list(hxJson::arrayValue);
    for (const auto& text : texts) list.append(hxJson::Value(text));
    return list;
}

// The texts behind those that a rule of a built-in form comes with: loading adds the ones of a
// document to them, so each saving and loading has put them in front once more.
std::vector<std::string> WithoutBuiltIn(const std::vector<std::string>& texts,
                                        const std::vector<std::string>& builtIn) {
    auto begin = texts.begin();
    while (!builtIn.empty() && static_cast<std::size_t>(texts.end() - begin) >= builtIn.size() &&
           std::equal(builtIn.begin(), builtIn.end(), begin))
        begin += static_cast<std::ptrdiff_t>(builtIn.size());
    return {begin, texts.end()};
}

void Amend(CAppParseRuleKeyWord& rule, hxJson::Value& node) {
    const std::unique_ptr<CAppParseRule> made(rule.CreateObject(nullptr));
    const auto* fresh = dynamic_cast<const CAppParseRuleKeyWord*>(made.get());
    if (fresh == nullptr) return;
    node[KeyWordKey::KeyWords][KeyWordKey::KeyWord] =
        List(WithoutBuiltIn(rule.GetKVPs(), fresh->GetKVPs()));
    node[KeyWordKey::Statements][KeyWordKey::Statement] =
        List(WithoutBuiltIn(rule.GetStatements(), fresh->GetStatements()));
}

void Amend(CAppParseRuleFilter& filter, hxJson::Value& node) {
    hxJson::Value skipLines(hxJson::arrayValue);
    for (const auto& line : filter.GetSkipLine())
        skipLines.append(hxJson::Value())[FilterKey::SkipLine] = line;
    node[FilterKey::SkipLines] = std::move(skipLines);
    const auto hold = [&node](const char* holder, const char* key, hxJson::Value list) {
        node[holder] = hxJson::Value(hxJson::objectValue);
        node[holder][key] = std::move(list);
    };
    hold(FilterKey::IncludeLines, FilterKey::IncludeLine, List(filter.GetIncludeLine()));
    hold(FilterKey::ExcludeLines, FilterKey::ExcludeLine, List(filter.GetExcludeLine()));
}

void Amend(CAppParseRuleParagraph& paragraph, hxJson::Value& node) {
    node[ParagraphKey::IsUsePreVars] = paragraph.IsUsePreVars();
    node[ParagraphKey::ExcludeEndLine] = paragraph.IsExcludeEndLine();
    std::set<std::string> columns;
    paragraph.GetTableCmpColumns(columns);
    node[ParagraphKey::HashColumns] = List(columns);
    node[ParagraphKey::HashSort] = paragraph.IsTableCmpSort();
    auto lines = paragraph.GetIDLines();
    if (!paragraph.GetStartExpr().empty()) lines.erase(lines.begin());
    node[ParagraphKey::IdLines] = List(lines);
    node[ParagraphKey::ParentLine] = paragraph.GetParentLine();
}

// The pairs of header and variable carry no types: "variabletypes", read behind them, has them all.
std::string HeaderVariables(const CAppParseRuleTable& table) {
    std::string text;
    for (const auto& [header, variable] : table.GetHeaderVars())
        text.append(text.empty() ? "" : ";").append(header).append(":").append(variable);
    return text;
}

void Amend(CAppParseRuleTable& table, hxJson::Value& node) {
    node[TableKey::LeftAlign] = table.IsAlignLeft();
    node[TableKey::AlignType] = table.GetAlign();
    node[TableKey::AlignRange] = table.GetAlignRange();
    node[TableKey::IsUsePreVars] = table.IsUsePreVars() ? 1 : 0;
    node[TableKey::HeaderToVariables] = HeaderVariables(table);
    hxJson::Value types(hxJson::arrayValue);
    for (const auto& [name, type] : table.GetVariableTypeDefine())
        types.append(hxJson::Value())[TableKey::VariableType] = name + ":" + type;
    node[TableKey::VariableTypes] = std::move(types);
    std::set<std::string> columns;
    table.GetTableCmpColumns(columns);
    node[TableKey::HashColumns] = List(columns);
    node[TableKey::HashSort] = table.IsTableCmpSort();
    node[TableKey::EnableExcludeLines] = !table.GetExcludeLines().empty();
    node[TableKey::ExcludeLines] = hxJson::Value(hxJson::objectValue);
    node[TableKey::ExcludeLines][TableKey::ExcludeLine] = List(table.GetExcludeLines());
}

hxJson::Value Types(const CAppParseRuleScript::TypeMap& types) {
    hxJson::Value list(hxJson::arrayValue);
    for (const auto& [name, type] : types) {
        auto& entry = list.append(hxJson::Value());
        entry[ScriptKey::Name] = name;
        entry[ScriptKey::Type] = type;
    }
    hxJson::Value holder;
    holder[ScriptKey::VariableType] = std::move(list);
    return holder;
}

// The settings of a table stand under its name in small letters without "$".
void AmendTable(CAppParseRuleScript& script, const std::string& table, hxJson::Value& node) {
    std::string trimmed = table;
    StlHelper::trim(trimmed, "$");
    const auto member = StlHelper::toLower(trimmed);
    std::set<std::string> columns;
    script.GetTableCmpColumnsByTable(trimmed, columns);
    if (!columns.empty()) node[ScriptKey::HashColumns][member] = List(columns);
    if (script.IsTableCmpSort(trimmed)) node[ScriptKey::HashSort][member] = true;
    std::string interfaceKey;
    script.GetTableInterfaceKeys(trimmed, interfaceKey);
    if (!interfaceKey.empty()) node[ScriptKey::InterfaceKey][member] = interfaceKey;
    std::set<std::string> keys;
    script.GetTableKeys(trimmed, keys);
    if (!keys.empty()) node[ScriptKey::TableKeys][member] = List(keys);
}

void Amend(CAppParseRuleScript& script, hxJson::Value& node) {
    node[ScriptKey::Script] = script.GetScript();
    node[ScriptKey::VariableTypes] = Types(script.GetVariableTypeDefine());
    for (const char* key : {ScriptKey::HashColumns, ScriptKey::HashSort, ScriptKey::InterfaceKey,
                            ScriptKey::TableKeys})
        node[key] = hxJson::Value(hxJson::objectValue);
    hxJson::Value tables(hxJson::arrayValue);
    for (const auto& [name, types] : script.GetTableVariableTypeDefine()) {
        auto& table = tables.append(hxJson::Value());
        table[ScriptKey::Name] = name;
        table[ScriptKey::VariableTypes] = Types(types);
        table[ScriptKey::VariableTypes][ScriptKey::TableColumns] =
            List(script.GetTableVariableNames(name));
        AmendTable(script, name, node);
    }
    node[ScriptKey::TableVariableTypes] = hxJson::Value(hxJson::objectValue);
    node[ScriptKey::TableVariableTypes][ScriptKey::TableVariableType] = std::move(tables);
}

template <class Rule>
void AmendAs(CAppParseRule& rule, hxJson::Value& node) {
    if (auto* own = dynamic_cast<Rule*>(&rule)) Amend(*own, node);
}

struct Amender {
    RuleType ruleType;
    void (*amend)(CAppParseRule&, hxJson::Value&);
};

constexpr Amender Amenders[] = {
    {RuleType_Ping, &AmendAs<CAppParseRuleKeyWord>},
    {RuleType_TraceRoute, &AmendAs<CAppParseRuleKeyWord>},
    {RuleType_Filter, &AmendAs<CAppParseRuleFilter>},
    {RuleType_Paragraph, &AmendAs<CAppParseRuleParagraph>},
    {RuleType_Table, &AmendAs<CAppParseRuleTable>},
    {RuleType_Script, &AmendAs<CAppParseRuleScript>},
};

// Calls itself once a level, as all that walks over a tree of rules, whose depth is limited where
// it is read.
void AmendChildren(const CAppParseRule& parent, hxJson::Value& holder) {
    std::size_t index = 0;
    for (const auto& rule : parent.Children()) {
        auto& node = holder[RuleKey::ParseRule][index++];
        for (const auto& amender : Amenders)
            if (amender.ruleType == rule->GetRuleType()) amender.amend(*rule, node);
        if (!rule->IsLeaf()) AmendChildren(*rule, node[RuleKey::Child]);
    }
}

bool IsIdle(const hxJson::Value& rule) {
    return rule[RuleKey::Type].asInt() == RuleType_KeyWord && SaysNothing(rule);
}

// Before another keyword rule an idle one has to stay, or the other would take its place.
bool CanDropFirst(const hxJson::Value& rules) {
    return rules.size() > 0 && IsIdle(rules[0]) &&
           (rules.size() == 1 || rules[1][RuleKey::Type].asInt() != RuleType_KeyWord);
}

void DropFirst(hxJson::Value& rules) {
    hxJson::Value left(hxJson::arrayValue);
    for (std::size_t index = 1; index < rules.size(); ++index) left.append(std::move(rules[index]));
    rules = std::move(left);
}

}  // namespace

hxJson::Value LoadableRules(CAppParseRuleSample& sample) {
    CAppVariableDef variables;
    sample.AddToVariableTree(&variables);
    hxJson::Value saved;
    sample.Save(saved);
    hxJson::Value rules;
    rules[RuleKey::ParseRule] = std::move(saved[RuleKey::ParseRules][RuleKey::ParseRule]);
    AmendChildren(sample, rules);
    return rules;
}

void DropDefaultRules(hxJson::Value& rules) {
    for (auto& rule : rules[RuleKey::ParseRule]) {
        if (!rule.isMember(RuleKey::Child)) continue;
        auto& child = rule[RuleKey::Child];
        DropDefaultRules(child);
        if (!HasDefaultChild(rule[RuleKey::Type].asInt())) continue;
        if (CanDropFirst(child[RuleKey::ParseRule])) DropFirst(child[RuleKey::ParseRule]);
        if (child[RuleKey::ParseRule].empty()) rule.removeMember(RuleKey::Child);
    }
}
