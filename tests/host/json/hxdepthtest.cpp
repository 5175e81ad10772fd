// Depth: what is read is limited, what is built by hand is not, and neither costs stack.

#include "host/json/hxjson.h"
#include "host/json/hxlower.h"

#include <gtest/gtest.h>

namespace {

using hxJson::Value;

std::string Repeat(const std::string& piece, size_t count) {
    std::string text;
    text.reserve(piece.size() * count);
    for (size_t i = 0; i < count; ++i) text += piece;
    return text;
}

TEST(HxDepth, WhatIsReadIsLimited) {
    const struct {
        const char* name;
        std::string open, close;
        size_t depth;
        bool isRead;
    } rows[] = {
        {"arrays, far from the limit", "[", "]", 500, true},
        {"arrays at the limit", "[", "]", 1000, true},
        {"arrays beyond", "[", "]", 1001, false},
        {"objects at the limit", "{\"A\":", "}", 1000, true},
        {"objects beyond", "{\"A\":", "}", 1001, false},
        {"mixed at the limit", "[{\"A\":", "}]", 500, true},
        {"mixed beyond", "[{\"A\":", "}]", 501, false},
        {"a million", "[", "]", 1000000, false},
        {"a million of comments", "/*[*/", "", 1000000, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string middle = row.close.empty() ? "null" : "1";
        const std::string text =
            Repeat(row.open, row.depth) + middle + Repeat(row.close, row.depth);
        hxJson::Reader reader;
        Value value;
        EXPECT_EQ(reader.parse(text, value, true), row.isRead) << reader.getErrorMessage();
        if (row.isRead) {
            EXPECT_EQ(value.toString(), row.close.empty() ? middle : text);
        } else {
            EXPECT_NE(reader.getErrorMessage().find("Nested deeper"), std::string::npos);
            EXPECT_LT(reader.getErrorOffset(), 6100u);
            EXPECT_TRUE(value.isNull());
        }
    }
}

TEST(HxDepth, ATruncatedMillionIsRefused) {
    hxJson::Reader reader;
    Value value;
    EXPECT_FALSE(reader.parse(Repeat("[", 1000000), value, true));
}

TEST(HxDepth, WhatIsBuiltByHandIsNot) {
    constexpr size_t depth = 1000000;
    Value deep;
    Value* place = &deep;
    for (size_t i = 0; i < depth; i += 2) {
        place = &(*place)["K"];
        place = &place->append(Value());
    }
    Value copy(deep);
    EXPECT_TRUE(copy == deep);
    *place = 1;
    EXPECT_FALSE(copy == deep);
    copy = deep;
    const std::string text = Repeat("{\"K\":[", depth / 2) + "1" + Repeat("]}", depth / 2);
    EXPECT_EQ(copy.toString() == text, true);
    EXPECT_EQ(deep.asString() == text, true);
    copy = Value();
    hxJson::CopyWithLowerKeys(deep, copy);
    EXPECT_EQ(copy["k"][0]["k"][0].isObject(), true);
    Value inner = deep["K"][0].removeMember("K");
    EXPECT_EQ(inner.size(), 1u);
    deep["K"] = "text";
}

TEST(HxDepth, TheStyledTextGrowsWithTheDepthAndNotItsSquare) {
    constexpr size_t depth = 20000;
    Value deep;
    Value* place = &deep;
    for (size_t i = 0; i < depth; ++i) place = &place->append(Value());
    EXPECT_LT(deep.toStyledString().size(), depth * 1000);
}

}  // namespace
