#pragma once

#include "tzparser/identify/samplechoice.h"
#include "tzparser/rule/appparserule.h"

#include <string>
#include <utility>
#include <vector>

// What CTzExplain::Explain tells about one parse of one text, for a page or a terminal to show.
//
//     const auto report = CTzExplain::Explain(definition, text);
//     for (const auto& rule : report.rules)
//         for (const auto& fact : rule.facts)
//             if (fact.isTrouble) show(rule.path, fact.text);
//
// All rows and lines count from 0 and a range excludes its end; all columns are bytes from 0. Texts
// and names are the bytes of definition and text, neither cut nor escaped.

// One finding about a rule, a sentence that an author understands.
struct ExplainFact {
    std::string text;        // "header line found, by its words one by one"
    int line = -1;           // the line that it speaks of; -1: none
    int column = -1;         // the byte column in that line; -1: none
    bool isTrouble = false;  // something that the author should look at
    // Of a statement: the statement, and the byte offset where the match stopped; -1: none.
    std::string statement;
    int statementColumn = -1;
    // The line as the rule read it, when replacements made it another than the text's.
    std::string replacedLine;
};

// A rule of the tree that ran.
struct ExplainRule {
    int parent = -1;  // index in ExplainReport::rules; -1: the sample's root rule
    RuleType type = RuleType_Sample;
    std::string kind;     // "table", "paragraph", "filter", "keyword", ...
    std::string name;     // without "$"; empty for keyword rules
    std::string path;     // as tzparse check writes it: "samples[0].parserRules.parserule[1]"
    bool hasRun = false;  // whether it came to reading lines
    int runs = 0;         // how often: once, or once a paragraph above it
    int beginLine = 0;    // the range of the last run
    int endLine = 0;
    int openLines = 0;  // the lines of that range that the rule saw
    // Of a paragraph: its paragraphs; of a table: the first row's line and the end.
    std::vector<std::pair<int, int>> ranges;
    std::vector<ExplainFact> facts;
};

// One value of the value tree, in the order of the tree.
struct ExplainValue {
    int rule = -1;     // index of the rule that owns it; -1: unknown
    std::string name;  // the full name, parts joined by ".": "interfaces.mtu"
    int index = 0;     // row index within its column; 0 for plain variables
    std::string type;  // the data type as the schema names it
    int beginRow = 0;  // the place in the text, the end column excluded
    int beginCol = 0;
    int endRow = 0;
    int endCol = 0;
    std::string text;
};

struct ExplainReport {
    SampleChoice choice;               // which sample, and why
    bool isParsed = false;             // whether the rules ran to success
    std::string error;                 // otherwise the words of CTzParser::Parse
    std::vector<std::string> lines;    // the text's lines as the engine split them
    std::vector<ExplainRule> rules;    // in pre-order; the first is the sample's root rule
    std::vector<ExplainValue> values;  // no place: the begin equals the end
};
