#include "host/text/stlhelper.h"

#include "host/text/asciicase.h"
#include "host/text/charset.h"

namespace {

constexpr std::string_view Blanks = " \t\r\n";
constexpr CharSet RegexMetacharacters("\\^$.|?*+()[]{}");

template <typename Pieces>
void SplitAll(std::string_view text, std::string_view delimiter, Pieces& pieces) {
    Pieces found;
    while (true) {
        const size_t at = delimiter.empty() ? std::string_view::npos : text.find(delimiter);
        found.emplace_back(text.substr(0, at));
        if (at == std::string_view::npos) break;
        text.remove_prefix(at + delimiter.size());
    }
    pieces.swap(found);
}

}  // namespace

std::string& StlHelper::trim(std::string& text, std::string_view chars) {
    return trimLeft(trimRight(text, chars), chars);
}

std::string& StlHelper::trimLeft(std::string& text, std::string_view chars) {
    return text.erase(0, text.find_first_not_of(chars));
}

std::string& StlHelper::trimRight(std::string& text, std::string_view chars) {
    const size_t last = text.find_last_not_of(chars);
    text.resize(last == std::string::npos ? 0 : last + 1);
    return text;
}

std::string StlHelper::trump(const std::string& text) {
    const size_t first = text.find_first_not_of(Blanks);
    if (first == std::string::npos) return std::string();
    return text.substr(first, text.find_last_not_of(Blanks) - first + 1);
}

std::string StlHelper::toLower(const std::string& text) {
    std::string lowered = text;
    ToLowerInPlace(lowered);
    return lowered;
}

bool StlHelper::equalIgnoreCase(std::string_view a, std::string_view b) {
    return AsciiEqualIgnoreCase(a, b);
}

size_t StlHelper::findIgnoreCase(std::string_view text, std::string_view needle, size_t start) {
    if (start > text.size() || needle.size() > text.size() - start) return std::string::npos;
    if (needle.empty()) return start;
    const char head = AsciiLower(needle[0]);
    const size_t last = text.size() - needle.size();
    for (size_t at = start; at <= last; ++at)
        if (AsciiLower(text[at]) == head &&
            AsciiEqualIgnoreCase(text.substr(at, needle.size()), needle))
            return at;
    return std::string::npos;
}

bool StlHelper::replaceString(std::string& text, std::string_view from, std::string_view to) {
    if (from.empty() || from == to) return false;
    size_t at = text.find(from);
    if (at == std::string::npos) return false;
    std::string replaced;
    size_t copied = 0;
    for (; at != std::string::npos; at = text.find(from, copied)) {
        replaced.append(text, copied, at - copied).append(to);
        copied = at + from.size();
    }
    replaced.append(text, copied, std::string::npos);
    text.swap(replaced);
    return true;
}

bool StlHelper::splitString(std::string_view text, std::string_view delimiter, std::string& head,
                            std::string& rest) {
    const size_t at = delimiter.empty() ? std::string_view::npos : text.find(delimiter);
    if (at == std::string_view::npos) return false;
    std::string before(text.substr(0, at));
    std::string behind(text.substr(at + delimiter.size()));
    head.swap(before);
    rest.swap(behind);
    return true;
}

void StlHelper::splitString(std::string_view text, std::string_view delimiter,
                            std::list<std::string>& pieces) {
    SplitAll(text, delimiter, pieces);
}

void StlHelper::splitString(std::string_view text, std::string_view delimiter,
                            std::vector<std::string>& pieces) {
    SplitAll(text, delimiter, pieces);
}

bool StlHelper::IsRegexMetacharacter(char c) {
    return RegexMetacharacters.Has(c);
}

std::string StlHelper::RegexEscape(std::string_view text) {
    std::string escaped;
    escaped.reserve(text.size() + text.size() / 8);
    for (const char c : text) {
        if (IsRegexMetacharacter(c)) escaped.push_back('\\');
        escaped.push_back(c);
    }
    return escaped;
}
