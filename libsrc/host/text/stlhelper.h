#pragma once

// StlHelper: the string tools that rules, identify conditions and documents share. Texts are bytes:
// any byte may come, NUL included; only the letters of ASCII have a case; nothing depends on the
// locale.
//
//     std::string name = " eth0 ";
//     StlHelper::trim(name, " \t");                          // name is "eth0"
//     StlHelper::findIgnoreCase("Mask: x", "mask", 0);       // 0
//     StlHelper::splitString("a;;b", ";", pieces);           // "a", "", "b"
//     StlHelper::RegexEscape("Gi0/1 (up)");                  // "Gi0/1 \(up\)"
//
// All operations are static and keep nothing, so they may run on any thread.

#include "host/runtime/tzexport.h"

#include <cstddef>
#include <list>
#include <string>
#include <string_view>
#include <vector>

class TZPARSER_API StlHelper {
public:
    StlHelper() = delete;

    // Remove every leading and/or trailing byte that is one of `chars`, in place, and return `text`
    // itself. No `chars`: nothing is removed.
    static std::string& trim(std::string& text, std::string_view chars);
    static std::string& trimLeft(std::string& text, std::string_view chars);
    static std::string& trimRight(std::string& text, std::string_view chars);

    // A copy without the surrounding blanks; blanks are space, tab, carriage return and line feed.
    static std::string trump(const std::string& text);

    // A copy with A-Z in lower case.
    static std::string toLower(const std::string& text);

    static bool equalIgnoreCase(std::string_view a, std::string_view b);

    // The position of the first `needle` at or after byte `start`, ignoring case; std::string::npos
    // if there is none or if `start` lies behind the text. An empty needle is found at `start`.
    static size_t findIgnoreCase(std::string_view text, std::string_view needle, size_t start = 0);

    // Replaces every `from`, left to right; what was put in is not looked at again. True if the
    // text has changed; an empty `from`, or one equal to `to`, changes nothing.
    static bool replaceString(std::string& text, std::string_view from, std::string_view to);

    // Splits at the first `delimiter`: `head` is what stands before it, `rest` all that stands
    // behind it. False if the delimiter is empty or absent; `head` and `rest` then keep what they
    // held. `head` or `rest` may be the string that `text` views.
    static bool splitString(std::string_view text, std::string_view delimiter, std::string& head,
                            std::string& rest);

    // Splits at every `delimiter`, keeping empty pieces: n delimiters give n + 1 pieces, so an
    // empty text gives one empty piece. The list is replaced. With an empty delimiter the text is
    // the one piece.
    static void splitString(std::string_view text, std::string_view delimiter,
                            std::list<std::string>& pieces);
    static void splitString(std::string_view text, std::string_view delimiter,
                            std::vector<std::string>& pieces);

    // A copy with a backslash before each of \ ^ $ . | ? * + ( ) [ ] { } and before nothing else:
    // letters, digits, "#" and white space have to come through unchanged for the statement
    // compiler.
    static std::string RegexEscape(std::string_view text);
    // Whether it puts a backslash before the character.
    static bool IsRegexMetacharacter(char c);
};
