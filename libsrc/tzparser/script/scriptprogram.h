#pragma once

#include "host/runtime/tzexport.h"

#include <cstdint>
#include <string>
#include <string_view>

// The program of a run as text. A script and a device's text are put together as
//
//     <the script>
//     _original_result_<thread> = r'''<the text>'''
//     parse_result_<thread> = ParseText(_original_result_<thread>)
//
// where <thread> is the number of the thread that runs it. Every "\r\n" of it is a line feed and
// every tab four blanks, in the script as in the text. What follows are the pieces of that, as
// functions of texts alone: nothing here needs the interpreter.

// The names that tell the runs of two threads apart.
struct TZPARSER_API ScriptNames {
    explicit ScriptNames(std::uint64_t thread);
    // Those of the calling thread.
    static ScriptNames OfThisThread();

    std::uint64_t thread;
    std::string text;    // "_original_result_17"
    std::string result;  // "parse_result_17"
};

// "\r\n" to "\n", then tabs to four blanks; a lone "\r" stays.
TZPARSER_API std::string WithProgramBlanks(std::string text);
// The same as Python's tokenizer reads it: what is left of "\r" is a line feed too.
TZPARSER_API std::string AsTokenized(std::string text);

// The whole program. `clean` is the text without what isn't UTF-8.
TZPARSER_API std::string ComposeScriptProgram(const std::string& script, const ScriptNames& names,
                                              std::string_view clean);

// Whether a text, as tokenized, between r''' and ''' is one literal with that text for its value.
// `closes` is the offset where the literal would end else; the text's length when the end of the
// text takes a closing quote away.
TZPARSER_API bool FitsRawLiteral(std::string_view text, std::size_t& closes);

// The encoding that the first two lines of a script declare, in small letters; empty for none and
// for UTF-8. `script` is tokenized.
TZPARSER_API std::string DeclaredEncoding(std::string_view script);

// The script with imports of PyConfigLet from where it stood once ("from pyapplib import
// PyConfigLet", in any case) changed to where it stands now.
TZPARSER_API std::string WithPresentImports(const std::string& script);
