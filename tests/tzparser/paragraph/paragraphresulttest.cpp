// Look-ups by name, result documents, and the whole way to values.
#include "host/xml/markup.h"
#include "tzparser/engine/tzparser.h"
#include "tzparser/variable/appvariabletabledef.h"

#include "paragraphsupport.h"

namespace {

std::string PortsNode() {
    return ParagraphNode(
        R"("name":"vrfs","startline":"^vrf $v","keyvariables":"$v")", "",
        "," + ParagraphNode(R"("name":"peers","startline":"^ peer $n")", R"("as $int:as")"));
}

const char* const Text = "vrf red\n peer a\n  as 64500\n peer b\nvrf blue\n";

TEST(ParagraphResult, ValuesByName) {
    auto sample = LoadRules(PortsNode());
    sample->Parse(Text, 0, -1, nullptr);
    auto& rule = ParagraphAt(*sample, 0);
    const struct {
        const char* name;
        const char* wanted;
    } rows[] = {
        {"vrfs.v", "0:4-7 \"red\"; 4:4-8 \"blue\""},
        {"$vrfs.v", "0:4-7 \"red\"; 4:4-8 \"blue\""},
        {"vrfs.$v", "0:4-7 \"red\"; 4:4-8 \"blue\""},
        {"peers.n", "1:6-7 \"a\"; 3:6-7 \"b\"; 4:0-0 \"\""},
        {"v", ""},  // a keyword rule isn't asked under a name that isn't the rule's
        {"vrfsxv", "0:4-7 \"red\"; 4:4-8 \"blue\""},  // any one character may stand between
        {"other.v", ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(DumpLets(rule.GetVariableValue(row.name)), row.wanted) << row.name;
}

TEST(ParagraphResult, OwnersByName) {
    auto sample = LoadRules(PortsNode());
    auto& vrfs = ParagraphAt(*sample, 0);
    auto& peers = ParagraphAt(vrfs, 1);
    const struct {
        const char* name;
        const CAppParseRule* wanted;
    } rows[] = {{"vrfs", &vrfs},
                {"$vrfs", &vrfs},
                {"vrfs.v", vrfs.Children()[0].get()},
                {"$vrfs.$v", vrfs.Children()[0].get()},
                {"vrfs.none", nullptr},
                {"vrfs.as", nullptr},
                {"v", nullptr},
                {"peers", &peers},
                {"peers.as", peers.Children()[0].get()}};
    for (const auto& row : rows)
        EXPECT_EQ(sample->GetChildRuleByVariableName(row.name), row.wanted) << row.name;
}

TEST(ParagraphResult, LinesAndSingleValues) {
    auto sample = LoadRules(PortsNode());
    auto& rule = ParagraphAt(*sample, 0);
    int line = 5;
    EXPECT_FALSE(rule.GetVariableLine("v.start", line));
    EXPECT_EQ(line, -1);
    EXPECT_FALSE(rule.IsNoneExist());
    sample->Parse(std::string("\n") + Text, 0, -1, nullptr);
    // A name that ends in ".end" gets the begin line, one that begins with ".start" the end line.
    for (const auto& [name, wanted] :
         {std::pair{"v.start", 1}, {"v.end", 1}, {"v", 1}, {".end", 1}, {".start", 5}}) {
        EXPECT_TRUE(rule.GetVariableLine(name, line));
        EXPECT_EQ(line, wanted) << name;
    }
    EXPECT_TRUE(rule.IsNoneExist());
    EXPECT_EQ(rule.GetKeyVariableValue("$v", 1), "blue");
    EXPECT_EQ(rule.GetKeyVariableValue("$v", 2) + rule.GetKeyVariableValue("$x", 0), "");
}

TEST(ParagraphResult, Documents) {
    auto sample = LoadRules(ParagraphNode(R"("name":"p","startline":"regex:^port")"));
    sample->Parse("port a\nx\nport b", 0, -1, nullptr);
    hxJson::Value json;
    EXPECT_TRUE(sample->Children()[0]->SaveResultAsJson(json));
    EXPECT_EQ(json, ParseJson(R"({"parseResult":{"parserName":"p","parserType":4,
        "paragraphs":["0,2","2,3"],
        "childs":[{"parseResult":{"parserType":0,"variables":[]}}]}})"));
    CMarkup xml;
    sample->Children()[0]->SaveResultAsXML(xml);
    const auto text = xml.GetDoc();
    EXPECT_NE(text.find("<paragraph>0,2</paragraph>"), std::string::npos) << text;
    // Begins and ends of different number give no paragraphs.
    auto odd = LoadRules(ParagraphNode(R"("startline":"regex:^port","idlines":["regex:mtu"])"));
    odd->Parse("port a\nport b mtu", 0, -1, nullptr);
    odd->Children()[0]->SaveResultAsJson(json);
    EXPECT_EQ(json["parseResult"]["paragraphs"].size(), 0U);
}

TEST(ParagraphResult, KeysOfOuterParagraphs) {
    auto sample = LoadRules(PortsNode());
    auto& vrfs = ParagraphAt(*sample, 0);
    auto& peers = ParagraphAt(vrfs, 1);
    vrfs.AddTableKey("v");
    peers.AddTableKey("n");
    EXPECT_EQ(peers.GetTableKeysEx(false), (std::set<std::string>{"n", "v"}));
    EXPECT_EQ(peers.GetTableKeysEx(true), std::set<std::string>{});
    peers.AddTableInterfaceKey("i");
    EXPECT_EQ(peers.GetTableKeysEx(false), (std::set<std::string>{"i", "v"}));
}

// Both tables hang at the root; the outer variable is a column of the inner table too.
TEST(ParagraphResult, TablesOfTheValueTree) {
    CTzParser parser;
    ASSERT_TRUE(parser.SetParser(ParseJson(
        R"({"sequences":[1],"samples":[{"index":1,"tableKeys":["x.vrfs.v"],"parserRules":)"
        R"({"parserule":[)" +
        PortsNode() + "]}}]}")));
    std::string error;
    const auto values = parser.Parse(Text, error);
    ASSERT_NE(values, nullptr) << error;
    std::string dump;
    for (const auto* table : values->GetChildValues()) {
        dump += table->GetName() + ":";
        for (const auto* column : table->GetChildValues()) {
            dump += " " + column->GetName() + "=";
            for (const auto& let : column->GetValues()) dump += let.text + ",";
        }
        dump += "\n";
    }
    EXPECT_EQ(dump, "vrfs: v=red,blue,\npeers: n=a,b,, as=64500,,, v=red,red,blue,\n");
    const auto* vrfs =
        dynamic_cast<const CAppVariableTableDef*>(parser.GetVariableTree()->GetChild("vrfs"));
    ASSERT_NE(vrfs, nullptr);
    EXPECT_EQ(vrfs->GetKeys(), std::vector<std::string>{"v"});
    EXPECT_EQ(vrfs->GetTableKeys(), std::set<std::string>{"v"});
}

}  // namespace
