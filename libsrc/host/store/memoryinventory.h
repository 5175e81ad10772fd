#pragma once

// CMemoryInventory is an inventory that lives in memory and is gone with its object: for tests, and
// for hosts that fill it at their start from a source of their own.
//
//     auto inventory = std::make_shared<CMemoryInventory>();
//     inventory->Upsert("acme", rows, error);
//     SetInventory(inventory);
//
// Safe on any thread. Operations fail for a tenant's name or a row that can't be used, and for want
// of memory.

#include "host/store/iinventory.h"

#include <map>
#include <mutex>
#include <set>
#include <string>
#include <utility>
#include <vector>

class TZPARSER_API CMemoryInventory : public IInventory {
public:
    InventoryAnswer_e FindInterface(const std::string& tenant, const std::string& device,
                                    const std::string& possibleName, std::string& fullName,
                                    std::string& error) override;
    InventoryAnswer_e FindAddress(const std::string& tenant, const std::string& ip,
                                  InventoryRow& owner, std::string& error) override;
    bool Upsert(const std::string& tenant, const std::vector<InventoryRow>& rows,
                std::string& error) override;
    bool RemoveDevice(const std::string& tenant, const std::string& device,
                      std::string& error) override;

private:
    struct Tenant {
        // A device's names by their canonical form.
        std::map<std::pair<std::string, std::string>, std::set<std::string>> names;
        std::map<std::string, InventoryRow> owners;  // by address
    };

    std::mutex m_mutex;
    std::map<std::string, Tenant> m_tenants;
};
