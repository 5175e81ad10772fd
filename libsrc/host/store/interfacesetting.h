#pragma once

// InterfaceSetting is what the inventory knows about one interface, found by an address of it. The
// engine uses it to see that two addresses belong to one device.
//
//     const CAddressTenantScope scope("acme");
//     InterfaceSetting first;
//     InterfaceSetting second;
//     bool same = InterfaceSetting::getInterfaceProperty(nullptr, "192.0.2.1", first, false) &&
//                 InterfaceSetting::getInterfaceProperty(nullptr, "192.0.2.5", second, false) &&
//                 first.m_deviceId == second.m_deviceId;
//
// A plain value: copies are independent, one object is used by one thread at a time. The look-up
// may be made from any thread.

#include "host/runtime/tzexport.h"

#include <string>

class CAdoSqlEx;

class TZPARSER_API InterfaceSetting {
public:
    InterfaceSetting();
    virtual ~InterfaceSetting();
    InterfaceSetting(const InterfaceSetting&);
    InterfaceSetting& operator=(const InterfaceSetting&);

    // Finds the interface that owns the address `ip` (any notation, without a length) in the
    // inventory in force, among the addresses of the tenant that GetAddressTenant names. False,
    // with `out` as it was, when no interface owns it, no tenant is named or the inventory failed;
    // then the reason goes to the debugger output. The database and the flag are part of the
    // interface and have no effect: hosts bring their store in through SetInventory.
    static bool getInterfaceProperty(CAdoSqlEx* database, std::string ip, InterfaceSetting& out,
                                     bool flag);

    std::string m_deviceId;       // equal for all interfaces of one device
    std::string m_interfaceName;  // in full
    std::string m_ip;             // the address asked for, in canonical notation
    std::string m_prefixLength;   // in decimal; empty when the inventory doesn't know it
};
