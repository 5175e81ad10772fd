#include "inputfile.h"

#include "toolerror.h"

#include <cerrno>
#include <cstddef>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr std::size_t FirstRead = 64 * 1024;

[[noreturn]] void Fail(const std::string& name) {
    const std::string reason = std::strerror(errno);
    const std::string what = name == StandardInput ? "standard input" : "'" + name + "'";
    throw CToolError(ExitStatus_Unusable, "cannot read " + what + ": " + reason);
}

class CDescriptor {
public:
    explicit CDescriptor(const std::string& name)
        : m_isOwn(name != StandardInput),
          m_number(m_isOwn ? ::open(name.c_str(), O_RDONLY | O_CLOEXEC) : STDIN_FILENO) {
        if (m_number < 0) Fail(name);
    }
    ~CDescriptor() {
        if (m_isOwn) ::close(m_number);
    }
    CDescriptor(const CDescriptor&) = delete;
    CDescriptor& operator=(const CDescriptor&) = delete;

    int Number() const { return m_number; }

private:
    bool m_isOwn;
    int m_number;
};

// One byte more than a regular file has, so that the read that finds its end needs no more memory.
std::size_t ExpectedSize(int descriptor) {
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) return FirstRead;
    return static_cast<std::size_t>(status.st_size) + 1;
}

}  // namespace

std::string ReadInput(const std::string& name) {
    const CDescriptor file(name);
    std::string text;
    text.resize(ExpectedSize(file.Number()));
    std::size_t size = 0;
    for (;;) {
        if (size == text.size()) text.resize(2 * size);
        const auto count = ::read(file.Number(), &text[size], text.size() - size);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) Fail(name);
        if (count == 0) break;
        size += static_cast<std::size_t>(count);
    }
    text.resize(size);
    return text;
}
