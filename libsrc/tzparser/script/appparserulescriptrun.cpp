// A run: the interpreter is started if need be, the script runs over the text, and what it returned
// is read while the interpreter is held.
#include "host/log/ilogger.h"
#include "host/python/pythonlib.h"
#include "host/python/pythreadstatelock.h"
#include "host/runtime/filehelper.h"
#include "host/runtime/tzfilesystem.h"
#include "host/runtime/tznoncryptographicchecksum.h"
#include "tzparser/python/apprunnerglobalset.h"
#include "tzparser/rule/appparserulesample.h"
#include "tzparser/script/appparserulescriptplan.h"
#include "tzparser/script/scriptrun.h"

namespace {

constexpr const char* ServerFailed = "Failed to parse results: server exception!";
constexpr const char* ScriptFailed = "Failed to execute the parser script:";
constexpr const char* DumpFolder = "ParserError/";
constexpr const char* DumpEnding = ".pars";

// Where entries of the log say that they come from: places that those who read logs know, and that
// don't move with the source.
constexpr const char* LogSource = "appparserulescript";
constexpr const char* LogParse = "CAppParseRuleScript::Parse";
constexpr const char* LogInner = "CAppParseRuleScript::InnerParseByScript";
constexpr int LogNoPython = 307;
constexpr int LogNoModule = 386;
constexpr int LogNoNames = 394;
constexpr int LogScriptFailed = 438;

void Log(const char* function, int line, const std::string& text) {
    ILogger::GetInstance()->LogStr("LumoTask", "TzApp", LogSource, function, line, ELogLevel_Error,
                                   text);
}

// What every script finds in the module.
void PutNames(PyObject* globals) {
    const PyRef sys(PyImport_ImportModule("sys"));
    if (sys) PyDict_SetItemString(globals, "sys", sys.Get());
    PyDict_SetItemString(globals, "__builtins__", PyEval_GetBuiltins());
    PyErr_Clear();
}

}  // namespace

bool CAppParseRuleScript::FailAtServer(const char* function, int line, const char* words) {
    SetLastError(ServerFailed);
    Log(function, line, words);
    return false;
}

bool CAppParseRuleScript::Parse(const std::string& text, int, int, IAppVariableCallback*) {
    if (!pythonlib_is_inited()) pythonlib_init_ex(nullptr, 0, 0);
    if (!pythonlib_is_inited())
        return FailAtServer(LogParse, LogNoPython,
                            "Initialize python environment failed when running script parser");
    SetLastError({});
    ClearVariablePosition();
    const bool result = ParseScriptWhenRun(text);
    CheckVariableType();
    CheckTableColumns();
    return result;
}

bool CAppParseRuleScript::ParseScriptWhenRun(const std::string& text) {
    m_pyErrorMsg.clear();
    const auto plan = PlanOfRun();
    const PyThreadStateLock lock(1000, LogSource, __LINE__);
    if (!lock.IsHeld())
        return FailAtServer(LogInner, LogNoModule, "PyImport_AddModule return null");
    // Nothing is done with the thread's context, but its holder exists from now on. The holder is
    // made by one thread at a time because the interpreter is held.
    CAppRunnerGlobalSet::Instance()->GetPyFuncContext();
    return InnerParseByScript(text);
}

// Code of one interpreter isn't for another, so a rule of its own compiles it and lets it go there.
bool CAppParseRuleScript::ParseScriptWhenEdit(const std::string& text) {
    m_pyErrorMsg.clear();
    const PySubInterpreter interpreter;
    if (!interpreter.IsRunning()) return false;
    CAppParseRuleScript own(GetParentRule());
    own.SetScript(GetScript());
    const bool result = own.InnerParseByScript(text);
    own.PlanOfRun()->code->Drop();
    return own.OnCopyTo(this) && result;
}

bool CAppParseRuleScript::InnerParseByScript(const std::string& text) {
    auto* const module = PyImport_AddModule("__main__");
    if (module == nullptr)
        return FailAtServer(LogInner, LogNoModule, "PyImport_AddModule return null");
    auto* const globals = PyModule_GetDict(module);
    if (globals == nullptr)
        return FailAtServer(LogInner, LogNoNames, "PyModule_GetDict return null");
    PutNames(globals);
    const auto plan = PlanOfRun();
    m_hasPresentImports = true;
    const auto* const root = GetSampleRoot();
    CScriptRun run(plan->script, *plan->code, root != nullptr ? root->GetScriptTimeLimit() : 0);
    if (run.Execute(text, globals)) {
        const auto result = run.Result(globals);
        return !result || FillVariablePosInfos(result.Get());
    }
    GetPyErrorMsg();
    SetLastError(ScriptFailed + m_pyErrorMsg);
    Log(LogInner, LogScriptFailed, m_pyErrorMsg);
    SaveProgram(run.Program());
    return false;
}

void CAppParseRuleScript::GetPyErrorMsg() {
    last_python_error_msg(m_pyErrorMsg);
}

// A failure that comes again overwrites its file.
void CAppParseRuleScript::SaveProgram(const std::string& program) const {
    const auto sum = CTzNonCryptographicChecksum::GetChecksum(program.data(), program.size());
    FileHelper::SaveToFile(program, TzFileSystem::GetTempFolder() + DumpFolder + sum + DumpEnding);
}
