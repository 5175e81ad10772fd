#include "support/pythonrun.h"

#include <gtest/gtest.h>

namespace {

TEST(Pyconfiglet, FragmentsAsPythonPeopleExpect) {
    ASSERT_EQ(RunPython("from pyconfiglet import PyConfigLet\nimport pickle\n"
                        "let = PyConfigLet('interface Gi0/1\\n shutdown\\n')"),
              "");
    const struct {
        const char* expression;
        const char* wanted;
    } rows[] = {
        {"let.GetStrValue()", "'interface Gi0/1\\n shutdown\\n'"},
        {"let", "PyConfigLet('interface Gi0/1\\n shutdown\\n')"},
        {"str(let) == let.text, len(let), bool(let), bool(PyConfigLet())",
         "(True, 26, True, False)"},
        {"list(let), let.lines",
         "(['interface Gi0/1', ' shutdown'], ['interface Gi0/1', ' shutdown'])"},
        {"'shut' in let, 'no shut' in let", "(True, False)"},
        {"PyConfigLet('a') == PyConfigLet('a'), PyConfigLet('a') == 'a', PyConfigLet('a') < "
         "PyConfigLet('b')",
         "(True, False, True)"},
        {"len({PyConfigLet('a'), PyConfigLet('a'), PyConfigLet('b')})", "2"},
        {"pickle.loads(pickle.dumps(let)) == let, PyConfigLet(let) == let", "(True, True)"},
        {"f'{PyConfigLet(\"a\"):>3}'", "'  a'"},
        {"PyConfigLet(5)", "TypeError: a PyConfigLet is made of str or bytes, not of int"},
        {"PyConfigLet(b'\\xff\\x00').text", "'\\udcff\\x00'"},
        {"PyConfigLet(PyConfigLet(b'\\xff').text).text", "'\\udcff'"},
        {"type(let).__name__, type(let).__module__", "('PyConfigLet', 'pyconfiglet')"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(EvalPython(row.expression), row.wanted) << row.expression;
    const PyThreadStateLock lock(1000, __FILE__, __LINE__);
    PyObject* const names = PyModule_GetDict(PyImport_AddModule("__main__"));
    PyObject* const let = PyDict_GetItemString(names, "let");
    ASSERT_NE(let, nullptr);
    EXPECT_STREQ(Py_TYPE(let)->tp_name, "PyConfigLet");
}

}  // namespace
