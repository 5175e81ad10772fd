#include "host/store/hxinterfacetypemanagement.h"

#include "host/runtime/diagnostics.h"
#include "host/store/hxdomain.h"
#include "host/store/iinventory.h"
#include "host/store/interfacename.h"
#include "host/store/inventory.h"

namespace {

constexpr std::size_t MostRemembered = 65536;

// A host's own store may break its word not to throw.
InventoryAnswer_e Ask(IInventory& inventory, const std::string& tenant, const std::string& device,
                      const std::string& name, std::string& fullName, std::string& error) {
    try {
        return inventory.FindInterface(tenant, device, name, fullName, error);
    } catch (...) {
        error = "the inventory threw an exception";
        return InventoryAnswer_e::Failed;
    }
}

}  // namespace

CHXInterfaceTypeManagement::CHXInterfaceTypeManagement(const CHXDomain& domain)
    : m_tenant(domain.GetTenantDBName()), m_inventory(GetInventory()) {}

CHXInterfaceTypeManagement::~CHXInterfaceTypeManagement() = default;

std::string CHXInterfaceTypeManagement::GetFullIfNameFromPossibleName(const std::string& deviceId,
                                                                      const std::string& name) {
    if (name.size() > LongestInventoryName) return name;
    if (deviceId != m_memoDevice || m_memo.size() >= MostRemembered) {
        m_memo.clear();
        m_memoDevice = deviceId;
    }
    const auto known = m_memo.find(name);
    if (known != m_memo.end()) return known->second;
    return m_memo.emplace(name, Look(deviceId, name)).first->second;
}

std::string CHXInterfaceTypeManagement::Look(const std::string& deviceId, const std::string& name) {
    std::string fullName;
    std::string error;
    switch (Ask(*m_inventory, m_tenant, deviceId, name, fullName, error)) {
        case InventoryAnswer_e::Found:
            return fullName;
        case InventoryAnswer_e::Failed:
            DiagnosticOutput("Interface names without inventory: " + error + "\n");
            break;
        case InventoryAnswer_e::Absent:
            break;
    }
    return ExpandedInterfaceName(name);
}
