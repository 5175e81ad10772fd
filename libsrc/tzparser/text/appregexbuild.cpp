// The matcher's compiler has one way of never ending, which is looked for before it is let at an
// expression: behind a possessive repeat it passes over comments, and goes on looking for more of
// them for ever when something other than a group, a repeat or the end comes behind.
#include "tzparser/text/appregexbuild.h"

#include <cstddef>
#include <locale>

#include <boost/regex.hpp>

namespace {

// An expression takes its character classes from the locale it was given before the pattern. Every
// expression starts as a copy of this one, which costs less than asking the library for a locale's
// tables each time, and never looks at the global locale.
const boost::regex& ClassicPrototype() {
    static const boost::regex prototype = [] {
        boost::regex expression;
        expression.imbue(std::locale::classic());
        return expression;
    }();
    return prototype;
}

constexpr std::string_view Comment = "(?#";
constexpr std::string_view WhiteSpace = " \t\n\v\f\r";

// Whether white space may be no part of the expression.
bool MaySkipWhiteSpace(std::string_view pattern) {
    for (auto at = pattern.find("(?"); at != std::string_view::npos; at = pattern.find("(?", at)) {
        at += 2;
        const auto behind = pattern.find_first_not_of("ims-", at);
        if (behind != std::string_view::npos && pattern[behind] == 'x') return true;
    }
    return false;
}

bool IsEscaped(std::string_view pattern, std::size_t at) {
    std::size_t begin = at;
    while (begin > 0 && pattern[begin - 1] == '\\') --begin;
    return (at - begin) % 2 != 0;
}

// As "*+", "++", "?+" and "{2,3}+".
bool EndsInPossessiveRepeat(std::string_view pattern) {
    if (pattern.size() < 3 || pattern.back() != '+') return false;
    auto repeat = pattern.size() - 2;
    if (pattern[repeat] == '}') {
        repeat = pattern.find_last_not_of("0123456789, ", repeat - 1);
        return repeat != std::string_view::npos && pattern[repeat] == '{' &&
               !IsEscaped(pattern, repeat);
    }
    return std::string_view("*+?").find(pattern[repeat]) != std::string_view::npos &&
           !IsEscaped(pattern, repeat);
}

bool NeverEndsCompiling(std::string_view pattern) {
    auto at = pattern.find(Comment);
    if (at == std::string_view::npos) return false;
    const auto skipped = MaySkipWhiteSpace(pattern) ? WhiteSpace : std::string_view();
    for (; at != std::string_view::npos; at = pattern.find(Comment, at)) {
        const auto last = pattern.substr(0, at).find_last_not_of(skipped);
        const bool isBehindRepeat = EndsInPossessiveRepeat(pattern.substr(0, last + 1));
        while (pattern.substr(at, Comment.size()) == Comment) {
            const auto close = pattern.find(')', at);
            if (close == std::string_view::npos) return false;
            at = pattern.find_first_not_of(skipped, close + 1);
            if (at == std::string_view::npos) return false;
        }
        if (isBehindRepeat && std::string_view("(*+?{").find(pattern[at]) == std::string_view::npos)
            return true;
    }
    return false;
}

}  // namespace

boost::regex BuildRegex(std::string_view pattern, unsigned flags) {
    if (NeverEndsCompiling(pattern)) {
        if ((flags & boost::regex::no_except) == 0)
            throw boost::regex_error("A comment can't stand behind a possessive repeat.",
                                     boost::regex_constants::error_badrepeat, 0);
        pattern = "*";
    }
    boost::regex expression(ClassicPrototype());
    expression.assign(pattern.data(), pattern.data() + pattern.size(), flags);
    return expression;
}
