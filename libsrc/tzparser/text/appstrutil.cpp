#include "tzparser/text/appstrutil.h"

#include "host/runtime/diagnostics.h"
#include "host/text/stlhelper.h"
#include "tzparser/text/appcaptures.h"
#include "tzparser/text/appregexbuild.h"

#include <array>
#include <bitset>
#include <exception>
#include <string_view>

#include <boost/exception/exception.hpp>
#include <boost/regex.hpp>

namespace {

constexpr unsigned kCaseSensitiveFlags = kRuleRegexFlags & ~unsigned{boost::regex::icase};
static_assert(kRuleRegexFlags ==
              (unsigned{boost::regex::icase} | unsigned{boost::regex::no_except}));
static_assert(unsigned{boost::regex::perl} == 0);

/// Calls `take` with each token of the text, as views into it. See `AppStrUtil::StrSplit`.
template <class Take>
void ForEachToken(std::string_view text, std::string_view delimiters, bool compress, Take take) {
    if (text.empty()) return;
    std::bitset<256> isDelimiter;
    for (const char c : delimiters) isDelimiter.set(static_cast<unsigned char>(c));
    const auto delimits = [&](std::size_t at) {
        return isDelimiter[static_cast<unsigned char>(text[at])];
    };
    std::size_t tokenStart = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (!delimits(at)) continue;
        take(text.substr(tokenStart, at - tokenStart));
        while (compress && at + 1 < text.size() && delimits(at + 1)) ++at;
        tokenStart = at + 1;
    }
    take(text.substr(tokenStart));
}

/// Runs a matching operation; what it throws becomes a note and false.
template <class Match>
bool GuardedMatch(Match match) {
    // What the regex library throws is both a boost and a standard exception, so this order
    // decides.
    try {
        return match();
    } catch (const boost::exception&) {
        DiagnosticOutput("Catch boost::exception");
    } catch (const std::exception&) {
        DiagnosticOutput("Catch std::exception");
    } catch (...) {
        DiagnosticOutput("Catch any exception");
    }
    return false;
}

struct TypeTest {
    const char* type;
    boost::regex expression;

    bool Fits(const std::string& text) const {
        return GuardedMatch([&] { return boost::regex_match(text, expression); });
    }
};

TypeTest MakeTest(const char* type, std::string_view expression) {
    return TypeTest{type, BuildRegex(expression, kRuleRegexFlags)};
}

}  // namespace

namespace AppStrUtil {

int StrSplit(std::vector<std::string>& out, const std::string& text, const std::string& delimiters,
             bool compress) {
    out = StrSplit(text, delimiters, compress);
    return static_cast<int>(out.size());
}

std::vector<std::string> StrSplit(const std::string& text, const std::string& delimiters,
                                  bool compress) {
    std::vector<std::string> tokens;
    ForEachToken(text, delimiters, compress,
                 [&](std::string_view token) { tokens.emplace_back(token); });
    return tokens;
}

std::set<std::string> StrSplitToSet(const std::string& text, const std::string& delimiters,
                                    bool compress) {
    std::set<std::string> tokens;
    ForEachToken(text, delimiters, compress,
                 [&](std::string_view token) { tokens.emplace(token); });
    return tokens;
}

std::string_view StrTrimmed(std::string_view text) {
    constexpr std::string_view whiteSpace = " \t\n\v\f\r";
    const auto begin = text.find_first_not_of(whiteSpace);
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(whiteSpace) + 1 - begin);
}

std::string StrJoin(const std::vector<std::string>& parts, const std::string& separator) {
    std::string joined;
    for (std::size_t index = 0; index < parts.size(); ++index) {
        if (index > 0) joined += separator;
        joined += parts[index];
    }
    return joined;
}

void StrReplace(std::string& text, const std::string& search, const std::string& replacement,
                bool ignoreCase, bool replaceAll) {
    if (search.empty()) return;
    const auto find = [&](std::size_t from) {
        return ignoreCase ? StlHelper::findIgnoreCase(text, search, from) : text.find(search, from);
    };
    std::string replaced;
    std::size_t done = 0;
    for (std::size_t at = find(0); at != std::string::npos; at = find(done)) {
        replaced.append(text, done, at - done).append(replacement);
        done = at + search.size();
        if (!replaceAll) break;
    }
    if (done == 0) return;
    replaced.append(text, done, std::string::npos);
    text.swap(replaced);
}

void StrReplaceUseRegex(std::string& text, const std::string& pattern,
                        const std::string& replacement, bool ignoreCase, bool replaceAll) {
    const boost::regex expression =
        BuildRegex(pattern, ignoreCase ? kRuleRegexFlags : kCaseSensitiveFlags);
    StrReplaceUseRegex(text, expression, replacement, replaceAll);
}

bool StrReplaceUseRegex(std::string& text, const boost::regex& expression,
                        const std::string& replacement, bool replaceAll) {
    boost::match_flag_type flags = boost::match_default | boost::format_perl;
    if (!replaceAll) flags |= boost::format_first_only;
    std::string replaced = boost::regex_replace(text, expression, replacement, flags);
    const bool changed = replaced != text;
    text.swap(replaced);
    return changed;
}

std::string StrTransRegex(const std::string& text, bool escapeDollar, bool escapeParentheses) {
    std::string escaped = "\\.+*^[]{}?";
    if (escapeDollar) escaped += '$';
    if (escapeParentheses) escaped += "()";
    std::string expression;
    expression.reserve(text.size() + 8);
    for (const char c : text) {
        if (escaped.find(c) != std::string::npos) expression += '\\';
        expression += c;
    }
    return expression;
}

bool StrIsMatch(const std::string& text, const std::string& pattern, bool wholeMatch) {
    return GuardedMatch([&] {
        const boost::regex expression = BuildRegex(pattern.c_str(), kRuleRegexFlags);
        return wholeMatch ? boost::regex_match(text, expression)
                          : boost::regex_search(text, expression);
    });
}

std::string StrCheckType(const std::string& text) {
    static constexpr std::string_view kDouble = R"re((\d+(?:\.\d+)?))re";
    static const TypeTest ipv6 = MakeTest("ipv6", GetAppCapture(AppCapture_IPv6));
    // The row "bool" tests the expression for double a second time, so a bool is never answered and
    // "True" is a string: on purpose.
    static const std::array<TypeTest, 6> tests = {
        MakeTest("ip", GetAppCapture(AppCapture_IP)),
        MakeTest("mac", GetAppCapture(AppCapture_Mac)),
        MakeTest("percent", GetAppCapture(AppCapture_Percent)),
        MakeTest("int", R"re((\d+))re"),
        MakeTest("double", kDouble),
        MakeTest("bool", kDouble)};

    // An address of version 6 is no final answer: a later test that fits overrides it.
    const char* type = ipv6.Fits(text) ? ipv6.type : "string";
    for (const TypeTest& test : tests) {
        if (test.Fits(text)) return test.type;
    }
    return type;
}

void TzStrTrim(std::vector<std::string>& parts, const std::string& characters) {
    for (std::string& part : parts) StlHelper::trim(part, characters);
}

}  // namespace AppStrUtil
