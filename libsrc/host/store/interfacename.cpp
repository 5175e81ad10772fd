#include "host/store/interfacename.h"

#include "host/text/asciicase.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace {

enum class Style_e {
    Any,
    // Only in lower case and with a plain number: the way Unix-like systems name interfaces in
    // full.
    Unix,
};

// A word of a name means the kind when the row's word begins with it and it has at least the
// shortest length. The first such row counts. Rows of one family can't be told apart by their short
// words, so names match within it.
struct InterfaceKind {
    std::string_view word;  // lower case
    std::size_t shortest;
    std::string_view full;
    std::string_view family;
    Style_e style = Style_e::Any;
};

constexpr InterfaceKind Kinds[] = {
    {"lo", 2, "lo", "loopback", Style_e::Unix},
    {"eth", 3, "eth", "ethernet", Style_e::Unix},
    {"tun", 3, "tun", "tunnel", Style_e::Unix},
    {"ethernet", 2, "Ethernet", "ethernet"},
    {"fastethernet", 2, "FastEthernet", "fast"},
    {"fe", 2, "FastEthernet", "fast"},
    {"gigabitethernet", 2, "GigabitEthernet", "gigabit"},
    {"gige", 4, "GigabitEthernet", "gigabit"},
    {"ge", 2, "GigabitEthernet", "gigabit"},
    {"twentyfivegige", 2, "TwentyFiveGigE", "tw"},
    {"twentyfivegigabitethernet", 14, "TwentyFiveGigabitEthernet", "tw"},
    {"twenty-fivegige", 7, "Twenty-FiveGigE", "tw"},
    {"wge", 3, "Twenty-FiveGigE", "tw"},
    {"25ge", 4, "25GE", "tw"},
    {"twogigabitethernet", 3, "TwoGigabitEthernet", "tw"},
    {"fivegigabitethernet", 2, "FiveGigabitEthernet", "five"},
    {"tengigabitethernet", 2, "TenGigabitEthernet", "ten"},
    {"tengige", 7, "TenGigE", "ten"},
    {"ten-gigabitethernet", 4, "Ten-GigabitEthernet", "ten"},
    {"xgigabitethernet", 2, "XGigabitEthernet", "ten"},
    {"xge", 3, "XGigabitEthernet", "ten"},
    {"10ge", 4, "10GE", "ten"},
    {"fortygigabitethernet", 2, "FortyGigabitEthernet", "forty"},
    {"fortygige", 9, "FortyGigE", "forty"},
    {"fge", 3, "FortyGigE", "forty"},
    {"40ge", 4, "40GE", "forty"},
    {"fiftygige", 3, "FiftyGigE", "fifty"},
    {"50ge", 4, "50GE", "fifty"},
    {"hundredgige", 2, "HundredGigE", "hundred"},
    {"hundredgigabitethernet", 11, "HundredGigabitEthernet", "hundred"},
    {"hge", 3, "HundredGigE", "hundred"},
    {"100ge", 5, "100GE", "hundred"},
    {"twohundredgige", 4, "TwoHundredGigE", "twohundred"},
    {"200ge", 5, "200GE", "twohundred"},
    {"fourhundredgige", 3, "FourHundredGigE", "fourhundred"},
    {"fh", 2, "FourHundredGigE", "fourhundred"},
    {"400ge", 5, "400GE", "fourhundred"},
    {"appgigabitethernet", 2, "AppGigabitEthernet", "app"},
    {"mgmt", 4, "mgmt", "mgmt"},
    {"mgmteth", 2, "MgmtEth", "mgmteth"},
    {"management", 2, "Management", "management"},
    {"meth", 4, "MEth", "meth"},
    {"m-gigabitethernet", 3, "M-GigabitEthernet", "m-gigabit"},
    {"m-ge", 4, "M-GigabitEthernet", "m-gigabit"},
    {"mge", 3, "M-GigabitEthernet", "m-gigabit"},
    {"port-channel", 2, "Port-channel", "port-channel"},
    {"portchannel", 5, "Port-channel", "port-channel"},
    {"eth-trunk", 4, "Eth-Trunk", "eth-trunk"},
    {"bundle-ether", 2, "Bundle-Ether", "bundle"},
    {"be", 2, "Bundle-Ether", "bundle"},
    {"bridge-aggregation", 7, "Bridge-Aggregation", "bridge-aggregation"},
    {"bagg", 4, "Bridge-Aggregation", "bridge-aggregation"},
    {"route-aggregation", 6, "Route-Aggregation", "route-aggregation"},
    {"ragg", 4, "Route-Aggregation", "route-aggregation"},
    {"loopback", 2, "Loopback", "loopback"},
    {"vlan", 2, "Vlan", "vlan"},
    {"vlanif", 5, "Vlanif", "vlan"},
    {"vlan-interface", 5, "Vlan-interface", "vlan"},
    {"bdi", 3, "BDI", "bdi"},
    {"bvi", 3, "BVI", "bvi"},
    {"serial", 2, "Serial", "serial"},
    {"pos", 3, "POS", "pos"},
    {"atm", 2, "ATM", "atm"},
    {"tunnel", 2, "Tunnel", "tunnel"},
    {"tunnel-te", 8, "tunnel-te", "tunnel-te"},
    {"tunnel-ip", 8, "tunnel-ip", "tunnel-ip"},
    {"null", 2, "Null", "null"},
    {"dialer", 2, "Dialer", "dialer"},
    {"multilink", 2, "Multilink", "multilink"},
    {"virtual-access", 2, "Virtual-Access", "virtual-access"},
    {"virtual-template", 9, "Virtual-Template", "virtual-template"},
    {"vt", 2, "Virtual-Template", "virtual-template"},
    {"cellular", 2, "Cellular", "cellular"},
    {"nve", 2, "nve", "nve"},
};

// A name taken apart; the word is empty when it isn't a word and a number.
struct NameParts {
    std::string_view word;
    std::string_view number;
};

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

bool IsWordChar(char c) {
    return c == '-' || (AsciiIsAlnum(c) && !AsciiIsDigit(c));
}

bool IsNumberChar(char c) {
    return AsciiIsAlnum(c) || c == '/' || c == '.' || c == ':' || c == '-' || c == '_';
}

std::string_view TrimBlanks(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    return text;
}

// The word may begin with digits ("100GE1/0/1").
NameParts Split(std::string_view name) {
    name = TrimBlanks(name);
    const auto letters = std::find_if_not(name.begin(), name.end(), AsciiIsDigit);
    const auto wordEnd = std::find_if_not(letters, name.end(), IsWordChar);
    const auto number = std::find_if_not(wordEnd, name.end(), IsBlank);
    if (wordEnd == letters || number == name.end() || !AsciiIsDigit(*number)) return {};
    if (!std::all_of(number, name.end(), IsNumberChar)) return {};
    const auto wordLength = static_cast<std::size_t>(wordEnd - name.begin());
    const auto numberStart = static_cast<std::size_t>(number - name.begin());
    return {name.substr(0, wordLength), name.substr(numberStart)};
}

bool IsUnixStyle(const NameParts& parts) {
    const auto isPlain = [](char c) { return AsciiIsDigit(c) || c == '.'; };
    return std::all_of(parts.word.begin(), parts.word.end(),
                       [](char c) { return c == AsciiLower(c); }) &&
           std::all_of(parts.number.begin(), parts.number.end(), isPlain);
}

bool Means(const NameParts& parts, const InterfaceKind& kind) {
    const std::size_t length = parts.word.size();
    return length >= kind.shortest &&
           AsciiEqualIgnoreCase(parts.word, kind.word.substr(0, length)) &&
           (kind.style == Style_e::Any || IsUnixStyle(parts));
}

// Null when the table doesn't know the word.
const InterfaceKind* KindOf(const NameParts& parts) {
    const auto kind = std::find_if(std::begin(Kinds), std::end(Kinds),
                                   [&](const InterfaceKind& row) { return Means(parts, row); });
    return kind == std::end(Kinds) ? nullptr : kind;
}

std::string Joined(std::string_view word, std::string_view number) {
    std::string name;
    name.reserve(word.size() + number.size());
    name.append(word);
    name.append(number);
    return name;
}

}  // namespace

std::string ExpandedInterfaceName(std::string_view name) {
    const NameParts parts = Split(name);
    const InterfaceKind* const kind = KindOf(parts);
    if (kind == nullptr) return std::string(name);
    const bool isFull = AsciiEqualIgnoreCase(parts.word, kind->full);
    return Joined(isFull ? parts.word : kind->full, parts.number);
}

std::string CanonicalInterfaceName(std::string_view name) {
    const NameParts parts = Split(name);
    const InterfaceKind* const kind = KindOf(parts);
    std::string canonical =
        kind == nullptr ? std::string(name) : Joined(kind->family, parts.number);
    canonical.erase(std::remove_if(canonical.begin(), canonical.end(), IsBlank), canonical.end());
    ToLowerInPlace(canonical);
    return canonical;
}

bool IsBetterInterfaceName(std::string_view first, std::string_view second,
                           std::string_view asked) {
    if ((first == asked) != (second == asked)) return first == asked;
    const bool firstFolds = AsciiEqualIgnoreCase(first, asked);
    if (firstFolds != AsciiEqualIgnoreCase(second, asked)) return firstFolds;
    return first.size() != second.size() ? first.size() > second.size() : first < second;
}
