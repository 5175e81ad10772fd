// Runs: what they leave in the module, how they fail, and that no text ever runs.
#include "host/runtime/tzfilesystem.h"
#include "host/runtime/tznoncryptographicchecksum.h"
#include "tzparser/python/apprunnerglobalset.h"
#include "tzparser/script/scriptprogram.h"

#include "scriptsupport.h"

#include <cstdio>
#include <fstream>
#include <sstream>

namespace {

constexpr const char* ScriptFailed = "Failed to execute the parser script:";

std::string DumpPath(const std::string& program) {
    return TzFileSystem::GetTempFolder() + "ParserError/" +
           CTzNonCryptographicChecksum::GetChecksum(program.data(), program.size()) + ".pars";
}

std::string TakeFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::stringstream content;
    content << file.rdbuf();
    std::remove(path.c_str());
    return content.str();
}

void StartPython() {
    ASSERT_TRUE(pythonlib_init_ex(nullptr, 0, 0));
}

// The repr of an expression over the names of `__main__`.
std::string Evaluate(const std::string& expression) {
    StartPython();
    const PyThreadStateLock lock(1000, __FILE__, __LINE__);
    PyObject* const globals = PyModule_GetDict(PyImport_AddModule("__main__"));
    const PyRef value(PyRun_String(expression.c_str(), Py_eval_input, globals, globals));
    const PyRef repr(value ? PyObject_Repr(value.Get()) : nullptr);
    PyErr_Clear();
    return repr ? PyObject_AsString(repr.Get()) : "error";
}

// What the whole program does when Python runs it at one go: the text and the result that it leaves
// behind, or its error.
std::string RunWhole(const std::string& program, const ScriptNames& names) {
    StartPython();
    const PyThreadStateLock lock(1000, __FILE__, __LINE__);
    PyObject* const globals = PyModule_GetDict(PyImport_AddModule("__main__"));
    PyDict_SetItemString(globals, "__builtins__", PyEval_GetBuiltins());
    if (PyRef(PyRun_StringFlags(program.c_str(), Py_file_input, globals, globals, nullptr)))
        return Evaluate(names.text) + Evaluate(names.result);
    std::string error;
    last_python_error_msg(error);
    return error;
}

// Two runs of one rule, the second with what the first kept.
void ExpectAsWhole(const std::string& script, const std::string& text) {
    LogCatcher log;
    const auto names = ScriptNames::OfThisThread();
    const auto program = ComposeScriptProgram(script, names, text);
    const auto wanted = RunWhole(program, names);
    const auto rule = ScriptRule(script);
    for (int i = 0; i < 2; ++i) {
        const bool isRun = rule->Parse(text, 0, -1, nullptr);
        if (isRun)
            EXPECT_EQ(Evaluate(names.text) + Evaluate(names.result), wanted) << program;
        else
            EXPECT_EQ(rule->GetLastError(), ScriptFailed + wanted) << program;
        EXPECT_EQ(TakeFile(DumpPath(program)), isRun ? "" : program);
    }
}

const char* const Where =
    "import sys\n"
    "def ParseText(t):\n"
    "    caller = sys._getframe(1)\n"
    "    return {'t': t, 'line': caller.f_lineno, 'in': caller.f_code.co_name}\n";

TEST(ScriptRun, DoesWhatTheWholeProgramDoes) {
    const char* const texts[] = {
        "",
        "one",
        "a\tb\r\nc\rd\n",
        "it's 'quoted' \"text\"",
        "\r\r\n\t'a''b",
        "a\\'b\\\\",
        "\\N{x}\\u1",
        "caf\xC3\xA9 \xE2\x82\xAC",
        "{0} %s",
        "\n\n\n\f\v\x1a",
        "a'",
        "a\\",
        "'''",
        "x'''y",
        "\"\"\"",
    };
    const std::string scripts[] = {
        Where,
        std::string(Where) + "# no end of line",
        "\r\n\r" + std::string(Where) + "\r",
        "if True:\n\tdef ParseText(t):\n\t\treturn {'t': t}",
        Returning("{'a': 1 // 0}"),
        Returning("{'a': undefined}"),
        "x = 1\nraise ValueError('no')\n",
        "raise SystemExit(3)",
        "",
        "x = (",
        "def ParseText(t):",
        "  x = 1",
        "\xFF = 1",
        Where + std::string("x = \\"),
        Where + std::string("x = \"\"\""),
        "\xEF\xBB\xBF" + std::string(Where),
        "# coding: latin-1\n" + std::string(Where) + "e = '\xE9'\n",
        "# coding: none-such\n" + std::string(Where),
        "from __future__ import annotations\n" + std::string(Where) + "x: int = 1\n",
    };
    for (const auto& script : scripts)
        for (const auto* text : texts) ExpectAsWhole(script, text);
}

// Texts of the bytes that matter to a literal: those that fit it do what the whole program does,
// the others fail, also where Python would take the program.
TEST(ScriptRun, TextsOfQuotesAndBackslashes) {
    LogCatcher log;
    const std::string bytes = "'''\\\\\n\r\ta\"";
    const auto names = ScriptNames::OfThisThread();
    const auto rule = ScriptRule(Where);
    unsigned state = 1;
    for (int round = 0; round < 1000; ++round) {
        std::string text;
        for (unsigned left = (state >> 8) % 9; left > 0; --left) {
            state = state * 1664525U + 1013904223U;
            text += bytes[(state >> 16) % bytes.size()];
        }
        state = state * 1664525U + 1013904223U;
        std::size_t closes = 0;
        if (FitsRawLiteral(AsTokenized(text), closes)) {
            ExpectAsWhole(Where, text);
            continue;
        }
        EXPECT_FALSE(rule->Parse(text, 0, -1, nullptr)) << text;
        TakeFile(DumpPath(ComposeScriptProgram(Where, names, text)));
    }
}

// Unlike the whole program, these texts would run; they fail with an error of the library's own.
TEST(ScriptRun, NoTextEverRuns) {
    struct {
        const char* name;
        std::string scriptEnd;
        std::string text;
        const char* wanted;
    } const rows[] = {
        {"code behind the literal", "", "a\n'''; ran = 1; x = '''", "line 7"},
        {"code in front of the literal's end", "", "'''\nran = 1\nr'''", "line 6"},
        {"a value of code", "", "''' + str(ParseText.__globals__.update(ran=1)) + '''", "line 6"},
        {"a formatted literal beside it", "", "'''f'{globals().update(ran=1)}' '''", "line 6"},
        {"literals side by side", "", "\\'''", "line 6"},
        {"a call in a comment", "", "'''#\nran = 1\n#'''", "line 6"},
        {"the script's own literal is open", "x = '''", "'; ran = 1; r'''", "line 6"},
        {"and in other quotes", "x = \"\"\"", "\"\"\"; ran = 1 #", "line 6"},
        {"and over a line's end", "x = \"\\", "\"; ran = 1 #", "line 6"},
        {"bytes that are quotes in another encoding", "# coding: utf-7",
         "+ACcAJwAn-; ran = 1; x = +ACcAJwAn-", "line 7"},
    };
    LogCatcher log;
    for (const auto& row : rows) {
        const std::string head =
            row.scriptEnd.rfind("# coding", 0) == 0 ? row.scriptEnd + "\n" : "";
        const auto script = head + Where + (head.empty() ? row.scriptEnd : "");
        const auto rule = ScriptRule(script);
        EXPECT_FALSE(rule->Parse(row.text, 0, -1, nullptr)) << row.name;
        EXPECT_EQ(Evaluate("'ran' in globals()"), "False") << row.name;
        EXPECT_NE(rule->GetLastError().find("SyntaxError: "), std::string::npos)
            << row.name << rule->GetLastError();
        const auto program = ComposeScriptProgram(script, ScriptNames::OfThisThread(), row.text);
        EXPECT_EQ(TakeFile(DumpPath(program)), program) << row.name;
        if (rule->GetLastError().find("the text ends the string") != std::string::npos) {
            EXPECT_NE(rule->GetLastError().find(row.wanted), std::string::npos)
                << row.name << rule->GetLastError();
        }
    }
}

// Python has words of its own for a NUL, and they differ from version to version.
TEST(ScriptRun, TextsThatAreNoText) {
    LogCatcher log;
    auto rule = ScriptRule(Where);
    EXPECT_FALSE(rule->Parse(std::string("a\0b", 3), 0, -1, nullptr));
    EXPECT_NE(rule->GetLastError().find("null bytes"), std::string::npos) << rule->GetLastError();
    TakeFile(DumpPath(
        ComposeScriptProgram(Where, ScriptNames::OfThisThread(), std::string_view("a\0b", 3))));
    rule = ScriptRule(Where);
    ASSERT_TRUE(
        rule->Parse("a\xFF"
                    "b\r\xC3\n\xED\xA0\x80",
                    0, -1, nullptr));
    EXPECT_EQ(rule->GetVariablePos()["$t"][0].text, "ab\n") << "what isn't UTF-8 vanishes first";
}

TEST(ScriptRun, FailsWithWordsLogAndDump) {
    LogCatcher log;
    const std::string script = "ParseText = 1\ndel ParseText\n";
    const auto rule = ScriptRule(script);
    hxJson::Value node;
    node["script"] = script;
    node["variabletypes"]["variabletype"]["name"] = "$old";
    node["variabletypes"]["variabletype"]["type"] = "int";
    ASSERT_TRUE(rule->Load(node));
    rule->GetVariablePos()["$old"];
    EXPECT_FALSE(rule->Parse("text", 0, -1, nullptr));
    const std::string words =
        "Traceback (most recent call last):\n  File \"<string>\", line 5, in <module>\n"
        "NameError: name 'ParseText' is not defined";
    EXPECT_EQ(rule->GetLastError(), ScriptFailed + words);
    EXPECT_EQ(log.Take(),
              "LumoTask TzApp appparserulescript:438 "
              "CAppParseRuleScript::InnerParseByScript 3: " +
                  words + "\n");
    EXPECT_TRUE(rule->GetVariablePos().empty());
    EXPECT_EQ(DumpResult(*rule), "$old int\n");
    const auto program = ComposeScriptProgram(script, ScriptNames::OfThisThread(), "text");
    EXPECT_EQ(TakeFile(DumpPath(program)), program);
    rule->SetScript(Returning("{}"));
    EXPECT_TRUE(rule->Parse("text", 0, -1, nullptr));
    EXPECT_EQ(rule->GetLastError() + rule->GetPyErrorText(), "");
}

// Nothing is done with the context, but a host may set its own from then on.
TEST(ScriptRun, TheHolderOfContextsExistsAfterARun) {
    ASSERT_TRUE(ScriptRule(Returning("{}"))->Parse("", 0, -1, nullptr));
    int context = 0;
    EXPECT_TRUE(CAppRunnerGlobalSet::Instance()->SetPyFuncContext(&context));
    ASSERT_TRUE(ScriptRule(Returning("{}"))->Parse("", 0, -1, nullptr));
    EXPECT_EQ(CAppRunnerGlobalSet::Instance()->GetPyFuncContext(), &context);
}

// Names stay in the module, and a later script of another rule finds them.
TEST(ScriptRun, LeavesItsNamesBehind) {
    const auto names = ScriptNames::OfThisThread();
    const auto first = ScriptRule("left = 41\nParseText = lambda t: {'n': t}");
    ASSERT_TRUE(first->Parse("a\tb", 7, 3, nullptr)) << first->GetLastError();
    EXPECT_EQ(Evaluate(names.text) + Evaluate(names.result), "'a    b'{'n': 'a    b'}");
    const auto second = ScriptRule("ParseText_before = ParseText('z')\n" +
                                   Returning("{'n': left + 1, 's': 'sys' in globals()}"));
    ASSERT_TRUE(second->Parse("", 0, -1, nullptr)) << second->GetLastError();
    EXPECT_EQ(DumpResult(*second), "$n int 0:\"42\"\n$s bool 0:\"True\"\n");
    EXPECT_EQ(Evaluate("ParseText_before"), "{'n': 'z'}");
}

TEST(ScriptRun, ChangesImportsOfOldInTheScript) {
    const std::string script = "if 0:\n    FROM  pyapplib   import PyConfigLet\n" + Returning("{}");
    const auto rule = ScriptRule(script);
    EXPECT_EQ(rule->GetScript(), script);
    ASSERT_TRUE(rule->Parse("", 0, -1, nullptr)) << rule->GetLastError();
    const auto changed = "if 0:\n    from pyconfiglet import PyConfigLet\n" + Returning("{}");
    EXPECT_EQ(rule->GetScript(), changed);
    CAppParseRuleScript copy(nullptr);
    ASSERT_TRUE(rule->CopyTo(&copy));
    EXPECT_EQ(copy.GetScript(), changed);
}

// An editor's run sees no names of other scripts and leaves none.
TEST(ScriptRun, AnInterpreterOfItsOwn) {
    struct Editor : CAppParseRuleScript {
        using CAppParseRuleScript::CAppParseRuleScript;
        using CAppParseRuleScript::ParseScriptWhenEdit;
    };
    StartPython();
    ASSERT_TRUE(ScriptRule("shared = 1\n" + Returning("{}"))->Parse("", 0, -1, nullptr));
    Editor editor(nullptr);
    editor.SetScript("own = 1\n" + Returning("{'n': 'shared' in globals(), 't': t}"));
    ASSERT_TRUE(editor.ParseScriptWhenEdit("text")) << editor.GetLastError();
    EXPECT_EQ(DumpResult(editor), "$n bool 0:\"False\"\n$t string 0:\"text\"\n");
    EXPECT_EQ(Evaluate("'own' in globals()"), "False");
    ASSERT_TRUE(editor.Parse("again", 0, -1, nullptr)) << editor.GetLastError();
}

// Nothing is left behind but the last text and result, however a run ends.
TEST(ScriptRun, LeavesNoReferenceBehind) {
    LogCatcher log;
    const auto run = [](int rounds) {
        const std::string table = Returning("{'a': t, 't': {'x': list(t), 'y': [1.5, None]}}");
        for (int i = 0; i < rounds; ++i) {
            const auto good = ScriptRule(table);
            EXPECT_TRUE(good->Parse("some\ttext\n" + std::string(i % 7, '\n'), 0, -1, nullptr));
            if (i % 50 != 0) continue;
            for (const char* script : {"x = (", "def ParseText(t): return 1 // 0", "raise x"}) {
                const auto bad = ScriptRule(script);
                EXPECT_FALSE(bad->Parse("text", 0, -1, nullptr));
                EXPECT_FALSE(bad->Parse("'''; x = '''", 0, -1, nullptr));
                TakeFile(
                    DumpPath(ComposeScriptProgram(script, ScriptNames::OfThisThread(), "text")));
                TakeFile(DumpPath(
                    ComposeScriptProgram(script, ScriptNames::OfThisThread(), "'''; x = '''")));
            }
        }
        return std::stol(Evaluate("(__import__('gc').collect(), sys.getallocatedblocks())[1]"));
    };
    run(200);
    const auto before = run(200);
    const auto after = run(10000);
    EXPECT_LT(after - before, 200);
}

}  // namespace
