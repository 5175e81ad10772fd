#include "support/pythonrun.h"
#include "tablevalue.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

class PythonValue : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(pythonlib_init_ex(nullptr, 0, 0));
        m_lock = std::make_unique<PyThreadStateLock>(1000, __FILE__, __LINE__);
    }
    void TearDown() override { EXPECT_EQ(PyErr_Occurred(), nullptr); }
    static std::string ReprOf(PyObject* owned) {
        const PyRef object(owned);
        return PyObject_AsString(PyRef(PyObject_Repr(object.Get())).Get());
    }

    std::unique_ptr<PyThreadStateLock> m_lock;
};

TEST_F(PythonValue, PlainValuesByType) {
    const struct {
        AppDataType_e type;
        std::string text, wanted;
    } rows[] = {
        {AppDataType_Int, "17", "17"},
        {AppDataType_Int, "x", "None"},
        {AppDataType_Double, "1.5", "1.5"},
        {AppDataType_Float, "1.5", "1.5"},
        {AppDataType_Bool, "true", "True"},
        {AppDataType_String, "text", "'text'"},
        {AppDataType_String, "", "None"},
        {AppDataType_IP, "192.0.2.7/24", "PyIP('192.0.2.7/24')"},
        {AppDataType_Mac, "00005e005301", "PyMac('0000.5e00.5301')"},
        {AppDataType_Percent, "5%", "PyPercent('5%')"},
        {AppDataType_IPv6, "2001:db8::1/64", "PyIPv6('2001:db8::1/64')"},
        {AppDataType_Device, "R1", "None"},
        {AppDataType_Interface, "Gi0/1", "None"},
        {AppDataType_ConfigLet, "interface Gi0/1", "None"},
        {AppDataType_None, "text", "None"},
        {AppDataType_Dict, "{}", "None"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text + " as " + std::to_string(row.type));
        CAppVariableDef def(nullptr, "$x", row.type, AppVariableType_Parser, "");
        CAppVariableValue value(&def, true, nullptr, nullptr, 10);
        EXPECT_EQ(ReprOf(value.GetPythonObject()), "None");
        EXPECT_EQ(ReprOf(value.GetPyVariableValue(0)), "None");
        value.GetValues().emplace_back(row.text);
        value.GetValues().emplace_back("second");
        EXPECT_EQ(ReprOf(value.GetPythonObject()), row.wanted);
        EXPECT_EQ(ReprOf(value.GetPyVariableValue(-5)), row.wanted);
    }
}

TEST_F(PythonValue, ATextChangedFromOutsideIsAskedForEvenWhenEmpty) {
    for (const auto& [type, wanted] :
         {std::pair(AppDataType_String, "''"), {AppDataType_Int, "None"}}) {
        CAppVariableDef def(nullptr, "$x", type, AppVariableType_Parser, "");
        CAppVariableValue value(&def, true, nullptr, nullptr, 10);
        value.GetValues().emplace_back("");
        EXPECT_EQ(ReprOf(value.GetPythonObject()), "None");
        value.GetValues().front().SetModifyByOutSide();
        EXPECT_EQ(ReprOf(value.GetPythonObject()), wanted);
    }
}

TEST_F(PythonValue, TablesAreDictsOfListsOfOneLength) {
    const struct {
        std::string name;
        std::vector<Cells> columns;
        std::string wanted;
    } rows[] = {
        {"empty", {}, "{'$t': {'$a': [], 'b': [], 'b.\\udcff': []}}"},
        {"short second",
         {{"1", "x", "3"}, {"p"}},
         "{'$t': {'$a': [1, None, 3], 'b': ['p', None, None], 'b.\\udcff': [None, None, None]}}"},
        {"first empty",
         {{}, {"p", "q"}},
         "{'$t': {'$a': [None, None], 'b': ['p', 'q'], 'b.\\udcff': [None, None]}}"},
        {"long second",
         {{"1"}, {"p", "q"}},
         "{'$t': {'$a': [1], 'b': ['p'], 'b.\\udcff': [None]}}"},
    };
    TableTree tree({}, "$t");
    AddColumnDef(*tree.table, "$a", AppDataType_Int);
    AddColumnDef(*tree.table, "b", AppDataType_String);
    AddColumnDef(*tree.table, "b.\xff", AppDataType_Device);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(ReprOf(tree.Value(row.columns)->GetPythonObject()), row.wanted);
    }
    const auto value = tree.Value({{"1", "2"}, {}});
    auto* const column = TableTree::Table(*value).GetChildValues()[0];
    EXPECT_EQ(ReprOf(column->GetPyVariableValue(1)), "2");
    EXPECT_EQ(ReprOf(column->GetPyVariableValue(2)), "None");
    EXPECT_EQ(ReprOf(column->GetPyVariableValue(-1)), "None");
}

TEST_F(PythonValue, ChildrenKeepTheirOrderAndDepthDoesNotMatter) {
    CAppVariableDef def(nullptr, "parser", AppDataType_Parsing, AppVariableType_Default, "");
    AddDef(def, new CAppVariableDef(nullptr, "z", AppDataType_Parsing, AppVariableType_Parser, ""));
    AddDef(def, new CAppVariableDef(nullptr, "a", AppDataType_Int, AppVariableType_Parser, ""));
    CAppVariableValue value(&def, true, nullptr, nullptr, 10);
    EXPECT_EQ(ReprOf(value.GetPythonObject()), "{'z': {}, 'a': None}");

    CAppVariableDef deep(nullptr, "parser", AppDataType_Parsing, AppVariableType_Default, "");
    CAppVariableDef* at = &deep;
    for (int i = 0; i < 100000; ++i)
        at = AddDef(*at, new CAppVariableDef(nullptr, "x", AppDataType_Parsing,
                                             AppVariableType_Parser, ""));
    const CAppVariableValue deepValue(&deep, true, nullptr, nullptr, 10);
    const PyRef object(const_cast<CAppVariableValue&>(deepValue).GetPythonObject());
    EXPECT_EQ(PyDict_Size(object.Get()), 1);
}

TEST_F(PythonValue, NoReferenceIsLeftBehind) {
    TableTree tree({}, "t");
    AddColumnDef(*tree.table, "ip", AppDataType_IP);
    AddColumnDef(*tree.table, "n", AppDataType_Int);
    const auto value = tree.Value({{"192.0.2.7", "x"}, {"1", "x"}});
    const auto work = [&] {
        for (int i = 0; i < 10000; ++i) const PyRef object(value->GetPythonObject());
    };
    work();  // the interpreter fills and clears its caches
    ASSERT_EQ(RunPython("import gc, sys, pyapplib\ncount = lambda: (gc.collect(), "
                        "len(gc.get_objects()), sys.getrefcount(pyapplib.PyIP))[1:]\n"
                        "before = (0, 0)\nbefore = count()"),
              "");
    const Py_ssize_t nones = Py_REFCNT(Py_None);
    work();
    // The count wavers by some dozens; a reference lost or left each round is thousands.
    EXPECT_NEAR(static_cast<double>(Py_REFCNT(Py_None)), static_cast<double>(nones), 500);
    EXPECT_EQ(EvalPython("before == count()"), "True") << EvalPython("before, count()");
}

}  // namespace
