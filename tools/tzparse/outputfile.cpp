#include "outputfile.h"

#include "toolerror.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr mode_t ReadableByAll = 0666;

}  // namespace

COutputFile::COutputFile(const std::string& name)
    : m_descriptor(::open(name.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, ReadableByAll)) {
    if (m_descriptor >= 0) return;
    const std::string reason = std::strerror(errno);
    throw CToolError(ExitStatus_Unusable, "cannot write '" + name + "': " + reason);
}

COutputFile::~COutputFile() {
    ::close(m_descriptor);
}
