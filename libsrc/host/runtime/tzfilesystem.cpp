#include "host/runtime/tzfilesystem.h"

#include <cstdlib>
#include <memory>

#include <sys/stat.h>

namespace {

struct FreeText {
    void operator()(char* text) const { std::free(text); }
};

}  // namespace

std::string TzFileSystem::GetTempFolder() {
    const char* const wanted = secure_getenv("TMPDIR");
    const std::unique_ptr<char, FreeText> folder(wanted != nullptr ? realpath(wanted, nullptr)
                                                                   : nullptr);
    struct stat status {};
    const bool isFolder =
        folder && stat(folder.get(), &status) == 0 && (status.st_mode & S_IFMT) == S_IFDIR;
    std::string path = isFolder ? folder.get() : "/tmp";
    if (path.back() != '/') path.push_back('/');
    return path;
}
