// A table's settings and a text, through the rule and through the plain form of its steps: both
// find the same cells, and each cell lies inside its line with the text that stands there, unless
// it was carried over from a row before.
#include "support/tablecompare.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <iostream>

namespace {

// Token counts below one have no plain form.
bool HasPlainForm(const CPlainTable& plain) {
    if (plain.align != 3) return true;
    return plain.alignRange.find_first_not_of("123456789;") == std::string::npos &&
           plain.alignRange.find(";;") == std::string::npos && !plain.alignRange.empty() &&
           plain.alignRange.front() != ';' && plain.alignRange.back() != ';' &&
           plain.alignRange.size() < 20;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), std::min<std::size_t>(size, 4096));
    CPlainTable plain;
    std::string text;
    if (!ReadPlainTable(bytes, plain, text) || !HasPlainForm(plain)) return 0;
    try {
        const auto difference = TableDifference(plain, text);
        if (difference.empty()) return 0;
        std::cerr << difference;
    } catch (const std::exception&) {
        return 0;
    }
    std::abort();
}
