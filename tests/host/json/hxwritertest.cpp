#include "host/json/hxjson.h"
#include "host/json/jsontext.h"

#include <limits>

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;
using hxJson::Value;

TEST(HxWriter, Strings) {
    const struct {
        std::string text, wanted;
    } rows[] = {
        {"", R"("")"},
        {"say \"hi\" \\ /", R"("say \"hi\" \\ /")"},
        {"\b\f\n\r\t\x01\x1f\x7f"s + "\0"s, "\"\\b\\f\\n\\r\\t\\u0001\\u001f\x7f\\u0000\""},
        {"a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80z", "\"a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80z\""},
        {"Latin-1 \xE4t", R"("Latin-1 \u00e4t")"},
        {"cut \xE2\x82", R"("cut \u00e2\u0082")"},
        {"overlong \xC0\xAF", R"("overlong \u00c0\u00af")"},
        {"overlong \xE0\x80\xAF", R"("overlong \u00e0\u0080\u00af")"},
        {"surrogate \xED\xA0\x80", R"("surrogate \u00ed\u00a0\u0080")"},
        {"too high \xF4\x90\x80\x80", R"("too high \u00f4\u0090\u0080\u0080")"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.wanted);
        EXPECT_EQ(hxJson::QuoteJson(row.text), row.wanted);
        Value object;
        object[row.text] = row.text;
        EXPECT_EQ(object.toString(true), "{" + row.wanted + ":" + row.wanted + "}");
    }
}

TEST(HxWriter, RealsReadBackTheSame) {
    const struct {
        double number;
        const char* wanted;
    } rows[] = {
        {0.0, "0.0"},           {-0.0, "-0.0"},
        {1.0, "1.0"},           {0.1, "0.1"},
        {100000.0, "100000.0"}, {1e16, "10000000000000000.0"},
        {1e17, "1e+17"},        {1e-5, "0.00001"},
        {1e-6, "1e-06"},        {1.0 / 3, "0.3333333333333333"},
        {5e-324, "5e-324"},     {-1.7976931348623157e308, "-1.7976931348623157e+308"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.wanted);
        EXPECT_EQ(hxJson::RealJson(row.number), row.wanted);
        Value read;
        EXPECT_TRUE(hxJson::Reader().parse(row.wanted, read, true));
        EXPECT_TRUE(read.isDouble());
        EXPECT_EQ(read.asDouble(), row.number);
    }
    EXPECT_EQ(Value(std::numeric_limits<double>::quiet_NaN()).toString(), "null");
    EXPECT_EQ(Value(std::numeric_limits<double>::infinity()).toString(), "null");
}

TEST(HxWriter, StyledText) {
    Value value;
    ASSERT_TRUE(hxJson::Reader().parse(R"({"b":[1,{"x":"y"}],"a":{},"c":[]})", value, true));
    EXPECT_EQ(value.toStyledString(),
              "{\n"
              "    \"a\": {},\n"
              "    \"b\": [\n"
              "        1,\n"
              "        {\n"
              "            \"x\": \"y\"\n"
              "        }\n"
              "    ],\n"
              "    \"c\": []\n"
              "}\n");
    EXPECT_EQ(Value().toStyledString(), "null\n");
    Value again;
    EXPECT_TRUE(hxJson::Reader().parse(value.toStyledString(), again, true));
    EXPECT_EQ(again, value);
}

}  // namespace
