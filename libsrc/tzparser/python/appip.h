#pragma once

#include "host/net/iplocation.h"
#include "host/runtime/tzexport.h"

#include <string>

struct _object;

// CAppIP is the value of the data type "ip": an IPv4 address with a mask, as scripts and rules see
// it. The Python class PyIP holds one.
//
//     const CAppIP ip("192.0.2.7/24");
//     ip.Network();                       // "192.0.2.0"
//     ip.IPMaskLen();                     // "192.0.2.7/24"
//     CAppIP("no address").IsValid();     // false
//
// There is one invalid value, 0.0.0.0 with the mask 255.0.0.0. A text that can't be read gives it,
// and so does every text whose address is 0, but for the default route and the host of zeros
// written exactly so: "0.0.0.0/0", "0.0.0.0/32", and "0.0.0.0" with the mask "0.0.0.0" or
// "255.255.255.255". Nothing throws for a text.
//
// A plain value; const operations may run on several threads at once, but for those that take or
// give Python objects. Notations, lengths of masks with gaps and the like are those of IpLocation.
class TZPARSER_API CAppIP {
public:
    // The invalid value.
    CAppIP();
    CAppIP(const std::string& ip, const std::string& mask);
    explicit CAppIP(const std::string& text);
    virtual ~CAppIP() = default;
    CAppIP(const CAppIP&) = default;
    CAppIP& operator=(const CAppIP&) = default;

    // The parts as dotted texts: "192.0.2.0", "255.255.255.0", "255.255.255.0", "192.0.2.7".
    std::string Network() const;
    std::string Mask() const;
    std::string ClassMask() const;
    std::string GetIPAddress() const;
    // "192.0.2.7/24" and "192.0.2.7 255.255.255.0".
    std::string IPMaskLen() const;
    std::string IpMask() const;
    int GetMaskLen() const;

    // Whether the mask is shorter, or longer, than that of the address's class.
    bool IsSupernet() const;
    bool IsSubnet() const;
    bool IsValid() const;
    // Whether the address is 0, valid or not.
    bool IsNull() const;
    // Whether the mask is 255.255.255.255.
    bool IsFullMask() const;

    // Whether this address and the other lie in one network; whether the other's network contains
    // this one's. `other` is a Python object that holds a CAppIP. False unless both are valid; true
    // when the other is the default route. None gives false and costs the caller a reference: one
    // of None is released. An object of any other type throws boost::python::error_already_set with
    // a pending TypeError. The caller holds the interpreter.
    bool IsSamesSubnet(_object* other) const;
    bool IsSummarynet(_object* other) const;

    bool operator==(const CAppIP& other) const { return m_location == other.m_location; }
    bool operator!=(const CAppIP& other) const { return !(*this == other); }

    // A new PyIP, a new reference: with the invalid value, or with what IpLocation reads in the
    // text, where "0.0.0.0" stays the host of zeros. None, a new reference, when "pyapplib" can't
    // make one; no error is pending then. Throws boost::python::error_already_set when what it
    // makes holds no CAppIP. Takes the interpreter for itself.
    static _object* GetPyObject();
    static _object* GetPyObject(const std::string& text);

    IpLocation m_location;
};
