#include "tzparser/script/scriptrun.h"

#include "host/text/strformat.h"
#include "tzparser/script/scriptcode.h"
#include "tzparser/script/scripttimer.h"

#include <algorithm>

namespace {

constexpr const char* Refusal = "the text ends the string literal that holds it";
constexpr const char* TooLong = "the script ran longer than {0} ms";

std::string_view Utf8Of(PyObject* text) {
    Py_ssize_t length = 0;
    const char* const bytes = PyUnicode_AsUTF8AndSize(text, &length);
    return bytes != nullptr ? std::string_view(bytes, static_cast<std::size_t>(length))
                            : std::string_view();
}

std::size_t CountLines(std::string_view text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

PyRef TextOf(std::string_view bytes) {
    return PyRef(PyUnicode_FromStringAndSize(bytes.data(), static_cast<Py_ssize_t>(bytes.size())));
}

PyRef Decode(std::string_view bytes, const std::string& encoding) {
    return PyRef(PyUnicode_Decode(bytes.data(), static_cast<Py_ssize_t>(bytes.size()),
                                  encoding.c_str(), nullptr));
}

}  // namespace

CScriptRun::CScriptRun(const std::string& script, CScriptCode& code, int milliseconds)
    : m_script(script),
      m_code(code),
      m_milliseconds(milliseconds),
      m_names(ScriptNames::OfThisThread()) {}

bool CScriptRun::Execute(const std::string& text, PyObject* globals) {
    CScriptCode::DropDead();
    if (!TakeText(text)) return false;
    if (!IsText()) return RaiseRefusal();
    CScriptTimer timer(m_milliseconds);
    const bool isDone = Run(globals);
    if (!timer.Stop()) return isDone;
    RaiseTimeout();
    return false;
}

bool CScriptRun::TakeText(const std::string& text) {
    m_clean =
        PyRef(PyUnicode_DecodeUTF8(text.data(), static_cast<Py_ssize_t>(text.size()), "ignore"));
    if (!m_clean) return false;
    m_literal = Utf8Of(m_clean.Get());
    if (m_literal.find_first_of("\r\t") == std::string_view::npos) return true;
    m_tokenized = AsTokenized(std::string(m_literal));
    m_literal = m_tokenized;
    return true;
}

bool CScriptRun::IsText() {
    const auto form = m_code.Form();
    if (form == CScriptCode::Form_Broken) return false;
    if (m_literal.find('\0') != std::string_view::npos) return false;
    if (!FitsRawLiteral(m_literal, m_closes)) return false;
    return m_code.Encoding().empty() || IsDecodedInPieces();
}

// In an encoding other than UTF-8 the bytes of a text can be other letters, quotes among them, and
// can take the bytes around the text along. The literal holds the text's bytes, whatever letters
// they are, when they decode the same by themselves and have no quotes or backslashes.
bool CScriptRun::IsDecodedInPieces() const {
    constexpr std::string_view begin = "x = r'''";
    constexpr std::string_view end = "'''";
    std::string line(begin);
    line.append(m_literal).append(end);
    const auto whole = Decode(line, m_code.Encoding());
    const auto own = Decode(m_literal, m_code.Encoding());
    PyErr_Clear();
    if (!whole || !own) return false;
    const auto letters = Utf8Of(own.Get());
    PyErr_Clear();
    std::size_t closes = 0;
    return FitsRawLiteral(letters, closes) &&
           Utf8Of(whole.Get()) == std::string(begin).append(letters).append(end);
}

bool CScriptRun::Run(PyObject* globals) {
    if (m_code.Form() == CScriptCode::Form_Parts) return RunParts(globals);
    const auto code = CompileProgram(Program());
    return code && PyRef(PyEval_EvalCode(code.Get(), globals, globals));
}

bool CScriptRun::RunParts(PyObject* globals) {
    const auto script = m_code.Script();
    if (!PyRef(PyEval_EvalCode(script.Get(), globals, globals))) return false;
    const auto text = m_tokenized.empty() ? PyRef::Share(m_clean.Get()) : TextOf(m_literal);
    if (!text || PyDict_SetItemString(globals, m_names.text.c_str(), text.Get()) != 0) return false;
    // The literal begins in the line behind the script, and the call stands behind its last line.
    const auto call = m_code.Call(m_names, m_code.LineCount() + CountLines(m_literal) + 2);
    return call && PyRef(PyEval_EvalCode(call.Get(), globals, globals));
}

PyRef CScriptRun::Result(PyObject* globals) const {
    return PyRef::Share(PyDict_GetItemString(globals, m_names.result.c_str()));
}

std::string CScriptRun::Program() const {
    return ComposeScriptProgram(m_script, m_names, Utf8Of(m_clean.Get()));
}

bool CScriptRun::RaiseRefusal() const {
    if (!CompileProgram(Program())) return false;
    const auto line = m_code.LineCount() + CountLines(m_literal.substr(0, m_closes)) + 1;
    const PyRef error(PyObject_CallFunction(PyExc_SyntaxError, "s(snOO)", Refusal, "<string>",
                                            static_cast<Py_ssize_t>(line), Py_None, Py_None));
    if (error) PyErr_SetObject(PyExc_SyntaxError, error.Get());
    return false;
}

// The error says where the script was, if it was interrupted in the middle.
void CScriptRun::RaiseTimeout() const {
    const auto interrupted = TakePythonError();
    const std::string words = StrFormat(TooLong) << m_milliseconds;
    const PyRef error(PyObject_CallFunction(PyExc_TimeoutError, "s", words.c_str()));
    if (!error) return;
    const PyRef traceback(interrupted ? PyException_GetTraceback(interrupted.Get()) : nullptr);
    if (traceback) PyException_SetTraceback(error.Get(), traceback.Get());
    PyErr_SetObject(PyExc_TimeoutError, error.Get());
}
