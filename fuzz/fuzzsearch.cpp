// Fast searching against plain searching: an expression and texts for it, made from the input by a
// grammar, or the input itself cut at its first line feed.
#include "tzparser/pattern/appregex.h"

#include "support/regexcases.h"

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>

namespace {

void Check(const std::string& expression, unsigned flags, const std::string& text) {
    const auto difference = CompareSearches(expression, flags, text);
    if (difference.empty()) return;
    std::cerr << "expression: " << expression << "\ntext: " << text << "\n" << difference << "\n";
    std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const unsigned flags = data[0] % 4 == 0 ? 0 : CAppRegex::RuleFlags;
    if (data[0] % 8 >= 6) {
        const std::string input(reinterpret_cast<const char*>(data + 1), size - 1);
        const auto cut = input.find('\n');
        Check(input.substr(0, cut), flags,
              cut == std::string::npos ? std::string() : input.substr(cut + 1));
        return 0;
    }
    std::size_t at = 1;
    CRegexCases cases([&](unsigned below) {
        const unsigned value = at < size ? data[at++] : 0;
        return value % below;
    });
    const auto expression = cases.Expression();
    for (int i = 0; i < 3; ++i) Check(expression, flags, cases.Text());
    return 0;
}
