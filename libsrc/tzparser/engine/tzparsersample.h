#pragma once

#include "host/json/hxjson.h"
#include "tzparser/identify/canvasnodecmdsampleidentify.h"
#include "tzparser/rule/appparserulesample.h"

// CTzParserSample is one sample of a parser definition: the conditions on the texts that it fits,
// its rule tree, and its number, by which "sequences" names it. It is loaded once and read by any
// number of parses on any threads, each of which runs a clone of the rule tree.
class TZPARSER_API CTzParserSample : public CCanvasNodeCmdSampleIdentify {
public:
    CTzParserSample();

    // Reads one element of "samples". Its "parserRules", a JSON document as a text, goes to the
    // rules with all object keys in small letters; a text that is no JSON leaves the sample without
    // rules. False when the sample can't be used: its "identify" is no JSON.
    bool LoadSample(const hxJson::Value& element);

    // -1 until loaded.
    int GetIndex() const { return m_index; }
    CAppParseRuleSample& GetRule() { return m_rule; }
    // A copy of the rule tree, which the caller owns; null when it can't be made.
    CAppParseRule* CloneRule();

private:
    CAppParseRuleSample m_rule;
    int m_index = -1;
};
