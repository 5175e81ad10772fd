#include "peakmemory.h"

#include <fstream>
#include <string>

#include <malloc.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr std::size_t Kilobyte = 1024;

// In kilobytes, as the kernel counts the peak too.
std::size_t ResidentNow() {
    std::ifstream pages("/proc/self/statm");
    std::size_t total = 0;
    std::size_t resident = 0;
    pages >> total >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) / Kilobyte;
}

std::size_t ResidentPeak() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<std::size_t>(usage.ru_maxrss);
}

std::size_t Grow(const std::function<void()>& work) {
    malloc_trim(0);
    const auto before = ResidentNow();
    work();
    const auto peak = ResidentPeak();
    return peak > before ? (peak - before) * Kilobyte : 0;
}

}  // namespace

std::size_t PeakMemory(const std::function<void()>& work) {
    int ends[2];
    if (pipe(ends) != 0) return 0;
    const auto child = fork();
    if (child == 0) {
        const auto bytes = Grow(work);
        _exit(write(ends[1], &bytes, sizeof bytes) == sizeof bytes ? 0 : 1);
    }
    close(ends[1]);
    std::size_t bytes = 0;
    if (child < 0 || read(ends[0], &bytes, sizeof bytes) != sizeof bytes) bytes = 0;
    close(ends[0]);
    if (child > 0) waitpid(child, nullptr, 0);
    return bytes;
}
