#pragma once

#include "tzparser/script/scriptprogram.h"

#include <cstddef>
#include <string>
#include <vector>

struct _object;
class PyRef;

// CScriptCode is what the interpreter keeps of a script, so that a run needn't compile it again:
// the script's own code, and for each thread the call of its function.
//
//     CScriptCode code("def ParseText(text): ...");    // compiles nothing yet
//     switch (code.Form()) ...
//
// The copies of a rule share one. Whoever calls an operation holds the interpreter, which is also
// what keeps threads apart in here. Making and destroying need no interpreter: what a dead one held
// is set aside and let go by the next run of any script, so that a copy may die on any thread, also
// after the interpreter.
class CScriptCode {
public:
    // How a run goes about the program.
    enum Form_e {
        Form_Unknown,
        // The script is complete by itself: its code runs, then the text gets its name, then the
        // function is called. The same as the whole program does.
        Form_Parts,
        // The script goes on into the line of the text ("x = \"), or says that it isn't UTF-8: the
        // program is compiled whole for each run.
        Form_Whole,
        // No text makes a program that compiles.
        Form_Broken,
    };

    explicit CScriptCode(const std::string& script);
    ~CScriptCode();
    CScriptCode(const CScriptCode&) = delete;
    CScriptCode& operator=(const CScriptCode&) = delete;

    // Found out at the first call. No error is pending afterwards.
    Form_e Form();
    // The script's code, for Form_Parts.
    PyRef Script() const;
    // The code of the line behind the text, as if it stood in the line of that number. None, with a
    // pending error, for want of memory.
    PyRef Call(const ScriptNames& names, std::size_t line);
    // The number of lines of the script, which the text's line follows.
    std::size_t LineCount() const { return m_lineCount; }
    const std::string& Encoding() const { return m_encoding; }

    // Lets go what this one holds, or what dead ones held.
    void Drop();
    static void DropDead();

private:
    // The call as one thread makes it. Texts differ in lines, so the last place is kept.
    struct ThreadCall {
        std::uint64_t thread;
        std::size_t line;
        _object* code;
    };

    Form_e FindForm();
    void Keep(const ScriptNames& names, std::size_t line, const PyRef& code);
    std::vector<_object*> TakeAll();

    const std::string m_source;  // as tokenized, with a line feed behind it
    const std::size_t m_lineCount;
    const std::string m_encoding;
    Form_e m_form = Form_Unknown;
    _object* m_script = nullptr;
    std::vector<ThreadCall> m_calls;
    std::size_t m_nextCall = 0;  // the one that makes room for a new thread
};

// Compiles a program under the name that Python gives to a text; nothing of it runs. None, with the
// pending error that running it would give, when it doesn't compile. The caller holds the
// interpreter.
PyRef CompileProgram(const std::string& program);
