#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <string_view>

#include <boost/regex_fwd.hpp>

// CRegexLanes holds one expression compiled for the plain matcher, once for each lane of threads.
// A search counts references to the compiled expression, and two threads that share one hand the
// count's cache line to and fro; threads of different lanes share nothing.
//
//     CRegexLanes lanes;
//     if (lanes.Compile(text, flags)) search(lanes.Mine(text, flags));
//
// After Compile any number of threads may use one object.
class CRegexLanes {
public:
    CRegexLanes() = default;
    ~CRegexLanes();
    CRegexLanes(const CRegexLanes&) = delete;
    CRegexLanes& operator=(const CRegexLanes&) = delete;

    // Compiles for the calling thread's lane; whether the expression is a good one.
    bool Compile(std::string_view text, unsigned flags);
    // The expression of the calling thread's lane, compiled on the lane's first use. The text and
    // flags must be those that compiled.
    const boost::regex& Mine(std::string_view text, unsigned flags) const;

private:
    static constexpr std::size_t Count = 4;
    static std::size_t Lane();

    mutable std::array<std::atomic<const boost::regex*>, Count> m_compiled{};
};
