#include "tzparser/table/tabletext.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace TableText {

namespace {

Position ToPosition(std::size_t found) {
    return found == std::string_view::npos ? None : static_cast<Position>(found);
}

}  // namespace

Position Find(std::string_view text, std::string_view wanted, Position from) {
    if (from < 0) return None;
    return ToPosition(text.find(wanted, static_cast<std::size_t>(from)));
}

void Cut(std::string_view text, const CharSet& separators, std::vector<std::string_view>& tokens) {
    tokens.clear();
    if (text.empty()) return;
    std::size_t begin = 0;
    for (auto end = FirstOf(text, separators, 0); end != None;) {
        const auto length = static_cast<std::size_t>(end) - begin;
        tokens.push_back(text.substr(begin, length));
        const auto next = FirstNotOf(text, separators, end);
        begin = next == None ? text.size() : static_cast<std::size_t>(next);
        end = FirstOf(text, separators, static_cast<Position>(begin));
    }
    tokens.push_back(text.substr(begin));
}

int LeadingNumber(const std::string& text) {
    const long number = std::strtol(text.c_str(), nullptr, 10);
    return static_cast<int>(
        std::clamp<long>(number, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

}  // namespace TableText
