#pragma once

#include "tzparser/regex/cacheline.h"
#include "tzparser/regex/regextree.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

// The places of the groups that a compiled search found; reused from search to search.
class CRegexJitMatch {
public:
    CRegexJitMatch();
    ~CRegexJitMatch();
    CRegexJitMatch(CRegexJitMatch&&) noexcept;
    CRegexJitMatch& operator=(CRegexJitMatch&&) noexcept;

    // Byte offsets of a group of the expression, after a match; -1 for both when it took no part.
    std::ptrdiff_t Begin(int group) const noexcept;
    std::ptrdiff_t End(int group) const noexcept;

private:
    friend class CRegexJit;
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

// CRegexJit searches with an expression compiled to machine code.
//
//     const auto jit = CRegexJit::Make(*tree);          // null: not for this expression
//     if (jit) found = jit->Search(line, match);
//
// It is made only of expressions on which both engines agree by definition: bytes and sets of
// bytes, choices and repeats of what can't be empty, line anchors on texts of one line. What a
// search finds is then what the plain matcher finds, group by group. Immutable, any number of
// threads may search one object.
class alignas(CacheLine) CRegexJit {
public:
    static std::unique_ptr<const CRegexJit> Make(const RegexTree& tree);
    ~CRegexJit();
    CRegexJit(const CRegexJit&) = delete;
    CRegexJit& operator=(const CRegexJit&) = delete;

    // The number of capture groups.
    int GroupCount() const noexcept;
    // Whether a match was found; nothing when the engine stopped at one of its own limits. With "^"
    // or "$" in the expression the text may hold no "\n", "\r" and "\f" (see RegexTrust). Its data
    // isn't null, even of an empty one.
    std::optional<bool> Search(std::string_view text, CRegexJitMatch& match) const noexcept;

    // The expression in the engine's syntax; empty for one that isn't made. For tests.
    static std::string Translate(const RegexTree& tree);

private:
    struct Impl;
    explicit CRegexJit(std::unique_ptr<Impl> impl);
    std::unique_ptr<Impl> m_impl;
};
