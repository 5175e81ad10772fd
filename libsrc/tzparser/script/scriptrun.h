#pragma once

#include "host/python/pythonapi.h"
#include "tzparser/script/scriptprogram.h"

#include <cstddef>
#include <string>

class CScriptCode;

// CScriptRun is one run of a script over one text, in the module whose names it is given.
//
//     CScriptRun run(script, code, 0);
//     if (!run.Execute(text, globals)) ...      // a Python error is pending
//     const PyRef result = run.Result(globals);
//
// What it leaves in the module, its errors and their lines are those of the program that
// ComposeScriptProgram puts together, run as a whole. But no byte of a text ever runs: unless the
// text is one literal in the program, the run fails, with the error that Python has for the program
// or, if Python has none, with a SyntaxError of its own.
//
// Made, used and destroyed by one thread that holds the interpreter all the time.
class CScriptRun {
public:
    // `milliseconds` is the limit of time, 0 for none.
    CScriptRun(const std::string& script, CScriptCode& code, int milliseconds);

    // False when an error is pending. A script that is interrupted for its time fails with a
    // TimeoutError, whatever it makes of the interruption.
    bool Execute(const std::string& text, PyObject* globals);
    // What the script's function returned; none when it left nothing.
    PyRef Result(PyObject* globals) const;
    // The whole program of the last text.
    std::string Program() const;

private:
    bool TakeText(const std::string& text);
    bool IsText();
    bool IsDecodedInPieces() const;
    bool Run(PyObject* globals);
    bool RunParts(PyObject* globals);
    bool RaiseRefusal() const;
    void RaiseTimeout() const;

    const std::string& m_script;
    CScriptCode& m_code;
    const int m_milliseconds;
    const ScriptNames m_names;
    PyRef m_clean;               // the text without what isn't UTF-8
    std::string_view m_literal;  // the same as tokenized
    std::string m_tokenized;     // holds it when it differs
    std::size_t m_closes = 0;    // where the literal ends, in m_literal
};
