#include "host/store/sqliteinventory.h"

#include "host/runtime/tznoncryptographicchecksum.h"
#include "host/store/sqliteconnection.h"
#include "host/text/asciicase.h"

#include <algorithm>
#include <exception>
#include <iterator>

#include <unistd.h>

namespace {

constexpr std::size_t MostIdle = 32;
constexpr std::size_t MostLocked = 1024;
constexpr std::size_t LongestFileName = 150;
constexpr std::size_t KeptOfFileName = 100;

std::string Encoded(const std::string& tenant) {
    constexpr char Digits[] = "0123456789abcdef";
    std::string name;
    for (const char c : tenant) {
        const auto byte = static_cast<unsigned char>(c);
        if (AsciiIsAlnum(c) || c == '_' || c == '-')
            name += c;
        else
            name += {'%', Digits[byte >> 4], Digits[byte & 15]};
    }
    return name;
}

// SQLite takes some beginnings of names for more than names.
std::string AsPath(const std::string& folder) {
    const bool isPlain = folder.empty() || folder.front() == '/';
    return (isPlain ? std::string() : std::string("./")).append(folder);
}

}  // namespace

CSqliteInventory::CSqliteInventory(const std::string& folder, int patience)
    : m_folder(AsPath(folder)), m_patience(patience) {}

CSqliteInventory::~CSqliteInventory() = default;

std::string CSqliteInventory::FileName(const std::string& tenant) {
    std::string name = Encoded(tenant);
    if (name.size() > LongestFileName) {
        name.resize(KeptOfFileName);
        name += "~" + CTzNonCryptographicChecksum::GetChecksum(tenant.data(), tenant.size());
    }
    return name + ".db";
}

// Runs the operation on a connection of the tenant, which goes back to the idle ones unless it
// failed.
template <typename Result, typename Operation>
Result CSqliteInventory::Run(Result failure, const std::string& tenant, Access_e access,
                             std::string& error, Operation operation) {
    try {
        if (!IsUsable(tenant, error)) return failure;
        const std::string path = m_folder + "/" + FileName(tenant);
        if (access == Access_e::Create && !CSqliteConnection::Create(path, tenant, error))
            return failure;
        const int patience = PatienceFor(tenant, access);
        Connection connection = Take(tenant);
        bool isOpen = connection != nullptr;
        if (isOpen) {
            connection->SetPatience(patience);
        } else {
            connection = std::make_unique<CSqliteConnection>(path);
            isOpen = connection->Open(tenant, patience, error);
        }
        const Result result = isOpen ? operation(*connection) : failure;
        Note(tenant, connection->WasLocked());
        if (isOpen && !connection->HasFailed()) Give(tenant, std::move(connection));
        return result;
    } catch (const std::exception&) {
        error = "no memory";
        return failure;
    }
}

InventoryAnswer_e CSqliteInventory::FindInterface(const std::string& tenant,
                                                  const std::string& device,
                                                  const std::string& possibleName,
                                                  std::string& fullName, std::string& error) {
    return Run(InventoryAnswer_e::Failed, tenant, Access_e::Read, error,
               [&](CSqliteConnection& connection) {
                   return connection.FindInterface(device, possibleName, fullName, error);
               });
}

InventoryAnswer_e CSqliteInventory::FindAddress(const std::string& tenant, const std::string& ip,
                                                InventoryRow& owner, std::string& error) {
    return Run(
        InventoryAnswer_e::Failed, tenant, Access_e::Read, error,
        [&](CSqliteConnection& connection) { return connection.FindAddress(ip, owner, error); });
}

bool CSqliteInventory::Upsert(const std::string& tenant, const std::vector<InventoryRow>& rows,
                              std::string& error) {
    return Run(false, tenant, Access_e::Create, error,
               [&](CSqliteConnection& connection) { return connection.Upsert(rows, error); });
}

bool CSqliteInventory::RemoveDevice(const std::string& tenant, const std::string& device,
                                    std::string& error) {
    return Run(false, tenant, Access_e::Change, error, [&](CSqliteConnection& connection) {
        return connection.RemoveDevice(device, error);
    });
}

bool CSqliteInventory::IsUsable(const std::string& tenant, std::string& error) {
    const pid_t process = getpid();
    pid_t first = 0;
    if (!m_process.compare_exchange_strong(first, process) && first != process) {
        error =
            "the inventory was used before this process was forked; make a new one after forking";
        return false;
    }
    if (m_folder.empty() || m_folder.find('\0') != std::string::npos) {
        error = "the inventory's folder has no name that can be used";
        return false;
    }
    return IsTenantName(tenant, error);
}

int CSqliteInventory::PatienceFor(const std::string& tenant, Access_e access) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return access == Access_e::Read && m_locked.count(tenant) != 0 ? 0 : m_patience;
}

// An idle connection of the tenant whose file is still in place, else null.
CSqliteInventory::Connection CSqliteInventory::Take(const std::string& tenant) {
    Connection connection;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto found = std::find_if(m_idle.rbegin(), m_idle.rend(),
                                        [&](const auto& idle) { return idle.first == tenant; });
        if (found == m_idle.rend()) return nullptr;
        connection = std::move(found->second);
        m_idle.erase(std::next(found).base());
    }
    return connection->IsCurrent() ? std::move(connection) : nullptr;
}

void CSqliteInventory::Give(const std::string& tenant, Connection connection) {
    Connection dropped;
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_idle.emplace_back(tenant, std::move(connection));
    if (m_idle.size() <= MostIdle) return;
    dropped = std::move(m_idle.front().second);
    m_idle.pop_front();
}

void CSqliteInventory::Note(const std::string& tenant, bool locked) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!locked) {
        m_locked.erase(tenant);
    } else if (m_locked.size() < MostLocked) {
        m_locked.insert(tenant);
    }
}
