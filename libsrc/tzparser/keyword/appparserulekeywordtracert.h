#pragma once

#include "tzparser/keyword/appparserulekeyword.h"

#include <memory>
#include <string>
#include <vector>

// CAppParseRuleKeyWordTraceRT reads a traced route with no statement of an author's: it looks for
// the header, which names the target, and for the last line that holds an address, and takes the
// address of the last hop from there.
//
//     auto* rule = new CAppParseRuleKeyWordTraceRT(&sample);
//     sample.AddChildRule(rule);                        // the sample owns it now
//     sample.Parse("traceroute to 192.0.2.9\n 1  192.0.2.9  1 ms\n", 0, -1, nullptr);
//     rule->GetVariablePos()["$ip"][1].text;            // "192.0.2.9"
//
// The line that reads the hop calls it "$ip:last_hop", and "ip" is no type word of statements: so
// the address is the value of $ip. $last_hop has no value, and without it $traceroute_result, which
// tells whether the trace came to its target, has none either. Each parse forgets the rule's lines
// and values and installs its own; what a definition says of them serves the variable tree alone.
// A text without header or hops isn't a failure.
//
// One thread at a time uses a rule.
class TZPARSER_API CAppParseRuleKeyWordTraceRT : public CAppParseRuleKeyWord {
public:
    // Where a trace stands in the text.
    struct Trace {
        int headerLine = -1;   // -1: there is none
        int lastIpLine = 0;    // the last open line with an address; the range's first without one
        std::string targetIp;  // as the header has it; may be empty

        // Whether there is a line of a hop below the header.
        bool HasHops() const { return headerLine >= 0 && lastIpLine > headerLine; }
    };

    explicit CAppParseRuleKeyWordTraceRT(CAppParseRule* parent);
    ~CAppParseRuleKeyWordTraceRT() override;

    // False only when a bound isn't found; the variables then have no values.
    bool Parse(const std::string& text, int startLine, int endLine,
               IAppVariableCallback* callback) override;
    CAppParseRule* CreateObject(CAppParseRule* parent) override;

    // Finds the trace among all open lines, those outside of the range too.
    Trace FindTrace(int startLine) const;

protected:
    // A parse with other lines than the rule's own. Where they declare $last_hop, the result tells
    // whether the target is the last hop or another address of its device, by the inventory.
    bool ParseWith(const CBuiltInLines& lines, int startLine, int endLine);

private:
    // No line of a text in front of the first has a header, none behind the last an address.
    struct Bounds {
        int first = 0;
        int last = 0;
        bool areNarrow = false;
    };

    void AppendKeywordVariables(std::vector<std::string>& names) override;
    const Bounds& BoundsIn(const CAppSampleLines& lines) const;
    void FindLastIpLine(const CAppSampleLines& lines, int last, Trace& trace) const;
    void FindHeader(const CAppSampleLines& lines, int first, Trace& trace) const;

    static const CBuiltInLines& DeclaredLines();
    static const CBuiltInLines& HopLines();

    mutable std::weak_ptr<const std::string> m_boundsText;
    mutable Bounds m_bounds;
};
