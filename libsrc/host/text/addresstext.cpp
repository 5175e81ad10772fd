#include "host/text/addresstext.h"

#include "host/text/asciicase.h"

#include <charconv>
#include <cstdint>
#include <cstring>
#include <system_error>

#include <arpa/inet.h>

namespace {

constexpr std::string_view Blanks = " \t";

// The notations of a MAC address; x stands for a hex digit.
constexpr std::string_view MacForms[] = {
    "xx:xx:xx:xx:xx:xx", "xx-xx-xx-xx-xx-xx", "xx.xx.xx.xx.xx.xx", "xxxx.xxxx.xxxx",
    "xxxx-xxxx-xxxx",    "xxxx:xxxx:xxxx",    "xxxxxx-xxxxxx",     "xxxxxx:xxxxxx",
    "xxxxxx.xxxxxx",     "xxxxxxxxxxxx",
};

bool FitsForm(std::string_view text, std::string_view form) {
    if (text.size() != form.size()) return false;
    for (size_t i = 0; i < form.size(); ++i) {
        const bool fits = form[i] == 'x' ? AsciiIsHexDigit(text[i]) : text[i] == form[i];
        if (!fits) return false;
    }
    return true;
}

// inet_pton wants a text ended by a NUL; no address is longer than the buffer.
bool ReadsAs(int family, std::string_view text, void* address) {
    char buffer[INET6_ADDRSTRLEN];
    if (text.size() >= sizeof buffer || text.find('\0') != std::string_view::npos) return false;
    std::memcpy(buffer, text.data(), text.size());
    buffer[text.size()] = '\0';
    return inet_pton(family, buffer, address) == 1;
}

bool IsPlainIpv4(std::string_view text) {
    in_addr address;
    return ReadsAs(AF_INET, text, &address);
}

bool IsPlainIpv6(std::string_view text) {
    in6_addr address;
    return ReadsAs(AF_INET6, text, &address);
}

bool IsMask(std::string_view text) {
    in_addr address;
    if (!ReadsAs(AF_INET, text, &address)) return false;
    const std::uint32_t zeros = ~ntohl(address.s_addr);
    return (zeros & (zeros + 1)) == 0;
}

bool IsPrefixLength(std::string_view text, unsigned longest) {
    unsigned length = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), length);
    return error == std::errc() && end == text.data() + text.size() && text.size() <= 3 &&
           length <= longest;
}

bool IsWordChar(char c) {
    return AsciiIsAlnum(c) || c == '_' || c == '.';
}

bool IsWordOrColon(char c) {
    return IsWordChar(c) || c == ':';
}

std::string_view TrimDots(std::string_view text) {
    while (!text.empty() && text.front() == '.') text.remove_prefix(1);
    while (!text.empty() && text.back() == '.') text.remove_suffix(1);
    return text;
}

// Drops leading groups that are labels ("Addr:") and, at the end, the colon of a sentence.
std::string_view TrimIpv6(std::string_view text) {
    text = TrimDots(text);
    for (size_t colon = text.find(':'); colon != std::string_view::npos; colon = text.find(':')) {
        const std::string_view group = text.substr(0, colon);
        size_t hex = 0;
        while (hex < group.size() && AsciiIsHexDigit(group[hex])) ++hex;
        if (hex == group.size()) break;
        text.remove_prefix(colon + 1);
    }
    const size_t size = text.size();
    if (size >= 2 && text[size - 1] == ':' && text[size - 2] != ':') text.remove_suffix(1);
    return text;
}

// Two dots and more part the word: a range, or the leader dots of a form.
std::string_view TakeIpv4(std::string_view word) {
    while (true) {
        word = TrimDots(word);
        const size_t gap = word.find("..");
        const std::string_view piece = word.substr(0, gap);
        if (IsPlainIpv4(piece)) return piece;
        if (gap == std::string_view::npos) return std::string_view();
        word.remove_prefix(gap);
    }
}

std::string_view TakeIpv6(std::string_view word) {
    word = TrimIpv6(word);
    return word != "::" && IsPlainIpv6(word) ? word : std::string_view();
}

// Cuts the text into the longest runs of the characters that `belongs` takes and gives the first
// run out of which `take` takes something.
template <typename Belongs, typename Take>
std::string_view FirstOfRuns(std::string_view text, Belongs belongs, Take take) {
    size_t at = 0;
    while (at < text.size()) {
        size_t end = at;
        while (end < text.size() && belongs(text[end])) ++end;
        const std::string_view taken =
            end == at ? std::string_view() : take(text.substr(at, end - at));
        if (!taken.empty()) return taken;
        at = end + 1;
    }
    return std::string_view();
}

}  // namespace

std::string StrHasIp2(std::string_view text) {
    std::string_view found = FirstOfRuns(text, IsWordChar, TakeIpv4);
    if (found.empty()) found = FirstOfRuns(text, IsWordOrColon, TakeIpv6);
    return std::string(found);
}

bool StrIsMac(std::string_view text) {
    for (const std::string_view form : MacForms) {
        if (FitsForm(text, form)) return true;
    }
    return false;
}

bool StrIsIpv4(std::string_view text) {
    const size_t end = text.find_first_of("/ \t");
    if (!IsPlainIpv4(text.substr(0, end))) return false;
    if (end == std::string_view::npos) return true;
    if (text[end] == '/') return IsPrefixLength(text.substr(end + 1), 32);
    const size_t mask = text.find_first_not_of(Blanks, end);
    return mask != std::string_view::npos && IsMask(text.substr(mask));
}

bool StrIsIpv6(std::string_view text) {
    const size_t end = text.find('/');
    if (!IsPlainIpv6(text.substr(0, end))) return false;
    return end == std::string_view::npos || IsPrefixLength(text.substr(end + 1), 128);
}
