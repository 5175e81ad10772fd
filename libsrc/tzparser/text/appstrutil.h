#pragma once

#include "host/runtime/tzexport.h"

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <boost/regex_fwd.hpp>

/// Splitting, joining, replacing and classifying of byte strings, as the rules need it.
///
///     AppStrUtil::StrSplit("a,,b", ",", true);                            // "a", "b"
///     AppStrUtil::StrReplaceUseRegex(line, "\\s+", " ", false, true);
///     AppStrUtil::StrCheckType("10.0.0.1/24");                            // "ip"
///
/// Letter case means ASCII letter case; no result depends on the process's locale. The functions
/// have no state and may be called from any thread. None reports an error; what can throw says so.
namespace AppStrUtil {

/// Cuts `text` at every character of the set `delimiters`. With `compress` a run of delimiters
/// counts as one. A delimiter at an end of the text gives an empty token there, compressed or not.
/// An empty text gives no token. Replaces `out`; returns its size.
TZPARSER_API int StrSplit(std::vector<std::string>& out, const std::string& text,
                          const std::string& delimiters, bool compress);
TZPARSER_API std::vector<std::string> StrSplit(const std::string& text,
                                               const std::string& delimiters, bool compress);
/// The distinct tokens of `StrSplit`.
TZPARSER_API std::set<std::string> StrSplitToSet(const std::string& text,
                                                 const std::string& delimiters, bool compress);

/// The text without white space of the classic locale at its ends, as a view into it.
TZPARSER_API std::string_view StrTrimmed(std::string_view text);

/// The parts with the separator between them, none at the ends.
TZPARSER_API std::string StrJoin(const std::vector<std::string>& parts,
                                 const std::string& separator);

/// Replaces the first occurrence of `search`, or all of them, in place. An empty `search` or `text`
/// changes nothing. Replacements aren't searched again.
TZPARSER_API void StrReplace(std::string& text, const std::string& search,
                             const std::string& replacement, bool ignoreCase, bool replaceAll);

/// Replaces the first match of a Perl expression, or all of them, in place. `replacement` is in the
/// Perl format syntax ("$1", "\n"). Throws the regex library's exception when the pattern doesn't
/// compile or a search becomes too complex; the text is then unchanged.
TZPARSER_API void StrReplaceUseRegex(std::string& text, const std::string& pattern,
                                     const std::string& replacement, bool ignoreCase,
                                     bool replaceAll);
/// The same with an expression that the caller compiled once, with `BuildRegex`. Returns whether
/// the text is now another one.
TZPARSER_API bool StrReplaceUseRegex(std::string& text, const boost::regex& expression,
                                     const std::string& replacement, bool replaceAll);

/// The text with a backslash before each of \ . + * ^ [ ] { } ?, and on request before $ and before
/// parentheses. The bar stays an alternation.
TZPARSER_API std::string StrTransRegex(const std::string& text, bool escapeDollar,
                                       bool escapeParentheses);

/// Whether the expression, case-insensitive, matches the whole text or is found in it. The pattern
/// ends at its first NUL; the text may hold any bytes. A pattern that doesn't compile and a search
/// that fails give false and a note on the diagnostic output.
TZPARSER_API bool StrIsMatch(const std::string& text, const std::string& pattern, bool wholeMatch);

/// The kind of a value's text: "ip", "mac", "percent", "int", "double", "ipv6" or else "string".
TZPARSER_API std::string StrCheckType(const std::string& text);

/// Removes the given characters from both ends of each part, in place.
TZPARSER_API void TzStrTrim(std::vector<std::string>& parts, const std::string& characters);

}  // namespace AppStrUtil
