// The C++ part of the module "pyapplib": the classes around addresses with the operations of the
// values. What else they do in Python is in pyapplib.py.
#include "host/python/pythonform.h"
#include "host/python/pythonlib.h"
#include "host/python/pythonmodule.h"
#include "tzparser/python/addressobject.h"
#include "tzparser/python/appip.h"
#include "tzparser/python/appmac.h"
#include "tzparser/python/pythonclasses.h"

#include <cstdint>

#include <boost/python/class.hpp>
#include <boost/python/def.hpp>
#include <boost/python/docstring_options.hpp>
#include <boost/python/init.hpp>

namespace {

namespace py = boost::python;

// A script lends its arguments, and the operations of the value release None.
bool IsSamesSubnet(const CAppIP& ip, PyObject* other) {
    if (other == Py_None) Py_INCREF(other);
    return ip.IsSamesSubnet(other);
}

bool IsSummarynet(const CAppIP& ip, PyObject* other) {
    if (other == Py_None) Py_INCREF(other);
    return ip.IsSummarynet(other);
}

std::uint32_t AddressOfIp(const CAppIP& ip) {
    return ip.m_location.m_address;
}

std::uint32_t MaskOfIp(const CAppIP& ip) {
    return ip.m_location.m_mask;
}

CAppIP MakeIp(std::uint32_t address, std::uint32_t mask) {
    CAppIP ip;
    ip.m_location.m_address = address;
    ip.m_location.m_mask = mask;
    return ip;
}

std::uint64_t NumberOfMac(const CAppMac& mac) {
    return mac.m_address.Value();
}

CAppMac MakeMac(std::uint64_t number) {
    CAppMac mac;
    mac.m_address = MacAddress(number);
    return mac;
}

std::string MacInForm(const CAppMac& mac, int format) {
    return mac.m_address.TextForm(format);
}

bool IsMacAddress(const std::string& text) {
    return CAppMac::IsMacAddress(text);
}

void DefineIp() {
    py::class_<CAppIP>("PyIP", py::init<>())
        .def(py::init<std::string>())
        .def(py::init<std::string, std::string>())
        .def(py::init<const CAppIP&>())
        .def("Network", &CAppIP::Network, "The address of the network, '192.0.2.0'.")
        .def("Mask", &CAppIP::Mask, "The mask, '255.255.255.0'.")
        .def("ClassMask", &CAppIP::ClassMask, "The mask of the address's class.")
        .def("GetIPAddress", &CAppIP::GetIPAddress, "The address alone, '192.0.2.7'.")
        .def("IPMaskLen", &CAppIP::IPMaskLen, "Address and length, '192.0.2.7/24'.")
        .def("IpMask", &CAppIP::IpMask, "Address and mask, '192.0.2.7 255.255.255.0'.")
        .def("GetMaskLen", &CAppIP::GetMaskLen, "The number of set bits of the mask.")
        .def("IsSupernet", &CAppIP::IsSupernet, "Whether the mask is shorter than the class's.")
        .def("IsSubnet", &CAppIP::IsSubnet, "Whether the mask is longer than the class's.")
        .def("IsValid", &CAppIP::IsValid, "Whether there is an address.")
        .def("IsNull", &CAppIP::IsNull, "Whether the address is 0.0.0.0.")
        .def("IsFullMask", &CAppIP::IsFullMask, "Whether the mask is that of a single host.")
        .def("IsSamesSubnet", &IsSamesSubnet, "Whether the other PyIP lies in the same network.")
        .def("IsSummarynet", &IsSummarynet, "Whether the other PyIP's network contains this one's.")
        .add_property("_address", &AddressOfIp)
        .add_property("_mask", &MaskOfIp);
    py::def("_make_ip", &MakeIp);
}

void DefineMac() {
    py::class_<CAppMac>("PyMac", py::init<>())
        .def(py::init<std::string>())
        .def(py::init<const CAppMac&>())
        .def("MacStr", &CAppMac::MacStr, "The address, '0000.5e00.5301'.")
        .def("IsValid", &CAppMac::IsValid, "Whether there is an address.")
        .def("IsMacAddress", &IsMacAddress, "Whether a text is a MAC address.")
        .staticmethod("IsMacAddress")
        .add_property("_number", &NumberOfMac)
        .def("_form", &MacInForm);
    py::def("_make_mac", &MakeMac);
}

void DefineClasses() {
    py::docstring_options options(true, true, false);
    DefineIp();
    DefineMac();
}

PyObject* MakePyapplib() {
    static PyModuleDef definition = PlainModule("pyapplib");
    return MakePythonModule(definition, &DefineClasses, PyapplibSource);
}

const PythonModule Module("pyapplib", &MakePyapplib);

// Python objects of the values of results.

PyObject* MakeIpOfText(const std::string& text) {
    return IpLocation().Read(text) ? CAppIP::GetPyObject(text) : nullptr;
}

PyObject* MakeMacOfText(const std::string& text) {
    return MacAddress().Read(text) ? CAppMac::GetPyObject(text) : nullptr;
}

PyObject* MakeOfClass(const char* name, const std::string& text) {
    if (!pythonlib_join()) return nullptr;
    const PyRef module(PyImport_ImportModule("pyapplib"));
    const PyRef made(module ? PyObject_GetAttrString(module.Get(), name) : nullptr);
    const PyRef argument(PythonTextOfBytes(text));
    if (!made || !argument) return nullptr;
    return PyObject_CallFunctionObjArgs(made.Get(), argument.Get(), nullptr);
}

PyObject* MakePercent(const std::string& text) {
    return MakeOfClass("PyPercent", text);
}

PyObject* MakeIpv6(const std::string& text) {
    return MakeOfClass("PyIPv6", text);
}

const PythonForm IpForm(1, &MakeIpOfText);
const PythonForm MacForm(2, &MakeMacOfText);
const PythonForm PercentForm(3, &MakePercent);
const PythonForm Ipv6Form(4, &MakeIpv6);

}  // namespace
