#pragma once

#include "host/json/hxjson.h"
#include "tzparser/check/checkreport.h"
#include "tzparser/engine/tzparsersample.h"
#include "tzparser/rule/rulefactory.h"

#include <cstddef>
#include <set>
#include <string>
#include <vector>

class CAppParseRuleTable;
class CStatementCheck;
struct NIGroupInfo;

// CSampleCheck checks one element of "samples": its identify document, rule document, rules,
// bounds, statements and operations. It walks the document as the loader does and asks the loaded
// rules what they know.
//
//     CSampleCheck check(report, "samples[0]");
//     check.Check(definition["samples"][0]);
//     check.IsLoaded();
//
// For one sample and one thread.
class CSampleCheck {
public:
    CSampleCheck(CCheckReport& report, std::string path)
        : m_report(report), m_path(std::move(path)) {}

    void Check(const hxJson::Value& element);

    // Whether the engine keeps the sample, its index, and whether it leaves any text out.
    bool IsLoaded() const { return m_isLoaded; }
    int Index() const { return m_sample.GetIndex(); }
    bool HasConditions() const { return m_sample.HasConditions(); }

private:
    // An array of rule nodes, or a rule node by itself, on the way down.
    struct Level {
        const hxJson::Value* rules;
        std::string path;
        std::size_t next = 0;

        std::size_t Count() const { return rules->isArray() ? rules->size() : 1; }
        const hxJson::Value& Node(std::size_t i) const {
            return rules->isArray() ? (*rules)[i] : *rules;
        }
    };

    bool ReadRules(const hxJson::Value& element, hxJson::Value& rules);
    void CheckRules(const hxJson::Value& document);
    void OpenLevel(const hxJson::Value& parent, const std::string& path);
    void CheckNextNode();
    bool CheckKind(const hxJson::Value& node, const Level& level, const std::string& path);
    void CheckRule(const hxJson::Value& node, const std::string& path);

    void CheckBound(const hxJson::Value& bound, const std::string& path);
    void CheckVariableBound(const NIGroupInfo& bound, const std::string& path);
    void CheckPatternBound(const NIGroupInfo& bound, const std::string& path);

    void CheckPattern(const std::string& pattern, const std::string& path, CheckMessage_e broken);
    void CheckAnchors(const std::string& text, const std::string& path);
    void CheckUnused(const hxJson::Value& node, const std::string& path, CheckMessage_e message);
    void CheckFilter(const hxJson::Value& node, const std::string& path);
    void CheckFilterLines(const hxJson::Value& node, const char* holder, const char* key,
                          const std::string& path);
    void CheckTextRule(const hxJson::Value& node, const std::string& path);
    void CheckDiffFilter(const hxJson::Value& node, const std::string& path);
    void CheckBaselineRow(const hxJson::Value& line, const std::string& path, std::set<int>& rows);
    void CheckTable(const hxJson::Value& node, const std::string& path);
    void CheckTableVariables(const hxJson::Value& node, CAppParseRuleTable& table,
                             const std::string& path);
    void CheckTableColumn(const CAppParseRuleTable& table, const std::string& name,
                          const std::string& path);
    void CheckTableAlign(const hxJson::Value& node, std::size_t headerCount,
                         const std::string& path);
    void CheckTableExcludes(const hxJson::Value& node, const std::string& path);
    void CheckParagraph(const hxJson::Value& node, const std::string& path);
    void CheckParagraphLines(const hxJson::Value& node, const std::string& path);
    void CheckParagraphVariables(const hxJson::Value& node, const std::string& path);
    CAppParseRule* FindRule();
    void CheckKeyWords(const hxJson::Value& node, const std::string& path);
    void CheckBuiltIn(const hxJson::Value& node, int type, const std::string& path);
    void CheckStatement(const CStatementCheck& check, const std::string& path);
    void CheckYield(const CStatementCheck& check, const std::string& path);
    void CheckSpans(const CStatementCheck& check, const std::set<std::string>& names,
                    const std::string& path);
    void CheckVariableType(const std::string& entry, const std::string& path);

    void CheckOperations(const hxJson::Value& operations, const std::string& path);
    void CheckOperation(const hxJson::Value& operation, const std::string& path);

    const hxJson::Value* ListOf(const hxJson::Value& node, const char* holder, const char* key,
                                std::string& path);

    CCheckReport& m_report;
    std::string m_path;
    CTzParserSample m_sample;
    bool m_isLoaded = false;
    std::vector<Level> m_open;
    std::size_t m_topRule = 0;  // of the rule being checked or of the one above it, under the root
};
