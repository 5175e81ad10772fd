// The example of docs/editing.md, which the build takes out of the page and compiles here.
#include "tzparser/engine/tzparser.h"
#include "tzparser/engine/tzparsersample.h"

#include <gtest/gtest.h>

namespace {

#include "editingexample.inc"

TEST(EditingExample, TheParserReadsByTheEditedDefinition) {
    hxJson::Value definition;
    hxJson::Reader reader;
    ASSERT_TRUE(
        reader.parse(R"({"samples":[{"index":1,"tableKeys":["t.port"]}]})", definition, true));
    definition["samples"][0]["parserRules"] =
        R"({"ParseRule":[{"Type":3,"Name":"t","Headers":"Port;Vlan",
            "HeaderToVariables":"Port:$port;Vlan:$int:vlan"}]})";
    CTzParser parser;
    ASSERT_TRUE(RenameAndSet(parser, definition, "t.vlan", "id"));
    std::string error;
    const auto values = parser.Parse("Port   Vlan\nGi0/1  10\n", error);
    ASSERT_NE(values, nullptr) << error;
    auto* table = values->GetChildValueByName("t");
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->GetChildValueByName("vlan"), nullptr);
    ASSERT_NE(table->GetChildValueByName("id"), nullptr);
    EXPECT_EQ(table->GetChildValueByName("id")->GetVariableValue(0)->text, "10");
    EXPECT_EQ(definition["samples"][0]["tableKeys"].size(), 1U);
}

}  // namespace
