#include "host/json/hxjson.h"
#include "host/json/hxvalue.h"

#include <gtest/gtest.h>

namespace {

using hxJson::Value;

Value Read(const std::string& text) {
    Value value;
    hxJson::Reader reader;
    EXPECT_TRUE(reader.parse(text, value, true)) << reader.getErrorMessage();
    return value;
}

TEST(HxValue, TypeNumbersAreFixed) {
    const struct {
        const char* name;
        Value value;
        int type;
        const char* wanted;
    } rows[] = {
        {"nothing", Value(), 0, "null"},
        {"int", Value(-5), 1, "-5"},
        {"long", Value(5L), 1, "5"},
        {"unsigned", Value(5u), 2, "5"},
        {"size_t", Value(size_t{5}), 2, "5"},
        {"double", Value(1.5), 3, "1.5"},
        {"string", Value(std::string("a")), 4, "\"a\""},
        {"view", Value(std::string_view("a")), 4, "\"a\""},
        {"literal", Value("a"), 4, "\"a\""},
        {"null pointer", Value(static_cast<const char*>(nullptr)), 0, "null"},
        {"bool", Value(true), 5, "true"},
        {"typed null", Value(hxJson::nullValue, true), 0, "null"},
        {"typed int", Value(hxJson::intValue, true), 1, "0"},
        {"typed real", Value(hxJson::realValue, true), 3, "0.0"},
        {"typed string", Value(hxJson::stringValue, true), 4, "\"\""},
        {"typed bool", Value(hxJson::booleanValue, true), 5, "false"},
        {"typed array", Value(hxJson::ValueType(6), true), 6, "[]"},
        {"typed object", Value(hxJson::ValueType(7), true), 7, "{}"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.value.type(), row.type);
        EXPECT_EQ(row.value.toString(), row.wanted);
    }
}

std::string Tests(const Value& v) {
    std::string names;
    const auto add = [&names](bool is, const char* name) { names += is ? name : ""; };
    add(v.isNull(), "null ");
    add(v.isBool(), "bool ");
    add(v.isInt(), "int ");
    add(v.isInt64(), "int64 ");
    add(v.isUInt64(), "uint64 ");
    add(v.isDouble(), "double ");
    add(v.isNumeric(), "numeric ");
    add(v.isString(), "string ");
    add(v.isArray(), "array ");
    add(v.isObject(), "object ");
    add(v.empty(), "empty ");
    return names + std::to_string(v.size());
}

TEST(HxValue, TestsOfType) {
    const struct {
        const char *text, *wanted;
    } rows[] = {
        {"null", "null empty 0"},
        {"true", "bool 0"},
        {"5", "int int64 uint64 numeric 0"},
        {"-2147483648", "int int64 numeric 0"},
        {"2147483648", "int64 uint64 numeric 0"},
        {"18446744073709551615", "uint64 numeric 0"},
        {"16.0", "double numeric 0"},
        {"\"\"", "string 0"},
        {"[]", "array empty 0"},
        {"[null]", "array 1"},
        {"{}", "object empty 0"},
        {"{\"a\":1,\"b\":2}", "object 2"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(Tests(Read(row.text)), row.wanted);
    }
    EXPECT_EQ(Tests(Value(5u)), "int int64 uint64 numeric 0");
}

TEST(HxValue, ConstAccessOfWhatIsAbsentReadsAsOneSharedNull) {
    const Value null;
    const Value object = Read(R"({"a":[10,{"b":"x"}],"":1})");
    EXPECT_EQ(object["a"][0].asInt(), 10);
    EXPECT_EQ(object["a"][1u]["b"].asString(), "x");
    EXPECT_EQ(object[static_cast<const char*>(nullptr)].asInt(), 1);
    const Value* const absent[] = {
        &object["no"],
        &object["no"]["deeper"][3],
        &object["a"]["b"],
        &object["a"][-1],
        &object["a"][2],
        &object["a"][4000000000u],
        &object["a"][0]["x"],
        &object[0],
        &null["a"],
        &null[0],
        &object[std::string("a\0", 2)],
    };
    for (const Value* value : absent) EXPECT_EQ(value, &null["x"]);
    EXPECT_EQ(object.find("no"), nullptr);
    EXPECT_TRUE(object.isMember("a") && object.isMember(std::string("")) && !object.isMember("b"));
    EXPECT_FALSE(object["a"].isMember("b"));
}

TEST(HxValue, WritingAccessMakesObjectsAndArrays) {
    Value value;
    value["b"]["c"] = "text";
    value[std::string("a")].append(1).append(Value());
    value["a"].append(0);
    value["a"].append("s");
    EXPECT_EQ(value.toString(), R"({"a":[[null],0,"s"],"b":{"c":"text"}})");
    value["b"]["c"]["d"] = true;
    value["a"]["e"];
    EXPECT_EQ(value.toString(), R"({"a":{"e":null},"b":{"c":{"d":true}}})");
    value["b"].append(2.5);
    EXPECT_EQ(value.toString(), R"({"a":{"e":null},"b":[2.5]})");
}

TEST(HxValue, AnElementThatIsAbsentIsNeverMade) {
    Value value = Read("[1,2]");
    value[1] = "two";
    value[7] = "lost";
    value[-1]["a"] = "lost";
    EXPECT_TRUE(value[7].isNull());
    EXPECT_EQ(value.toString(), R"([1,"two"])");
    Value object = Read("{}");
    object[0] = 1;
    EXPECT_EQ(object.toString(), "{}");
}

TEST(HxValue, MembersStayInPlaceWhileOthersCome) {
    Value value;
    Value& first = value["m"];
    for (int i = 0; i < 100; ++i) value[std::to_string(i)] = i;
    EXPECT_EQ(&first, &value["m"]);
}

TEST(HxValue, AppendByPointerCopies) {
    Value array;
    Value element("x");
    EXPECT_EQ(array.append(&element).asString(), "x");
    element = "y";
    array.append(static_cast<Value*>(nullptr));
    EXPECT_EQ(array.toString(), R"(["x",null])");
}

TEST(HxValue, AValueMayBeTakenFromItself) {
    Value value = Read(R"({"a":{"b":[1]}})");
    value["a"]["b"].append(value["a"]);
    EXPECT_EQ(value.toString(), R"({"a":{"b":[1,{"b":[1]}]}})");
    value = value["a"]["b"];
    EXPECT_EQ(value.toString(), R"([1,{"b":[1]}])");
    value.append(value);
    EXPECT_EQ(value.toString(), R"([1,{"b":[1]},[1,{"b":[1]}]])");
    value = std::move(value[2]);
    value = static_cast<const Value&>(value);
    EXPECT_EQ(value.toString(), R"([1,{"b":[1]}])");
}

TEST(HxValue, RemovedMembersBelongToTheCaller) {
    Value value = Read(R"({"a":{"x":1},"b":2})");
    EXPECT_EQ(value.removeMember("a", true).toString(), R"({"x":1})");
    EXPECT_TRUE(value.removeMember("a", false).isNull());
    EXPECT_EQ(value.toString(), R"({"b":2})");
    EXPECT_TRUE(value["b"].removeMember("b").isNull());
}

TEST(HxValue, KeysStandInByteOrder) {
    Value value;
    for (const char* name : {"b", "B", "a", "\xE4", "", "aa", "_"}) value[name] = 0;
    const std::vector<std::string> wanted = {"", "B", "_", "a", "aa", "b", "\xE4"};
    EXPECT_EQ(value.getMemberNames(), wanted);
    EXPECT_TRUE(Read("[1]").getMemberNames().empty());
}

TEST(HxValue, Iteration) {
    const struct {
        const char *text, *wanted;
    } rows[] = {
        {R"({"b":2,"a":[1]})", R"(a "a"=[1];b "b"=2;)"},
        {R"([7,"x"])", R"( 0=7; 1="x";)"},
        {"[]", ""},
        {"{}", ""},
        {"5", ""},
        {"null", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        Value value = Read(row.text);
        const Value& constant = value;
        std::string seen;
        for (auto it = value.begin(); !it.isEqual(value.end()); it.increment()) {
            seen += it.memberName() + " " + it.key().toString() + "=" + it.deref().toString() + ";";
        }
        EXPECT_EQ(seen, row.wanted);
        size_t count = 0;
        for (const Value& element : constant) count += element.isNull() ? 0 : 1;
        EXPECT_EQ(count, value.size());
        for (Value& element : value) element = 9;
        for (hxJson::ValueConstIterator it = value.begin(); it != value.end(); ++it) {
            EXPECT_EQ(it->asInt(), 9);
        }
    }
}

TEST(HxValue, Equality) {
    const struct {
        const char *left, *right;
        bool isEqual;
    } rows[] = {
        {"null", "null", true},
        {"null", "false", false},
        {"0", "false", false},
        {"1", "1.0", false},
        {"\"1\"", "1", false},
        {"1.5", "1.5", true},
        {"[1,[2,{\"a\":null}]]", "[1,[2,{\"a\":null}]]", true},
        {"[1,[2,{\"a\":null}]]", "[1,[2,{\"b\":null}]]", false},
        {"[1,[2]]", "[1,[3]]", false},
        {"[1]", "[1,1]", false},
        {"{}", "[]", false},
        {"{\"a\":1,\"b\":2}", "{\"b\":2,\"a\":1}", true},
        {"[[],[]]", "[[],{}]", false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.left) + " " + row.right);
        EXPECT_EQ(Read(row.left) == Read(row.right), row.isEqual);
        EXPECT_EQ(Read(row.left) != Read(row.right), !row.isEqual);
    }
    EXPECT_EQ(Value(5u), Value(5));
    EXPECT_NE(Value(-1), Value(18446744073709551615ull));
}

TEST(HxValue, MovesLeaveNull) {
    Value value = Read("{\"a\":1}");
    Value moved(std::move(value));
    EXPECT_TRUE(value.isNull());
    value = std::move(moved);
    EXPECT_TRUE(moved.isNull());
    swap(value, moved);
    EXPECT_EQ(moved.toString(), "{\"a\":1}");
}

}  // namespace
