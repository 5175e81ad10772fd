// The folder is opened once and checked through its descriptor, and everything else is done
// relative to that. So nobody can exchange it for another between the check and the writing.
#include "host/runtime/filehelper.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <string_view>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// A file descriptor that is closed at the end.
class CDescriptor {
public:
    explicit CDescriptor(int number) : m_number(number) {}
    ~CDescriptor() { Close(); }
    CDescriptor(const CDescriptor&) = delete;
    CDescriptor& operator=(const CDescriptor&) = delete;

    bool IsOpen() const { return m_number >= 0; }
    int Number() const { return m_number; }
    // False when the system couldn't write what it still held.
    bool Close() {
        const int number = m_number;
        m_number = -1;
        return number < 0 || close(number) == 0;
    }

private:
    int m_number;
};

bool IsTrusted(int folder) {
    struct stat status {};
    if (fstat(folder, &status) != 0) return false;
    const bool isOurs = status.st_uid == geteuid() || status.st_uid == 0;
    const bool othersWrite = (status.st_mode & (S_IWGRP | S_IWOTH)) != 0;
    return isOurs && (!othersWrite || (status.st_mode & S_ISVTX) != 0);
}

bool WriteAll(int file, std::string_view content) {
    while (!content.empty()) {
        const ssize_t written = write(file, content.data(), content.size());
        if (written < 0 && errno != EINTR) return false;
        if (written > 0) content.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

// Makes a file that wasn't there, and gives its name.
int OpenNewFile(int folder, std::string& name) {
    static std::atomic<unsigned> count{0};
    constexpr int attempts = 100;
    for (int i = 0; i < attempts; ++i) {
        name = ".tz" + std::to_string(getpid()) + "-" + std::to_string(count++) + ".tmp";
        const int file = openat(folder, name.c_str(),
                                O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
        if (file >= 0 || errno != EEXIST) return file;
    }
    return -1;
}

bool SaveInFolder(int folder, const std::string& name, const std::string& content) {
    std::string temporary;
    CDescriptor file(OpenNewFile(folder, temporary));
    if (!file.IsOpen()) return false;
    if (WriteAll(file.Number(), content) && file.Close() &&
        renameat(folder, temporary.c_str(), folder, name.c_str()) == 0)
        return true;
    unlinkat(folder, temporary.c_str(), 0);
    return false;
}

}  // namespace

bool FileHelper::SaveToFile(const std::string& content, const std::string& path) {
    if (path.find('\0') != std::string::npos) return false;
    const std::size_t slash = path.rfind('/');
    const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    if (name.empty() || name == "." || name == "..") return false;
    std::string folder = slash == std::string::npos ? "." : path.substr(0, slash);
    // A slash behind the name would make the system follow a link.
    while (!folder.empty() && folder.back() == '/') folder.pop_back();
    if (folder.empty()) folder = "/";
    mkdir(folder.c_str(), 0700);
    const CDescriptor opened(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    return opened.IsOpen() && IsTrusted(opened.Number()) &&
           SaveInFolder(opened.Number(), name, content);
}
