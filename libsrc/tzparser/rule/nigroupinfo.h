#pragma once

#include "host/json/hxjson.h"
#include "host/runtime/tzexport.h"

#include <string>

// What a bound goes by.
enum NIGroupType_e {
    NIGroupType_None = 0,      // no limit
    NIGroupType_Variable = 1,  // the line of a variable of another rule
    NIGroupType_Pattern = 2,   // the first line that a statement fits
};

// A start or end bound of a rule, as the rule's document gives it. A plain record; a number that
// isn't one of NIGroupType_e is kept, and the rule then fails with words when it runs.
struct TZPARSER_API NIGroupInfo {
    int m_type = NIGroupType_None;
    std::string m_pattern;  // by pattern: the statement
    std::string m_text;     // by variable: its name, with "$"
    std::string m_xxid;     // by variable: the id of the rule that owns it
    int m_skip = 0;         // lines to move inward from the line found; only positive numbers count

    void Load(const hxJson::Value& node);
};
