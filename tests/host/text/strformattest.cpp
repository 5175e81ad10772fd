#include "host/text/strformat.h"

#include <limits>

#include <gtest/gtest.h>

namespace {

TEST(StrFormat, PlaceholdersAndArguments) {
    const struct {
        const char* name;
        const char* format;
        std::vector<std::string> params;
        const char* wanted;
    } rows[] = {
        {"no placeholder", "plain", {"x"}, "plain"},
        {"in order", "{0},{1}", {"a", "b"}, "a,b"},
        {"repeated and out of order", "{1}{0}{1}", {"a", "b"}, "bab"},
        {"an argument is missing", "{0} {1} {2}", {"a"}, "a {1} {2}"},
        {"arguments are not scanned", "{0}{1}", {"{1}", "{0}"}, "{1}{0}"},
        {"more than ten", "{10}", {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "ten"}, "ten"},
        {"not placeholders", "{} {a} {-0} {0 } { 0} {0", {"x"}, "{} {a} {-0} {0 } { 0} {0"},
        {"a brace before a placeholder", "{{0}}", {"x"}, "{x}"},
        {"a number beyond all", "{99999999999999999999999}", {"x"}, "{99999999999999999999999}"},
        {"empty", "", {"x"}, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        StrFormat format(row.format);
        for (const std::string& param : row.params) format << param;
        EXPECT_EQ(format.str(), row.wanted);
    }
}

TEST(StrFormat, KindsOfArguments) {
    const long long least = std::numeric_limits<long long>::min();
    const char* const none = nullptr;
    const std::string text = StrFormat("{0} {1} {2} {3} {4} {5}.")
                             << -7 << least << size_t{5} << "text" << std::string_view("view")
                             << none;
    EXPECT_EQ(text, "-7 -9223372036854775808 5 text view .");
}

TEST(StrFormat, ClearedParamsStartAgainAtZero) {
    StrFormat format("[{0}]");
    format << "first";
    EXPECT_EQ(format.str(), "[first]");
    format.ClearParams();
    EXPECT_EQ(format.str(), "[{0}]");
    format << "second";
    EXPECT_EQ(format.str(), "[second]");
}

}  // namespace
