#pragma once

#include "host/runtime/tzexport.h"
#include "tzparser/text/appregexbuild.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

// What came of one search.
enum AppRegexSearch_e {
    AppRegexSearch_NoMatch = 0,
    AppRegexSearch_Match = 1,
    AppRegexSearch_GaveUp =
        2,  // the matcher threw (complexity, memory): counts as no match everywhere
};

// CAppRegexMatch is the scratch of a search and the result of the last one that matched.
//
//     CAppRegexMatch match;                     // one for many searches: its memory is reused
//     if (expression.Search(line, match) == AppRegexSearch_Match)
//         use(match.Text(1), match.Position(1));
//
// Groups count from 1, group 0 is the whole match. Texts are views into the searched text and live
// as long as that text does. An object is used by one thread at a time.
class TZPARSER_API CAppRegexMatch {
public:
    CAppRegexMatch();
    ~CAppRegexMatch();
    CAppRegexMatch(CAppRegexMatch&&) noexcept;
    CAppRegexMatch& operator=(CAppRegexMatch&&) noexcept;
    CAppRegexMatch(const CAppRegexMatch&) = delete;
    CAppRegexMatch& operator=(const CAppRegexMatch&) = delete;

    // The number of capture groups of the expression, whether or not they took part.
    int GroupCount() const noexcept;
    // Byte offset of a group in the searched text; -1 when the group took no part or doesn't exist.
    std::ptrdiff_t Position(int group) const noexcept;
    // The group's text; empty when it took no part.
    std::string_view Text(int group) const noexcept;

private:
    friend class CAppRegex;
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

// CAppRegex is one compiled regular expression in Perl syntax, and its Search is the one place
// where rules search.
//
//     auto regex = std::make_shared<const CAppRegex>("up (\\d+)", CAppRegex::RuleFlags);
//     if (!regex->IsValid())
//         report();              // nothing throws, and an invalid expression never matches
//
// Expressions are built with the classic locale whatever the process's locale is, so that "\d",
// "\w" and the folding of case mean ASCII always. Immutable once built: any number of threads may
// search one object at once.
//
// Facts of the matcher that callers stand on: "." matches a line feed, "^" and "$" match at
// embedded line ends, a search may give up (see AppRegexSearch_GaveUp) after work that depends on
// the expression and the text's length.
class TZPARSER_API CAppRegex {
public:
    // Perl syntax, case-insensitive, a bad expression is told by IsValid: what all rules compile
    // with.
    static constexpr unsigned RuleFlags = kRuleRegexFlags;

    // Compiles the expression. The flags are boost.regex's syntax options; the one for errors
    // without exceptions is always added.
    CAppRegex(std::string_view expression, unsigned flags);
    ~CAppRegex();
    CAppRegex(const CAppRegex&) = delete;
    CAppRegex& operator=(const CAppRegex&) = delete;

    bool IsValid() const noexcept { return m_valid; }
    // The expression's text as given.
    const std::string& GetText() const noexcept { return m_text; }

    // Searches the first match anywhere in the text. `match` is meaningful only after
    // AppRegexSearch_Match. When the matcher throws, "Catch any exception" goes to the debugger
    // output. Where a match can be ruled out without the matcher the result is
    // AppRegexSearch_NoMatch, also if the matcher would have given up.
    AppRegexSearch_e Search(std::string_view text, CAppRegexMatch& match) const noexcept;
    // The same, but AppRegexSearch_GaveUp whenever the matcher would give up. It may take much
    // longer on the texts where that can happen.
    AppRegexSearch_e SearchTelling(std::string_view text, CAppRegexMatch& match) const noexcept;
    // The same for a match of the whole text, from its first byte to its last.
    AppRegexSearch_e MatchWhole(std::string_view text, CAppRegexMatch& match) const noexcept;

    // The same two by the matcher alone. They say what is right: the others differ from them only
    // in time and in AppRegexSearch_NoMatch for AppRegexSearch_GaveUp.
    AppRegexSearch_e SearchPlain(std::string_view text, CAppRegexMatch& match) const noexcept;
    AppRegexSearch_e MatchWholePlain(std::string_view text, CAppRegexMatch& match) const noexcept;

    // Replaces the first or all matches in `text`, the replacement in Perl's format syntax; returns
    // whether the text has changed. Throws what the matcher throws: std::runtime_error when it
    // gives up, std::invalid_argument when the expression isn't valid.
    bool Replace(std::string& text, const std::string& replacement, bool replaceAll) const;

    // Tells why an expression doesn't compile: false for a good one, else true with a reason in
    // words and the byte offset in the expression where it breaks.
    static bool Diagnose(std::string_view expression, std::string& reason, std::size_t& offset);

private:
    template <class Run>
    AppRegexSearch_e Guard(Run run) const noexcept;
    bool RunPlain(std::string_view text, CAppRegexMatch& match, bool isWhole) const;
    bool RunTrusted(std::string_view text, CAppRegexMatch& match) const;

    struct Impl;
    std::unique_ptr<Impl> m_impl;
    std::string m_text;
    bool m_valid = false;
};
