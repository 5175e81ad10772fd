#include "host/python/tzp3typeobject.h"

#include "support/pythonrun.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

namespace {

struct Row {
    const char* expression;
    const char* wanted;  // the repr, or the last line of the error
};

template <std::size_t Count>
void CheckRows(const Row (&rows)[Count]) {
    ASSERT_EQ(RunPython("from pyapplib import *\nimport pyapplib, ipaddress, pickle, copy"), "");
    for (const Row& row : rows) EXPECT_EQ(EvalPython(row.expression), row.wanted) << row.expression;
}

TEST(Pyapplib, AddressesAsValues) {
    const Row rows[] = {
        {"PyIP('192.0.2.7/24')", "PyIP('192.0.2.7/24')"},
        {"PyIP('192.0.2.7', '255.255.255.0')", "PyIP('192.0.2.7/24')"},
        {"PyIP('192.0.2.7', '255.0.255.0')", "PyIP('192.0.2.7/255.0.255.0')"},
        {"PyIP()", "PyIP('0.0.0.0/8')"},
        {"PyIP('garbage')", "PyIP('0.0.0.0/8')"},
        {"PyIP(0xc0000207)", "PyIP('192.0.2.7/32')"},
        {"PyIP(-1)", "ipaddress.AddressValueError: -1 (< 0) is not permitted as an IPv4 address"},
        {"PyIP(PyIP('192.0.2.7/24'))", "PyIP('192.0.2.7/24')"},
        {"PyIP(ipaddress.ip_address('192.0.2.7'))", "PyIP('192.0.2.7/32')"},
        {"PyIP(ipaddress.ip_interface('192.0.2.7/24'))", "PyIP('192.0.2.7/24')"},
        {"PyIP(ipaddress.ip_network('192.0.2.0/24'))", "PyIP('192.0.2.0/24')"},
        {"PyIP(ipaddress.ip_address('2001:db8::1'))",
         "TypeError: no PyIP can be made of (IPv6Address)"},
        {"PyIP('192.0.2.7', 24)", "PyIP('192.0.2.7/24')"},
        {"PyIP('192.0.2.7', 24.0)", "TypeError: no PyIP can be made of (str, float)"},
        {"PyIP('192.0.2.7', None)", "TypeError: no PyIP can be made of (str, NoneType)"},
        {"str(PyIP('192.0.2.7/24'))", "'192.0.2.7/24'"},
        {"f\"{PyIP('192.0.2.7/24'):a} {PyIP('192.0.2.7/24'):m} {PyIP('192.0.2.7'):08x}\"",
         "'192.0.2.7 192.0.2.7 255.255.255.0 c0000207'"},
        {"f\"[{PyIP('192.0.2.7/24'):>15}]\"", "'[   192.0.2.7/24]'"},
        {"[bool(PyIP(t)) for t in ('192.0.2.7', '0.0.0.0/0', '0.0.0.0', 'x')]",
         "[True, True, False, False]"},
        {"int(PyIP('192.0.2.7')), hex(PyIP('192.0.2.7'))", "(3221225991, '0xc0000207')"},
        {"PyIP('192.0.2.7/24') == PyIP('192.0.2.7', '24'), PyIP('192.0.2.7') != PyIP('192.0.2.8')",
         "(True, True)"},
        {"PyIP('192.0.2.7') == '192.0.2.7', PyIP() == None, PyIP() != 5", "(False, False, True)"},
        {"PyIP('192.0.2.7') < '192.0.2.8'",
         "TypeError: '<' not supported between instances of 'PyIP' and 'str'"},
        {"sorted(map(PyIP, ['192.0.2.9/24', '192.0.2.7', '192.0.2.8/24', '10.0.0.1/8']))",
         "[PyIP('10.0.0.1/8'), PyIP('192.0.2.8/24'), PyIP('192.0.2.9/24'), PyIP('192.0.2.7/32')]"},
        {"PyIP('192.0.2.7/24') <= PyIP('192.0.2.7/24') < PyIP('192.0.2.8/24')", "True"},
        {"len({PyIP('192.0.2.7'), PyIP('192.0.2.7/32'), PyIP('192.0.2.7/24')})", "2"},
        {"all(PyIP(str(i)) == i and i == PyIP(str(i)) and hash(PyIP(str(i))) == hash(i) for i in "
         "map(ipaddress.ip_interface, ['192.0.2.7/24', '198.51.100.0/31', '0.0.0.0/0']))",
         "True"},
        {"PyIP('192.0.2.7/24') in {ipaddress.ip_interface('192.0.2.7/24'): 1}", "True"},
        {"PyIP('192.0.2.7/24') < ipaddress.ip_interface('192.0.2.8/24')", "True"},
        {"[pickle.loads(pickle.dumps(PyIP(t), p)) == PyIP(t) for t in ('192.0.2.7/24', "
         "'0.0.0.0/0', "
         "'x') for p in (0, 2, 4)]",
         "[True, True, True, True, True, True, True, True, True]"},
        {"copy.deepcopy([PyIP('192.0.2.7/24')])", "[PyIP('192.0.2.7/24')]"},
        {"(lambda i: (i.ip, i.netmask, i.hostmask, i.prefixlen, i.packed, i.version))"
         "(PyIP('192.0.2.7/24'))",
         "(IPv4Address('192.0.2.7'), IPv4Address('255.255.255.0'), IPv4Address('0.0.0.255'), 24, "
         "b'\\xc0\\x00\\x02\\x07', 4)"},
        {"(lambda i: (i.network, i.interface, i.with_prefixlen, i.with_netmask, i.is_valid))"
         "(PyIP('192.0.2.7/24'))",
         "(IPv4Network('192.0.2.0/24'), IPv4Interface('192.0.2.7/24'), '192.0.2.7/24', "
         "'192.0.2.7/255.255.255.0', True)"},
        {"PyIP('192.0.2.7 255.0.255.0').network",
         "ipaddress.NetmaskValueError: '255.0.255.0' is not a valid netmask"},
        {"type(PyIP()).__name__, PyIP.__module__, PyIP.__doc__[:7]",
         "('PyIP', 'pyapplib', 'An IPv4')"},
        {"[m for m in dir(PyIP) if not m.startswith('_') and not getattr(PyIP, m).__doc__]", "[]"},
    };
    CheckRows(rows);
}

TEST(Pyapplib, OperationsOfTheAddress) {
    const Row rows[] = {
        {"(lambda i: (i.Network(), i.Mask(), i.ClassMask(), i.GetIPAddress(), i.IPMaskLen(), "
         "i.IpMask(), i.GetMaskLen()))(PyIP('192.0.2.7/25'))",
         "('192.0.2.0', '255.255.255.128', '255.255.255.0', '192.0.2.7', '192.0.2.7/25', "
         "'192.0.2.7 255.255.255.128', 25)"},
        {"(lambda i: (i.IsSupernet(), i.IsSubnet(), i.IsValid(), i.IsNull(), i.IsFullMask()))"
         "(PyIP('192.0.2.7/25'))",
         "(False, True, True, False, False)"},
        {"PyIP('192.0.2.7/24').IsSamesSubnet(PyIP('192.0.2.9/24'))", "True"},
        {"PyIP('192.0.2.7/24').IsSummarynet(PyIP('192.0.0.0/16'))", "True"},
        {"PyIP('192.0.2.7/24').IsSamesSubnet(PyIP('0.0.0.0/0'))", "True"},
        {"PyIP('192.0.2.7/24').IsSamesSubnet(None)", "False"},
        {"PyIP('192.0.2.7/24').IsSummarynet(None)", "False"},
    };
    CheckRows(rows);
    // A script keeps what it passes: asking with None often doesn't use None up.
    RunPython(
        "import sys\nbefore = sys.getrefcount(None)\nip = PyIP('192.0.2.7')\n"
        "for i in range(10000): ip.IsSamesSubnet(None), ip.IsSummarynet(None)\n");
    EXPECT_EQ(EvalPython("abs(sys.getrefcount(None) - before) < 20"), "True");
    EXPECT_NE(EvalPython("PyIP('192.0.2.7').IsSamesSubnet('192.0.2.7')").find("TypeError"),
              std::string::npos);
}

TEST(Pyapplib, HardwareAddresses) {
    const Row rows[] = {
        {"PyMac('00-00-5E-00-53-01')", "PyMac('0000.5e00.5301')"},
        {"PyMac('garbage')", "PyMac('0000.0000.0000')"},
        {"PyMac(0x5e005301), PyMac(0x02005efffe005301)",
         "(PyMac('0000.5e00.5301'), PyMac(0x02005efffe005301))"},
        {"PyMac(1 << 64)", "ValueError: 18446744073709551616 is no MAC address"},
        {"PyMac(None)", "TypeError: no PyMac can be made of (NoneType)"},
        {"PyMac(PyMac('00005e005301'))", "PyMac('0000.5e00.5301')"},
        {"str(PyMac('00005e005301')), int(PyMac('00005e005301'))",
         "('0000.5e00.5301', 1577079553)"},
        {"(lambda m: (m.bare, m.colon, m.dash, m.dotted, m.oui, m.packed, m.is_valid))"
         "(PyMac('00005e005301'))",
         "('00005e005301', '00:00:5e:00:53:01', '00-00-5e-00-53-01', '0000.5e00.5301', '00005e', "
         "b'\\x00\\x00^\\x00S\\x01', True)"},
        {"'{0::}|{0:-}|{0:.}|{0}|{0:>16}'.format(PyMac('00005e005301'))",
         "'00:00:5e:00:53:01|00-00-5e-00-53-01|0000.5e00.5301|0000.5e00.5301|  0000.5e00.5301'"},
        {"bool(PyMac()), bool(PyMac('00005e005301')), PyMac().IsValid()", "(False, True, False)"},
        {"PyMac('0000.5e00.5301') == PyMac('00:00:5e:00:53:01'), PyMac() == 0, PyMac() != None",
         "(True, False, True)"},
        {"sorted([PyMac('00005e005302'), PyMac('00005e005301')])[0], PyMac() >= PyMac()",
         "(PyMac('0000.5e00.5301'), True)"},
        {"len({PyMac('00005e005301'), PyMac('0000.5e00.5301')})", "1"},
        {"[pickle.loads(pickle.dumps(m)) == m for m in (PyMac(), PyMac(5), PyMac(1 << 63))]",
         "[True, True, True]"},
        {"PyMac.IsMacAddress(' 0000.5e00.5301\\n'), PyMac.IsMacAddress('x')", "(True, False)"},
        {"PyMac('00005e005301').MacStr(), type(PyMac()).__name__", "('0000.5e00.5301', 'PyMac')"},
    };
    CheckRows(rows);
}

TEST(Pyapplib, PercentagesAndLongAddresses) {
    const Row rows[] = {
        {"PyPercent('12.50%'), PyPercent(12.5), PyPercent()",
         "(PyPercent('12.50%'), PyPercent('12.5%'), PyPercent('0.0%'))"},
        {"str(PyPercent('12.50%')), float(PyPercent('-5%')), PyPercent('50%').fraction",
         "('12.50%', -5.0, 0.5)"},
        {"PyPercent('50%') == 50, PyPercent('5%') < PyPercent('10%'), PyPercent('5%') + 1",
         "(True, True, 6.0)"},
        {"'{0}|{0:.1f}|{0:.0%}|{0:8.1%}'.format(PyPercent('12.50%'))",
         "'12.50%|12.5|12%|    12.5%'"},
        {"PyPercent('12.5')", "ValueError: '12.5' is no percentage"},
        {"PyPercent(float('nan'))", "ValueError: nan is no percentage"},
        {"[pickle.loads(pickle.dumps(p)) for p in (PyPercent('5%'), PyPercent(1e300))]",
         "[PyPercent('5%'), PyPercent('1e+300%')]"},
        {"PyIPv6('2001:DB8::1/64'), PyIPv6('2001:db8::1')",
         "(PyIPv6('2001:db8::1/64'), PyIPv6('2001:db8::1/128'))"},
        {"PyIPv6('2001:db8::1/64').network, PyIPv6('2001:db8::1') == "
         "ipaddress.ip_interface('2001:db8::1')",
         "(IPv6Network('2001:db8::/64'), True)"},
        {"pickle.loads(pickle.dumps(PyIPv6('2001:db8::1/64')))", "PyIPv6('2001:db8::1/64')"},
        {"GetPythonObject(3), GetPythonObject(4)", "(PyIP('0.0.0.0/8'), PyMac('0000.0000.0000'))"},
        {"GetPythonObject(5)", "ValueError: no type has the code 5"},
        {"sorted(pyapplib.__all__)", "['GetPythonObject', 'PyIP', 'PyIPv6', 'PyMac', 'PyPercent']"},
    };
    CheckRows(rows);
}

TEST(Pyapplib, ObjectsOfValues) {
    ASSERT_TRUE(pythonlib_init_ex(nullptr, 0, 0));
    const struct {
        int code;
        std::string text, wanted;  // "" for none
    } rows[] = {
        {1, "192.0.2.7 255.255.255.0", "PyIP('192.0.2.7/24')"},
        {1, "192.0.2.7 0.0.0.255", "PyIP('192.0.2.7/24')"},
        {1, "0.0.0.0", "PyIP('0.0.0.0/32')"},
        {1, "garbage", ""},
        {2, "00:00:5e:00:53:01", "PyMac('0000.5e00.5301')"},
        {2, "garbage", ""},
        {3, "99.9%", "PyPercent('99.9%')"},
        {3, "99.9", ""},
        {4, "2001:db8::1/64", "PyIPv6('2001:db8::1/64')"},
        {4, "\xff", ""},
    };
    const PyThreadStateLock lock(1000, __FILE__, __LINE__);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
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

}  // namespace
