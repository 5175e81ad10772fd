#include "host/json/hxlower.h"
#include "host/json/hxreader.h"

#include <gtest/gtest.h>

namespace {

using hxJson::Value;

TEST(HxLower, KeyLoweringCopy) {
    const struct {
        const char *name, *before, *source, *wanted;
    } rows[] = {
        {"keys only, not values", "null", R"({"KeY":"VaLuE","n":1})", R"({"key":"VaLuE","n":1})"},
        {"every level", "null", R"({"A":{"B":[{"C":[[{"D":1}]]}]}})",
         R"({"a":{"b":[{"c":[[{"d":1}]]}]}})"},
        {"an array as source", "null", R"([1,{"A":2},["X"],null])", R"([1,{"a":2},["X"],null])"},
        {"only ASCII letters", "null",
         "{\"\xC3\x84"
         "Z[\":1}",
         "{\"\xC3\x84"
         "z[\":1}"},
        {"scalars copy nothing", "\"old\"", "5", "\"old\""},
        {"null copies nothing", "\"old\"", "null", "\"old\""},
        {"a null member is copied", "null", R"({"A":null})", R"({"a":null})"},
        {"arrays accumulate", "null", R"({"a":[3],"A":[1,{"B":2}]})", R"({"a":[1,{"b":2},3]})"},
        {"objects merge", "null", R"({"a":{"Y":2},"A":{"X":1,"y":0}})", R"({"a":{"x":1,"y":2}})"},
        {"other values replace", "null", R"({"a":2,"A":1})", R"({"a":2})"},
        {"a scalar replaces an array", "null", R"({"a":2,"A":[1]})", R"({"a":2})"},
        {"an array replaces a scalar", "null", R"({"a":[2],"A":1})", R"({"a":[2]})"},
        {"an object replaces an array", "null", R"({"a":{"X":2},"A":[1]})", R"({"a":{"x":2}})"},
        {"an empty container does not replace", "null", R"({"a":[],"A":1})", R"({"a":1})"},
        {"empty containers arrive as null", "null", R"({"A":[],"B":{},"C":[[],{}]})",
         R"({"a":null,"b":null,"c":[null,null]})"},
        {"an empty source leaves null", "null", "[]", "null"},
        {"into what is there", R"({"a":[0],"z":1})", R"({"A":[1]})", R"({"a":[0,1],"z":1})"},
        {"behind elements that are there", "[0]", "[1]", "[0,1]"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Value source;
        Value destination;
        hxJson::Reader reader;
        ASSERT_TRUE(reader.parse(row.source, source, true)) << reader.getErrorMessage();
        ASSERT_TRUE(reader.parse(row.before, destination, true));
        hxJson::CopyWithLowerKeys(source, destination);
        EXPECT_EQ(destination.toString(), row.wanted);
    }
}

}  // namespace
