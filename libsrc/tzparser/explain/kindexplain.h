#pragma once

#include "tzparser/explain/explainscope.h"

#include <cstddef>
#include <string>
#include <vector>

// How rules of a kind are explained. Each kind has a function in a source of its own that fills the
// scope's rule with facts and sets the runs of the rules below; one table knows them all.
struct KindExplainer {
    const char* kind;  // "keyword"
    void (*explain)(CExplainScope& scope);
    std::string (*name)(const CAppParseRule& rule);
};

// The row of a rule's kind; a kind without a row of its own is a "rule" whose bounds are explained.
const KindExplainer& FindExplainer(RuleType type);

void ExplainSample(CExplainScope& scope);
void ExplainKeyWord(CExplainScope& scope);
void ExplainPing(CExplainScope& scope);
void ExplainTraceRoute(CExplainScope& scope);
void ExplainFilter(CExplainScope& scope);
void ExplainReader(CExplainScope& scope);
void ExplainText(CExplainScope& scope);
void ExplainDiffFilter(CExplainScope& scope);
void ExplainScript(CExplainScope& scope);
void ExplainTable(CExplainScope& scope);
void ExplainParagraph(CExplainScope& scope);

// Explains the statements of a rule that is a keyword rule by its class; in how many runs each of
// them matched.
std::vector<std::size_t> ExplainStatements(CExplainScope& scope);
