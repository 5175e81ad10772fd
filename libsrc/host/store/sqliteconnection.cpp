#include "host/store/sqliteconnection.h"

#include "host/store/interfacename.h"

#include <atomic>
#include <cerrno>
#include <initializer_list>
#include <iterator>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr std::string_view SchemaVersion = "1";

// Committed with the row of the tenant.
constexpr const char* Schema = R"sql(
BEGIN;
CREATE TABLE tenant (
    name TEXT NOT NULL
) STRICT;
CREATE TABLE interface (
    id        INTEGER PRIMARY KEY,
    device    TEXT NOT NULL,
    name      TEXT NOT NULL,
    canonical TEXT NOT NULL,
    UNIQUE (device, name)
) STRICT;
CREATE INDEX interface_canonical ON interface (device, canonical, name);
CREATE TABLE address (
    address       TEXT PRIMARY KEY,
    prefix_length INTEGER NOT NULL,
    interface_id  INTEGER NOT NULL REFERENCES interface (id) ON DELETE CASCADE
) STRICT, WITHOUT ROWID;
CREATE INDEX address_interface ON address (interface_id);
PRAGMA user_version = 1;
)sql";

// In the order of Statement_e.
constexpr const char* Statements[] = {
    "SELECT name FROM interface WHERE device = ?1 AND canonical = ?2",
    "SELECT device, name, address, prefix_length FROM address"
    " JOIN interface ON interface.id = interface_id WHERE address = ?1",
    "INSERT INTO interface (device, name, canonical) VALUES (?1, ?2, ?3)"
    " ON CONFLICT (device, name) DO NOTHING",
    "INSERT INTO address (address, prefix_length, interface_id)"
    " SELECT ?3, ?4, id FROM interface WHERE device = ?1 AND name = ?2"
    " ON CONFLICT (address) DO UPDATE"
    " SET prefix_length = excluded.prefix_length, interface_id = excluded.interface_id",
    "DELETE FROM interface WHERE device = ?1",
};

bool StatOf(const std::string& path, struct stat& status) {
    return stat(path.c_str(), &status) == 0;
}

// An empty file under a name that nobody else uses; empty on failure.
std::string FreshFile(const std::string& path) {
    static std::atomic<unsigned> counter{0};
    for (int attempt = 0; attempt < 100; ++attempt) {
        std::string fresh =
            path + ".new-" + std::to_string(getpid()) + "-" + std::to_string(counter.fetch_add(1));
        const int file = open(fresh.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0660);
        if (file >= 0) {
            close(file);
            return fresh;
        }
        if (errno != EEXIST) break;
    }
    return std::string();
}

std::string ColumnText(sqlite3_stmt* statement, int column) {
    const void* const bytes = sqlite3_column_blob(statement, column);
    const int length = sqlite3_column_bytes(statement, column);
    if (bytes == nullptr || length <= 0) return std::string();
    return std::string(static_cast<const char*>(bytes), static_cast<std::size_t>(length));
}

}  // namespace

// One use of a prepared statement: binds texts, steps, and leaves it ready for the next use. The
// texts must live as long.
class CSqliteConnection::Use {
public:
    Use(CSqliteConnection& connection, Statement_e statement,
        std::initializer_list<std::string_view> texts) {
        static_assert(std::size(Statements) == StatementCount, "a text for each statement");
        auto& prepared = connection.m_statements[statement];
        if (prepared == nullptr) {
            sqlite3_stmt* fresh = nullptr;
            sqlite3_prepare_v3(connection.m_database.get(), Statements[statement], -1,
                               SQLITE_PREPARE_PERSISTENT, &fresh, nullptr);
            prepared.reset(fresh);
        }
        m_statement = prepared.get();
        for (const std::string_view text : texts) Bind(text);
    }
    ~Use() {
        if (m_statement == nullptr) return;
        sqlite3_reset(m_statement);
        sqlite3_clear_bindings(m_statement);
    }
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;

    void BindNumber(int number) {
        if (m_statement != nullptr) sqlite3_bind_int(m_statement, ++m_bound, number);
    }
    // SQLITE_ROW, SQLITE_DONE or an error.
    int Step() { return m_statement == nullptr ? SQLITE_ERROR : sqlite3_step(m_statement); }
    std::string Text(int column) const { return ColumnText(m_statement, column); }
    int Number(int column) const { return sqlite3_column_int(m_statement, column); }

private:
    void Bind(std::string_view text) {
        if (m_statement == nullptr) return;
        const char* const bytes = text.data() == nullptr ? "" : text.data();
        sqlite3_bind_text64(m_statement, ++m_bound, bytes, text.size(), SQLITE_STATIC, SQLITE_UTF8);
    }

    sqlite3_stmt* m_statement = nullptr;
    int m_bound = 0;
};

void CSqliteConnection::Close::operator()(sqlite3* database) const noexcept {
    sqlite3_close_v2(database);
}

void CSqliteConnection::Finalize::operator()(sqlite3_stmt* statement) const noexcept {
    sqlite3_finalize(statement);
}

CSqliteConnection::CSqliteConnection(std::string path) : m_path(std::move(path)) {}

CSqliteConnection::~CSqliteConnection() = default;

bool CSqliteConnection::Create(const std::string& path, const std::string& tenant,
                               std::string& error) {
    struct stat status;
    if (StatOf(path, status)) return true;
    const std::string fresh = FreshFile(path);
    if (fresh.empty()) {
        error = "can't make the inventory file " + path + "; is its folder there and writable?";
        return false;
    }
    bool made = false;
    {
        CSqliteConnection connection(fresh);
        made = connection.OpenFile(error) && connection.MakeSchema(tenant, error);
    }
    // A link doesn't replace a file that another process has made meanwhile: that one is as good.
    if (made && link(fresh.c_str(), path.c_str()) != 0 && errno != EEXIST) {
        error = "can't name the inventory file " + path;
        made = false;
    }
    for (const char* const suffix : {"", "-wal", "-shm"}) unlink((fresh + suffix).c_str());
    return made;
}

bool CSqliteConnection::Open(const std::string& tenant, int patience, std::string& error) {
    if (!OpenFile(error)) return false;
    SetPatience(patience);
    return Configure(error) && CheckSchema(tenant, error);
}

bool CSqliteConnection::OpenFile(std::string& error) {
    struct stat status;
    if (!StatOf(m_path, status)) {
        error = "there is no inventory file " + m_path + "; import the tenant's devices first";
        return false;
    }
    if (!S_ISREG(status.st_mode)) {
        error = m_path + " is no file";
        return false;
    }
    m_device = status.st_dev;
    m_inode = status.st_ino;
    sqlite3* database = nullptr;
    const int opened = sqlite3_open_v2(m_path.c_str(), &database,
                                       SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    m_database.reset(database);
    return opened == SQLITE_OK || Fail(error);
}

// The file may come from anywhere, so nothing that its schema holds is trusted.
bool CSqliteConnection::Configure(std::string& error) {
    sqlite3_db_config(m_database.get(), SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    return Execute(
        "PRAGMA trusted_schema = OFF; PRAGMA cell_size_check = ON;"
        " PRAGMA foreign_keys = ON",
        error);
}

bool CSqliteConnection::CheckSchema(const std::string& tenant, std::string& error) {
    std::string version;
    if (!ReadText("PRAGMA user_version", version, error)) return false;
    if (version != SchemaVersion) {
        error = "the file " + m_path + " is no inventory of version " + std::string(SchemaVersion) +
                "; it says " + version;
        return false;
    }
    std::string owner;
    if (!ReadText("SELECT name FROM tenant", owner, error)) return false;
    if (owner != tenant) {
        error = "the inventory file " + m_path + " belongs to another tenant";
        return false;
    }
    return true;
}

bool CSqliteConnection::MakeSchema(const std::string& tenant, std::string& error) {
    if (!Execute(Schema, error)) return false;
    sqlite3_stmt* raw = nullptr;
    sqlite3_prepare_v2(m_database.get(), "INSERT INTO tenant (name) VALUES (?1)", -1, &raw,
                       nullptr);
    std::unique_ptr<sqlite3_stmt, Finalize> statement(raw);
    if (raw == nullptr) return Fail(error);
    sqlite3_bind_text64(raw, 1, tenant.data(), tenant.size(), SQLITE_STATIC, SQLITE_UTF8);
    if (sqlite3_step(raw) != SQLITE_DONE) return Fail(error);
    statement.reset();
    // The choice of the write-ahead log stays with the file.
    return Execute("COMMIT; PRAGMA journal_mode = WAL", error);
}

bool CSqliteConnection::Execute(const char* sql, std::string& error) {
    const int result = sqlite3_exec(m_database.get(), sql, nullptr, nullptr, nullptr);
    return result == SQLITE_OK || Fail(error);
}

bool CSqliteConnection::ReadText(const char* sql, std::string& text, std::string& error) {
    sqlite3_stmt* raw = nullptr;
    sqlite3_prepare_v2(m_database.get(), sql, -1, &raw, nullptr);
    const std::unique_ptr<sqlite3_stmt, Finalize> statement(raw);
    const int result = raw == nullptr ? SQLITE_ERROR : sqlite3_step(raw);
    if (result == SQLITE_ROW) text = ColumnText(raw, 0);
    return result == SQLITE_ROW || result == SQLITE_DONE || Fail(error);
}

bool CSqliteConnection::Fail(std::string& error) {
    m_failed = true;
    const int code = sqlite3_errcode(m_database.get()) & 0xFF;
    m_wasLocked = code == SQLITE_BUSY || code == SQLITE_LOCKED;
    error = "the inventory file " + m_path + " can't be used: " +
            (m_database == nullptr ? "no memory" : sqlite3_errmsg(m_database.get()));
    return false;
}

InventoryAnswer_e CSqliteConnection::FindInterface(const std::string& device,
                                                   const std::string& possibleName,
                                                   std::string& fullName, std::string& error) {
    const std::string canonical = CanonicalInterfaceName(possibleName);
    Use use(*this, FindName, {device, canonical});
    std::string best;
    int result = use.Step();
    for (; result == SQLITE_ROW; result = use.Step()) {
        std::string name = use.Text(0);
        if (best.empty() || IsBetterInterfaceName(name, best, possibleName)) best = std::move(name);
    }
    if (result != SQLITE_DONE) {
        Fail(error);
        return InventoryAnswer_e::Failed;
    }
    if (best.empty()) return InventoryAnswer_e::Absent;
    fullName = std::move(best);
    return InventoryAnswer_e::Found;
}

InventoryAnswer_e CSqliteConnection::FindAddress(const std::string& ip, InventoryRow& owner,
                                                 std::string& error) {
    const std::string address = CanonicalAddress(ip);
    if (address.empty()) return InventoryAnswer_e::Absent;
    Use use(*this, FindOwner, {address});
    const int result = use.Step();
    if (result == SQLITE_DONE) return InventoryAnswer_e::Absent;
    if (result != SQLITE_ROW) {
        Fail(error);
        return InventoryAnswer_e::Failed;
    }
    owner = {use.Text(0), use.Text(1), use.Text(2), use.Number(3)};
    return InventoryAnswer_e::Found;
}

bool CSqliteConnection::Upsert(const std::vector<InventoryRow>& rows, std::string& error) {
    // The write lock is taken at once: a transaction that begins by reading can't always get it
    // later.
    return Execute("BEGIN IMMEDIATE", error) && InTransaction(AddRows(rows, error), error);
}

bool CSqliteConnection::RemoveDevice(const std::string& device, std::string& error) {
    if (!Execute("BEGIN IMMEDIATE", error)) return false;
    const bool done = Use(*this, Remove, {device}).Step() == SQLITE_DONE || Fail(error);
    return InTransaction(done, error);
}

bool CSqliteConnection::AddRows(const std::vector<InventoryRow>& rows, std::string& error) {
    InventoryRow row;
    for (const InventoryRow& given : rows) {
        if (!CanonicalRow(given, row, error)) return false;
        const std::string canonical = CanonicalInterfaceName(row.interfaceName);
        const int added =
            Use(*this, AddInterface, {row.device, row.interfaceName, canonical}).Step();
        if (added != SQLITE_DONE) return Fail(error);
        if (row.address.empty()) continue;
        Use use(*this, SetOwner, {row.device, row.interfaceName, row.address});
        use.BindNumber(row.prefixLength);
        if (use.Step() != SQLITE_DONE) return Fail(error);
    }
    return true;
}

// Ends the open transaction as its steps went.
bool CSqliteConnection::InTransaction(bool done, std::string& error) {
    if (done && Execute("COMMIT", error)) return true;
    std::string ignored;
    if (sqlite3_get_autocommit(m_database.get()) == 0) Execute("ROLLBACK", ignored);
    return false;
}

bool CSqliteConnection::IsCurrent() const {
    struct stat status;
    return StatOf(m_path, status) && status.st_dev == m_device && status.st_ino == m_inode;
}

void CSqliteConnection::SetPatience(int patience) {
    sqlite3_busy_timeout(m_database.get(), patience);
}
