#pragma once

#include "host/json/hxjson.h"
#include "tzparser/explain/explainreport.h"
#include "tzparser/explain/explainscope.h"

#include <string>
#include <unordered_map>
#include <vector>

// CRuleWalk explains the rules of a tree that has run, from the root down, beside the rule document
// that they were made of.
//
//     CRuleWalk walk(report.rules);
//     walk.Explain(*root, rules, "samples[0].parserRules", lineCount);
//     walk.IndexOf(owner);         // where a rule stands in the report
//
// For one tree and one thread; the tree must outlive the object.
class CRuleWalk {
public:
    explicit CRuleWalk(std::vector<ExplainRule>& rules) : m_rules(rules) {}

    // `document` is the lower-case rule document that `path` leads to.
    void Explain(CAppParseRule& root, const hxJson::Value& document, const std::string& path,
                 int lineCount);
    // The index of a rule in the report; -1 for null and for a rule of another tree.
    int IndexOf(const CAppParseRule* rule) const;

private:
    // A rule still to be explained.
    struct Pending {
        CAppParseRule* rule;
        const hxJson::Value* document;  // that holds "parserule"
        std::string path;
        std::string childPath;
        int parent;
        std::shared_ptr<const ExplainRuns> runs;
    };

    void ExplainOne(const Pending& pending);
    void PushChildren(const Pending& pending, int index, ExplainRuns&& runs);

    std::vector<ExplainRule>& m_rules;
    std::vector<Pending> m_pending;
    std::unordered_map<const CAppParseRule*, int> m_indexes;
    CNearestLine m_nearest;
};
