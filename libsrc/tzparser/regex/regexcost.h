#pragma once

#include "tzparser/regex/regextree.h"

// White space of this length is what columns and indents of a line ordinarily have. Statements have
// white space between any two words, so it counts much.
inline constexpr std::size_t RegexFewBlanks = 7;

// Up to which length of text the plain matcher can't give up with an expression.
struct RegexTrust {
    // 0: at no length that can be told. Longer texts may still be searched without giving up.
    std::size_t length = 0;
    // The same for texts without a run of more than RegexFewBlanks blanks.
    std::size_t lengthWithFewBlanks = 0;
    // The lengths hold only for texts without "\n", "\r" and "\f".
    bool isForOneLine = false;
};

// The plain matcher counts the states that it visits in a search and throws when they are more than
// a limit made from the lengths of expression and text. This gives a length up to which the count
// stays under the limit whatever the text holds.
RegexTrust TrustOfRegex(const RegexTree& tree);
