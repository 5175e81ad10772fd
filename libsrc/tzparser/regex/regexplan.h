#pragma once

#include "tzparser/regex/cacheline.h"
#include "tzparser/regex/regexautomaton.h"
#include "tzparser/regex/regexcost.h"
#include "tzparser/regex/regexjit.h"
#include "tzparser/regex/regexscreen.h"

#include <array>
#include <atomic>
#include <memory>
#include <string_view>

// CRegexPlan knows how searches with one expression may be made fast, and holds what they need for
// it, made when first needed.
//
//     if (!plan.Passes(line)) return;                    // no match, quickly
//     if (plan.IsTrusted(line)) {                        // plain searching can't give up on it
//         if (const auto* jit = plan.Jit()) ...              // the same result, sooner
//     } else if (!plan.CanMatch(expression, line, RegexRange_Anywhere)) {
//         return;                                        // no match, however plain searching ends
//     }
//
// Any number of threads may use one object.
class alignas(CacheLine) CRegexPlan {
public:
    explicit CRegexPlan(const boost::regex& expression);
    ~CRegexPlan();
    CRegexPlan(const CRegexPlan&) = delete;
    CRegexPlan& operator=(const CRegexPlan&) = delete;

    // False: the text holds no match. Cheap, and lets some texts without one pass.
    bool Passes(std::string_view text) const noexcept { return m_screen.Passes(text); }
    // Whether the plain matcher surely comes to an end with the text without giving up.
    bool IsTrusted(std::string_view text) const noexcept;
    // The expression as machine code, for trusted texts only; null when there is none yet.
    const CRegexJit* Jit() const noexcept { return m_jit.load(std::memory_order_acquire); }
    // Counts a search that had no machine code. True once, when there were so many that making it
    // pays.
    bool IsJitDue() const noexcept;
    // Makes it; null when the expression isn't one for it.
    const CRegexJit* MakeJit(const boost::regex& expression) const;
    // False: the text holds no match. Linear in its length.
    bool CanMatch(const boost::regex& expression, std::string_view text, RegexRange_e range) const;

private:
    CRegexScreen m_screen;
    RegexTrust m_trust;
    bool m_hasTree = false;
    mutable std::atomic<int> m_searchesToJit;
    mutable std::atomic<const CRegexJit*> m_jit{nullptr};
    mutable std::array<std::atomic<const CRegexAutomaton*>, 2> m_automata{};
};
