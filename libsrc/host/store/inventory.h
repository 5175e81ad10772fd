#pragma once

// The inventory of the process: which store the engine asks when it needs the name of an interface
// or the owner of an address. The host says it once at its start, in one of two ways:
//
//     SetInventoryFolder("/var/lib/nms/inventory");           // the store of the library
//     SetInventory(std::make_shared<MyInventory>(database));  // a store of the host
//
// A store of the host goes before the folder. With neither, the inventory knows nothing: short
// names are expanded by the usual abbreviations alone, and no address has an owner.
//
// All operations may be called from any thread at any time.

#include "host/runtime/tzexport.h"
#include "host/store/iinventory.h"

#include <memory>
#include <string>

// Puts the host's store in force; null takes it away again. Whoever is using the former one keeps
// it alive until done.
TZPARSER_API void SetInventory(std::shared_ptr<IInventory> inventory);

// Puts a CSqliteInventory over the folder in force, where no store of the host is; an empty path
// takes it away again. The folder isn't looked at before the first use.
TZPARSER_API void SetInventoryFolder(const std::string& path);

// The store in force, never null. Where none was set every look-up in it is Absent, and changes
// fail.
TZPARSER_API std::shared_ptr<IInventory> GetInventory();

// Whose addresses are asked: looking up the owner of an address (InterfaceSetting) knows no tenant,
// and the same private addresses occur with many. A host that serves one tenant names it once; one
// that serves several opens a scope around each parse. Without either no address has an owner.
TZPARSER_API void SetAddressTenant(const std::string& tenant);

// The tenant of the innermost open scope on this thread, else the one set for the process.
TZPARSER_API std::string GetAddressTenant();

// Names the tenant for this thread as long as it lives. Scopes nest; each ends on the thread on
// which it began, the innermost first.
class TZPARSER_API CAddressTenantScope {
public:
    explicit CAddressTenantScope(std::string tenant);
    ~CAddressTenantScope();
    CAddressTenantScope(const CAddressTenantScope&) = delete;
    CAddressTenantScope& operator=(const CAddressTenantScope&) = delete;

private:
    friend std::string GetAddressTenant();

    std::string m_tenant;
    const CAddressTenantScope* m_outer;
};
