#pragma once

#include <cstddef>
#include <functional>

// The bytes by which the process grows at most while `work` runs, measured in a forked child, so
// that what was freed before doesn't count; 0 when no child could be made.
std::size_t PeakMemory(const std::function<void()>& work);
