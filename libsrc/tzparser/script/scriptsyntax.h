#pragma once

#include "host/runtime/tzexport.h"

#include <string>

// ScriptFault is what keeps a script from being compiled.
//
//     const auto fault = ScriptFault::Of("def ParseText(t:\n");
//     fault.reason;    // "'(' was never closed"
//     fault.line;      // 1
//
struct TZPARSER_API ScriptFault {
    // Compiles a script by itself; nothing of it runs. Starts the interpreter, and finds nothing
    // where there is none. A script that goes on into the text's line has a fault as well, though a
    // run may succeed. Any thread.
    static ScriptFault Of(const std::string& script);

    std::string reason;  // Python's words; empty: no fault
    int line = 0;        // from 1, of the script; 0: not known
    int column = 0;      // from 1, in letters, tabs being four blanks; 0: not known
    std::string source;  // the text of the line
};
