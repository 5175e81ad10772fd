#include "host/runtime/tznoncryptographicchecksum.h"

#include <set>
#include <string>

#include <gtest/gtest.h>

namespace {

std::string Pattern(std::size_t length) {
    std::string text;
    for (std::size_t i = 0; i < length; ++i) text += static_cast<char>(i * 131 + (i >> 8));
    return text;
}

std::string Checksum(const std::string& text) {
    return CTzNonCryptographicChecksum::GetChecksum(text.data(), text.size());
}

// Known values of XXH3, so that stored digests stay right on every machine and release.
TEST(TzNonCryptographicChecksum, IsTheSameEverywhere) {
    EXPECT_EQ(Checksum(""), "99aa06d3014798d86001c324468d497f");
    EXPECT_EQ(Checksum("abc"), "06b05ab6733a618578af5f94892f3950");
    EXPECT_EQ(CTzNonCryptographicChecksum::GetChecksum(nullptr, 0), Checksum(""));
}

TEST(TzNonCryptographicChecksum, PiecesDontMatter) {
    for (const std::size_t length : {0, 1, 3, 16, 17, 128, 129, 240, 241, 1024, 5000}) {
        SCOPED_TRACE(length);
        const std::string text = Pattern(length);
        for (const std::size_t piece : {1, 7, 256, 5000}) {
            CTzNonCryptographicChecksum checksum;
            checksum.Update(nullptr, 0);
            for (std::size_t at = 0; at < length; at += piece) {
                checksum.Final();
                checksum.Update(text.data() + at, std::min(piece, length - at));
            }
            EXPECT_EQ(checksum.Final(), Checksum(text));
            EXPECT_EQ(checksum.Final(), Checksum(text));
        }
    }
}

TEST(TzNonCryptographicChecksum, TellsTextsApart) {
    std::set<std::string> seen;
    for (std::size_t length = 0; length < 600; ++length) {
        seen.insert(Checksum(std::string(length, '\0')));
        seen.insert(Checksum(Pattern(length) + "x"));
    }
    EXPECT_EQ(seen.size(), 1200U);
}

}  // namespace
