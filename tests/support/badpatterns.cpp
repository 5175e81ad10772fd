#include "support/badpatterns.h"

const std::vector<BadPattern>& BadPatterns() {
    static const std::vector<BadPattern> rows = {
        {"^(?:(?:\\S+\\s*)+)+(_)$", "ab ", "!", false},
        {"^(a+)+$", "a", "!", false},
        {"^(a|a)*$", "a", "!", false},
        {"^(a|aa)+$", "a", "!", false},
        {"(a*)*b", "a", "", false},
        {"^(\\w+\\s?)*$", "abc ", "!", false},
        {"(x+x+)+y", "x", "", false},
        {"^(([a-z])+.)+[A-Z]([a-z])+$", "a", "1", false},
        {"(.*)*x", "ab", "", false},
        {"(.*a){12}b", "a", "", false},
        {".*.*.*.*=.*", "ab", "", false},
        {"(?:.*,){11}P", "1,", "", false},
        {"^(.*?,){11}P", "1,", "", false},
        {"^([a-z0-9])(([\\-.]|[_]+)?([a-z0-9]+))*(@){1}[a-z0-9]+[.]{1}(([a-z]{2,3})|([a-z]{2,3}[.])"
         ")$",
         "a", "!", false},
        {"\\s+$", " ", "x", false},
        {"(\\s+)\\1x", " ", "", false},
        {"(a?){30}a{30}b", "a", "", false},
        {"(?:a|b|ab)*c", "ab", "", false},
        {"(\\d+)+(\\w+)+#", "1", "", false},
        {"^(?:[^,]*,?)*;$", "a,", "", false},
        {"(?=(a+))a*b\\1", "a", "", false},
        {"((a*)+)+c", "a", "", false},
        {"(\\w+\\s)+\\w+:", "w ", "", false},
        {"^(?:(?:25|2|5)+)+$", "25", "x", false},
        {"(?:\\S+\\s+)*\\S+\\s+end", "w ", "", false},
        {"([ab]*)*([bc]*)*d", "abc", "", false},
        {"(.+)+\\1z", "ab", "", false},
        {"(a|b)*a(a|b){14}c", "ab", "", false},
        {"(.*a){12}", "a", "", true},
        {"(a?){30}a{30}", "a", "", true},
        {"^(a+)+", "a", "", true},
        {"(a|aa)+$", "a", "", true},
        {"(.*)(.*)(.*)(.*)(.*)[0-9]", "ab", "1", true},
        {"(?:a+)+b", "a", "b", true},
        {"^(?:\\S+\\s*)+z$", "ab ", "z", true},
        {"(?:.?){20}z", "a", "z", true},
    };
    return rows;
}

std::string BadText(const BadPattern& pattern, std::size_t size) {
    std::string text;
    while (text.size() < size) text += pattern.unit;
    return text + pattern.tail;
}
