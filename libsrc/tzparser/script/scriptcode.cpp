// A script that compiles by itself leaves Python at the beginning of a line without indentation, so
// the two lines that a run adds mean the same in a program of their own. One that doesn't may still
// go on into them; whether it does is tried with a text that is no code in any place but inside a
// literal.
#include "tzparser/script/scriptcode.h"

#include "host/python/pythonapi.h"

#include <algorithm>
#include <mutex>
#include <utility>

namespace {

constexpr const char* ProgramName = "<string>";
constexpr std::size_t MaxThreads = 64;
constexpr std::string_view NoCode = "$?";

std::size_t CountLines(const std::string& text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

// Objects whose owner died without the interpreter. Never destroyed itself, as owners may be static
// objects.
class DeadCode {
public:
    static DeadCode& Instance() {
        static auto* const dead = new DeadCode;
        return *dead;
    }

    void Add(const std::vector<PyObject*>& objects) {
        const std::lock_guard<std::mutex> lock(m_lock);
        m_objects.insert(m_objects.end(), objects.begin(), objects.end());
    }

    std::vector<PyObject*> Take() {
        const std::lock_guard<std::mutex> lock(m_lock);
        return std::exchange(m_objects, {});
    }

private:
    std::mutex m_lock;
    std::vector<PyObject*> m_objects;
};

void Release(const std::vector<PyObject*>& objects) {
    for (auto* object : objects) Py_DECREF(object);
}

// The compiler of the library's interface takes a program that ends at its first NUL; this one says
// what is wrong with it.
PyRef CompileBytes(const std::string& program) {
    const PyRef builtins(PyImport_ImportModule("builtins"));
    if (!builtins) return PyRef();
    return PyRef(PyObject_CallMethod(builtins.Get(), "compile", "y#ssii", program.data(),
                                     static_cast<Py_ssize_t>(program.size()), ProgramName, "exec",
                                     0, 1));
}

PyRef AtLine(PyObject* code, std::size_t line) {
    const PyRef replace(PyObject_GetAttrString(code, "replace"));
    const PyRef arguments(PyTuple_New(0));
    const PyRef names(Py_BuildValue("{s:n}", "co_firstlineno", static_cast<Py_ssize_t>(line)));
    if (!replace || !arguments || !names) return PyRef();
    return PyRef(PyObject_Call(replace.Get(), arguments.Get(), names.Get()));
}

std::string CallLine(const ScriptNames& names) {
    return names.result + " = ParseText(" + names.text + ")\n";
}

}  // namespace

PyRef CompileProgram(const std::string& program) {
    if (program.find('\0') != std::string::npos) return CompileBytes(program);
    return PyRef(Py_CompileStringExFlags(program.c_str(), ProgramName, Py_file_input, nullptr, -1));
}

CScriptCode::CScriptCode(const std::string& script)
    : m_source(AsTokenized(script + "\n")),
      m_lineCount(CountLines(m_source)),
      m_encoding(DeclaredEncoding(m_source)) {}

CScriptCode::~CScriptCode() {
    const auto objects = TakeAll();
    if (!objects.empty()) DeadCode::Instance().Add(objects);
}

std::vector<PyObject*> CScriptCode::TakeAll() {
    std::vector<PyObject*> objects;
    if (m_script != nullptr) objects.push_back(std::exchange(m_script, nullptr));
    for (const auto& call : m_calls) objects.push_back(call.code);
    m_calls.clear();
    m_nextCall = 0;
    m_form = Form_Unknown;
    return objects;
}

void CScriptCode::Drop() {
    Release(TakeAll());
}

void CScriptCode::DropDead() {
    Release(DeadCode::Instance().Take());
}

CScriptCode::Form_e CScriptCode::Form() {
    if (m_form != Form_Unknown) return m_form;
    const auto form = FindForm();
    if (form == Form_Broken && PyErr_Occurred() != nullptr &&
        PyErr_ExceptionMatches(PyExc_SyntaxError) == 0) {
        PyErr_Clear();  // not for good: want of memory, an interruption
        return form;
    }
    PyErr_Clear();
    return m_form = form;
}

// Compiling may let other threads run, which then have found it out as well.
CScriptCode::Form_e CScriptCode::FindForm() {
    if (m_encoding.empty()) {
        auto code = CompileProgram(m_source);
        if (code) {
            if (m_script == nullptr) m_script = code.Release();
            return Form_Parts;
        }
        if (PyErr_ExceptionMatches(PyExc_SyntaxError) == 0) return Form_Broken;
        PyErr_Clear();
    }
    const auto script = m_source.substr(0, m_source.size() - 1);
    return CompileProgram(ComposeScriptProgram(script, ScriptNames(0), NoCode)) ? Form_Whole
                                                                                : Form_Broken;
}

PyRef CScriptCode::Script() const {
    return PyRef::Share(m_script);
}

PyRef CScriptCode::Call(const ScriptNames& names, std::size_t line) {
    const auto at = std::find_if(m_calls.begin(), m_calls.end(), [&names](const ThreadCall& call) {
        return call.thread == names.thread;
    });
    if (at != m_calls.end() && at->line == line) return PyRef::Share(at->code);
    auto code = at != m_calls.end() ? PyRef::Share(at->code) : CompileProgram(CallLine(names));
    if (code && PyObject_HasAttrString(code.Get(), "replace") != 0)
        code = AtLine(code.Get(), line);
    else if (code)
        code = CompileProgram(std::string(line - 1, '\n') + CallLine(names));
    if (code) Keep(names, line, code);
    return code;
}

void CScriptCode::Keep(const ScriptNames& names, std::size_t line, const PyRef& code) {
    auto at = std::find_if(m_calls.begin(), m_calls.end(), [&names](const ThreadCall& call) {
        return call.thread == names.thread;
    });
    PyObject* old = nullptr;
    if (at != m_calls.end()) {
        old = at->code;
    } else if (m_calls.size() < MaxThreads) {
        at = m_calls.insert(m_calls.end(), ThreadCall{});
    } else {
        at = m_calls.begin() + static_cast<std::ptrdiff_t>(m_nextCall++ % MaxThreads);
        old = at->code;
    }
    *at = {names.thread, line, PyRef::Share(code.Get()).Release()};
    Py_XDECREF(old);
}
