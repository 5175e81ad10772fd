#include "host/xml/utf8repair.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

namespace {

// How characters of several bytes begin: the range of the first byte, how many bytes follow, and
// the range of the second byte, which shuts out overlong forms, surrogates and what lies beyond the
// last character.
struct Utf8Lead {
    unsigned char m_first;
    unsigned char m_last;
    std::size_t m_following;
    unsigned char m_secondFirst;
    unsigned char m_secondLast;
};

constexpr Utf8Lead Utf8Leads[] = {
    {0xC2, 0xDF, 1, 0x80, 0xBF}, {0xE0, 0xE0, 2, 0xA0, 0xBF}, {0xE1, 0xEC, 2, 0x80, 0xBF},
    {0xED, 0xED, 2, 0x80, 0x9F}, {0xEE, 0xEF, 2, 0x80, 0xBF}, {0xF0, 0xF0, 3, 0x90, 0xBF},
    {0xF1, 0xF3, 3, 0x80, 0xBF}, {0xF4, 0xF4, 3, 0x80, 0x8F},
};

unsigned char ByteAt(const std::string& text, std::size_t pos) {
    return static_cast<unsigned char>(text[pos]);
}

bool Follows(const std::string& text, std::size_t pos, const Utf8Lead& lead) {
    if (text.size() - pos <= lead.m_following) return false;
    const unsigned char second = ByteAt(text, pos + 1);
    if (second < lead.m_secondFirst || second > lead.m_secondLast) return false;
    for (std::size_t i = 2; i <= lead.m_following; ++i)
        if ((ByteAt(text, pos + i) & 0xC0) != 0x80) return false;
    return true;
}

// The length of the character at `pos`, 0 for a byte that begins none.
std::size_t CharacterLength(const std::string& text, std::size_t pos) {
    const unsigned char byte = ByteAt(text, pos);
    if (byte < 0x80) return 1;
    for (const Utf8Lead& lead : Utf8Leads)
        if (byte >= lead.m_first && byte <= lead.m_last)
            return Follows(text, pos, lead) ? lead.m_following + 1 : 0;
    return 0;
}

std::size_t FindBroken(const std::string& text, std::size_t pos) {
    while (pos < text.size()) {
        const std::size_t length = CharacterLength(text, pos);
        if (length == 0) return pos;
        pos += length;
    }
    return text.size();
}

}  // namespace

std::string Utf8Repair(std::string text) {
    std::size_t broken = FindBroken(text, 0);
    if (broken == text.size()) return text;
    std::string result;
    std::size_t done = 0;
    for (; broken < text.size(); broken = FindBroken(text, done)) {
        result.append(text, done, broken - done);
        const unsigned char byte = ByteAt(text, broken);
        result += static_cast<char>(0xC0 | (byte >> 6));
        result += static_cast<char>(0x80 | (byte & 0x3F));
        done = broken + 1;
    }
    return result.append(text, done, std::string::npos);
}
