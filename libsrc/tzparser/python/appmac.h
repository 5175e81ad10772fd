#pragma once

#include "host/net/macaddress.h"
#include "host/runtime/tzexport.h"

#include <string>

struct _object;

// CAppMac is the value of the data type "mac": a hardware address, as scripts and rules see it. The
// Python class PyMac holds one.
//
//     CAppMac("00-00-5E-00-53-01").MacStr();    // "0000.5e00.5301"
//     CAppMac("no address").IsValid();          // false
//
// A plain value; const operations may run on several threads at once, but for those that give
// Python objects. Nothing throws for a text.
class TZPARSER_API CAppMac {
public:
    // No address.
    CAppMac() = default;
    // The address of a text for which IsMacAddress is true, no address for any other.
    explicit CAppMac(const std::string& text);
    virtual ~CAppMac() = default;
    CAppMac(const CAppMac&) = default;
    CAppMac& operator=(const CAppMac&) = default;

    bool IsValid() const;
    // "0000.5e00.5301"; zeros for no address.
    std::string MacStr() const;

    // By their texts.
    bool operator==(const CAppMac& other) const { return MacStr() == other.MacStr(); }
    bool operator!=(const CAppMac& other) const { return !(*this == other); }

    // Whether the text, blanks, tabs and line ends around it aside, is a MAC address in a notation
    // that StrIsMac takes: 48 bits.
    static bool IsMacAddress(const std::string& text);

    // A new PyMac, a new reference: without an address, or with what MacAddress reads in the text,
    // 64 bits too. None, a new reference, when "pyapplib" can't make one; no error is pending then.
    // Throws boost::python::error_already_set when what it makes holds no CAppMac. Takes the
    // interpreter for itself.
    static _object* GetPyObject();
    static _object* GetPyObject(const std::string& text);

    MacAddress m_address;
};
