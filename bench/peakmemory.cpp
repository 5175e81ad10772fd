#include "peakmemory.h"

#include <fstream>
#include <string>

#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr std::size_t Kilobyte = 1024;

// A figure of the kernel about this process, in kilobytes: "VmRSS" is what is in memory now,
// "VmHWM" the most there was.
std::size_t Figure(const std::string& name) {
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word) {
        if (word != name + ":") continue;
        std::size_t kilobytes = 0;
        status >> kilobytes;
        return kilobytes;
    }
    return 0;
}

// The most there was, made what there is: the child comes with its parent's, and what was freed
// before isn't the work's.
void ForgetPeak() {
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << 5;
}

std::size_t Grow(const std::function<void()>& work) {
    ForgetPeak();
    const auto before = Figure("VmRSS");
    work();
    const auto peak = Figure("VmHWM");
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
