// A table below a paragraph from text to hash and record, and back.
#include "host/runtime/tznoncryptographicchecksum.h"
#include "tzparser/engine/parserhelper.h"
#include "tzparser/engine/tzparser.h"

#include <gtest/gtest.h>

namespace {

hxJson::Value ParseJson(const std::string& text) {
    hxJson::Value value;
    hxJson::Reader reader;
    EXPECT_TRUE(reader.parse(text, value, true)) << reader.getErrorMessage();
    return value;
}

std::string DigestOf(const std::string& bytes) {
    return CTzNonCryptographicChecksum::GetChecksum(bytes.data(), bytes.size());
}

// The rows of both slots stand in one table, with a row of empty cells for the slot without any;
// the paragraph's own column counts for the hash like the table's.
TEST(TableRecord, OfATableBelowAParagraph) {
    CTzParser parser;
    ASSERT_TRUE(parser.SetParser(ParseJson(R"({"samples":[{"parserRules":{"parserule":[
        {"type":4,"name":"slots","startline":"slot $int:slot","hashcolumns":["slot"],
         "child":{"parserule":[{"type":0},
            {"type":3,"name":"t","headers":"AA;BB","headertovariables":"AA:$a;BB:$int:b",
             "hashcolumns":["a","$slot"],"hashsort":true}]}}]}}]})")));
    std::string error;
    const auto values = parser.Parse(
        "slot 1\n"
        "AA  BB\n"
        "x   1\n"
        "x2  2\n"
        "slot 2\n"
        "slot 3\n"
        "AA  BB\n"
        "x0  3",
        error);
    ASSERT_NE(values, nullptr) << error;
    ASSERT_TRUE(CParserHelper::ProcessAllInterfaceNameToFullName(values.get(), "", ""));
    hxJson::Value schema;
    ASSERT_TRUE(CParserHelper::GetParserStructure(*parser.GetVariableTree(), schema));
    std::string record;
    ASSERT_TRUE(CParserHelper::GetParserData(*values, schema.toString(), record, "", ""));
    hxJson::Value read;
    ASSERT_TRUE(CParserHelper::RecordToJson(record, read, error)) << error;
    auto wanted = ParseJson(R"({"slots":{"slot":[1,2,3],"_rowCount":3},
        "t":{"a":["x","x2","","x0"],"b":[1,2,null,3],"slot":[1,1,2,3],"_rowCount":4}})");
    wanted["slots"]["_hashCmp"] = DigestOf("1,\n2,\n3,\n");
    wanted["t"]["_hashCmp"] = DigestOf(",2,\nx,1,\nx0,3,\nx2,1,\n");
    EXPECT_EQ(read.toString(), wanted.toString());
}

}  // namespace
