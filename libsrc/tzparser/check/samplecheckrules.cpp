// What a rule node says: bounds, statements, operations.
#include "tzparser/check/checkshape.h"
#include "tzparser/check/samplecheck.h"
#include "tzparser/check/statementcheck.h"
#include "tzparser/keyword/appparserulekeyword.h"
#include "tzparser/keyword/keywordkeys.h"
#include "tzparser/rule/nigroupinfo.h"
#include "tzparser/rule/rulekeys.h"
#include "tzparser/rule/searchreplaceoperation.h"
#include "tzparser/select/filterkeys.h"

#include <algorithm>

namespace {

std::string Element(const std::string& path, std::size_t index) {
    return path + "[" + std::to_string(index) + "]";
}

}  // namespace

void CSampleCheck::CheckBound(const hxJson::Value& bound, const std::string& path) {
    if (!HasShape(bound, CheckShape_Object, m_report, path) || bound.empty()) return;
    NIGroupInfo info;
    info.Load(bound);
    switch (info.m_type) {
        case NIGroupType_None:
            break;
        case NIGroupType_Variable:
            CheckVariableBound(info, path);
            break;
        case NIGroupType_Pattern:
            CheckPatternBound(info, path);
            break;
        default:
            m_report.Add(path, CheckMessage_UnknownBound, {std::to_string(info.m_type)});
    }
}

// The rule that has the variable stands directly under the root and runs before this one.
void CSampleCheck::CheckVariableBound(const NIGroupInfo& bound, const std::string& path) {
    if (bound.m_text.empty()) {
        m_report.Add(path, CheckMessage_BoundWithoutVariable);
        return;
    }
    auto* owner = m_sample.GetRule().GetChildRuleByRuleId(bound.m_xxid);
    if (owner == nullptr) {
        m_report.Add(path, CheckMessage_BoundRuleUnknown, {bound.m_xxid});
        return;
    }
    const auto& rules = m_sample.GetRule().Children();
    const auto at = std::find_if(rules.begin(), rules.end(),
                                 [owner](const auto& rule) { return rule.get() == owner; });
    const auto ownerIndex = static_cast<std::size_t>(at - rules.begin());
    if (ownerIndex > m_topRule || (ownerIndex == m_topRule && m_open.size() == 1)) {
        m_report.Add(path, CheckMessage_BoundRuleTooLate, {bound.m_xxid});
        return;
    }
    auto* keyword = dynamic_cast<CAppParseRuleKeyWord*>(owner);
    if (keyword == nullptr) return;
    const auto names = keyword->GetVariableNames();
    if (std::find(names.begin(), names.end(), bound.m_text) == names.end())
        m_report.Add(path, CheckMessage_BoundVariableUnknown, {bound.m_xxid, bound.m_text});
}

void CSampleCheck::CheckPatternBound(const NIGroupInfo& bound, const std::string& path) {
    if (bound.m_pattern.empty()) {
        m_report.Add(path, CheckMessage_PatternEmpty);
        return;
    }
    CheckPattern(bound.m_pattern, path, CheckMessage_PatternBroken);
}

// A pattern that is no statement is searched for as it stands, which is right for a plain text but
// not for a broken expression.
void CSampleCheck::CheckPattern(const std::string& pattern, const std::string& path,
                                CheckMessage_e broken) {
    const CStatementCheck check(pattern);
    if (!check.IsValid()) {
        if (!check.HasMarker()) {
            CheckAnchors(pattern, path);
            return;
        }
        const auto fault = check.WhyInvalid();
        m_report.Add(path, CheckMessage_PatternAsText, {check.Words(), fault.reason},
                     check.Statement(), fault.caret);
        return;
    }
    const auto fault = check.WhyBroken();
    if (!fault.reason.empty())
        m_report.Add(path, broken, {fault.reason}, check.Statement(), fault.caret);
}

// In a plain text "^" and "$" are looked for like its other characters, seldom what is meant.
void CSampleCheck::CheckAnchors(const std::string& text, const std::string& path) {
    if (text.empty()) return;
    if (text.front() == '^')
        m_report.Add(path, CheckMessage_PatternAnchorAsText, {}, text, 0);
    else if (text.back() == '$')
        m_report.Add(path, CheckMessage_PatternAnchorAsText, {}, text, text.size() - 1);
}

// Bounds and operations of a kind that doesn't heed them.
void CSampleCheck::CheckUnused(const hxJson::Value& node, const std::string& path,
                               CheckMessage_e message) {
    for (const auto* key : {RuleKey::NiStart, RuleKey::NiEnd, RuleKey::Operations})
        if (!node[key].empty()) m_report.Add(path + "." + key, message);
}

// A begin line with global variables gets its expression from each parse.
void CSampleCheck::CheckFilter(const hxJson::Value& node, const std::string& path) {
    CheckUnused(node, path, CheckMessage_NotForFilter);
    const auto check = [&](const char* key) {
        const auto pattern = node[key].asString();
        if (!pattern.empty() && pattern.find("$$") == std::string::npos)
            CheckPattern(pattern, path + "." + key, CheckMessage_FilterPatternBroken);
    };
    check(FilterKey::StartLine);
    check(FilterKey::EndLine);
    CheckFilterLines(node, FilterKey::IncludeLines, FilterKey::IncludeLine, path);
    CheckFilterLines(node, FilterKey::ExcludeLines, FilterKey::ExcludeLine, path);
}

void CSampleCheck::CheckFilterLines(const hxJson::Value& node, const char* holder, const char* key,
                                    const std::string& path) {
    const auto holderPath = path + "." + holder;
    if (!HasShape(node[holder], CheckShape_Object, m_report, holderPath)) return;
    const auto& lines = node[holder][key];
    const auto listPath = holderPath + "." + key;
    if (!lines.isArray()) {
        if (!lines.asString().empty())
            CheckPattern(lines.asString(), listPath, CheckMessage_FilterPatternBroken);
        return;
    }
    for (std::size_t i = 0; i < lines.size(); ++i)
        if (!lines[i].asString().empty())
            CheckPattern(lines[i].asString(), Element(listPath, i),
                         CheckMessage_FilterPatternBroken);
}

// The list under a key such as "keywords": { "keyword": [...] }; null when there is none. The path
// goes on to the list.
const hxJson::Value* CSampleCheck::ListOf(const hxJson::Value& node, const char* holder,
                                          const char* key, std::string& path) {
    path.append(".").append(holder);
    if (!HasShape(node[holder], CheckShape_Object, m_report, path)) return nullptr;
    path.append(".").append(key);
    const auto& list = node[holder][key];
    return HasShape(list, CheckShape_Array, m_report, path) ? &list : nullptr;
}

void CSampleCheck::CheckKeyWords(const hxJson::Value& node, const std::string& path) {
    auto listPath = path;
    if (const auto* list = ListOf(node, KeyWordKey::KeyWords, KeyWordKey::KeyWord, listPath)) {
        std::vector<CStatementCheck> checks;
        std::set<std::string> names;
        for (const auto& statement : *list) {
            checks.emplace_back(statement.asString());
            if (!checks.back().IsValid()) continue;
            for (auto& name : checks.back().Compiled().GetVarNames()) names.insert(std::move(name));
        }
        names.erase(DummyVariableName);
        for (std::size_t i = 0; i < checks.size(); ++i) {
            CheckStatement(checks[i], Element(listPath, i));
            CheckSpans(checks[i], names, Element(listPath, i));
        }
    }
    listPath = path;
    ListOf(node, KeyWordKey::Statements, KeyWordKey::Statement, listPath);
    listPath = path;
    if (const auto* list =
            ListOf(node, KeyWordKey::VariableTypes, KeyWordKey::VariableType, listPath))
        for (std::size_t i = 0; i < list->size(); ++i)
            CheckVariableType((*list)[i].asString(), Element(listPath, i));
    if (!node[RuleKey::Child].empty())
        m_report.Add(path + "." + RuleKey::Child, CheckMessage_BelowKeyWord);
}

// A definition that was saved by a program lists the lines that the rule declares of itself.
void CSampleCheck::CheckBuiltIn(const hxJson::Value& node, int type, const std::string& path) {
    const auto rule = MakeRule(type, RuleNodeForm_Array, nullptr);
    const auto* declared = dynamic_cast<const CAppParseRuleKeyWord*>(rule.get());
    if (declared == nullptr) return;
    const auto check = [&](const char* holder, const char* key,
                           const std::vector<std::string>& own) {
        auto listPath = path;
        const auto* list = ListOf(node, holder, key, listPath);
        for (std::size_t i = 0; list != nullptr && i < list->size(); ++i) {
            const auto text = (*list)[i].asString();
            if (text.empty() || std::find(own.begin(), own.end(), text) != own.end()) continue;
            const CStatementCheck statement(text);
            if (!statement.IsValid() || !statement.Compiled().IsMline())
                m_report.Add(Element(listPath, i), CheckMessage_NotForBuiltIn, {}, text);
        }
    };
    check(KeyWordKey::KeyWords, KeyWordKey::KeyWord, declared->GetKVPs());
    check(KeyWordKey::Statements, KeyWordKey::Statement, declared->GetStatements());
    auto listPath = path;
    ListOf(node, KeyWordKey::VariableTypes, KeyWordKey::VariableType, listPath);
    if (!node[RuleKey::Child].empty())
        m_report.Add(path + "." + RuleKey::Child, CheckMessage_BelowKeyWord);
}

void CSampleCheck::CheckStatement(const CStatementCheck& check, const std::string& path) {
    if (check.Statement().empty()) return;
    if (!check.IsValid()) {
        const auto fault = check.WhyInvalid();
        m_report.Add(path, CheckMessage_StatementInvalid, {check.Words(), fault.reason},
                     check.Statement(), fault.caret);
        return;
    }
    const auto fault = check.WhyBroken();
    if (!fault.reason.empty())
        m_report.Add(path, CheckMessage_StatementBroken, {fault.reason}, check.Statement(),
                     fault.caret);
    else
        CheckYield(check, path);
}

void CSampleCheck::CheckYield(const CStatementCheck& check, const std::string& path) {
    const auto& compiled = check.Compiled();
    const auto names = compiled.GetVarNames();
    const auto isDummy = [](const std::string& name) { return name == DummyVariableName; };
    if (std::all_of(names.begin(), names.end(), isDummy)) {
        m_report.Add(path, CheckMessage_StatementWithoutVariable, {}, check.Statement());
        return;
    }
    if (!compiled.IsRegex()) return;
    if (compiled.GetRegex().empty()) {
        m_report.Add(path, CheckMessage_StatementEmpty, {}, check.Statement(),
                     check.Statement().size());
        return;
    }
    const int groups = check.CountGroups();
    if (groups >= 0 && static_cast<std::size_t>(groups) < names.size())
        m_report.Add(path, CheckMessage_TooFewGroups,
                     {std::to_string(names.size()), std::to_string(groups)}, check.Statement());
}

void CSampleCheck::CheckSpans(const CStatementCheck& check, const std::set<std::string>& names,
                              const std::string& path) {
    std::string variable;
    std::vector<std::pair<std::string, std::string>> spans;
    if (!check.IsValid() || !check.Compiled().GetMlineVariables(variable, spans)) return;
    const auto report = [&](const std::string& name) {
        if (names.count(name) == 0)
            m_report.Add(path, CheckMessage_SpanUnknown, {name}, check.Statement(),
                         check.FindInSpans(name));
    };
    for (const auto& [first, second] : spans) {
        report(first);
        if (!second.empty() && second != first) report(second);
    }
}

void CSampleCheck::CheckVariableType(const std::string& entry, const std::string& path) {
    const auto colon = entry.find(':');
    if (colon == std::string::npos) {
        m_report.Add(path, CheckMessage_TypeWithoutColon, {}, entry);
        return;
    }
    const auto word = entry.substr(colon + 1);
    if (!IsVariableTypeWord(word))
        m_report.Add(path, CheckMessage_TypeUnknown, {word}, entry, colon + 1);
}

void CSampleCheck::CheckOperations(const hxJson::Value& operations, const std::string& path) {
    for (std::size_t i = 0; i < operations.size(); ++i)
        CheckOperation(operations[i], Element(path, i));
}

// A whole-word search makes its own expression, in which the author's places have moved.
void CSampleCheck::CheckOperation(const hxJson::Value& node, const std::string& path) {
    if (!HasShape(node, CheckShape_Object, m_report, path)) return;
    SearchReplaceOperation operation;
    operation.Load(node);
    if (!operation.HasOriginal()) {
        m_report.Add(path, CheckMessage_OperationEmpty);
        return;
    }
    const bool isRegex = node[RuleKey::IsRegex].asBool();
    if (!isRegex && !node[RuleKey::IsWholeWord].asBool()) return;
    const auto& pattern = operation.GetSearchPattern();
    const bool isCaseSensitive = node[RuleKey::IsCaseSensitive].asBool();
    if (CAppRegex(pattern, isCaseSensitive ? 0U : CAppRegex::RuleFlags).IsValid()) return;
    std::string reason;
    std::size_t offset = 0;
    if (!CAppRegex::Diagnose(pattern, reason, offset)) reason = CheckText(CheckMessage_ReasonCase);
    m_report.Add(path, CheckMessage_OperationBroken, {reason}, pattern, offset);
}
