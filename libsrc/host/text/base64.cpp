#include "host/text/base64.h"

namespace {

constexpr char Alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// Writes the four characters of up to three bytes; "=" stands for what is missing.
void AppendGroup(std::string& out, const unsigned char* bytes, size_t count) {
    unsigned bits = 0;
    for (size_t i = 0; i < 3; ++i) bits = bits << 8 | (i < count ? bytes[i] : 0u);
    for (size_t i = 0; i < 4; ++i) {
        const unsigned sextet = bits >> (18 - 6 * i) & 0x3fu;
        out.push_back(i <= count ? Alphabet[sextet] : '=');
    }
}

}  // namespace

std::string base64_encode(const unsigned char* bytes, size_t length) {
    std::string out;
    out.reserve(length / 3 * 4 + 4);
    for (size_t at = 0; at < length; at += 3) {
        AppendGroup(out, bytes + at, length - at < 3 ? length - at : 3);
    }
    return out;
}
