#pragma once

#include "tzparser/explain/explainreport.h"
#include "tzparser/explain/nearestline.h"
#include "tzparser/rule/appparserule.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

// A stretch of lines that a rule was given to run over.
struct ExplainRun {
    int begin;
    int end;
};
using ExplainRuns = std::vector<ExplainRun>;

// CExplainScope is one rule while it is being explained: the rule after its run, the lines that the
// rule above gave it, run by run, and what is found out about it.
//
//     void ExplainKind(CExplainScope& scope) {
//         ExplainBounds(scope, [&](const ExplainRun& range) { ... });
//         scope.Tell("3 of its lines are left", line);
//     }
//
// The rule is the explainer's own: looking again means running parts of it again, such as its
// bounds. One thread at a time.
class CExplainScope {
public:
    CExplainScope(CAppParseRule& rule, ExplainRule& found, const ExplainRuns& runs,
                  CNearestLine& nearest)
        : m_rule(rule), m_found(found), m_runs(runs), m_below(runs), m_nearest(nearest) {}

    CAppParseRule& Rule() { return m_rule; }
    ExplainRule& Found() { return m_found; }
    const ExplainRuns& Runs() const { return m_runs; }
    // The runs of the rules below; those of this rule until they are replaced.
    ExplainRuns& Below() { return m_below; }
    // Whether the rule ran several times; only a paragraph above it makes that.
    bool HasManyRuns() const { return m_runs.size() > 1; }

    CNearestLine& Nearest() { return m_nearest; }

    // Adds a fact, and one that asks for the author's attention.
    ExplainFact& Tell(const std::string& text, int line = -1, int column = -1);
    ExplainFact& Warn(const std::string& text, int line = -1, int column = -1);
    // Adds a fact about a statement that fits no line of a range, with the line nearest to it. The
    // words come in front, what is behind them is added here. The open lines of `status` count,
    // with the rule's replacements when `isWrapped`.
    ExplainFact& TellNearest(const std::string& words, const std::string& statement,
                             const ExplainRun& range, const CAppLineStatus& status, bool isWrapped,
                             CutForm_e form = CutForm_Statement);
    // The first of the text's lines outside of what the rule saw in a range that an expression
    // matches; -1: none, or none among the first lines.
    int FindUnseen(const CAppRegex& expression, const ExplainRun& range,
                   const CAppLineStatus& status);
    // Notes the range of a run and the lines that the rule saw in it.
    void NoteRun(const ExplainRun& range, const CAppLineStatus& status);

private:
    // The open lines of a range, not more than are worth comparing.
    std::vector<NearestCandidate> CandidatesIn(const ExplainRun& range,
                                               const CAppLineStatus& status, bool isWrapped) const;
    NearestMatch FindOverLines(const std::string& statement, const ExplainRun& range,
                               const CAppLineStatus& status);

    CAppParseRule& m_rule;
    ExplainRule& m_found;
    const ExplainRuns& m_runs;
    ExplainRuns m_below;
    CNearestLine& m_nearest;
};

// How many lines of a range are open.
int CountOpenLines(const CAppLineStatus& status, const ExplainRun& range);

// A statement or text between quotes, as sentences show it; the end of a long one is cut.
std::string Quoted(const std::string& text);
// A range in words, its lines counted from 1: "line 3", "lines 3 to 9", "no line".
std::string LinesInWords(const ExplainRun& range);
// A number with its noun: "1 line", "2 lines".
std::string CountInWords(std::size_t count, const std::string& noun);
