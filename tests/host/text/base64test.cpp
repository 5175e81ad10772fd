#include "host/text/base64.h"

#include <string>

#include <gtest/gtest.h>

namespace {

TEST(Base64, KnownTexts) {
    const struct {
        std::string bytes;
        const char* wanted;
    } rows[] = {
        {"", ""},
        {"f", "Zg=="},
        {"fo", "Zm8="},
        {"foo", "Zm9v"},
        {"foob", "Zm9vYg=="},
        {"fooba", "Zm9vYmE="},
        {"foobar", "Zm9vYmFy"},
        {std::string(3, '\0'), "AAAA"},
        {"\xFF\xFE\xFD", "//79"},
        {"\xFB\xF0", "+/A="},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.wanted);
        const auto* bytes = reinterpret_cast<const unsigned char*>(row.bytes.data());
        EXPECT_EQ(base64_encode(bytes, row.bytes.size()), row.wanted);
    }
    EXPECT_EQ(base64_encode(nullptr, 0), "");
}

}  // namespace
