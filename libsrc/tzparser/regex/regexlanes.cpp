#include "tzparser/regex/regexlanes.h"

#include "tzparser/text/appregexbuild.h"

#include <memory>

#include <boost/regex.hpp>

CRegexLanes::~CRegexLanes() {
    for (auto& compiled : m_compiled) delete compiled.load();
}

// Threads take lanes by turns, in the order in which they first search.
std::size_t CRegexLanes::Lane() {
    static std::atomic<std::size_t> threads{0};
    thread_local const auto lane = threads.fetch_add(1, std::memory_order_relaxed) % Count;
    return lane;
}

bool CRegexLanes::Compile(std::string_view text, unsigned flags) {
    auto compiled = std::make_unique<const boost::regex>(BuildRegex(text, flags));
    if (compiled->status() != 0) return false;
    m_compiled[Lane()].store(compiled.release(), std::memory_order_release);
    return true;
}

const boost::regex& CRegexLanes::Mine(std::string_view text, unsigned flags) const {
    auto& slot = m_compiled[Lane()];
    if (const auto* known = slot.load(std::memory_order_acquire)) return *known;
    auto compiled = std::make_unique<const boost::regex>(BuildRegex(text, flags));
    const boost::regex* other = nullptr;
    if (slot.compare_exchange_strong(other, compiled.get(), std::memory_order_acq_rel))
        return *compiled.release();
    return *other;
}
