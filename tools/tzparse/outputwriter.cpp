#include "outputwriter.h"

#include "toolerror.h"

#include <cerrno>
#include <cstring>

#include <unistd.h>

void COutputWriter::Flush() {
    std::string_view left = m_buffer;
    while (!left.empty()) {
        const auto count = ::write(m_descriptor, left.data(), left.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) {
            const std::string reason = std::strerror(errno);
            throw CToolError(ExitStatus_Unusable, "cannot write the output: " + reason);
        }
        left.remove_prefix(static_cast<std::size_t>(count));
    }
    m_buffer.clear();
}
