// The sample and its rule nodes, walked from the top down with a stack of its own.
#include "tzparser/check/samplecheck.h"

#include "host/json/hxlower.h"
#include "host/text/asciicase.h"
#include "tzparser/check/checkshape.h"
#include "tzparser/check/identifycheck.h"
#include "tzparser/check/scriptcheck.h"
#include "tzparser/engine/enginekeys.h"
#include "tzparser/rule/appparserule.h"
#include "tzparser/rule/rulekeys.h"

namespace {

bool BeginsWithNumber(const std::string& text) {
    auto at = text.find_first_not_of(" \t\n\v\f\r");
    if (at != std::string::npos && (text[at] == '-' || text[at] == '+')) ++at;
    return at < text.size() && AsciiIsDigit(text[at]);
}

}  // namespace

void CSampleCheck::Check(const hxJson::Value& element) {
    m_isLoaded = m_sample.LoadSample(element);
    if (!HasShape(element, CheckShape_Object, m_report, m_path)) {
        m_report.Add(m_path, CheckMessage_NoRule);
        return;
    }
    const bool isIdentifyJson = CheckIdentify(element, m_report, m_path);
    if (!m_isLoaded) {
        if (isIdentifyJson) m_report.Add(m_path, CheckMessage_SampleDropped);
        return;
    }
    hxJson::Value operations;
    const auto operationsPath = m_path + "." + RuleKey::Operations;
    if (HasShape(element[RuleKey::Operations], CheckShape_Array, m_report, operationsPath))
        hxJson::CopyWithLowerKeys(element[RuleKey::Operations], operations);
    CheckOperations(operations, operationsPath);
    hxJson::Value rules;
    if (!ReadRules(element, rules)) return;
    CheckRules(rules);
    if (m_sample.GetRule().IsLeaf()) m_report.Add(m_path, CheckMessage_NoRule);
}

// As the loader does it: the document goes, with its keys in small letters, on top of what stands
// where the rules look for it. False when a broken text leaves the sample without rules, which is
// then said.
bool CSampleCheck::ReadRules(const hxJson::Value& element, hxJson::Value& rules) {
    rules = element[RuleKey::ParseRules];
    const auto& stored = element[EngineKey::ParserRules];
    if (stored.isObject()) {
        hxJson::CopyWithLowerKeys(stored, rules);
        return true;
    }
    const auto text = stored.asString();
    hxJson::Value document;
    hxJson::Reader reader;
    if (!reader.parse(text, document, true)) {
        m_report.AddJsonError(m_path + "." + EngineKey::ParserRules, CheckMessage_RulesNotJson,
                              reader, text);
        return false;
    }
    hxJson::CopyWithLowerKeys(document, rules);
    return true;
}

void CSampleCheck::CheckRules(const hxJson::Value& document) {
    const auto path = m_path + "." + EngineKey::ParserRules;
    if (HasShape(document, CheckShape_Object, m_report, path)) OpenLevel(document, path);
    while (!m_open.empty()) CheckNextNode();
}

void CSampleCheck::OpenLevel(const hxJson::Value& parent, const std::string& path) {
    const auto& rules = parent[RuleKey::ParseRule];
    const auto rulesPath = path + "." + RuleKey::ParseRule;
    if (HasShape(rules, CheckShape_ArrayOrObject, m_report, rulesPath))
        m_open.push_back({&rules, rulesPath});
}

// An unknown kind ends its array.
void CSampleCheck::CheckNextNode() {
    auto& level = m_open.back();
    if (level.next == level.Count()) {
        m_open.pop_back();
        return;
    }
    const auto index = level.next++;
    const auto& node = level.Node(index);
    auto path = level.path;
    if (level.rules->isArray()) path += "[" + std::to_string(index) + "]";
    if (m_open.size() == 1) m_topRule = index;
    if (!CheckKind(node, level, path)) {
        level.next = level.Count();
        return;
    }
    CheckRule(node, path);
    const auto& child = node[RuleKey::Child];
    const auto childPath = path + "." + RuleKey::Child;
    if (HasShape(child, CheckShape_Object, m_report, childPath)) OpenLevel(child, childPath);
}

bool CSampleCheck::CheckKind(const hxJson::Value& node, const Level& level,
                             const std::string& path) {
    // An empty object has become null when its keys were lowered.
    if (!node.isObject() && !node.isNull()) m_report.Add(path, CheckMessage_RuleNotObject);
    const auto text = node[RuleKey::Type].asString();
    const int type = hxJson::Value(text).asInt();
    if (!text.empty() && !BeginsWithNumber(text))
        m_report.Add(path, CheckMessage_TypeNotNumber, {text});
    const bool inArray = level.rules->isArray();
    if (MakeRule(type, inArray ? RuleNodeForm_Array : RuleNodeForm_Object, nullptr)) return true;
    const auto number = std::to_string(type);
    const auto lost = level.Count() - level.next;
    if (!inArray && MakeRule(type, RuleNodeForm_Array, nullptr))
        m_report.Add(path, CheckMessage_NeedsArray, {number});
    else if (lost == 0)
        m_report.Add(path, CheckMessage_UnknownType, {number});
    else
        m_report.Add(path, CheckMessage_UnknownTypeBeforeOthers, {number, std::to_string(lost)});
    return false;
}

void CSampleCheck::CheckRule(const hxJson::Value& node, const std::string& path) {
    const int type = hxJson::Value(node[RuleKey::Type].asString()).asInt();
    if (type == RuleType_Filter) {
        CheckFilter(node, path);
        return;
    }
    if (type == RuleType_DesignReader) {
        CheckUnused(node, path, CheckMessage_NotForReader);
        return;
    }
    if (type == RuleType_DiffFilter) {
        CheckDiffFilter(node, path);
        return;
    }
    if (type == RuleType_Script) {
        CScriptCheck(m_report, path).Check(node);
        return;
    }
    CheckBound(node[RuleKey::NiStart], path + "." + RuleKey::NiStart);
    CheckBound(node[RuleKey::NiEnd], path + "." + RuleKey::NiEnd);
    if (type == RuleType_Text) {
        CheckTextRule(node, path);
        return;
    }
    const auto operationsPath = path + "." + RuleKey::Operations;
    if (HasShape(node[RuleKey::Operations], CheckShape_Array, m_report, operationsPath))
        CheckOperations(node[RuleKey::Operations], operationsPath);
    if (type == RuleType_KeyWord) CheckKeyWords(node, path);
    if (type == RuleType_Ping || type == RuleType_TraceRoute) CheckBuiltIn(node, type, path);
    if (type == RuleType_Table) CheckTable(node, path);
    if (type == RuleType_Paragraph) CheckParagraph(node, path);
}
