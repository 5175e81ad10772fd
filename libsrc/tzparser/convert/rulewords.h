#pragma once

#include "host/json/hxjson.h"

#include <string>
#include <string_view>

// What the convert floor knows of rule kinds by their number.

// The kind in words, "filter"; "rule of type 7" for a number that no kind has.
std::string RuleKindWords(int ruleType);

// Whether rules of this kind come with a default keyword rule as their first child.
bool HasDefaultChild(int ruleType);

// How the XML form of a kind is read.
struct RuleElement {
    std::string_view name;
    // The names of all elements inside it, with a blank around each; empty when it holds a text.
    std::string_view below;
    // Every element of that name is read, not the first alone.
    bool isRepeated;
};

// The element of that name inside a rule of the kind; null when nothing reads it.
const RuleElement* FindRuleElement(int ruleType, std::string_view name);

// Whether a node of a document says nothing: null, "", 0, false, or a list or object of such nodes.
bool SaysNothing(const hxJson::Value& value);
