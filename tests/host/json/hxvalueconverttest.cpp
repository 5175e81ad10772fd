#include "host/json/hxvalue.h"

#include <cmath>
#include <limits>
#include <thread>

#include <gtest/gtest.h>

namespace {

using hxJson::Value;
using Doubles = std::numeric_limits<double>;

constexpr long long Most64 = std::numeric_limits<long long>::max();
constexpr long long Least64 = std::numeric_limits<long long>::min();
constexpr unsigned long long MostU64 = std::numeric_limits<unsigned long long>::max();
constexpr int Most = std::numeric_limits<int>::max();
constexpr int Least = std::numeric_limits<int>::min();

TEST(HxValueConvert, EveryTypeToEveryType) {
    const struct {
        Value value;
        int asInt;
        long long asInt64;
        unsigned long long asUInt64;
        bool asBool;
        const char* asString;
    } rows[] = {
        {Value(), 0, 0, 0, false, ""},
        {Value(-7), -7, -7, 0, true, "-7"},
        {Value(0), 0, 0, 0, false, "0"},
        {Value(2147483648LL), Most, 2147483648LL, 2147483648u, true, "2147483648"},
        {Value(Least64), Least, Least64, 0, true, "-9223372036854775808"},
        {Value(MostU64), Most, Most64, MostU64, true, "18446744073709551615"},
        {Value(2.9), 2, 2, 2, true, "2.9"},
        {Value(-2.9), -2, -2, 0, true, "-2.9"},
        {Value(-0.0), 0, 0, 0, false, "-0.0"},
        {Value(1e300), Most, Most64, MostU64, true, "1e+300"},
        {Value(-1e300), Least, Least64, 0, true, "-1e+300"},
        {Value(9223372036854775808.0), Most, Most64, 9223372036854775808ull, true,
         "9.223372036854776e+18"},
        {Value(Doubles::quiet_NaN()), 0, 0, 0, false, "nan"},
        {Value(-Doubles::infinity()), Least, Least64, 0, true, "-inf"},
        {Value("12 ms"), 12, 12, 12, true, "12 ms"},
        {Value(" \t+12"), 12, 12, 12, true, " \t+12"},
        {Value("-12"), -12, -12, 0, true, "-12"},
        {Value("+-12"), 0, 0, 0, false, "+-12"},
        {Value("x12"), 0, 0, 0, false, "x12"},
        {Value(""), 0, 0, 0, false, ""},
        {Value("-"), 0, 0, 0, false, "-"},
        {Value("0x10"), 0, 0, 0, false, "0x10"},
        {Value("0.5"), 0, 0, 0, true, "0.5"},
        {Value("99999999999999999999"), Most, Most64, MostU64, true, "99999999999999999999"},
        {Value("-99999999999999999999"), Least, Least64, 0, true, "-99999999999999999999"},
        {Value("TRUE"), 0, 0, 0, true, "TRUE"},
        {Value("true "), 0, 0, 0, false, "true "},
        {Value("nan"), 0, 0, 0, false, "nan"},
        {Value(true), 1, 1, 1, true, "true"},
        {Value(false), 0, 0, 0, false, "false"},
        {Value(hxJson::arrayValue), 0, 0, 0, false, "[]"},
        {Value(hxJson::objectValue), 0, 0, 0, false, "{}"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.value.toString());
        EXPECT_EQ(row.value.asInt(), row.asInt);
        EXPECT_EQ(row.value.asInt64(), row.asInt64);
        EXPECT_EQ(row.value.asUInt64(), row.asUInt64);
        EXPECT_EQ(row.value.asBool(), row.asBool);
        EXPECT_EQ(row.value.asString(), row.asString);
        EXPECT_STREQ(row.value.asCString(), row.asString);
    }
}

TEST(HxValueConvert, Doubles) {
    const struct {
        Value value;
        double wanted;
    } rows[] = {
        {Value(), 0.0},
        {Value(-3), -3.0},
        {Value(MostU64), 18446744073709551616.0},
        {Value(true), 1.0},
        {Value("2.5 ms"), 2.5},
        {Value("-.5"), -0.5},
        {Value("1e3"), 1000.0},
        {Value("inf"), 0.0},
        {Value("-inf"), 0.0},
        {Value("1e999"), Doubles::max()},
        {Value("-1e999"), Doubles::lowest()},
        {Value("1e-999"), 0.0},
        {Value("0." + std::string(1000, '0') + "1e500"), 0.0},
        {Value("0.01e" + std::string(30, '9')), Doubles::max()},
        {Value("1e-" + std::string(30, '9') + "x"), 0.0},
        {Value("1e"), 1.0},
        {Value("0." + std::string(400, '0') + "1"), 0.0},
        {Value(std::string(400, '9')), Doubles::max()},
        {Value(hxJson::arrayValue), 0.0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.value.toString());
        EXPECT_EQ(row.value.asDouble(), row.wanted);
    }
}

TEST(HxValueConvert, AnEmbeddedDocumentReadsTheSameAsObjectOrText) {
    Value value;
    value["b"].append("x");
    value["a"] = 1;
    EXPECT_EQ(value.asString(), R"({"a":1,"b":["x"]})");
}

TEST(HxValueConvert, CStringsLastUntilTheNodeChanges) {
    Value value(12);
    const char* const text = value.asCString();
    EXPECT_EQ(value.asCString(), text);
    const Value moved(std::move(value));
    EXPECT_STREQ(moved.asCString(), "12");
    Value object;
    Value& member = object["a"];
    EXPECT_STREQ(object.asCString(), R"({"a":null})");
    member = 5;
    EXPECT_STREQ(object.asCString(), R"({"a":5})");
    object = "text";
    EXPECT_STREQ(object.asCString(), "text");
    EXPECT_EQ(object.stringView(), "text");
    EXPECT_EQ(moved.stringView(), "");
}

TEST(HxValueConvert, ManyThreadsMayReadOneNode) {
    Value made;
    made["a"] = 1;
    const Value& value = made;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&value] {
            for (int round = 0; round < 200; ++round) EXPECT_STREQ(value.asCString(), "{\"a\":1}");
        });
    }
    for (std::thread& thread : threads) thread.join();
}

}  // namespace
