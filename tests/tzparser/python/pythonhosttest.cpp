#include "tzparser/python/appcallpymethod.h"
#include "tzparser/python/appip.h"

#include "support/pythonrun.h"

#include <gtest/gtest.h>

namespace {

// A program that has had Python for long, and meets the library by asking for an object.
TEST(PythonHost, AHostThatStartedPythonGetsObjectsAtOnce) {
    EXPECT_EQ(GetAppPyObject(3), nullptr) << "no interpreter";
    EXPECT_EQ(CAppIP::GetPyObject("192.0.2.7"), Py_None);
    Py_InitializeEx(0);
    {
        const PyRef ip(CAppIP::GetPyObject("192.0.2.7/24"));
        const PyRef repr(PyObject_Repr(ip.Get()));
        EXPECT_EQ(PyObject_AsString(repr.Get()), "PyIP('192.0.2.7/24')");
    }
    EXPECT_EQ(EvalPython("__import__('pyapplib').PyMac('00005e005301')"),
              "PyMac('0000.5e00.5301')");
    EXPECT_EQ(EvalPython("__import__('pyconfiglet').PyConfigLet('a')"), "PyConfigLet('a')");
    EXPECT_EQ(Py_FinalizeEx(), 0) << "the host may stop what it started";
}

}  // namespace
