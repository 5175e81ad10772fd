#include "host/store/interfacesetting.h"

#include "host/runtime/diagnostics.h"
#include "host/store/iinventory.h"
#include "host/store/inventory.h"

#include <utility>

namespace {

// A host's own store may break its word not to throw.
InventoryAnswer_e Ask(const std::string& tenant, const std::string& ip, InventoryRow& owner,
                      std::string& error) {
    try {
        return GetInventory()->FindAddress(tenant, ip, owner, error);
    } catch (...) {
        error = "the inventory threw an exception";
        return InventoryAnswer_e::Failed;
    }
}

}  // namespace

InterfaceSetting::InterfaceSetting() = default;
InterfaceSetting::~InterfaceSetting() = default;
InterfaceSetting::InterfaceSetting(const InterfaceSetting&) = default;
InterfaceSetting& InterfaceSetting::operator=(const InterfaceSetting&) = default;

// NOLINTNEXTLINE(performance-unnecessary-value-param): the signature is given.
bool InterfaceSetting::getInterfaceProperty(CAdoSqlEx*, std::string ip, InterfaceSetting& out,
                                            bool) {
    const std::string tenant = GetAddressTenant();
    if (tenant.empty()) return false;
    InventoryRow owner;
    std::string error;
    const InventoryAnswer_e answer = Ask(tenant, ip, owner, error);
    if (answer == InventoryAnswer_e::Failed)
        DiagnosticOutput("Owner of an address without inventory: " + error + "\n");
    if (answer != InventoryAnswer_e::Found) return false;
    out.m_deviceId = std::move(owner.device);
    out.m_interfaceName = std::move(owner.interfaceName);
    out.m_ip = std::move(owner.address);
    out.m_prefixLength = owner.prefixLength < 0 ? "" : std::to_string(owner.prefixLength);
    return true;
}
