#pragma once

#include "host/runtime/tzexport.h"

#include <string_view>

#include <boost/regex_fwd.hpp>

/// The flags of the rules' expressions: Perl syntax, case-insensitive, no exception on a bad
/// expression.
inline constexpr unsigned kRuleRegexFlags = 0x140000;

/// Compiles an expression with the classic locale, whatever the process's global locale is: what
/// `\w`,
/// `\d`, a range or the letter case mean never depends on the machine.
///
///     boost::regex expression = BuildRegex("eth\\d+", kRuleRegexFlags);
///     if (expression.status() == 0) ...
///
/// The flags are those of `boost::basic_regex`; 0 is Perl syntax, case-sensitive. A pattern may
/// hold any bytes, NUL included. With the no-exception flag a bad pattern gives an expression whose
/// `status()` isn't 0 and which no search may be run with; without it the library's
/// `boost::regex_error` comes out. A possessive repeat with a comment and more behind it counts as
/// bad, since the library never ends compiling it. May be called from any thread; the result may be
/// searched with by many threads.
TZPARSER_API boost::regex BuildRegex(std::string_view pattern, unsigned flags);
