#include "host/json/jsontext.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>

namespace hxJson {

namespace {

struct ShortEscape {
    char byte;
    char letter;
};
constexpr ShortEscape ShortEscapes[] = {{'"', '"'},  {'\\', '\\'}, {'\b', 'b'}, {'\f', 'f'},
                                        {'\n', 'n'}, {'\r', 'r'},  {'\t', 't'}};

// What the bytes that start a UTF-8 sequence of more than one byte ask of the second one. The
// narrower ranges keep out overlong forms, surrogates and what lies above U+10FFFF.
struct Utf8Lead {
    unsigned char first, last;
    size_t length;
    unsigned char secondLow, secondHigh;
};
constexpr Utf8Lead Utf8Leads[] = {
    {0xC2, 0xDF, 2, 0x80, 0xBF}, {0xE0, 0xE0, 3, 0xA0, 0xBF}, {0xE1, 0xEC, 3, 0x80, 0xBF},
    {0xED, 0xED, 3, 0x80, 0x9F}, {0xEE, 0xEF, 3, 0x80, 0xBF}, {0xF0, 0xF0, 4, 0x90, 0xBF},
    {0xF1, 0xF3, 4, 0x80, 0xBF}, {0xF4, 0xF4, 4, 0x80, 0x8F},
};

unsigned char ByteAt(std::string_view text, size_t at) {
    return static_cast<unsigned char>(text[at]);
}

bool IsPlain(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0x20 && byte < 0x80 && c != '"' && c != '\\';
}

// The length of the valid UTF-8 sequence that starts with the high byte at `at`; 0 if there is
// none.
size_t Utf8Length(std::string_view text, size_t at) {
    const unsigned char byte = ByteAt(text, at);
    for (const Utf8Lead& lead : Utf8Leads) {
        if (byte < lead.first || byte > lead.last) continue;
        if (text.size() - at < lead.length) return 0;
        const unsigned char second = ByteAt(text, at + 1);
        if (second < lead.secondLow || second > lead.secondHigh) return 0;
        for (size_t i = 2; i < lead.length; ++i) {
            if ((ByteAt(text, at + i) & 0xC0u) != 0x80u) return 0;
        }
        return lead.length;
    }
    return 0;
}

void AppendEscape(std::string& out, char c) {
    for (const ShortEscape& escape : ShortEscapes) {
        if (escape.byte != c) continue;
        out.push_back('\\');
        out.push_back(escape.letter);
        return;
    }
    constexpr char Digits[] = "0123456789abcdef";
    const auto byte = static_cast<unsigned char>(c);
    out.append("\\u00");
    out.push_back(Digits[byte >> 4]);
    out.push_back(Digits[byte & 0xFu]);
}

}  // namespace

void AppendQuotedJson(std::string& out, std::string_view text) {
    out.push_back('"');
    size_t at = 0;
    while (at < text.size()) {
        size_t end = at;
        while (end < text.size() && IsPlain(text[end])) ++end;
        const size_t sequence = end < text.size() ? Utf8Length(text, end) : 0;
        out.append(text.substr(at, end + sequence - at));
        at = end + sequence;
        if (sequence == 0 && at < text.size()) AppendEscape(out, text[at++]);
    }
    out.push_back('"');
}

std::string QuoteJson(std::string_view text) {
    std::string out;
    out.reserve(text.size() + 2);
    AppendQuotedJson(out, text);
    return out;
}

// Plain digits where people write them, an exponent for the very small and the very large.
std::string RealJson(double number) {
    const double size = std::fabs(number);
    const bool isFixed = size == 0.0 || (size >= 1e-5 && size < 1e17);
    const auto form = isFixed ? std::chars_format::fixed : std::chars_format::scientific;
    std::array<char, 64> buffer;
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, form);
    std::string text(buffer.data(), result.ptr);
    if (isFixed && text.find('.') == std::string::npos) text.append(".0");
    return text;
}

}  // namespace hxJson
