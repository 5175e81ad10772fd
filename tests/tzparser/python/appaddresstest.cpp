#include "tzparser/python/appcallpymethod.h"
#include "tzparser/python/appip.h"
#include "tzparser/python/appmac.h"

#include "support/pythonrun.h"

#include <memory>
#include <string>

#include <boost/python/errors.hpp>
#include <gtest/gtest.h>

namespace {

TEST(CAppIP, InvalidAndAllZeroValues) {
    const struct {
        CAppIP ip;
        bool valid, null;
        std::string wanted;
    } rows[] = {
        {CAppIP(), false, true, "0.0.0.0/8"},
        {CAppIP("garbage"), false, true, "0.0.0.0/8"},
        {CAppIP("192.0.2.7", "garbage"), false, true, "0.0.0.0/8"},
        {CAppIP("0.0.0.0"), false, true, "0.0.0.0/8"},
        {CAppIP("0.0.0.0/8"), false, true, "0.0.0.0/8"},
        {CAppIP("0.0.0.0/16"), false, true, "0.0.0.0/8"},
        {CAppIP("0.0.0.0", "255.255.0.0"), false, true, "0.0.0.0/8"},
        // The forms that are meant, and only exactly so.
        {CAppIP("0.0.0.0/0"), true, true, "0.0.0.0/0"},
        {CAppIP("0.0.0.0/32"), true, true, "0.0.0.0/32"},
        {CAppIP("0.0.0.0", "0.0.0.0"), true, true, "0.0.0.0/0"},
        {CAppIP("0.0.0.0", "255.255.255.255"), true, true, "0.0.0.0/32"},
        {CAppIP(" 0.0.0.0/0"), false, true, "0.0.0.0/8"},
        {CAppIP("0.0.0.0", "0"), false, true, "0.0.0.0/8"},
        {CAppIP("0.0.0.0 0.0.0.0"), false, true, "0.0.0.0/8"},
        {CAppIP("192.0.2.7/24"), true, false, "192.0.2.7/24"},
        {CAppIP("192.0.2.7", "255.255.255.0"), true, false, "192.0.2.7/24"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.wanted);
        EXPECT_EQ(row.ip.IsValid(), row.valid);
        EXPECT_EQ(row.ip.IsNull(), row.null);
        EXPECT_EQ(row.ip.IPMaskLen(), row.wanted);
        EXPECT_EQ(row.ip == CAppIP(), !row.valid);
    }
}

TEST(CAppIP, Parts) {
    const CAppIP ip("192.0.2.7", "255.255.255.128");
    EXPECT_EQ(ip.Network() + " " + ip.Mask() + " " + ip.ClassMask() + " " + ip.GetIPAddress(),
              "192.0.2.0 255.255.255.128 255.255.255.0 192.0.2.7");
    EXPECT_EQ(ip.IpMask(), "192.0.2.7 255.255.255.128");
    EXPECT_EQ(ip.GetMaskLen(), 25);
    EXPECT_TRUE(ip.IsSubnet());
    EXPECT_FALSE(ip.IsSupernet());
    EXPECT_FALSE(ip.IsFullMask());
    EXPECT_TRUE(CAppIP("192.0.2.7").IsFullMask());
    EXPECT_TRUE(ip != CAppIP("192.0.2.7/24"));
}

TEST(CAppMac, NotationsAndValidity) {
    const struct {
        std::string text, wanted;
    } rows[] = {
        {"  00-11-22-33-44-55\n", "0011.2233.4455"},
        {"0011.2233.4455", "0011.2233.4455"},
        {"hello", "0000.0000.0000"},
        {"", "0000.0000.0000"},
        {"00:00:00:00:00:00", "0000.0000.0000"},
        {"02:00:5e:ff:fe:00:53:01", "0000.0000.0000"},  // 64 bits are no MAC address in a text
    };
    for (const auto& row : rows) {
        EXPECT_EQ(CAppMac(row.text).MacStr(), row.wanted) << row.text;
        EXPECT_EQ(CAppMac(row.text).IsValid(), row.wanted != "0000.0000.0000") << row.text;
    }
    EXPECT_TRUE(CAppMac("001122334455") == CAppMac("00:11:22:33:44:55"));
    EXPECT_TRUE(CAppMac("001122334455") != CAppMac("00:11:22:33:44:56"));
}

// With the interpreter held, and nothing pending afterwards.
class PythonAddress : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(pythonlib_init_ex(nullptr, 0, 0));
        m_lock = std::make_unique<PyThreadStateLock>(1000, __FILE__, __LINE__);
    }
    void TearDown() override {
        EXPECT_EQ(PyErr_Occurred(), nullptr);
        m_lock.reset();
        EXPECT_EQ(PyGILState_Check(), 0);
    }
    static std::string ReprOf(PyObject* owned) {
        const PyRef object(owned);
        return PyObject_AsString(PyRef(PyObject_Repr(object.Get())).Get());
    }

    std::unique_ptr<PyThreadStateLock> m_lock;
};

TEST_F(PythonAddress, ObjectsOfTheClasses) {
    EXPECT_EQ(ReprOf(GetAppPyObject(3)), "PyIP('0.0.0.0/8')");
    EXPECT_EQ(ReprOf(GetAppPyObject(4)), "PyMac('0000.0000.0000')");
    EXPECT_EQ(ReprOf(CAppIP::GetPyObject()), "PyIP('0.0.0.0/8')");
    EXPECT_EQ(ReprOf(CAppIP::GetPyObject("192.0.2.7/24")), "PyIP('192.0.2.7/24')");
    EXPECT_EQ(ReprOf(CAppMac::GetPyObject()), "PyMac('0000.0000.0000')");
    EXPECT_EQ(ReprOf(CAppMac::GetPyObject("00005e005301")), "PyMac('0000.5e00.5301')");
    // Texts go straight into the object, past what the constructors make of the address 0, and an
    // address of 64 bits is kept.
    EXPECT_EQ(ReprOf(CAppIP::GetPyObject("0.0.0.0")), "PyIP('0.0.0.0/32')");
    EXPECT_EQ(ReprOf(CAppIP::GetPyObject("garbage")), "PyIP('0.0.0.0/0')");
    EXPECT_EQ(ReprOf(CAppMac::GetPyObject("02005efffe005301")), "PyMac(0x02005efffe005301)");
    const PyRef ip(GetAppPyObject(3));
    EXPECT_STREQ(Py_TYPE(ip.Get())->tp_name, "PyIP");
    const PyRef mac(GetAppPyObject(4));
    EXPECT_STREQ(Py_TYPE(mac.Get())->tp_name, "PyMac");
}

TEST_F(PythonAddress, FailuresGiveNullAndNone) {
    EXPECT_EQ(GetAppPyObject(99), nullptr);
    EXPECT_TRUE(PyErr_ExceptionMatches(PyExc_ValueError)) << "its error is left pending";
    PyErr_Clear();
    const struct {
        std::string name, program;
    } rows[] = {
        {"no module",
         "import sys\nkept = sys.modules.get('pyapplib')\nsys.modules['pyapplib'] = None"},
        {"no function", "import types\nsys.modules['pyapplib'] = types.ModuleType('pyapplib')"},
        {"a function that gives None",
         "sys.modules['pyapplib'].GetPythonObject = lambda code: None"},
        {"a function that fails", "sys.modules['pyapplib'].GetPythonObject = lambda code: 1/0"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        ASSERT_EQ(RunPython(row.program), "");
        EXPECT_EQ(ReprOf(CAppIP::GetPyObject()), "None");
        EXPECT_EQ(ReprOf(CAppMac::GetPyObject("00005e005301")), "None");
        EXPECT_EQ(PyErr_Occurred(), nullptr);
    }
    ASSERT_EQ(RunPython("sys.modules['pyapplib'].GetPythonObject = lambda code: 'text'"), "");
    EXPECT_THROW(CAppIP::GetPyObject("192.0.2.7"), boost::python::error_already_set);
    std::string error;
    EXPECT_TRUE(last_python_error_msg(error));
    EXPECT_NE(error.find("TypeError"), std::string::npos) << error;
    RunPython("sys.modules['pyapplib'] = kept");
    if (EvalPython("kept") == "None") RunPython("del sys.modules['pyapplib']");
}

TEST_F(PythonAddress, RelationsWithPythonObjects) {
    const struct {
        std::string mine, other;
        bool sameNet, summary;
    } rows[] = {
        {"192.0.2.7/24", "192.0.2.8/24", true, true},
        {"192.0.2.7/24", "198.51.100.1/24", false, false},
        {"192.0.2.7/24", "192.0.0.0/16", true, true},
        {"192.0.0.0/16", "192.0.2.7/24", true, false},
        {"192.0.2.7/24", "0.0.0.0/0", true, true},
        {"garbage", "0.0.0.0/0", false, false},
        {"192.0.2.7/24", "0.0.0.0/8", false, false},  // the invalid value
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.mine + " and " + row.other);
        const PyRef other(CAppIP::GetPyObject(row.other));
        EXPECT_EQ(CAppIP(row.mine).IsSamesSubnet(other.Get()), row.sameNet);
        EXPECT_EQ(CAppIP(row.mine).IsSummarynet(other.Get()), row.summary);
    }
    const PyRef text(PyUnicode_FromString("192.0.2.7"));
    EXPECT_THROW(CAppIP("192.0.2.7").IsSamesSubnet(text.Get()), boost::python::error_already_set);
    EXPECT_TRUE(PyErr_ExceptionMatches(PyExc_TypeError));
    PyErr_Clear();
}

// None is handed over to the operations, as hosts rely on: they release one reference of it.
TEST_F(PythonAddress, NoneIsTakenOver) {
    const CAppIP ip("192.0.2.7/24");
    const Py_ssize_t before = Py_REFCNT(Py_None);
    for (int i = 0; i < 1000; ++i) {
        Py_INCREF(Py_None);
        EXPECT_FALSE(ip.IsSamesSubnet(Py_None));
        Py_INCREF(Py_None);
        EXPECT_FALSE(ip.IsSummarynet(Py_None));
    }
    EXPECT_EQ(Py_REFCNT(Py_None), before);
}

TEST_F(PythonAddress, NoReferenceIsLeftBehind) {
    const char* const program =
        "import gc, sys\nfrom pyapplib import *\nfrom pyconfiglet import PyConfigLet\n"
        "import pickle\n"
        "def work():\n"
        "    a, b = PyIP('192.0.2.7/24'), PyIP('192.0.2.8', '255.255.255.0')\n"
        "    a < b, a == b, hash(a), str(a), a.network, a.IsSamesSubnet(b), a.IsSummarynet(None)\n"
        "    try: a.IsSamesSubnet('text')\n"
        "    except TypeError: pass\n"
        "    pickle.loads(pickle.dumps([a, PyMac('00005e005301')]))\n"
        "    PyMac('x') == PyMac(), PyPercent('5%'), PyIPv6('2001:db8::1'), "
        "PyConfigLet('a').lines\n"
        "def count():\n"
        "    gc.collect()\n"
        "    return [sys.getrefcount(x) for x in (None, PyIP, PyMac, PyPercent, PyIPv6, "
        "PyConfigLet, \n"
        "                                         GetPythonObject)] + [len(gc.get_objects())]\n";
    ASSERT_EQ(RunPython(program), "");
    const auto work = [] {
        EXPECT_EQ(RunPython("for i in range(2000): work()"), "");
        for (int i = 0; i < 10000; ++i) {
            const PyRef ip(CAppIP::GetPyObject("192.0.2.7/24"));
            const PyRef mac(CAppMac::GetPyObject("00005e005301"));
            EXPECT_EQ(GetAppPyObject(99), nullptr);
            PyErr_Clear();
        }
    };
    work();  // the interpreter fills and clears its caches
    RunPython("before = []; after = []; before = count()");
    work();
    RunPython("after = count()");
    // Counts of None waver by some dozens; a reference lost or left each round is thousands.
    EXPECT_EQ(EvalPython("[b - a for a, b in zip(before, after) if abs(b - a) > 500]"), "[]")
        << EvalPython("before, after");
}

}  // namespace
