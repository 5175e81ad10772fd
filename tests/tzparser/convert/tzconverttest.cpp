#include "host/json/hxjson.h"
#include "tzparser/convert/tzconvert.h"
#include "tzparser/engine/tzparser.h"

#include <gtest/gtest.h>

namespace {

hxJson::Value Read(const std::string& json) {
    hxJson::Value value;
    EXPECT_TRUE(hxJson::Reader().parse(json, value, true)) << json;
    return value;
}

/// The losses, a line each.
std::string Lines(const Conversion& conversion) {
    std::string lines = conversion.error;
    for (const auto& loss : conversion.losses) lines += loss.place + ": " + loss.reason + "\n";
    return lines;
}

std::string Rules(const std::string& rules, const std::string& more = "") {
    return R"({"samples":[{"index":1,"parserRules":{"parserule":[)" + rules + "]}" + more + "}]}";
}

/// The only sample of a definition, its rules read.
hxJson::Value SampleOf(const std::string& definition) {
    auto sample = Read(definition)["samples"][0];
    sample["parserRules"] = Read(sample["parserRules"].asString());
    return sample;
}

// Every key of every kind that XML holds, with a value that isn't its default.
constexpr char Filter[] =
    R"({"type":1,"name":"f","startline":"^a $x","endline":"^b","skiplines":[{"skipline":"s"}],)"
    R"("includelines":{"includeline":["i","<&>"]},"excludelines":{"excludeline":["e"]},)"
    R"("filterloop":true,"excludeendline":true,"excludebeginline":true,"asconfiglet":true,)"
    R"("child":{"parserule":[{"type":0,"keywords":{"keyword":["k $k"]}},{"type":"3","name":"t",)"
    R"("headers":"H 1;H 2","endline":"$$","isskipline":true,"skipline":"2","leftalign":true,)"
    R"("headertovariables":"H 1:$h;H 2:$int:n","aligntype":"2","alignrange":"1;9",)"
    R"("keyvariables":"$h","isuseprevars":"1","useprevars":"$h;$n","hashcolumns":["$n"],)"
    R"("hashsort":true}]}})";
constexpr char Paragraph[] =
    R"({"type":4,"name":"p","keyvariables":"$v","startline":"^v $v","endline":"^!",)"
    R"("islineasparagraph":true,"lineasparagraph":1,"hashcolumns":["v","w"],"hashsort":true,)"
    R"("excludeendline":true,"isuseprevars":true,"useprevars":"$v","child":{"parserule":[)"
    R"({"type":1,"name":"below"}]}})";
constexpr char Script[] =
    R"({"type":8,"script":"def ParseText(t):\n  return {'a': t}\n","variabletypes":)"
    R"({"variabletype":[{"name":"$a","type":"string"}]},"tablevariabletypes":{"tablevariabletype":[)"
    R"({"name":"$T","variabletypes":{"variabletype":[{"name":"$c","type":"int"}],"tablecolumns":["$c"]}}]}})";

TEST(Convert, WhatXmlHoldsComesBackInFull) {
    const std::string first = Rules(
        std::string(Filter) + "," + Paragraph + "," + Script +
            R"(,{"type":0,"keywords":{"keyword":["a $a","regex[$int:b]:^\t(\\d) ."]},)"
            R"("statements":{"statement":["$c=1"]}},{"type":5,"variabletypes":{"variabletype":["$x:ip"]}})",
        R"(,"interfaceKeys":["b","a"],"identify":"{\"ConfigKey\":{\"MustConditions\":{\"Item\":[)"
        R"({\"@Index\":3,\"@Type\":1,\"@Value\":\"a\\nb\"}]},\"OptionalConditions\":{\"Item\":[)"
        R"({\"@Index\":0,\"@Type\":3,\"@Value\":\"^x\"}]}}}")");
    const auto xml = CTzConvert::ToXml(Read(first));
    EXPECT_EQ(Lines(xml), "");
    const auto json = CTzConvert::ToJson(xml.text);
    EXPECT_EQ(Lines(json), "");
    const auto again = CTzConvert::ToXml(Read(json.text));
    EXPECT_EQ(Lines(again), "");
    EXPECT_EQ(again.text, xml.text);
    const auto sample = SampleOf(json.text);
    EXPECT_EQ(sample["interfaceKeys"].toString(), R"(["a","b"])");
    // What is in the source is in the definition, whatever was added.
    const auto& rules = sample["parserRules"]["parserule"];
    ASSERT_EQ(rules.size(), 5u);
    EXPECT_EQ(rules[0]["includelines"].toString(), R"({"includeline":["i","<&>"]})");
    EXPECT_EQ(rules[0]["skiplines"].toString(), R"([{"skipline":"s"}])");
    const auto& table = rules[0]["child"]["parserule"][1];
    EXPECT_EQ(table["aligntype"].asInt(), 2);
    EXPECT_EQ(table["alignrange"].asString(), "1;9");
    EXPECT_EQ(table["headertovariables"].asString(), "H 1:$h;H 2:$n");
    EXPECT_TRUE(rules[1]["excludeendline"].asBool() && rules[1]["isuseprevars"].asBool());
    // The paragraph's default keyword rule knows the type of a variable; the filter's says nothing
    // and isn't written.
    EXPECT_EQ(rules[1]["child"]["parserule"][0]["variabletypes"].toString(),
              R"({"variabletype":["$v:string"]})");
    EXPECT_EQ(rules[1]["child"]["parserule"][1]["name"].asString(), "below");
    EXPECT_FALSE(rules[1]["child"]["parserule"][1].isMember("child"));
    EXPECT_EQ(rules[2]["script"].asString(), "def ParseText(t):\n  return {'a': t}\n");
}

TEST(Convert, ListsWhatXmlLoses) {
    const struct {
        const char* name;
        std::string document;
        const char* wanted;
    } rows[] = {
        {"envelope",
         Rules(R"({"xxid":"i","nistart":{"type":2,"pattern":"a"},"niend":{},)"
               R"("operations":[{"originalstr":"a"}]})"),
         "samples[0].parserRules.parserule[0].nistart (keyword): XML has no place for it\n"
         "samples[0].parserRules.parserule[0].operations (keyword): XML has no place for it\n"
         "samples[0].parserRules.parserule[0].xxid (keyword): XML has no place for it\n"},
        {"the sample's keys",
         R"({"accessType":16,"x":1,"sequences":[7],"samples":[{"index":7,"parserRules":"{}",)"
         R"("operations":[{"originalstr":"a"}],"tableKeys":["t.c"],"interfaceKeys":["a,b"],)"
         R"("variables":{"y":1},"note":"n"}]})",
         "accessType: XML has no place for it\nx: nothing reads it\n"
         "samples[0].index: comes back as 1\nsamples[0].note: nothing reads it\n"
         "samples[0].operations: XML has no place for it\n"
         "samples[0].tableKeys: XML has no place for it\n"
         "samples[0].variables.y: nothing reads it\n"
         "samples[0].interfaceKeys[\"a,b\"]: comes back as another key\n"},
        {"kinds below a rule, and the depth of places",
         R"({"parserule":{"TYPE":1,"name":"f","child":{"parserule":[{"type":8},{"type":0,"zz":1},)"
         R"({"type":5}]},"idlines":["x"]}})",
         "parserule.idlines (filter \"f\"): nothing reads it\n"
         "parserule.child.parserule[0] (script): XML can't hold a rule of this kind here, nor what "
         "is below it\n"
         "parserule.child.parserule[1].zz (keyword): nothing reads it\n"
         "parserule.child.parserule[2] (ping): XML can't hold a rule of this kind here, nor what "
         "is below it\n"},
        {"keys that the XML of a kind lacks",
         R"({"parserules":{"parserule":[{"type":4,"name":"p","idlines":["a"],"parentline":"b"},)"
         R"({"type":3,"enableexcludelines":true,"excludelines":{"excludeline":["-"]}}]}})",
         "parserules.parserule[0].idlines (paragraph \"p\"): XML has no place for it\n"
         "parserules.parserule[0].parentline (paragraph \"p\"): XML has no place for it\n"
         "parserules.parserule[1].enableexcludelines (table): XML has no place for it\n"
         "parserules.parserule[1].excludelines (table): XML has no place for it\n"},
        {"lists in a shape that isn't read",
         Rules(
             R"({"type":1,"skiplines":["a"],"includelines":["b"]},{"type":3,"variabletypes":["$a:int"]})"),
         "samples[0].parserRules.parserule[0].includelines (filter): nothing reads it\n"
         "samples[0].parserRules.parserule[0].skiplines (filter): 1 of 1 entries aren't used\n"
         "samples[0].parserRules.parserule[1].variabletypes (table): 1 of 1 entries aren't used\n"},
        {"an unknown kind drops what is behind it", Rules(R"({"type":0},{"type":77},{"type":0})"),
         "samples[0].parserRules.parserule[1] (rule of type 77): no rule of this kind is read "
         "here\n"
         "samples[0].parserRules.parserule[2] (keyword): no rule of this kind is read here\n"},
        {"conditions",
         Rules("", R"(,"identify":{"ConfigKey":{"MustConditions":{"Item":[)"
                   R"({"@Index":1,"@Type":99,"@Value":"a"}]},"X":1}})"),
         "samples[0].identify.ConfigKey.MustConditions.Item: 1 of 1 entries aren't used\n"
         "samples[0].identify.ConfigKey.X: nothing reads it\n"},
        {"bytes that XML changes", Rules(R"({"keywords":{"keyword":["a\u0000b"]}})"),
         "samples[0].parserRules.parserule[0].keywords.keyword[0] (keyword): comes back as "
         "\"a?b\"\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Lines(CTzConvert::ToXml(Read(row.document))), row.wanted);
    }
}

TEST(Convert, ListsWhatOfXmlIsLost) {
    const struct {
        const char* name;
        const char* xml;
        const char* wanted;
    } rows[] = {
        {"nothing", "<parserules/>", ""},
        {"interface keys from both places",
         "<parserules><variables><interfacekeys>a</interfacekeys></variables></parserules>"
         "<variables><interfacekeys>b</interfacekeys></variables>",
         ""},
        {"elements that nothing reads",
         "<x/><parserules><y/><parserule><type>1</type><name>f</name><name>g</name><idlines/>"
         "<skiplines><skip>s</skip></skiplines><child><z/></child></parserule></parserules>"
         "<parserules/>",
         "x: nothing reads it\nparserules: only the first of these elements is read\n"
         "parserules.y: nothing reads it\n"
         "parserules.parserule[0].name (filter \"f\"): only the first of these elements is read\n"
         "parserules.parserule[0].idlines (filter \"f\"): nothing reads it\n"
         "parserules.parserule[0].skiplines.skip (filter \"f\"): nothing reads it\n"
         "parserules.parserule[0].child.z: nothing reads it\n"},
        {"rules that aren't read",
         "<parserules><parserule><type>15</type></parserule><parserule><type>4</type><child>"
         "<parserule><type>8</type></parserule><parserule><keywords><keyword>a</keyword></keywords>"
         "</parserule></child></parserule></parserules>",
         "parserules.parserule[0] (text): no rule of this kind is read here\n"
         "parserules.parserule[1].child.parserule[0] (script): no rule of this kind is read "
         "here\n"},
        {"what JSON can't hold",
         "<parserules><parserule><type>4</type><lineasparagraph>3</lineasparagraph></parserule>"
         "</parserules>",
         "parserules.parserule[0].lineasparagraph (paragraph): comes back as 1\n"},
        {"texts that are no number or flag",
         "<parserules><parserule><type>3</type><isuseprevars>true</isuseprevars>"
         "<isskipline>False</isskipline><leftalign>yes</leftalign><skipline>00</skipline>"
         "<variabletypes><variabletype>$a</variabletype></variabletypes></parserule></parserules>",
         "parserules.parserule[0].isuseprevars (table): nothing of it is read\n"
         "parserules.parserule[0].leftalign (table): nothing of it is read\n"
         "parserules.parserule[0].variabletypes (table): nothing of it is read\n"},
        {"lists of a script out of their order",
         "<parserules><parserule><type>8</type><variabletypes><variabletype><name>$a</name>"
         "<type>int</type></variabletype></variabletypes><script>x</script></parserule></"
         "parserules>",
         "parserules.parserule[0].variabletypes (script): nothing of it is read\n"},
        {"conditions",
         "<parserules/><ConfigKey><MustConditions><Item Index=\"1\" Type=\"99\""
         " Value=\"\"/></MustConditions></ConfigKey>",
         "ConfigKey.MustConditions: 1 of 1 conditions aren't used\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto conversion = CTzConvert::ToJson(row.xml);
        EXPECT_EQ(Lines(conversion), row.wanted);
        CTzParser parser;
        EXPECT_TRUE(parser.SetParser(Read(conversion.text)));
    }
}

TEST(Convert, ChoosesASample) {
    const auto document =
        Read(R"({"sequences":[2,1],"samples":[{"index":1,"parserRules":{}},)"
             R"({"index":2,"parserRules":{"parserule":[{"type":1,"name":"b"}]}}]})");
    EXPECT_EQ(Lines(CTzConvert::ToXml(document)),
              "the definition has several samples, with the numbers 1, 2: one has to be chosen");
    EXPECT_EQ(Lines(CTzConvert::ToXml(document, 3)),
              "the definition has no sample with the number 3; there are 1, 2");
    const auto conversion = CTzConvert::ToXml(document, 2);
    EXPECT_EQ(Lines(conversion),
              "samples[0]: only one sample is converted\n"
              "sequences: XML has no place for it\n"
              "samples[1].index: comes back as 1\n");
    EXPECT_NE(conversion.text.find("<name>b</name>"), std::string::npos);
}

// A ping rule adds its own lines to those of a document, so each writing and reading repeats them.
TEST(Convert, BuiltInLinesDoNotPileUp) {
    auto text = Rules(R"({"type":5,"keywords":{"keyword":["own $x"]}},{"type":6})");
    for (int turn = 0; turn < 3; ++turn) {
        SCOPED_TRACE(turn);
        const auto xml = CTzConvert::ToXml(Read(text));
        const auto json = CTzConvert::ToJson(xml.text);
        EXPECT_EQ(Lines(xml) + Lines(json), "");
        text = json.text;
        const auto rules = SampleOf(text)["parserRules"]["parserule"];
        EXPECT_EQ(rules[0]["keywords"].toString(), R"({"keyword":["own $x"]})");
        EXPECT_EQ(rules[1]["statements"].toString(), R"({"statement":[]})");
    }
}

// Diff filters are read from XML and not written, text rules neither.
TEST(Convert, RulesThatXmlOnlyReads) {
    const auto json = CTzConvert::ToJson(
        "<parserules><parserule><type>9</type><name>d</name><lines><row>2</row><text>x</text>"
        "<added>1</added></lines></parserule></parserules>");
    EXPECT_EQ(Lines(json), "");
    EXPECT_EQ(SampleOf(json.text)["parserRules"]["parserule"][0]["lines"].toString(),
              R"([{"added":true,"row":2,"text":"x"}])");
    EXPECT_EQ(Lines(CTzConvert::ToXml(Read(json.text))),
              "samples[0].parserRules.parserule[0] (diff filter \"d\"): XML can't hold a rule of "
              "this kind here, nor what is below it\n");
    EXPECT_EQ(
        Lines(CTzConvert::ToXml(Read(Rules(R"({"type":15,"name":"t"},{"type":2,"name":"r"})")))),
        "samples[0].parserRules.parserule[0] (text \"t\"): XML can't hold a rule of this "
        "kind here, nor what is below it\n");
}

TEST(Convert, RefusesWhatIsNeither) {
    for (const char* json : {"[]", "5", "{}", R"({"rules":[]})", R"({"samples":[]})",
                             R"({"samples":[{"parserRules":"{"}]})",
                             R"({"samples":[{"identify":"{","parserRules":{}}]})"}) {
        SCOPED_TRACE(json);
        EXPECT_NE(CTzConvert::ToXml(Read(json)).error, "");
    }
    for (const char* xml : {"", "x", "<a>", "<rules/>", "<!DOCTYPE a><parserules/>"}) {
        SCOPED_TRACE(xml);
        EXPECT_NE(CTzConvert::ToJson(xml).error, "");
    }
}

// As deep as either reader goes, and very many things to tell of.
TEST(Convert, HostileDocuments) {
    std::string rules;
    std::string xml;
    for (int depth = 0; depth < 490; ++depth) {
        if (depth < 330) rules += R"({"type":1,"q":1,"child":{"parserule":[)";
        xml += "<parserule><type>1</type><q/><child>";
    }
    for (int depth = 0; depth < 330; ++depth) rules += "]}}";
    for (int depth = 0; depth < 490; ++depth) xml += "</child></parserule>";
    const auto toXml = CTzConvert::ToXml(Read(Rules(rules)));
    EXPECT_EQ(toXml.error, "");
    ASSERT_EQ(toXml.losses.size(), 330u);
    for (const auto& loss : toXml.losses) EXPECT_LT(loss.place.size(), 500u);
    const auto toJson = CTzConvert::ToJson("<parserules>" + xml + "</parserules>");
    // Rules below a certain depth aren't read, and that is told.
    EXPECT_FALSE(toJson.error.empty() && toJson.losses.empty());
    std::string wide = R"({"parserule":[{)";
    for (int key = 0; key < 50000; ++key) wide += "\"k" + std::to_string(key) + "\":1,";
    EXPECT_EQ(CTzConvert::ToXml(Read(wide + R"("type":0}]})")).losses.size(), 50000u);
}

}  // namespace
