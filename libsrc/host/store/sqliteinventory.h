#pragma once

// CSqliteInventory is the inventory that comes with the library: one SQLite file a tenant in a
// folder, which any number of processes may read and write at once. docs/inventory.md shows the
// schema and how files are shared, copied and looked at.
//
//     auto inventory = std::make_shared<CSqliteInventory>("/var/lib/nms/inventory");
//     std::string error;
//     if (!inventory->Upsert("acme", rows, error)) std::cerr << error << '\n';
//
// Safe on any thread; threads don't wait for each other on look-ups. A few connections stay open
// between calls, so a look-up costs some microseconds. A process must not use an inventory on both
// sides of a fork (an SQLite connection doesn't survive that): the child's operations fail.
//
// Only Upsert makes a file: the other operations fail for a tenant without one, with words that say
// so. A damaged, foreign or locked file fails too, a locked one when patience is over; as long as
// it stays locked, further look-ups then fail without waiting.

#include "host/store/iinventory.h"

#include <atomic>
#include <list>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <sys/types.h>

class CSqliteConnection;

class TZPARSER_API CSqliteInventory : public IInventory {
public:
    // The folder isn't looked at here. It must be there when the first file is made. `patience` is
    // how long an operation waits for somebody else's lock, in milliseconds.
    explicit CSqliteInventory(const std::string& folder, int patience = 10000);
    ~CSqliteInventory() override;

    InventoryAnswer_e FindInterface(const std::string& tenant, const std::string& device,
                                    const std::string& possibleName, std::string& fullName,
                                    std::string& error) override;
    InventoryAnswer_e FindAddress(const std::string& tenant, const std::string& ip,
                                  InventoryRow& owner, std::string& error) override;
    bool Upsert(const std::string& tenant, const std::vector<InventoryRow>& rows,
                std::string& error) override;
    bool RemoveDevice(const std::string& tenant, const std::string& device,
                      std::string& error) override;

    // The name of the tenant's file inside the folder: letters, digits, "_" and "-" as they are,
    // other bytes as "%" and two hexadecimal digits, ".db" behind. A name that would grow over 150
    // bytes is cut to 100 with "~" and a checksum of the whole behind it. The name must pass
    // IsTenantName.
    static std::string FileName(const std::string& tenant);

private:
    using Connection = std::unique_ptr<CSqliteConnection>;

    enum class Access_e { Read, Change, Create };

    template <typename Result, typename Operation>
    Result Run(Result failure, const std::string& tenant, Access_e access, std::string& error,
               Operation operation);
    bool IsUsable(const std::string& tenant, std::string& error);
    int PatienceFor(const std::string& tenant, Access_e access);
    Connection Take(const std::string& tenant);
    void Give(const std::string& tenant, Connection connection);
    void Note(const std::string& tenant, bool locked);

    const std::string m_folder;
    const int m_patience;
    std::atomic<pid_t> m_process{0};  // the first that used it

    std::mutex m_mutex;
    std::list<std::pair<std::string, Connection>> m_idle;  // by tenant, the latest used last
    std::set<std::string> m_locked;  // tenants whose latest operation waited in vain
};
