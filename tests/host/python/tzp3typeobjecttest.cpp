#include "host/python/tzp3typeobject.h"

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using std::string_literals::operator""s;

TEST(TzP3TypeObject, Check) {
    const struct {
        int code;
        std::vector<std::string> values;
        std::vector<std::string> others;
    } rows[] = {
        {1,
         {"192.0.2.1", "192.0.2.0/24", "192.0.2.0 255.255.255.0"},
         {"", "192.0.2", "192.0.2.256", "192.0.2.1/33", "192.0.2.1 255.0.255.0", " 192.0.2.1",
          "2001:db8::1"}},
        {2,
         {"00:11:22:33:44:55", "0011.2233.4455", "00-1a-2B-33-44-55"},
         {"", "00:11:22:33:44", "00:11:22:33:44:5g", "0011.2233.4455 "}},
        {3,
         {"50%", "-0.5%", "+12.25%"},
         {"", "%", "50", "5.%", ".5%", "5 %", "5%%", "-%", "1.2.3%"}},
        {4,
         {"2001:db8::1", "::1", "2001:db8::/32"},
         {"", "2001:db8", "2001:db8::1::2", "192.0.2.1"}},
        {100, {"", "anything", " ", "a\0b"s}, {}},
        {101,
         {"0", "-17", "+17", "007", "9223372036854775807", "-9223372036854775808"},
         {"", "+", "-", "+-1", "1.0", "1 ", "1e3", "0x10", "9223372036854775808", "1\0"s}},
        {102,
         {"0", "-1.5", "+1.5", "1.", ".5", "1e3", "1.5E-3", "1e+3", "1e-999", "0e999999",
          "1e-99999999999999999999", "0." + std::string(400, '0') + "1", std::string(300, '9')},
         {"", ".", "-", "e3", "1e", "1e+", "1,5", "--1", "+-1", "1 ", "inf", "nan", "0x1p3",
          "1e999", "-1e999", "1e99999999999999999999", std::string(400, '9'),
          std::string(400, '9') + ".0e1", "1.2.3"}},
        {103, {"1", "0", "true", "FALSE", "True"}, {"", "2", "yes", "tru", "true ", "01"}},
        {104, {}, {"", "{}", "1"}},
        {105, {}, {"", "[]", "1"}},
        {201, {}, {"", "1"}},
        {202, {}, {"", "1"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.code);
        const std::unique_ptr<TzP3TypeObject> type(TzP3TypeObject::CreateObj(row.code));
        ASSERT_TRUE(type);
        for (const std::string& text : row.values) EXPECT_TRUE(type->Check(text)) << text;
        for (const std::string& text : row.others) EXPECT_FALSE(type->Check(text)) << text;
        type->SetText("not checked");
        EXPECT_EQ(type->GetText(), "not checked");
    }
}

TEST(TzP3TypeObject, UnknownCodes) {
    for (const int code : {-1, 0, 5, 26, 99, 106, 200, 203})
        EXPECT_EQ(TzP3TypeObject::CreateObj(code), nullptr) << code;
}

}  // namespace
