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

Position FirstOf(std::string_view text, std::string_view set, Position from) {
    if (from < 0) return None;
    return ToPosition(text.find_first_of(set, static_cast<std::size_t>(from)));
}

Position FirstNotOf(std::string_view text, std::string_view set, Position from) {
    if (from < 0) return None;
    return ToPosition(text.find_first_not_of(set, static_cast<std::size_t>(from)));
}

Position LastOf(std::string_view text, std::string_view set, Position from) {
    if (from < 0) return None;
    return ToPosition(text.find_last_of(set, static_cast<std::size_t>(from)));
}

Position EndOfToken(std::string_view text, Position from) {
    const auto end = FirstOf(text, Spaces, from);
    return end == None ? Size(text) : end;
}

bool IsBoundary(std::string_view text, Position at) {
    if (at < 0 || at >= Size(text)) return false;
    return Boundaries.find(text[static_cast<std::size_t>(at)]) != std::string_view::npos;
}

std::string_view Trim(std::string_view text, std::string_view set) {
    const auto begin = text.find_first_not_of(set);
    if (begin == std::string_view::npos) return {};
    return TrimRight(text.substr(begin), set);
}

std::string_view TrimRight(std::string_view text, std::string_view set) {
    const auto last = text.find_last_not_of(set);
    return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

void Cut(std::string_view text, std::string_view separators,
         std::vector<std::string_view>& tokens) {
    tokens.clear();
    if (text.empty()) return;
    std::size_t begin = 0;
    for (auto end = text.find_first_of(separators); end != std::string_view::npos;
         end = text.find_first_of(separators, begin)) {
        tokens.push_back(text.substr(begin, end - begin));
        begin = std::min(text.find_first_not_of(separators, end), text.size());
    }
    tokens.push_back(text.substr(begin));
}

int LeadingNumber(const std::string& text) {
    const long number = std::strtol(text.c_str(), nullptr, 10);
    return static_cast<int>(
        std::clamp<long>(number, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

}  // namespace TableText
