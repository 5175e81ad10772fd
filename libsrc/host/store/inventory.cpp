#include "host/store/inventory.h"

#include "host/store/sqliteinventory.h"

#include <mutex>
#include <utility>

namespace {

class EmptyInventory : public IInventory {
public:
    InventoryAnswer_e FindInterface(const std::string&, const std::string&, const std::string&,
                                    std::string&, std::string&) override {
        return InventoryAnswer_e::Absent;
    }
    InventoryAnswer_e FindAddress(const std::string&, const std::string&, InventoryRow&,
                                  std::string&) override {
        return InventoryAnswer_e::Absent;
    }
    bool Upsert(const std::string&, const std::vector<InventoryRow>&, std::string& error) override {
        return Refuse(error);
    }
    bool RemoveDevice(const std::string&, const std::string&, std::string& error) override {
        return Refuse(error);
    }

private:
    static bool Refuse(std::string& error) {
        error = "no inventory is set; name its folder with SetInventoryFolder";
        return false;
    }
};

struct InventoryState {
    std::mutex mutex;
    std::shared_ptr<IInventory> ofHost;
    std::shared_ptr<IInventory> ofFolder;
    const std::shared_ptr<IInventory> empty = std::make_shared<EmptyInventory>();
    std::string addressTenant;
};

// Never destroyed: a thread of the host may still parse while static objects go.
InventoryState& State() {
    static InventoryState* const state = new InventoryState;
    return *state;
}

thread_local const CAddressTenantScope* t_scope = nullptr;

// The former store goes after the lock, since closing its files takes time.
void Replace(std::shared_ptr<IInventory>& place, std::shared_ptr<IInventory> inventory) {
    const std::lock_guard<std::mutex> lock(State().mutex);
    place.swap(inventory);
}

}  // namespace

void SetInventory(std::shared_ptr<IInventory> inventory) {
    Replace(State().ofHost, std::move(inventory));
}

void SetInventoryFolder(const std::string& path) {
    std::shared_ptr<IInventory> inventory;
    if (!path.empty()) inventory = std::make_shared<CSqliteInventory>(path);
    Replace(State().ofFolder, std::move(inventory));
}

std::shared_ptr<IInventory> GetInventory() {
    InventoryState& state = State();
    const std::lock_guard<std::mutex> lock(state.mutex);
    if (state.ofHost != nullptr) return state.ofHost;
    return state.ofFolder != nullptr ? state.ofFolder : state.empty;
}

void SetAddressTenant(const std::string& tenant) {
    const std::lock_guard<std::mutex> lock(State().mutex);
    State().addressTenant = tenant;
}

std::string GetAddressTenant() {
    if (t_scope != nullptr) return t_scope->m_tenant;
    const std::lock_guard<std::mutex> lock(State().mutex);
    return State().addressTenant;
}

CAddressTenantScope::CAddressTenantScope(std::string tenant)
    : m_tenant(std::move(tenant)), m_outer(t_scope) {
    t_scope = this;
}

CAddressTenantScope::~CAddressTenantScope() {
    t_scope = m_outer;
}
