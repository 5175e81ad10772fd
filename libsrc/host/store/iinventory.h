#pragma once

// IInventory is the store of what the host knows about its network: the devices of each tenant,
// their interfaces and the addresses of these. The engine asks it two things: the full name of an
// interface that a text names in short, and the interface that owns an IP address. Hosts put a
// store of their own behind it, or use the one that comes with the library (CSqliteInventory).
//
//     std::string error;
//     inventory.Upsert("acme", {{"core1", "GigabitEthernet0/1", "192.0.2.1", 24}}, error);
//     std::string name;
//     inventory.FindInterface("acme", "core1", "Gi0/1", name, error);   // Found
//
// Tenants share nothing: a device of one is never seen through another. Tenant and device names are
// bytes and compared exactly. All operations may be called from any thread at any time; none
// throws. A text behind `error` is only written on failure and says what to do about it.

#include "host/runtime/tzexport.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// Whether a look-up succeeded. Absent is an answer (the store knows nothing of that kind), Failed
// means that the store couldn't be asked.
enum class InventoryAnswer_e { Found, Absent, Failed };

// One interface of a device, with one of its addresses. An interface that has several addresses has
// several rows; one that has none has a row with an empty address.
struct InventoryRow {
    std::string device;         // identifies the device within its tenant
    std::string interfaceName;  // in full, as the device itself writes it
    std::string address;        // IPv4 or IPv6, without a prefix length; may be empty
    int prefixLength = -1;      // 0 to 32 or 0 to 128, -1 when it isn't known
};

class TZPARSER_API IInventory {
public:
    virtual ~IInventory() = default;

    // The full name of the interface of the device that `possibleName` means. A name counts when it
    // has the same canonical form (CanonicalInterfaceName); among several the one that is equal
    // wins, then one that is equal but for case, then the longest, then the first in byte order.
    // `fullName` is only written when the answer is Found.
    virtual InventoryAnswer_e FindInterface(const std::string& tenant, const std::string& device,
                                            const std::string& possibleName, std::string& fullName,
                                            std::string& error) = 0;

    // The interface that owns the address, in any notation (without a prefix length). A text that
    // is no address is Absent. `owner` is only written when the answer is Found.
    virtual InventoryAnswer_e FindAddress(const std::string& tenant, const std::string& ip,
                                          InventoryRow& owner, std::string& error) = 0;

    // Adds the rows that aren't there and changes those that are: all of them, or on failure none.
    // An address has one owner a tenant, the one of the latest row that named it. Rows must pass
    // CanonicalRow. False on failure.
    virtual bool Upsert(const std::string& tenant, const std::vector<InventoryRow>& rows,
                        std::string& error) = 0;

    // Forgets the device, its interfaces and their addresses. True when it is gone afterwards, also
    // when it was never there.
    virtual bool RemoveDevice(const std::string& tenant, const std::string& device,
                              std::string& error) = 0;
};

// The longest names that an inventory takes, in bytes.
constexpr std::size_t LongestInventoryName = 256;
constexpr std::size_t LongestTenantName = 1024;

// Whether the text can name a tenant: 1 to LongestTenantName bytes, no NUL, no "/", and neither "."
// nor "..". Other bytes are allowed; what becomes of them on a disk is the store's matter.
TZPARSER_API bool IsTenantName(const std::string& tenant, std::string& error);

// Checks a row and gives it the form in which stores keep and compare it: the address in canonical
// notation (CanonicalAddress). False when a name is empty, too long or holds a control character,
// or when the address or its prefix length is wrong; `error` then names the field.
TZPARSER_API bool CanonicalRow(const InventoryRow& row, InventoryRow& canonical,
                               std::string& error);

// The one notation of an address: dotted decimal, or IPv6 in lower case with its longest run of
// zeros cut. An IPv4 address inside an IPv6 one (::ffff:192.0.2.1) is the IPv4 address. Empty when
// the text is no address.
TZPARSER_API std::string CanonicalAddress(std::string_view text);
