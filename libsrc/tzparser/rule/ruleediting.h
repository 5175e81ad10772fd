#pragma once

#include <string>

class CAppParseRule;

// Editing a variable by the kind of the rule that owns it. The engine's floor, which knows the
// kinds, implements these; the sample rule calls them. `name` is a full name, its parts joined by
// ".".

// Takes the variable out of the rule, or the rule out of its parent when nothing else is left of
// it. `owner` may be gone after the call.
void DeleteRuleVariable(CAppParseRule* owner, const std::string& name);
// Gives the variable another name in the rule's document.
void RenameRuleVariable(CAppParseRule* owner, const std::string& from, const std::string& to);
