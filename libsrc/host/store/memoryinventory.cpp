#include "host/store/memoryinventory.h"

#include "host/store/interfacename.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <utility>

namespace {

// Runs an operation that may run out of memory.
template <typename Result, typename Operation>
Result Guarded(Result failure, std::string& error, Operation operation) {
    try {
        return operation();
    } catch (const std::exception&) {
        error = "no memory";
        return failure;
    }
}

}  // namespace

InventoryAnswer_e CMemoryInventory::FindInterface(const std::string& tenant,
                                                  const std::string& device,
                                                  const std::string& possibleName,
                                                  std::string& fullName, std::string& error) {
    return Guarded(InventoryAnswer_e::Failed, error, [&] {
        if (!IsTenantName(tenant, error)) return InventoryAnswer_e::Failed;
        const std::string canonical = CanonicalInterfaceName(possibleName);
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto known = m_tenants.find(tenant);
        if (known == m_tenants.end()) return InventoryAnswer_e::Absent;
        const auto found = known->second.names.find({device, canonical});
        if (found == known->second.names.end()) return InventoryAnswer_e::Absent;
        fullName = *std::min_element(found->second.begin(), found->second.end(),
                                     [&](const auto& first, const auto& second) {
                                         return IsBetterInterfaceName(first, second, possibleName);
                                     });
        return InventoryAnswer_e::Found;
    });
}

InventoryAnswer_e CMemoryInventory::FindAddress(const std::string& tenant, const std::string& ip,
                                                InventoryRow& owner, std::string& error) {
    return Guarded(InventoryAnswer_e::Failed, error, [&] {
        if (!IsTenantName(tenant, error)) return InventoryAnswer_e::Failed;
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto known = m_tenants.find(tenant);
        if (known == m_tenants.end()) return InventoryAnswer_e::Absent;
        const auto found = known->second.owners.find(CanonicalAddress(ip));
        if (found == known->second.owners.end()) return InventoryAnswer_e::Absent;
        owner = found->second;
        return InventoryAnswer_e::Found;
    });
}

bool CMemoryInventory::Upsert(const std::string& tenant, const std::vector<InventoryRow>& rows,
                              std::string& error) {
    return Guarded(false, error, [&] {
        if (!IsTenantName(tenant, error)) return false;
        std::vector<InventoryRow> checked(rows.size());
        for (std::size_t i = 0; i < rows.size(); ++i)
            if (!CanonicalRow(rows[i], checked[i], error)) return false;
        const std::lock_guard<std::mutex> lock(m_mutex);
        Tenant& changed = m_tenants[tenant];
        for (InventoryRow& row : checked) {
            changed.names[{row.device, CanonicalInterfaceName(row.interfaceName)}].insert(
                row.interfaceName);
            if (!row.address.empty()) changed.owners[row.address] = std::move(row);
        }
        return true;
    });
}

bool CMemoryInventory::RemoveDevice(const std::string& tenant, const std::string& device,
                                    std::string& error) {
    return Guarded(false, error, [&] {
        if (!IsTenantName(tenant, error)) return false;
        const std::lock_guard<std::mutex> lock(m_mutex);
        Tenant& changed = m_tenants[tenant];
        auto& names = changed.names;
        for (auto at = names.begin(); at != names.end();)
            at = at->first.first == device ? names.erase(at) : std::next(at);
        auto& owners = changed.owners;
        for (auto at = owners.begin(); at != owners.end();)
            at = at->second.device == device ? owners.erase(at) : std::next(at);
        return true;
    });
}
