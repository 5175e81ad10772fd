// The numbers of records against the conversions whose rules they follow.
#include "tzparser/engine/parserhelpernumber.h"

#include <cstring>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

std::string Integer(const std::string& text) {
    std::int64_t number = 0;
    return RecordInteger(text, number) ? std::to_string(number) : "none";
}

std::string StandardInteger(const std::string& text) {
    try {
        return std::to_string(std::stoll(text));
    } catch (const std::logic_error&) {
        return "none";
    }
}

// The bits, since no other form tells all reals apart; all NaNs are one.
std::string Bits(double number) {
    if (number != number) return "nan";
    std::uint64_t bits = 0;
    std::memcpy(&bits, &number, sizeof bits);
    return std::to_string(bits);
}

std::string Real(const std::string& text) {
    double number = 0;
    return RecordReal(text, number) ? Bits(number) : "none";
}

std::string StandardReal(const std::string& text) {
    try {
        return Bits(std::stod(text));
    } catch (const std::logic_error&) {
        return "none";
    }
}

TEST(ParserHelperNumber, ConvertsAsTheStandardDoes) {
    const std::vector<std::string> texts = {
        "",
        " ",
        "-",
        "+",
        "+-1",
        "-+1",
        "--1",
        "- 1",
        "1",
        "+1",
        "-0",
        " \t\n\v\f\r12",
        "\xA0"
        "12",
        "12a",
        "a12",
        "0x1f",
        "-0X1F",
        "0x",
        "0xg",
        "0x.8",
        "0x1p-3",
        "0x1p99999",
        "010",
        "9223372036854775807",
        "9223372036854775808",
        "-9223372036854775808",
        "-9223372036854775809",
        "99999999999999999999999",
        ".",
        "-.",
        ".5",
        "5.",
        "-.5e1",
        "1e",
        "1e+",
        "1e5",
        "1E-5x",
        "e5",
        "1.2.3",
        "1,5",
        "inf",
        "-INF",
        "+infinity",
        "infinit",
        "in",
        "nan",
        "-nan",
        "NAN(123)",
        "nan(",
        "1e308",
        "1.8e308",
        "-1e999",
        "1e99999999999999999999",
        "2.2250738585072014e-308",
        "2.2250738585072011e-308",
        "4.9e-324",
        "1e-323",
        "2e-324",
        "1e-400",
        "0e-400",
        "-0.0",
        "0.1",
        "123456789012345678901234567890",
        "0x0.8p-1022",
        "0.3000000000000000166533453693773481063544750213623046875",
        std::string("1\0"
                    "2",
                    3),
        std::string("\0"
                    "1",
                    2)};
    for (const auto& text : texts) {
        EXPECT_EQ(Integer(text), StandardInteger(text)) << text;
        EXPECT_EQ(Real(text), StandardReal(text)) << text;
    }
}

TEST(ParserHelperNumber, ConvertsAnyTextAsTheStandardDoes) {
    std::mt19937 random(11);
    const std::string bytes = "0123456789019.+-eExXpPinfa (_)\t";
    for (int round = 0; round < 200000; ++round) {
        std::string text(random() % 12, ' ');
        for (char& c : text) c = bytes[random() % bytes.size()];
        ASSERT_EQ(Integer(text), StandardInteger(text)) << text;
        ASSERT_EQ(Real(text), StandardReal(text)) << text;
    }
}

}  // namespace
