#include "host/json/hxreader.h"

#include <sstream>

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;
using hxJson::Value;

TEST(HxReader, Documents) {
    const struct {
        const char* name;
        std::string text, wanted;
    } rows[] = {
        {"empty text is null", "", "null"},
        {"white space only", " \t\r\n", "null"},
        {"comments only", "// a\n/* b */ // c", "null"},
        {"byte order mark", "\xEF\xBB\xBF{}", "{}"},
        {"byte order mark alone", "\xEF\xBB\xBF", "null"},
        {"scalar document", " true ", "true"},
        {"comments", "/*a*/{/*b*/\"a\"/*c*/:[1,//d\n2]/*e*/}//f", R"({"a":[1,2]})"},
        {"keys are sorted", R"({"b":1,"B":2,"a":3})", R"({"B":2,"a":3,"b":1})"},
        {"the last of equal keys wins", R"({"a":{"x":1},"b":0,"a":{"y":2}})",
         R"({"a":{"y":2},"b":0})"},
        {"nested", R"([[],{},[{"a":[null]}]])", R"([[],{},[{"a":[null]}]])"},
        {"integers of 64 bits", "[9223372036854775807,-9223372036854775808,18446744073709551615]",
         "[9223372036854775807,-9223372036854775808,18446744073709551615]"},
        {"integers beyond are reals", "[18446744073709551616,-9223372036854775809]",
         "[1.8446744073709552e+19,-9.223372036854776e+18]"},
        {"reals", "[1.0,1e2,0.1,1E-7,5e-324,1.7976931348623157e308,123456789.123456789]",
         "[1.0,100.0,0.1,1e-07,5e-324,1.7976931348623157e+308,123456789.12345679]"},
        {"zero with an exponent", "[0e308,-0.0e5,0e-5,-0]", "[0.0,-0.0,0.0,0]"},
        {"too small is zero", "[1e-999,0." + std::string(400, '0') + "1e2]", "[0.0,0.0]"},
        {"a far exponent of a far fraction", "0." + std::string(400, '0') + "1e401", "1.0"},
        {"a long fraction", "0." + std::string(1000, '3'), "0.3333333333333333"},
        {"escapes", R"("\"\\\/\b\f\n\r\t\u0041\u00e4\u20ac\ud83d\ude00")",
         "\"\\\"\\\\/\\b\\f\\n\\r\\tA\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80\""},
        {"an escaped NUL", R"({"a\u0000b":"\u0000"})", R"({"a\u0000b":"\u0000"})"},
        {"valid UTF-8", "\"\xC3\xA4\"", "\"\xC3\xA4\""},
        {"bytes that are not UTF-8", "\"\xE4\xFF\xC3\"", R"("\u00e4\u00ff\u00c3")"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        hxJson::Reader reader;
        Value root("old");
        EXPECT_TRUE(reader.parse(row.text, root, true)) << reader.getErrorMessage();
        EXPECT_EQ(root.toString(), row.wanted);
        std::istringstream stream(row.text);
        Value fromStream;
        EXPECT_TRUE(reader.parse(stream, fromStream, false));
        EXPECT_EQ(fromStream, root);
        EXPECT_EQ(reader.getErrorMessage(), "");
    }
}

TEST(HxReader, Errors) {
    const struct {
        std::string text;
        const char* wanted;
    } rows[] = {
        {"{\n  \"a\" 1}", "8 line 2, column 7: A colon was expected behind the name of a member."},
        {"[1,\n2\n3]", "6 line 3, column 1: A comma or ] was expected behind an element."},
        {"{\"a\":1 \"b\"}", "7 line 1, column 8: A comma or } was expected behind a member."},
        {"{a:1}", "1 line 1, column 2: The name of a member, in quotes, was expected."},
        {"[1,]", "3 line 1, column 4: A value was expected."},
        {"}", "0 line 1, column 1: A value was expected."},
        {"[", "1 line 1, column 2: A value was expected."},
        {"{} x", "3 line 1, column 4: Something stands behind the end of the document."},
        {"1 2", "2 line 1, column 3: Something stands behind the end of the document."},
        {"\xEF\xBB\xBF[1 2]", "6 line 1, column 7: A comma or ] was expected behind an element."},
        {"tru", "3 line 1, column 4: A value was expected."},
        {"NaN", "0 line 1, column 1: A value was expected."},
        {"-Infinity", "1 line 1, column 2: A value was expected."},
        {"1e999", "0 line 1, column 1: The number is too big."},
        {"[1.8e308]", "1 line 1, column 2: The number is too big."},
        {"-" + std::string(310, '9'), "0 line 1, column 1: The number is too big."},
        {"1.", "2 line 1, column 3: Digits were expected behind the decimal point."},
        {"1e", "2 line 1, column 3: Digits were expected in the exponent."},
        {"01", "1 line 1, column 2: Something stands behind the end of the document."},
        {"\"abc", "4 line 1, column 5: The quote that ends a string is missing."},
        {"\"\\x\"", "1 line 1, column 2: An escape that JSON does not know."},
        {"\"\\u12g4\"", "1 line 1, column 2: \\u needs four hexadecimal digits."},
        {"\"\\ud800\"", "1 line 1, column 2: Half of a surrogate pair stands alone."},
        {"\"a\tb\"", "2 line 1, column 3: A control character in a string; it needs an escape."},
        {"/* open", "7 line 1, column 8: A comment that does not end, or a / that starts none."},
        {"{}\0"s, "2 line 1, column 3: A NUL byte in the text."},
        {"\0"s, "0 line 1, column 1: A NUL byte in the text."},
        {"[1,\0 2]"s, "3 line 1, column 4: A NUL byte in the text."},
        {"\"a\0b\""s, "2 line 1, column 3: A NUL byte in the text."},
        {"1 // \0 x\n"s, "5 line 1, column 6: A NUL byte in the text."},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        hxJson::Reader reader;
        Value root("old");
        EXPECT_FALSE(reader.parse(row.text, root, true));
        EXPECT_TRUE(root.isNull());
        EXPECT_EQ(std::to_string(reader.getErrorOffset()) + " " + reader.getErrorMessage(),
                  row.wanted);
        EXPECT_EQ(reader.getErrorMessage().rfind("line " + std::to_string(reader.getErrorLine()) +
                                                     ", column " +
                                                     std::to_string(reader.getErrorColumn()) + ": ",
                                                 0),
                  0u);
        EXPECT_TRUE(reader.parse("[1]", root, true));
        EXPECT_EQ(reader.getErrorLine() + reader.getErrorColumn(), 0);
        EXPECT_EQ(root.toString(), "[1]");
    }
}

TEST(HxReader, EveryBeginningOfADocumentIsReadOrRefused) {
    const std::string text =
        R"({"a":[1,-2.5e3,"x\u00e4\ud83d\ude00",true,null],/*c*/"b":{"c":{}}})";
    for (size_t length = 0; length <= text.size(); ++length) {
        hxJson::Reader reader;
        Value root;
        const bool isRead = reader.parse(text.substr(0, length), root, true);
        EXPECT_EQ(isRead, length == 0 || length == text.size()) << length;
    }
}

class BrokenBuffer : public std::streambuf {
    int_type underflow() override { throw std::runtime_error("broken"); }
};

TEST(HxReader, AStreamThatThrowsIsAFailure) {
    BrokenBuffer buffer;
    std::istream stream(&buffer);
    hxJson::Reader reader;
    Value root("old");
    EXPECT_FALSE(reader.parse(stream, root, true));
    EXPECT_TRUE(root.isNull());
    EXPECT_EQ(reader.getErrorMessage(), "line 1, column 1: The stream cannot be read.");
}

}  // namespace
