#pragma once

#include "tzparser/keyword/appparserulekeyword.h"
#include "tzparser/paragraph/appparseruleparagraph.h"
#include "tzparser/rule/appparserulesample.h"
#include "tzparser/select/appparserulelineselector.h"
#include "tzparser/select/appparseruletext.h"
#include "tzparser/table/appparseruletable.h"

#include <map>
#include <memory>
#include <string>

// What a parse found, rule by rule, in one line: the number of the kind, the ranges of a paragraph
// ("0-2"), the open lines of a filter, design reader or diff filter
// ("[1 2]"), the text of a text rule, the values ("$a 0:2-3'1'", line and columns), then
// the children in round brackets. Rules stand apart by " | ".
inline std::string DumpValues(const std::map<std::string, std::map<int, CAppTextLet>>& positions) {
    std::string dump;
    for (const auto& [name, lets] : positions) {
        dump += " " + name;
        for (const auto& [line, let] : lets)
            dump += " " + std::to_string(line) + ":" + std::to_string(let.beginCol) + "-" +
                    std::to_string(let.endCol) + "'" + let.text + "'";
    }
    return dump;
}

inline std::string DumpRun(CAppParseRule& rule) {
    if (auto* keyword = dynamic_cast<CAppParseRuleKeyWord*>(&rule))
        return DumpValues(keyword->Values().ToPositions());
    if (auto* table = dynamic_cast<CAppParseRuleTable*>(&rule))
        return DumpValues(table->VariablePos());
    std::string dump;
    if (auto* paragraph = dynamic_cast<CAppParseRuleParagraph*>(&rule)) {
        for (std::size_t i = 0; i < paragraph->GetEndLines().size(); ++i)
            dump += " " + std::to_string(paragraph->GetBeginLines().at(i)) + "-" +
                    std::to_string(paragraph->GetEndLines()[i]);
    } else if (auto* text = dynamic_cast<CAppParseRuleText*>(&rule)) {
        for (const auto& let : text->GetVariableValue(text->GetName()))
            dump += " '" + let.text + "'";
    } else if (rule.GetRuleType() == RuleType_Filter ||
               rule.GetRuleType() == RuleType_DesignReader ||
               rule.GetRuleType() == RuleType_DiffFilter) {
        ForEachOpenLine(rule.LineStatus(),
                        [&dump](int line) { dump += " " + std::to_string(line); });
        dump = " [" + dump.substr(dump.empty() ? 0 : 1) + "]";
    }
    return dump;
}

inline std::string DumpRules(const CAppParseRule& parent) {
    std::string dump;
    for (const auto& rule : parent.Children()) {
        dump += (dump.empty() ? "" : " | ") + std::to_string(rule->GetRuleType()) + DumpRun(*rule);
        if (!rule->IsLeaf()) dump += " (" + DumpRules(*rule) + ")";
    }
    return dump;
}

// A clone of the tree, run over the text.
inline std::string DumpParse(CAppParseRule& rules, const std::string& text) {
    const std::unique_ptr<CAppParseRule> clone(rules.Clone(nullptr));
    clone->Parse(text, 0, -1, nullptr);
    return DumpRules(*clone);
}

// The document of a tree as saved, in the form that is loaded.
inline hxJson::Value SavedRules(CAppParseRule& rules) {
    hxJson::Value saved;
    rules.Save(saved);
    return saved;
}

// The rules of a saved document, without the members that hold nothing: false, 0, "" and what has
// no members.
inline hxJson::Value WithoutEmpty(const hxJson::Value& value) {
    if (value.isArray()) {
        hxJson::Value list(hxJson::arrayValue, false);
        for (const auto& element : value) list.append(WithoutEmpty(element));
        return list;
    }
    if (!value.isObject()) return value;
    hxJson::Value object(hxJson::objectValue, false);
    for (const auto& name : value.getMemberNames()) {
        auto member = WithoutEmpty(value[name]);
        const bool isNothing =
            member.isNull() || (member.isString() && member.asString().empty()) ||
            (member.isBool() && !member.asBool()) || (member.isInt() && member.asInt() == 0) ||
            ((member.isArray() || member.isObject()) && member.empty());
        if (!isNothing) object[name] = std::move(member);
    }
    return object;
}
