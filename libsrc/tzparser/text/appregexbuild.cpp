#include "tzparser/text/appregexbuild.h"

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

}  // namespace

boost::regex BuildRegex(std::string_view pattern, unsigned flags) {
    boost::regex expression(ClassicPrototype());
    expression.assign(pattern.data(), pattern.data() + pattern.size(), flags);
    return expression;
}
