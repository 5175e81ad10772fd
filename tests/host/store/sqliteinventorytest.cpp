#include "host/store/memoryinventory.h"
#include "host/store/sqliteinventory.h"

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <spawn.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace {

namespace fs = std::filesystem;

// A folder that is empty at first and gone at the end.
class Folder {
public:
    Folder() {
        std::string pattern = testing::TempDir() + "inventoryXXXXXX";
        if (mkdtemp(pattern.data()) == nullptr) std::abort();
        m_path = pattern;
    }
    ~Folder() { fs::remove_all(m_path); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    std::string Path(const std::string& name = "") const { return m_path + "/" + name; }
    std::string Files() const {
        std::set<std::string> names;
        for (const auto& entry : fs::directory_iterator(m_path))
            names.insert(entry.path().filename().string());
        std::string list;
        for (const std::string& name : names) list += name + " ";
        return list;
    }

private:
    std::string m_path;
};

void RunSql(const std::string& path, const char* sql) {
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &database), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(database, sql, nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(database);
    sqlite3_close(database);
}

std::string Ask(IInventory& inventory, const std::string& tenant, const std::string& device,
                const std::string& name) {
    std::string full;
    std::string error;
    switch (inventory.FindInterface(tenant, device, name, full, error)) {
        case InventoryAnswer_e::Found:
            return full;
        case InventoryAnswer_e::Absent:
            return "absent";
        default:
            return "failed: " + error;
    }
}

std::string Owner(IInventory& inventory, const std::string& ip) {
    InventoryRow row;
    std::string error;
    switch (inventory.FindAddress("acme", ip, row, error)) {
        case InventoryAnswer_e::Found:
            return row.device + " " + row.interfaceName + " " + row.address + "/" +
                   std::to_string(row.prefixLength);
        case InventoryAnswer_e::Absent:
            return "absent";
        default:
            return "failed: " + error;
    }
}

// What holds for every inventory that keeps rows.
void CheckLookUps(IInventory& inventory) {
    std::string error;
    ASSERT_TRUE(inventory.Upsert("acme",
                                 {{"core1", "GigabitEthernet0/1", "192.0.2.1", 24},
                                  {"core1", "GigabitEthernet0/1", "2001:DB8::0:1", 64},
                                  {"core1", "Gi0/2", "", -1},
                                  {"core1", "GigabitEthernet0/2", "", -1},
                                  {"core1", "it's \"x\" \xE9", "", -1},
                                  {"core2", "GigabitEthernet0/1", "192.0.2.2", -1}},
                                 error))
        << error;
    const struct {
        const char* device;
        const char* name;
        const char* wanted;
    } names[] = {
        {"core1", "GigabitEthernet0/1", "GigabitEthernet0/1"},
        {"core1", "GIGABITETHERNET0/1", "GigabitEthernet0/1"},
        {"core1", "ge 0/1", "GigabitEthernet0/1"},
        {"core1", "Gi0/2", "Gi0/2"},
        {"core1", "gi0/2", "Gi0/2"},
        {"core1", "gig0/2", "GigabitEthernet0/2"},
        {"core1", "IT'S \"X\" \xE9", "it's \"x\" \xE9"},
        {"core1", "Gi0/3", "absent"},
        {"core1", "", "absent"},
        {"Core1", "Gi0/1", "absent"},
        {"' OR 1=1 --", "Gi0/1", "absent"},
    };
    for (const auto& row : names) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Ask(inventory, "acme", row.device, row.name), row.wanted);
    }
    EXPECT_EQ(Owner(inventory, "192.0.2.1"), "core1 GigabitEthernet0/1 192.0.2.1/24");
    EXPECT_EQ(Owner(inventory, "2001:db8:0::1"), "core1 GigabitEthernet0/1 2001:db8::1/64");
    EXPECT_EQ(Owner(inventory, "192.0.2.2"), "core2 GigabitEthernet0/1 192.0.2.2/-1");
    EXPECT_EQ(Owner(inventory, "192.0.2.3"), "absent");

    // The latest row names the owner; a bad row undoes its batch.
    EXPECT_TRUE(inventory.Upsert("acme", {{"core2", "Gi7", "192.0.2.1", 25}}, error));
    EXPECT_EQ(Owner(inventory, "192.0.2.1"), "core2 Gi7 192.0.2.1/25");
    EXPECT_FALSE(
        inventory.Upsert("acme", {{"core3", "Gi7", "", -1}, {"core3", "", "", -1}}, error));
    EXPECT_EQ(error, "the interface name is empty");
    EXPECT_EQ(Ask(inventory, "acme", "core3", "Gi7"), "absent");

    EXPECT_TRUE(inventory.RemoveDevice("acme", "core2", error));
    EXPECT_TRUE(inventory.RemoveDevice("acme", "core2", error));
    EXPECT_EQ(Ask(inventory, "acme", "core2", "Gi7"), "absent");
    EXPECT_EQ(Owner(inventory, "192.0.2.1"), "absent");
    EXPECT_EQ(Owner(inventory, "2001:db8::1"), "core1 GigabitEthernet0/1 2001:db8::1/64");
}

TEST(SqliteInventory, LookUps) {
    const Folder folder;
    CSqliteInventory inventory(folder.Path());
    CheckLookUps(inventory);
    CSqliteInventory again(folder.Path());
    EXPECT_EQ(Ask(again, "acme", "core1", "Gi0/1"), "GigabitEthernet0/1");
}

TEST(SqliteInventory, MemoryAnswersTheSame) {
    CMemoryInventory inventory;
    CheckLookUps(inventory);
    EXPECT_EQ(Ask(inventory, "..", "core1", "Gi0/1").substr(0, 7), "failed:");
    EXPECT_EQ(Ask(inventory, "nobody", "core1", "Gi0/1"), "absent");
}

TEST(SqliteInventory, TenantsCantLeaveTheFolder) {
    const Folder folder;
    fs::create_directory(folder.Path("store"));
    CSqliteInventory inventory(folder.Path("store"));
    const struct {
        const char* name;
        std::string tenant;
        std::string file;  // empty when the name is refused
    } rows[] = {
        {"plain", "Acme-1_x", "Acme-1_x.db"},
        {"dots inside", "a..b.db", "a%2e%2eb%2edb.db"},
        {"three dots", "...", "%2e%2e%2e.db"},
        {"percent", "%2e", "%252e.db"},
        {"blank, colon, backslash", "C:\\x y", "C%3a%5cx%20y.db"},
        {"bytes", "\xC3\xA9\n", "%c3%a9%0a.db"},
        {"long", std::string(300, 'a'),
         std::string(100, 'a') + "~" +
             CSqliteInventory::FileName(std::string(300, 'a')).substr(101)},
        {"longer", std::string(301, 'a'),
         std::string(100, 'a') + "~" +
             CSqliteInventory::FileName(std::string(301, 'a')).substr(101)},
        {"empty", "", ""},
        {"dot", ".", ""},
        {"dots", "..", ""},
        {"path", "../x", ""},
        {"absolute", "/x", ""},
        {"NUL", std::string("a\0b", 3), ""},
        {"too long", std::string(1025, 'a'), ""},
    };
    std::set<std::string> wanted;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        std::string error;
        const std::string device = std::string("device of ") + row.name;
        EXPECT_EQ(inventory.Upsert(row.tenant, {{device, "Gi1", "", -1}}, error), !row.file.empty())
            << error;
        if (row.file.empty()) {
            EXPECT_EQ(error.rfind("the tenant's name ", 0), 0U) << error;
            continue;
        }
        EXPECT_EQ(CSqliteInventory::FileName(row.tenant), row.file);
        EXPECT_TRUE(fs::exists(folder.Path("store/" + row.file)));
        EXPECT_EQ(Ask(inventory, row.tenant, device, "Gi1"), "Gi1");
        EXPECT_TRUE(wanted.insert(row.file).second);
    }
    EXPECT_EQ(folder.Files(), "store ");
}

TEST(SqliteInventory, FilesThatCantBeUsed) {
    const struct {
        const char* name;
        std::function<void(const std::string&)> make;
        const char* wanted;  // is in the error
    } rows[] = {
        {"missing", [](const std::string&) {}, "there is no inventory file"},
        {"empty", [](const std::string& path) { std::ofstream stream(path); },
         "is no inventory of version 1; it says 0"},
        {"text", [](const std::string& path) { std::ofstream(path) << std::string(9000, 'x'); },
         "file is not a database"},
        {"folder", [](const std::string& path) { fs::create_directory(path); }, "is no file"},
        {"pipe", [](const std::string& path) { EXPECT_EQ(mkfifo(path.c_str(), 0600), 0); },
         "is no file"},
        {"foreign database",
         [](const std::string& path) {
             RunSql(path, "CREATE TABLE x (y); PRAGMA user_version = 1");
         },
         "no such table: tenant"},
        {"later version",
         [](const std::string& path) {
             RunSql(path, "CREATE TABLE x (y); PRAGMA user_version = 2");
         },
         "is no inventory of version 1; it says 2"},
        {"other tables",
         [](const std::string& path) {
             RunSql(path,
                    "CREATE TABLE tenant (name); INSERT INTO tenant VALUES ('acme');"
                    "PRAGMA user_version = 1");
         },
         "no such table: interface"},
        {"another tenant's",
         [](const std::string& path) {
             const std::string folder = fs::path(path).parent_path().string();
             std::string error;
             CSqliteInventory(folder).Upsert("other", {{"a", "b", "", -1}}, error);
             fs::rename(folder + "/other.db", path);
         },
         "belongs to another tenant"},
        {"cut",
         [](const std::string& path) {
             const std::string folder = fs::path(path).parent_path().string();
             std::string error;
             CSqliteInventory(folder).Upsert("acme", {{"a", "b", "", -1}}, error);
             fs::resize_file(path, 4096);
         },
         "malformed"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Folder folder;
        row.make(folder.Path("acme.db"));
        const std::string files = folder.Files();
        CSqliteInventory inventory(folder.Path());
        for (int i = 0; i < 2; ++i) {
            const std::string answer = Ask(inventory, "acme", "core1", "Gi0/1");
            EXPECT_NE(answer.find(row.wanted), std::string::npos) << answer;
            EXPECT_EQ(answer.rfind("failed: ", 0), 0U);
        }
        EXPECT_EQ(folder.Files(), files);
        std::string error;
        EXPECT_FALSE(inventory.RemoveDevice("acme", "core1", error));
        const std::vector<InventoryRow> rowsOfDevice = {{"core1", "Gi0/1", "192.0.2.1", 24}};
        EXPECT_EQ(inventory.Upsert("acme", rowsOfDevice, error), files.empty());
    }
}

TEST(SqliteInventory, FoldersThatCantBeUsed) {
    for (const std::string& path :
         {std::string(), std::string("a\0b", 3), testing::TempDir() + "no such folder"}) {
        SCOPED_TRACE(path);
        CSqliteInventory inventory(path);
        std::string error;
        EXPECT_FALSE(inventory.Upsert("acme", {}, error));
        EXPECT_FALSE(error.empty());
        EXPECT_EQ(Ask(inventory, "acme", "a", "b").rfind("failed: ", 0), 0U);
    }
}

TEST(SqliteInventory, ARemovedFileIsNoticedAndANewOneTaken) {
    const Folder folder;
    CSqliteInventory inventory(folder.Path());
    std::string error;
    ASSERT_TRUE(inventory.Upsert("acme", {{"a", "Gi1", "", -1}}, error));
    for (const char* const suffix : {"", "-wal", "-shm"})
        fs::remove(folder.Path("acme.db") + suffix);
    EXPECT_NE(Ask(inventory, "acme", "a", "Gi1").find("there is no inventory file"),
              std::string::npos);
    ASSERT_TRUE(CSqliteInventory(folder.Path()).Upsert("acme", {{"b", "Gi2", "", -1}}, error));
    EXPECT_EQ(Ask(inventory, "acme", "a", "Gi1"), "absent");
    EXPECT_EQ(Ask(inventory, "acme", "b", "Gi2"), "Gi2");
}

TEST(SqliteInventory, ALockedFileFailsOnceItsPatienceIsOver) {
    const Folder folder;
    std::string error;
    ASSERT_TRUE(CSqliteInventory(folder.Path()).Upsert("acme", {{"a", "Gi1", "", -1}}, error));
    sqlite3* locker = nullptr;
    ASSERT_EQ(sqlite3_open(folder.Path("acme.db").c_str(), &locker), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(locker, "PRAGMA locking_mode = EXCLUSIVE; BEGIN IMMEDIATE", nullptr,
                           nullptr, nullptr),
              SQLITE_OK);
    CSqliteInventory inventory(folder.Path(), 300);
    const auto begin = std::chrono::steady_clock::now();
    for (int i = 0; i < 20; ++i)
        EXPECT_NE(Ask(inventory, "acme", "a", "Gi1").find("locked"), std::string::npos);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(3));
    EXPECT_FALSE(inventory.Upsert("acme", {{"a", "Gi2", "", -1}}, error));
    sqlite3_close(locker);
    EXPECT_EQ(Ask(inventory, "acme", "a", "Gi1"), "Gi1");
}

TEST(SqliteInventory, AForkedProcessIsRefused) {
    const Folder folder;
    CSqliteInventory inventory(folder.Path());
    std::string error;
    ASSERT_TRUE(inventory.Upsert("acme", {{"a", "Gi1", "", -1}}, error));
    const pid_t child = fork();
    if (child == 0) {
        const bool refused = Ask(inventory, "acme", "a", "Gi1").find("forked") != std::string::npos;
        _exit(refused ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

constexpr int Batches = 40;
constexpr int RowsABatch = 25;

std::vector<InventoryRow> Batch(const std::string& device, int batch) {
    std::vector<InventoryRow> rows;
    for (int i = batch * RowsABatch; i < (batch + 1) * RowsABatch; ++i)
        rows.push_back({device, "GigabitEthernet0/" + std::to_string(i), "", -1});
    return rows;
}

TEST(SqliteInventory, ThreadsShareOne) {
    const Folder folder;
    CSqliteInventory inventory(folder.Path());
    std::vector<std::thread> threads;
    for (const char* const device : {"a", "b", "c"})
        threads.emplace_back([&inventory, device] {
            std::string error;
            for (int batch = 0; batch < 5; ++batch) {
                EXPECT_TRUE(inventory.Upsert("acme", Batch(device, batch), error)) << error;
                const std::string last = std::to_string((batch + 1) * RowsABatch - 1);
                EXPECT_EQ(Ask(inventory, "acme", device, "Gi0/" + last),
                          "GigabitEthernet0/" + last);
            }
        });
    for (std::thread& thread : threads) thread.join();
}

// The work of the processes that the test below starts; by itself it does nothing.
TEST(SqliteInventory, WorkOfAProcess) {
    const char* const folder = std::getenv("INVENTORY_FOLDER");
    const char* const device = std::getenv("INVENTORY_DEVICE");
    if (folder == nullptr || device == nullptr) return;
    CSqliteInventory inventory(folder, 60000);
    std::string error;
    for (int batch = 0; batch < Batches; ++batch)
        ASSERT_TRUE(inventory.Upsert("acme", Batch(device, batch), error)) << error;
}

pid_t StartProcess(const std::string& folder, const std::string& device) {
    std::vector<std::string> variables = {"INVENTORY_FOLDER=" + folder,
                                          "INVENTORY_DEVICE=" + device};
    std::vector<char*> environment;
    for (std::string& variable : variables) environment.push_back(variable.data());
    for (char** variable = environ; *variable != nullptr; ++variable)
        if (std::string(*variable).rfind("GTEST_", 0) != 0) environment.push_back(*variable);
    environment.push_back(nullptr);
    std::string arguments[] = {"process", "--gtest_filter=*WorkOfAProcess", "--gtest_brief=1"};
    char* const pointers[] = {arguments[0].data(), arguments[1].data(), arguments[2].data(),
                              nullptr};
    pid_t process = 0;
    EXPECT_EQ(
        posix_spawn(&process, "/proc/self/exe", nullptr, nullptr, pointers, environment.data()), 0);
    return process;
}

// Two processes write one tenant, from its first row on, while this one reads.
TEST(SqliteInventory, ProcessesShareATenant) {
    const Folder folder;
    CSqliteInventory inventory(folder.Path());
    const pid_t writers[] = {StartProcess(folder.Path(), "a"), StartProcess(folder.Path(), "b")};
    std::atomic<int> left{2};
    std::thread waiter([&] {
        for (const pid_t writer : writers) {
            int status = -1;
            EXPECT_EQ(waitpid(writer, &status, 0), writer);
            EXPECT_EQ(status, 0);
            --left;
        }
    });
    int seen = 0;  // a's batches that are there; whole ones only
    while (left > 0) {
        const std::string first = std::to_string(seen * RowsABatch);
        const std::string answer = Ask(inventory, "acme", "a", "Gi0/" + first);
        const bool isThere = answer == "GigabitEthernet0/" + first;
        const bool isYoung = seen == 0 && answer.find("there is no inventory file") != answer.npos;
        EXPECT_TRUE(isThere || isYoung || answer == "absent") << answer;
        if (!isThere) continue;
        const std::string last = std::to_string(++seen * RowsABatch - 1);
        EXPECT_EQ(Ask(inventory, "acme", "a", "Gi0/" + last), "GigabitEthernet0/" + last);
    }
    waiter.join();
    for (const char* const device : {"a", "b"})
        for (int i = 0; i < Batches * RowsABatch; ++i)
            EXPECT_EQ(Ask(inventory, "acme", device, "Gi0/" + std::to_string(i)),
                      "GigabitEthernet0/" + std::to_string(i));
    EXPECT_EQ(folder.Files().find(".new-"), std::string::npos);
}

}  // namespace
