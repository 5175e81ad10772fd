#include "host/store/interfacename.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

TEST(InterfaceName, ExpandsTheUsualAbbreviations) {
    const struct {
        const char* name;
        const char* wanted;
    } rows[] = {
        {"Gi0/1", "GigabitEthernet0/1"},
        {"Gi 0/1", "GigabitEthernet0/1"},
        {" gig\t1/0/1.100 ", "GigabitEthernet1/0/1.100"},
        {"GE0/0/1", "GigabitEthernet0/0/1"},
        {"XGE0/0/1", "XGigabitEthernet0/0/1"},
        {"GigabitEthernet 0/1", "GigabitEthernet0/1"},
        {"gigabitethernet0/1", "gigabitethernet0/1"},
        {"Te1/1/1", "TenGigabitEthernet1/1/1"},
        {"TenGigE0/0/0/1", "TenGigE0/0/0/1"},
        {"Twe1/0/1", "TwentyFiveGigE1/0/1"},
        {"Tw1/0/1", "TwentyFiveGigE1/0/1"},
        {"Two1/0/1", "TwoGigabitEthernet1/0/1"},
        {"Fi1/0/1", "FiveGigabitEthernet1/0/1"},
        {"Fif1/0/1", "FiftyGigE1/0/1"},
        {"Fo1/1/1", "FortyGigabitEthernet1/1/1"},
        {"Fou1/1", "FourHundredGigE1/1"},
        {"Hu1/0/49", "HundredGigE1/0/49"},
        {"40GE1/0/1", "40GE1/0/1"},
        {"Fa0", "FastEthernet0"},
        {"Et1", "Ethernet1"},
        {"Eth1/1", "Ethernet1/1"},
        {"Eth-Trunk 5", "Eth-Trunk5"},
        {"Po10", "Port-channel10"},
        {"port-channel10", "port-channel10"},
        {"PO0/1/0", "Port-channel0/1/0"},
        {"POS0/1/0", "POS0/1/0"},
        {"BE7.20", "Bundle-Ether7.20"},
        {"BAGG1", "Bridge-Aggregation1"},
        {"BRI0/0", "BRI0/0"},
        {"Lo0", "Loopback0"},
        {"LoopBack0", "LoopBack0"},
        {"Vl10", "Vlan10"},
        {"Vlanif10", "Vlanif10"},
        {"Vlan-int10", "Vlan-interface10"},
        {"Se0/0/0:1", "Serial0/0/0:1"},
        {"Tu100", "Tunnel100"},
        {"Mg0/RP0/CPU0/0", "MgmtEth0/RP0/CPU0/0"},
        {"mgmt0", "mgmt0"},
        {"Ma1", "Management1"},
        // Full names of other systems, which must stay.
        {"ge-0/0/1", "ge-0/0/1"},
        {"xe-0/0/1:3", "xe-0/0/1:3"},
        {"et-0/0/1.0", "et-0/0/1.0"},
        {"ae0", "ae0"},
        {"lo0.0", "lo0.0"},
        {"eth0", "eth0"},
        {"eth1/1", "Ethernet1/1"},
        {"1/1/1", "1/1/1"},
        {"team0", "team0"},
        // No names of interfaces.
        {"", ""},
        {"Gi", "Gi"},
        {"Gi ", "Gi "},
        {"0", "0"},
        {"-", "-"},
        {"Gi0/1 up", "Gi0/1 up"},
        {"Gi0/1\n", "Gi0/1\n"},
        {"Gi\xE9"
         "0/1",
         "Gi\xE9"
         "0/1"},
        {"Unknown 0/1", "Unknown 0/1"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(ExpandedInterfaceName(row.name), row.wanted);
        const std::string expanded = ExpandedInterfaceName(row.name);
        EXPECT_EQ(ExpandedInterfaceName(expanded), expanded);
        EXPECT_EQ(CanonicalInterfaceName(expanded), CanonicalInterfaceName(row.name));
    }
    const std::string withNul("Gi0/1\0", 6);
    EXPECT_EQ(ExpandedInterfaceName(withNul), withNul);
}

TEST(InterfaceName, CanonicalFormsMeetWithinAKind) {
    const std::vector<std::vector<const char*>> kinds = {
        {"Gi0/1", "gigabitethernet 0/1", "GE0/1", "GigE0/1"},
        {"Te0/1", "TenGigE0/1", "XGE0/1", "Ten-GigabitEthernet0/1", "10GE0/1"},
        {"Tw0/1", "Twe0/1", "TwoGigabitEthernet0/1", "25GE0/1"},
        {"Vl0", "Vlanif0", "vlan-interface0"},
        {"lo0", "Lo0", "LOOPBACK0"},
        {"eth0", "Et0", "ETHERNET0"},
        {"ge-0/1", "GE-0/1"},
        {"Foo 0/1", "foo0/1"},
    };
    std::string digest;
    for (const auto& names : kinds) {
        digest += CanonicalInterfaceName(names.front()) + " ";
        for (const char* const name : names) {
            SCOPED_TRACE(name);
            EXPECT_EQ(CanonicalInterfaceName(name), CanonicalInterfaceName(names.front()));
        }
    }
    // Stores keep these forms: whoever changes them adds a step to the schema.
    EXPECT_EQ(digest, "gigabit0/1 ten0/1 tw0/1 vlan0 loopback0 ethernet0 ge-0/1 foo0/1 ");
}

TEST(InterfaceName, TheBetterOfTwoNames) {
    const struct {
        const char* better;
        const char* worse;
        const char* asked;
    } rows[] = {
        {"Gi0/1", "GigabitEthernet0/1", "Gi0/1"},
        {"gi0/1", "GigabitEthernet0/1", "GI0/1"},
        {"Gi0/1", "gi0/1", "Gi0/1"},
        {"GigabitEthernet0/1", "Gi0/1", "GE0/1"},
        {"GE0/1", "Gi0/1", "gig0/1"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.asked);
        EXPECT_TRUE(IsBetterInterfaceName(row.better, row.worse, row.asked));
        EXPECT_FALSE(IsBetterInterfaceName(row.worse, row.better, row.asked));
        EXPECT_FALSE(IsBetterInterfaceName(row.better, row.better, row.asked));
    }
}

}  // namespace
