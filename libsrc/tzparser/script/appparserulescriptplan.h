#pragma once

#include "tzparser/script/appparserulescript.h"
#include "tzparser/script/scriptcode.h"
#include "tzparser/script/scriptdeclaration.h"

// What a script rule makes of its source once, for all runs of all its copies. The code is the
// interpreter's, and changes while the interpreter is held.
struct CAppParseRuleScript::Plan {
    std::string script;  // with imports as they are now
    ScriptDeclaration declaration;
    std::unique_ptr<CScriptCode> code;
};
