#pragma once

#include <cstddef>

// What threads read while they search stands in lines of its own in the processor's cache. Such
// objects are made in the middle of a parse, so their neighbours in memory may be values that the
// thread which made them goes on writing; each write would take the line away from the others.
inline constexpr std::size_t CacheLine = 64;
