#include "host/python/tzp3typeobject.h"

#include "support/pythonrun.h"

#include <clocale>
#include <csignal>
#include <memory>
#include <string>
#include <thread>

#include <gtest/gtest.h>

namespace {

using std::string_literals::operator""s;

// The object of an expression.
PyRef ObjectOf(const std::string& expression) {
    PyObject* const names = PyModule_GetDict(PyImport_AddModule("__main__"));
    return PyRef(PyRun_String(expression.c_str(), Py_eval_input, names, names));
}

TEST(PythonText, ErrorsAsPythonPrintsThem) {
    ASSERT_TRUE(pythonlib_init_ex(nullptr, 0, 0));
    const struct {
        std::string program, wanted;
    } rows[] = {
        {"x = 1", ""},
        {"1/0",
         "Traceback (most recent call last):\n  File \"<string>\", line 1, in <module>\n"
         "ZeroDivisionError: division by zero"},
        {"raise KeyError('a\\nb')",
         "Traceback (most recent call last):\n  File \"<string>\", line 1, in <module>\n"
         "KeyError: 'a\\nb'"},
        {"raise SystemExit(3)",
         "Traceback (most recent call last):\n  File \"<string>\", line 1, in <module>\n"
         "SystemExit: 3"},
    };
    const PyThreadStateLock lock(1000, __FILE__, __LINE__);
    PyObject* const names = PyModule_GetDict(PyImport_AddModule("__main__"));
    for (const auto& row : rows) {
        SCOPED_TRACE(row.program);
        const PyRef result(PyRun_String(row.program.c_str(), Py_file_input, names, names));
        std::string text = "old";
        EXPECT_EQ(last_python_error_msg(text), !row.wanted.empty());
        EXPECT_EQ(text, row.wanted);
        EXPECT_EQ(PyErr_Occurred(), nullptr);
    }
}

TEST(PythonText, OddErrorsStillHaveATextWithinTheLimit) {
    const std::string noText = "class E(Exception):\n    def __str__(self): raise self\nraise E";
    EXPECT_NE(RunPython(noText).find("E: <exception str() failed>"), std::string::npos);
    const PyThreadStateLock lock(1000, __FILE__, __LINE__);
    std::string text;
    const PyRef names(PyDict_New());
    const PyRef result(PyRun_String("raise ValueError('x' * 10**6 + 'end')", Py_file_input,
                                    names.Get(), names.Get()));
    EXPECT_TRUE(last_python_error_msg(text));
    EXPECT_LE(text.size(), 65536U);
    EXPECT_EQ(text.substr(0, 9), "Traceback");
    EXPECT_EQ(text.substr(text.size() - 4), "xend");
}

TEST(PythonText, TextsOfObjects) {
    ASSERT_TRUE(pythonlib_init_ex(nullptr, 0, 0));
    const struct {
        std::string expression, wanted;
    } rows[] = {
        {"'text'", "text"},
        {"'a\\0b'", "a\0b"s},
        {"'\\u00e4\\U0001f600'", "\xc3\xa4\xf0\x9f\x98\x80"},
        {"b'\\xff\\x00a'", "\xff\0a"s},
        {"b'\\xff\\xc3\\xa4'.decode('utf-8', 'surrogateescape')", "\xff\xc3\xa4"},
        {"'a\\ud800'", "a?"},
        {"None", "None"},
        {"1.5", "1.5"},
        {"[1, 'a']", "[1, 'a']"},
        {"type('T', (), {'__str__': lambda self: 1/0})()", ""},
        {"type('T', (str,), {'__str__': lambda self: 'other'})('own')", "own"},
    };
    const PyThreadStateLock lock(1000, __FILE__, __LINE__);
    for (const auto& row : rows) {
        const PyRef object = ObjectOf(row.expression);
        EXPECT_EQ(PyObject_AsString(object.Get()), row.wanted) << row.expression;
        EXPECT_EQ(PyErr_Occurred(), nullptr) << row.expression;
    }
    EXPECT_EQ(PyObject_AsString(nullptr), "");
}

TEST(PythonText, ValuesAsObjects) {
    ASSERT_TRUE(pythonlib_init_ex(nullptr, 0, 0));
    const struct {
        int code;
        std::string text, wanted;  // the repr; "" for none
    } rows[] = {
        {100, "", "''"},
        {100, "a\0b"s, "'a\\x00b'"},
        {100, "\xff\xc3\xa4", "'\\udcff\xc3\xa4'"},
        {101, "-17", "-17"},
        {101, "+007", "7"},
        {101, "18446744073709551615", "18446744073709551615"},
        {101, "", ""},
        {101, "-", ""},
        {101, "1_0", ""},
        {101, " 1", ""},
        {101, "1\0"s, ""},
        {101, std::string(100000, '9'), ""},
        {102, "1.50", "1.5"},
        {102, "1e-999", "0.0"},
        {102, "nan", ""},
        {102, "1e999", ""},
        {102, "1_0.5", ""},
        {103, "TRUE", "True"},
        {103, "0", "False"},
        {103, "yes", ""},
        {104, "{}", ""},
        {105, "[]", ""},
        {201, "x", ""},
    };
    const PyThreadStateLock lock(1000, __FILE__, __LINE__);
    for (const auto& row : rows) {
        SCOPED_TRACE(std::to_string(row.code) + " " + row.text.substr(0, 40));
        const std::unique_ptr<TzP3TypeObject> type(TzP3TypeObject::CreateObj(row.code));
        type->SetText(row.text);
        PyObject* object = nullptr;
        EXPECT_EQ(type->GetPythonObject(object), !row.wanted.empty());
        const PyRef held(object);
        const PyRef repr(object != nullptr ? PyObject_Repr(object) : nullptr);
        EXPECT_EQ(PyObject_AsString(repr.Get()), row.wanted);
        EXPECT_EQ(PyErr_Occurred(), nullptr);
    }
}

TEST(PythonText, StartingLeavesTheProcessAsItWas) {
    const std::string locale = std::setlocale(LC_ALL, nullptr);
    struct sigaction before {};
    sigaction(SIGINT, nullptr, &before);
    ASSERT_TRUE(pythonlib_init_ex(nullptr, 0, 0));
    struct sigaction after {};
    sigaction(SIGINT, nullptr, &after);
    EXPECT_EQ(std::setlocale(LC_ALL, nullptr), locale);
    EXPECT_EQ(after.sa_handler, before.sa_handler);
    EXPECT_EQ(EvalPython("__import__('sys').flags.utf8_mode"), "1");
    EXPECT_EQ(EvalPython("__import__('sys').argv"), "['']");
}

TEST(PythonText, LocksNestAndAreGivenBack) {
    ASSERT_TRUE(pythonlib_init_ex(nullptr, 0, 0));
    EXPECT_EQ(PyGILState_Check(), 0);
    {
        const PyThreadStateLock outer(1000, "outer", 1);
        EXPECT_TRUE(outer.IsHeld());
        {
            const PyThreadStateLock inner(1000, nullptr, 0);
            EXPECT_TRUE(inner.IsHeld());
        }
        EXPECT_EQ(PyGILState_Check(), 1);
    }
    EXPECT_EQ(PyGILState_Check(), 0);
    std::thread([] { EXPECT_EQ(EvalPython("1 + 1"), "2"); }).join();
}

TEST(PythonText, SubInterpretersStartEmpty) {
    RunPython("kept = 1");
    for (int i = 0; i < 3; ++i) {
        const PySubInterpreter interpreter;
        ASSERT_TRUE(interpreter.IsRunning());
        const PyRef names = PyRef::Share(PyModule_GetDict(PyImport_AddModule("__main__")));
        EXPECT_EQ(PyDict_GetItemString(names.Get(), "kept"), nullptr);
        const PyRef result(PyRun_String("kept = 2", Py_file_input, names.Get(), names.Get()));
        EXPECT_TRUE(result);
    }
    EXPECT_EQ(EvalPython("kept"), "1");
}

}  // namespace
