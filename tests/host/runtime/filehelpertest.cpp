#include "host/runtime/filehelper.h"
#include "host/runtime/tzfilesystem.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using std::string_literals::operator""s;

// A folder of the test's own, gone afterwards.
class FileHelperTest : public testing::Test {
protected:
    void SetUp() override {
        std::string name = TzFileSystem::GetTempFolder() + "filehelperXXXXXX";
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        m_folder = name;
    }
    void TearDown() override { fs::remove_all(m_folder); }

    static std::string Content(const fs::path& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    // The names in a folder, and nothing that a failed write would have left.
    static std::size_t Count(const fs::path& folder) {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
    }
    static mode_t Mode(const fs::path& path) {
        struct stat status {};
        return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
    }

    fs::path m_folder;
};

TEST_F(FileHelperTest, WritesPrivateFilesAndMakesTheirFolder) {
    const std::string path = m_folder / "ParserError/1f.pars";
    EXPECT_TRUE(FileHelper::SaveToFile("a\0b\n"s, path));
    EXPECT_EQ(Content(path), "a\0b\n"s);
    EXPECT_EQ(Mode(path), 0600U);
    EXPECT_EQ(Mode(m_folder / "ParserError"), 0700U);
    EXPECT_TRUE(FileHelper::SaveToFile("", path));
    EXPECT_EQ(Content(path), "");
    EXPECT_EQ(Count(m_folder / "ParserError"), 1U);
}

TEST_F(FileHelperTest, ReplacesALinkAndLeavesItsTarget) {
    const fs::path victim = m_folder / "victim";
    std::ofstream(victim) << "precious";
    fs::create_symlink(victim, m_folder / "link");
    EXPECT_TRUE(FileHelper::SaveToFile("new", m_folder / "link"));
    EXPECT_EQ(Content(victim), "precious");
    EXPECT_FALSE(fs::is_symlink(m_folder / "link"));
    EXPECT_EQ(Content(m_folder / "link"), "new");
}

TEST_F(FileHelperTest, RefusesFoldersThatOthersCouldHavePrepared) {
    fs::create_directory(m_folder / "other");
    fs::create_directory_symlink(m_folder / "other", m_folder / "ParserError");
    fs::create_directory(m_folder / "open");
    ASSERT_EQ(chmod((m_folder / "open").c_str(), 0777), 0);
    std::ofstream(m_folder / "file") << "no folder";
    for (const std::string path :
         {"ParserError/x", "ParserError//x", "open/x", "file/x", "missing/missing/x"})
        EXPECT_FALSE(FileHelper::SaveToFile("x", m_folder / path)) << path;
    EXPECT_EQ(Count(m_folder / "other"), 0U);
    EXPECT_EQ(Count(m_folder / "open"), 0U);

    ASSERT_EQ(chmod((m_folder / "open").c_str(), 01777), 0);
    EXPECT_TRUE(FileHelper::SaveToFile("x", m_folder / "open/x"));
    if (geteuid() != 0) return;
    ASSERT_EQ(chown((m_folder / "open").c_str(), 65534, 65534), 0);
    EXPECT_FALSE(FileHelper::SaveToFile("x", m_folder / "open/y"));
}

TEST_F(FileHelperTest, RefusesPathsThatNameNoFile) {
    for (const std::string& path : {""s, "/"s, (m_folder / "").string(), (m_folder / ".").string(),
                                    (m_folder / "..").string(), m_folder.string() + "/a\0b"s,
                                    m_folder.string() + "/" + std::string(300, 'x')})
        EXPECT_FALSE(FileHelper::SaveToFile("x", path)) << path.substr(0, 60);
    fs::create_directory(m_folder / "folder");
    EXPECT_FALSE(FileHelper::SaveToFile("x", m_folder / "folder"));
    EXPECT_EQ(Count(m_folder), 1U);
}

TEST_F(FileHelperTest, TempFolderIsThatOfTheEnvironment) {
    const std::string before = std::getenv("TMPDIR") != nullptr ? std::getenv("TMPDIR") : "";
    setenv("TMPDIR", m_folder.c_str(), 1);
    EXPECT_EQ(TzFileSystem::GetTempFolder(), fs::canonical(m_folder).string() + "/");
    for (const char* const folder : {"", "/nowhere", "/dev/null"}) {
        setenv("TMPDIR", folder, 1);
        EXPECT_EQ(TzFileSystem::GetTempFolder(), "/tmp/") << folder;
    }
    if (before.empty())
        unsetenv("TMPDIR");
    else
        setenv("TMPDIR", before.c_str(), 1);
}

}  // namespace
