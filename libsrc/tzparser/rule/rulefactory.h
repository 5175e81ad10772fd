#pragma once

#include <memory>

class CAppParseRule;

// Where rules below this floor are made: the one table of rule kinds stands on the engine's floor,
// which implements this function, so that no kind is known here.
//
// In which form of a rule document a node stands. A kind may be written in the array form alone.
enum RuleNodeForm_e {
    RuleNodeForm_Array,
    RuleNodeForm_Object,
};

// Makes an empty rule of the kind with the number `ruleType`, with `parent` as its parent (not yet
// among the parent's children); null for a number that no kind has in this form.
std::unique_ptr<CAppParseRule> MakeRule(int ruleType, RuleNodeForm_e form, CAppParseRule* parent);
