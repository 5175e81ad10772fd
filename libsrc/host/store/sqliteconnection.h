#pragma once

// CSqliteConnection is one open connection to the inventory file of one tenant, with its prepared
// statements. CSqliteInventory keeps a few of them ready; docs/inventory.md shows the schema.
//
//     std::string error;
//     if (!CSqliteConnection::Create(path, "acme", error)) return false;   // unless it is there
//     CSqliteConnection connection(path);
//     bool done = connection.Open("acme", 10000, error) && connection.Upsert(rows, error);
//
// Used by one thread at a time. Any number of connections, also of several processes, may work on
// one file: readers and the one writer don't wait for each other, a second writer waits for the
// first.

#include "host/store/iinventory.h"

#include <array>
#include <memory>
#include <string>
#include <vector>

#include <sys/types.h>

struct sqlite3;
struct sqlite3_stmt;

class CSqliteConnection {
public:
    // Makes the file with its schema, unless there is one. It appears under its name complete or
    // not at all, so no process ever reads a half-made one. False on failure.
    static bool Create(const std::string& path, const std::string& tenant, std::string& error);

    // Opens nothing yet.
    explicit CSqliteConnection(std::string path);
    ~CSqliteConnection();
    CSqliteConnection(const CSqliteConnection&) = delete;
    CSqliteConnection& operator=(const CSqliteConnection&) = delete;

    // Comes first and once. False when there is no file, when it is no inventory file of this
    // tenant and this version, or when it can't be read. `patience` is the number of milliseconds
    // that this and the later operations wait for somebody else's lock.
    bool Open(const std::string& tenant, int patience, std::string& error);

    // As the operations of IInventory.
    InventoryAnswer_e FindInterface(const std::string& device, const std::string& possibleName,
                                    std::string& fullName, std::string& error);
    InventoryAnswer_e FindAddress(const std::string& ip, InventoryRow& owner, std::string& error);
    bool Upsert(const std::vector<InventoryRow>& rows, std::string& error);
    bool RemoveDevice(const std::string& device, std::string& error);

    // Whether the path still names the file that was opened, rather than none or a new one.
    bool IsCurrent() const;
    // Whether an operation has failed for another reason than what it was given. Such a connection
    // shouldn't be used again.
    bool HasFailed() const { return m_failed; }
    // Whether that was somebody else's lock, in spite of waiting.
    bool WasLocked() const { return m_wasLocked; }
    // Changes what Open was given.
    void SetPatience(int patience);

private:
    enum Statement_e { FindName, FindOwner, AddInterface, SetOwner, Remove, StatementCount };
    struct Close {
        void operator()(sqlite3* database) const noexcept;
    };
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const noexcept;
    };
    class Use;

    bool OpenFile(std::string& error);
    bool Configure(std::string& error);
    bool CheckSchema(const std::string& tenant, std::string& error);
    bool MakeSchema(const std::string& tenant, std::string& error);
    bool Execute(const char* sql, std::string& error);
    bool ReadText(const char* sql, std::string& text, std::string& error);
    bool AddRows(const std::vector<InventoryRow>& rows, std::string& error);
    bool InTransaction(bool done, std::string& error);
    bool Fail(std::string& error);

    const std::string m_path;
    dev_t m_device = 0;
    ino_t m_inode = 0;
    bool m_failed = false;
    bool m_wasLocked = false;
    // The statements go before the database.
    std::unique_ptr<sqlite3, Close> m_database;
    std::array<std::unique_ptr<sqlite3_stmt, Finalize>, StatementCount> m_statements;
};
