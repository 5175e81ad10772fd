#pragma once

// CHXInterfaceTypeManagement knows the full names of a tenant's interfaces. Devices shorten them in
// most outputs, and differently in each; a table that is joined with others by interface needs one
// name for one interface.
//
//     CHXDomain domain;
//     domain.SetTenantDBName("acme");
//     CHXInterfaceTypeManagement management(domain);
//     management.GetFullIfNameFromPossibleName("core1", "Gi 0/1");   // "GigabitEthernet0/1"
//
// The device's own interfaces in the inventory decide; for what they don't hold there are the usual
// abbreviations. An object is used by one thread at a time; different objects may be used at once.

#include "host/runtime/tzexport.h"

#include <memory>
#include <string>
#include <unordered_map>

class CHXDomain;
class IInventory;

class TZPARSER_API CHXInterfaceTypeManagement {
public:
    // Opens the service on the tenant of the domain, over the inventory in force (GetInventory).
    // Costs next to nothing: files are opened by the first look-up and stay open in the inventory,
    // so making an object a value is fine. Never fails; the domain isn't needed any more
    // afterwards.
    explicit CHXInterfaceTypeManagement(const CHXDomain& domain);
    ~CHXInterfaceTypeManagement();
    CHXInterfaceTypeManagement(const CHXInterfaceTypeManagement&) = delete;
    CHXInterfaceTypeManagement& operator=(const CHXInterfaceTypeManagement&) = delete;

    // The full name for `name` on the device: that of the inventory (IInventory::FindInterface),
    // else the usual one (ExpandedInterfaceName), else `name` itself. An inventory that fails
    // counts as one without the device; the reason goes to the debugger output. Answers for the
    // device asked last are remembered, so each name costs one look-up.
    std::string GetFullIfNameFromPossibleName(const std::string& deviceId, const std::string& name);

private:
    std::string Look(const std::string& deviceId, const std::string& name);

    const std::string m_tenant;
    const std::shared_ptr<IInventory> m_inventory;
    std::string m_memoDevice;
    std::unordered_map<std::string, std::string> m_memo;
};
