#include "host/runtime/diagnostics.h"
#include "host/store/failinginventory.h"
#include "host/store/hxdomain.h"
#include "host/store/hxinterfacetypemanagement.h"
#include "host/store/interfacesetting.h"
#include "host/store/inventory.h"
#include "host/store/memoryinventory.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <thread>

#include <gtest/gtest.h>

namespace {

std::shared_ptr<CMemoryInventory> SmallInventory() {
    auto inventory = std::make_shared<CMemoryInventory>();
    std::string error;
    EXPECT_TRUE(inventory->Upsert("acme",
                                  {{"core1", "TenGigE0/0/0/1", "192.0.2.1", 24},
                                   {"core1", "TenGigE0/0/0/2", "2001:DB8:0::5", 64},
                                   {"edge", "ge-0/0/1", "198.51.100.1", -1}},
                                  error));
    EXPECT_TRUE(inventory->Upsert("other", {{"x", "Gi9", "192.0.2.1", 24}}, error));
    return inventory;
}

class ThrowingInventory : public CFailingInventory {
public:
    ThrowingInventory() : CFailingInventory("") {}
    InventoryAnswer_e FindInterface(const std::string&, const std::string&, const std::string&,
                                    std::string&, std::string&) override {
        throw std::runtime_error("thrown");
    }
    InventoryAnswer_e FindAddress(const std::string&, const std::string&, InventoryRow&,
                                  std::string&) override {
        throw 7;
    }
};

class Inventory : public testing::Test {
protected:
    ~Inventory() override {
        SetInventory(nullptr);
        SetInventoryFolder("");
        SetAddressTenant("");
        SetDiagnosticSink(nullptr, nullptr);
    }
};

std::string FullName(const std::string& tenant, const std::string& device,
                     const std::string& name) {
    CHXDomain domain;
    domain.SetTenantDBName(tenant);
    CHXInterfaceTypeManagement management(domain);
    const std::string first = management.GetFullIfNameFromPossibleName(device, name);
    management.GetFullIfNameFromPossibleName("edge", name);
    EXPECT_EQ(management.GetFullIfNameFromPossibleName(device, name), first);
    return first;
}

std::string Owner(const std::string& ip) {
    InterfaceSetting setting;
    setting.m_deviceId = "untouched";
    const bool found = InterfaceSetting::getInterfaceProperty(nullptr, ip, setting, false);
    return (found ? "" : "none ") + setting.m_deviceId + " " + setting.m_interfaceName + " " +
           setting.m_ip + "/" + setting.m_prefixLength;
}

TEST_F(Inventory, NamesOfADeviceGoBeforeAbbreviations) {
    SetInventory(SmallInventory());
    const struct {
        const char* tenant;
        const char* device;
        const char* name;
        const char* wanted;
    } rows[] = {
        {"acme", "core1", "Te0/0/0/1", "TenGigE0/0/0/1"},
        {"acme", "core1", "tengige0/0/0/2", "TenGigE0/0/0/2"},
        {"acme", "core1", "Te0/0/0/3", "TenGigabitEthernet0/0/0/3"},
        {"acme", "edge", "Te0/0/0/1", "TenGigabitEthernet0/0/0/1"},
        {"acme", "edge", "GE-0/0/1", "ge-0/0/1"},
        {"other", "core1", "Te0/0/0/1", "TenGigabitEthernet0/0/0/1"},
        {"", "core1", "Te0/0/0/1", "TenGigabitEthernet0/0/0/1"},
        {"acme", "", "Unknown7", "Unknown7"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(FullName(row.tenant, row.device, row.name), row.wanted);
    }
    const std::string huge = "Gi" + std::string(100000, '1');
    EXPECT_EQ(FullName("acme", "core1", huge), huge);
}

TEST_F(Inventory, OwnersOfAddressesAreATenantsOwn) {
    EXPECT_EQ(Owner("192.0.2.1"), "none untouched  /");
    SetInventory(SmallInventory());
    EXPECT_EQ(Owner("192.0.2.1"), "none untouched  /");  // no tenant is named
    SetAddressTenant("acme");
    EXPECT_EQ(Owner("192.0.2.1"), "core1 TenGigE0/0/0/1 192.0.2.1/24");
    EXPECT_EQ(Owner("::ffff:192.0.2.1"), "core1 TenGigE0/0/0/1 192.0.2.1/24");
    EXPECT_EQ(Owner("2001:db8::5"), "core1 TenGigE0/0/0/2 2001:db8::5/64");
    EXPECT_EQ(Owner("198.51.100.1"), "edge ge-0/0/1 198.51.100.1/");
    EXPECT_EQ(Owner("192.0.2.9"), "none untouched  /");
    EXPECT_EQ(Owner("no address"), "none untouched  /");
    {
        const CAddressTenantScope other("other");
        EXPECT_EQ(Owner("192.0.2.1"), "x Gi9 192.0.2.1/24");
        {
            const CAddressTenantScope inner("acme");
            EXPECT_EQ(GetAddressTenant(), "acme");
        }
        EXPECT_EQ(GetAddressTenant(), "other");
        std::thread([] { EXPECT_EQ(GetAddressTenant(), "acme"); }).join();
    }
    EXPECT_EQ(GetAddressTenant(), "acme");
}

TEST_F(Inventory, AFailingOneLeavesTheAbbreviations) {
    std::string notes;
    SetDiagnosticSink(
        [](std::string_view text, void* context) { *static_cast<std::string*>(context) += text; },
        &notes);
    SetAddressTenant("acme");
    SetInventory(std::make_shared<CFailingInventory>("the disk is full"));
    EXPECT_EQ(FullName("acme", "core1", "Gi0/1"), "GigabitEthernet0/1");
    EXPECT_EQ(Owner("192.0.2.1"), "none untouched  /");
    EXPECT_NE(notes.find("Interface names without inventory: the disk is full\n"),
              std::string::npos);
    EXPECT_NE(notes.find("Owner of an address without inventory: the disk is full\n"),
              std::string::npos);
    SetInventory(std::make_shared<ThrowingInventory>());
    EXPECT_EQ(FullName("acme", "core1", "Gi0/1"), "GigabitEthernet0/1");
    EXPECT_EQ(Owner("192.0.2.1"), "none untouched  /");
}

TEST_F(Inventory, TheHostsGoesBeforeTheFolder) {
    std::string error;
    InventoryRow row;
    EXPECT_EQ(GetInventory()->FindAddress("acme", "192.0.2.1", row, error),
              InventoryAnswer_e::Absent);
    EXPECT_FALSE(GetInventory()->Upsert("acme", {}, error));
    EXPECT_EQ(error, "no inventory is set; name its folder with SetInventoryFolder");
    SetInventoryFolder(testing::TempDir() + "no such folder");
    EXPECT_EQ(GetInventory()->FindAddress("acme", "192.0.2.1", row, error),
              InventoryAnswer_e::Failed);
    const auto own = SmallInventory();
    SetInventory(own);
    EXPECT_EQ(GetInventory(), own);
}

}  // namespace
