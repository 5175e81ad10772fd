#pragma once

#include "host/json/hxjson.h"
#include "host/runtime/tzexport.h"
#include "tzparser/explain/explainreport.h"

#include <string>

// CTzExplain runs a definition over a text and tells what came of it, for an author whose values
// are missing: which sample was chosen, which lines each rule saw, where its bounds were found, and
// for a statement that matched nothing, how far it came on the line nearest to it.
//
//     const auto report = CTzExplain::Explain(definition, text);
//     for (const auto& fact : report.rules[1].facts) show(fact.text, fact.line);
//
//     no line fits "mtu $int:mtu"                 // fact.statementColumn 4
//                                                 // fact.line 7, fact.column 6
//
// It looks at the rules after their run and searches again what they searched, so it takes a few
// times as long as a parse; the search for nearest lines is cut, and says so. All functions are
// static and keep nothing; they may run on any thread.
class TZPARSER_API CTzExplain {
public:
    CTzExplain() = delete;

    // The report of one parse. A text that can't be parsed gives the reason in `error`, with what
    // is known of the rules. No exception but that of memory running out.
    static ExplainReport Explain(const hxJson::Value& definition, const std::string& text);
};
