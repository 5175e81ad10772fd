// The built-in forms: ping and traceroute rules.
#include "host/store/failinginventory.h"
#include "host/store/inventory.h"
#include "host/store/memoryinventory.h"
#include "tzparser/keyword/appparserulekeywordping.h"
#include "tzparser/keyword/appparserulekeywordtracert.h"

#include "support/letdump.h"
#include "support/ruletree.h"

#include <gtest/gtest.h>

namespace {

struct BuiltInRow {
    const char* name;
    const char* node;  // keys of the rule node behind "type"
    const char* text;
    const char* wanted;
};

const BuiltInRow PingRows[] = {
    {"nothing lost", "", "Lost = 0 (0% loss)\nAverage = 12ms",
     "$average_time 1: 1:10-12 \"12\";\n$lost_rate 0: 0:10-11 \"0\";\n"
     "$ping_result 0: 0:0-0 \"True\";\n"},
    {"all lost", "", "\nLost = 4 (100% loss)",
     "$average_time 0: 0:0-0 \"\";\n$lost_rate 1: 1:10-13 \"100\";\n"
     "$ping_result 0: 0:0-0 \"False\";\n"},
    {"the mark alone counts as nothing lost", "", "Success rate is 0 percent\nLost =",
     "$average_time 0: 0:0-0 \"\";\n$lost_rate 0: 0:0-0 \"\";\n$ping_result 0: 0:0-0 \"True\";\n"},
    {"the mark in another case is none", "", "lost = 0 (0% loss)",
     "$average_time 0: 0:0-0 \"\";\n$lost_rate 0: 0:0-0 \"100\";\n"
     "$ping_result 0: 0:0-0 \"False\";\n"},
    {"a rate of success", "",
     "\nSuccess rate is 80 percent (4/5), round-trip min/avg/max = 1/2/4 ms",
     "$average_time 1: 1:61-62 \"2\";\n$lost_rate 0: 0:0-0 \"20\";\n"
     "$ping_result 0: 0:0-0 \"True\";\n"},
    {"no success", "", "Success rate is 0 percent (0/5)",
     "$average_time 0: 0:0-0 \"\";\n$lost_rate 0: 0:0-0 \"100\";\n"
     "$ping_result 0: 0:0-0 \"False\";\n"},
    {"rates that are none", "", "Success rate is -5 percent",
     "$average_time 0: 0:0-0 \"\";\n$lost_rate 0: 0:0-0 \"105\";\n"
     "$ping_result 0: 0:0-0 \"True\";\n"},
    {"a rate beyond numbers", "", "Success rate is 99999999999 percent",
     "$average_time 0: 0:0-0 \"\";\n$lost_rate 0: 0:0-0 \"-2147483547\";\n"
     "$ping_result 0: 0:0-0 \"True\";\n"},
    {"an empty text", "", "",
     "$average_time 0: 0:0-0 \"\";\n$lost_rate 0: 0:0-0 \"100\";\n"
     "$ping_result 0: 0:0-0 \"False\";\n"},
    {"stand-by values begin the range, the computed ones the text",
     R"(,"nistart":{"type":2,"pattern":"second"})", "Success rate is 9 percent\nsecond\n",
     "$average_time 1: 1:0-0 \"\";\n$lost_rate 0: 0:0-0 \"100\";\n"
     "$ping_result 0: 0:0-0 \"False\";\n"},
    {"the mark is looked for outside of the range", R"(,"nistart":{"type":2,"pattern":"second"})",
     "Lost =\nsecond\nSuccess rate is 0 percent",
     "$average_time 1: 1:0-0 \"\";\n$lost_rate 1: 1:0-0 \"\";\n$ping_result 0: 0:0-0 \"True\";\n"},
    {"a bound that isn't found", R"(,"nistart":{"type":2,"pattern":"second"})",
     "Lost = 0 (0% loss)", ""},
    {"of a document's own lines only blocks stay",
     R"(,"keywords":{"keyword":["sent $n","mline[$block]:$lost_rate"]})",
     "sent 5\nLost = 0 (0% loss)",
     "$average_time 0: 0:0-0 \"\";\n$block 1: 1:0-18 \"Lost = 0 (0% loss)\\n\" 1;\n"
     "$lost_rate 1: 1:10-11 \"0\";\n$ping_result 0: 0:0-0 \"True\";\n"},
};

const BuiltInRow TraceRows[] = {
    {"the last hop", "",
     "traceroute to 192.0.2.9, 30 hops\n 1 198.51.100.1 1 ms\n 2 192.0.2.9 2 ms",
     "$ip 2: 2:3-12 \"192.0.2.9\";\n"},
    {"the first address of its line", "",
     "Tracing the route to x\n 1 192.0.2.1 5 ms 192.0.2.2 6 ms\n",
     "$ip 1: 1:3-12 \"192.0.2.1\";\n"},
    {"hops that don't answer", "", "TRACEROUTE=x\n 1 192.0.2.1 5 ms\n 2 * * *\nTrace complete.",
     "$ip 1: 1:3-12 \"192.0.2.1\";\n"},
    {"a header alone", "", "traceroute to 192.0.2.9, 30 hops\n", ""},
    {"no hop with an address", "", "traceroute to x (192.0.2.9)\n 1 * * *\n 2 * * *\n", ""},
    {"an address above the header alone", "", "from 192.0.2.1\nTracing the route to x\n", ""},
    {"no header", "", " 1 192.0.2.1 5 ms\n 2 192.0.2.9 5 ms", ""},
    {"a header without a text behind its keyword", "", "Tracing \t\n 1 192.0.2.1 5 ms", ""},
    {"only the first keyword of a line counts", "", "traceroute to x tracing\n 1 192.0.2.1 5 ms",
     ""},
    {"the header is the first one", "", "Tracing\ntracing x\n 1 192.0.2.1\ntracing y",
     "$ip 2: 2:3-12 \"192.0.2.1\";\n"},
    {"an address of another family", "", "traceroute to 2001:db8::9\n 1 2001:db8::1 1 ms",
     "$ip 1: 1:0-0 \"\";\n"},
    {"no free address", "", "traceroute to x\n 1 192.0.2.1.5 1 ms", ""},
    {"bounds are looked for from the hop on", R"(,"nistart":{"type":2,"pattern":"traceroute"})",
     "traceroute to 192.0.2.9\n 1 192.0.2.9 1 ms", ""},
    {"the hop's line, not the range's, begins", R"(,"niend":{"type":2,"pattern":"done"})",
     "traceroute to 192.0.2.9\n 1 192.0.2.1 1 ms\ndone 1.2.3.4.5",
     "$ip 1: 1:3-12 \"192.0.2.1\";\n"},
    {"an empty text", "", "", ""},
};

void ExpectRows(int type, const BuiltInRow* rows, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const auto& row = rows[i];
        SCOPED_TRACE(row.name);
        auto sample = LoadRules("{\"type\":" + std::to_string(type) + row.node + "}");
        const std::unique_ptr<CAppParseRule> clone(sample->Clone(nullptr));
        for (const char* time : {"the first time", "the second time"}) {
            clone->Parse(row.text, 0, -1, nullptr);
            EXPECT_EQ(DumpPositions(KeyWordAt(*clone, 0).GetVariablePos()), row.wanted) << time;
        }
    }
}

TEST(KeyWordBuiltIn, ValuesOfPings) {
    ExpectRows(RuleType_Ping, PingRows, std::size(PingRows));
}

TEST(KeyWordBuiltIn, ValuesOfTraces) {
    ExpectRows(RuleType_TraceRoute, TraceRows, std::size(TraceRows));
}

std::string Joined(const std::vector<std::string>& texts) {
    std::string joined;
    for (const auto& text : texts) joined += text + "\n";
    return joined;
}

struct LinesRow {
    const char* name;
    int type;
    const char* text;  // null: no parse yet
    const char* wanted;
};

const LinesRow LinesRows[] = {
    {"a ping as declared", RuleType_Ping, nullptr,
     "$int:lost_rate\n$int:average_time\n|$ping_result=$lost_rate\n"
     "|$lost_rate\n$average_time\n$ping_result\n|int int bool "},
    {"a ping that counts what was lost", RuleType_Ping, "Lost =",
     "regex[$int:lost_rate]:\\((\\d+)% loss\\)\nregex[$int:average_time]:Average = (\\d+)ms\n"
     "|$ping_result=$lost_rate!=100\n|$lost_rate\n$average_time\n$ping_result\n|int int bool "},
    {"a ping that counts what came back", RuleType_Ping, "",
     "Success rate is $int:lost_rate percent\n"
     "regex[$int:average_time]:round-trip min/avg/max = \\d+/(\\d+)/\\d+ ms\n"
     "|$ping_result=$lost_rate!=0\n|$lost_rate\n$average_time\n$ping_result\n|int int bool "},
    {"a trace as declared", RuleType_TraceRoute, nullptr,
     "$ip:last_hop\n|$traceroute_result=::is_device_ip($target_device,$last_hop)\n"
     "|$ip\n$traceroute_result\n|string bool "},
    {"a trace", RuleType_TraceRoute, "",
     "regex[$ip:last_hop]:(\\d+\\.\\d+\\.\\d+\\.\\d+)\n"
     "|$traceroute_result=::is_device_ip($target_ip,$last_hop)\n|$ip\n$traceroute_result\n"
     "|string bool "},
};

// A parse installs lines in its own clone; the definition keeps what it declared.
TEST(KeyWordBuiltIn, LinesAndVariables) {
    const auto dump = [](CAppParseRuleKeyWord& rule) {
        const auto names = rule.GetVariableNames();
        auto text =
            Joined(rule.GetKVPs()) + "|" + Joined(rule.GetStatements()) + "|" + Joined(names) + "|";
        for (const auto& name : names) text += rule.GetVariableType(name) + " ";
        return text;
    };
    for (const auto& row : LinesRows) {
        SCOPED_TRACE(row.name);
        auto sample = LoadRules("{\"type\":" + std::to_string(row.type) + "}");
        const auto declared = dump(KeyWordAt(*sample, 0));
        const std::unique_ptr<CAppParseRule> clone(sample->Clone(nullptr));
        auto& rule = KeyWordAt(*clone, 0);
        EXPECT_EQ(rule.GetRuleType(), row.type);
        if (row.text != nullptr) clone->Parse(row.text, 0, -1, nullptr);
        EXPECT_EQ(dump(rule), row.wanted);
        EXPECT_EQ(dump(KeyWordAt(*sample, 0)), declared);
    }
}

// A document that was saved has the declared lines, which the constructor has made already.
TEST(KeyWordBuiltIn, SavedAndLoadedLinesAreDoubled) {
    auto sample = LoadRules("{\"type\":5,\"variabletypes\":{\"variabletype\":[\"$x:int\"]}}");
    auto& rule = KeyWordAt(*sample, 0);
    hxJson::Value document;
    ASSERT_TRUE(rule.Save(document));
    auto again = LoadRules("{\"type\":5," + document.toString().substr(1));
    EXPECT_EQ(Joined(KeyWordAt(*again, 0).GetKVPs()),
              "$int:lost_rate\n$int:average_time\n$int:lost_rate\n$int:average_time\n");
    EXPECT_EQ(rule.GetVariableType("ping_result"), "") << "the document's types replace all";
    EXPECT_EQ(rule.GetVariableNames().back(), "$ping_result");
    EXPECT_EQ(rule.GetVariableType("ping_result"), "bool");
}

// A variable written with a type word isn't renamed.
TEST(KeyWordBuiltIn, EditingLeavesTheResult) {
    auto sample = LoadRules("{\"type\":5},{\"type\":6}");
    EXPECT_TRUE(sample->RenameVariable("lost_rate", "loss"));
    EXPECT_TRUE(sample->DeleteVariable("average_time"));
    EXPECT_TRUE(sample->DeleteVariable("ip"));
    EXPECT_EQ(Joined(KeyWordAt(*sample, 0).GetVariableNames()), "$lost_rate\n$ping_result\n");
    EXPECT_EQ(Joined(KeyWordAt(*sample, 1).GetVariableNames()), "$traceroute_result\n");
}

// In paragraphs a ping rule keeps the values of the last one alone, since each parse forgets all.
// It never fills the place of a paragraph's own keyword rule.
TEST(KeyWordBuiltIn, TheLastParagraphHolds) {
    auto sample = LoadRules(
        R"({"type":4,"name":"p","startline":"ping $host","child":{"parserule":[{"type":5}]}})");
    auto& paragraph = *sample->Children().at(0);
    ASSERT_EQ(paragraph.Children().size(), 2u);
    sample->Parse("ping a\nLost = 1 (25% loss)\nping b\nLost = 2 (50% loss)\n", 0, -1, nullptr);
    EXPECT_EQ(DumpPositions(KeyWordAt(paragraph, 1).GetVariablePos()),
              "$average_time 2: 2:0-0 \"\";\n$lost_rate 3: 3:10-12 \"50\";\n"
              "$ping_result 0: 0:0-0 \"True\";\n");
}

// In paragraphs a trace is looked for among all open lines, in each of many runs over one text.
TEST(KeyWordBuiltIn, TracesOfManyRuns) {
    auto sample = LoadRules(
        R"({"type":1,"filterloop":true,"includelines":{"includeline":["regex:^[^#]*$"]},"child":)"
        R"({"parserule":[{"type":4,"startline":"^block $b","child":{"parserule":[{"type":6}]}}]}})");
    const auto& paragraph = sample->Children().at(0)->Children().at(1);
    const struct {
        const char* name;
        const char* text;
        const char* wanted;
    } rows[] = {
        {"closed lines around the trace",
         "# tracing x\nblock 1\ntracing x\n 1 192.0.2.1\nblock 2\n 2 192.0.2.2\n# 192.0.2.3",
         "$ip 5: 5:3-12 \"192.0.2.2\";\n"},
        {"an earlier header", "block 1\ntracing x\nblock 2\n 1 192.0.2.1\n",
         "$ip 3: 3:3-12 \"192.0.2.1\";\n"},
        {"a closed header", "# tracing x\nblock 1\nblock 2\n 1 192.0.2.1\n", ""},
        {"no header", "block 1\nblock 2\n 1 192.0.2.1\n", ""},
        {"no address", "block 1\ntracing x\nblock 2\n 1 *\n", "$ip 2: 2:0-0 \"\";\n"},
        {"later lines", "\n\n\n\n\nblock 1\nblock 2\ntracing x\n\n 1 192.0.2.1\n",
         "$ip 9: 9:3-12 \"192.0.2.1\";\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        sample->Parse(row.text, 0, -1, nullptr);
        EXPECT_EQ(DumpPositions(KeyWordAt(*paragraph, 1).GetVariablePos()), row.wanted);
    }
}

// A trace whose line does declare the hop.
class CTraceOfLastHop : public CAppParseRuleKeyWordTraceRT {
public:
    using CAppParseRuleKeyWordTraceRT::CAppParseRuleKeyWordTraceRT;
    bool Parse(const std::string&, int startLine, int endLine, IAppVariableCallback*) override {
        static const CBuiltInLines lines({R"(regex[$last_hop]:(\d+\.\d+\.\d+\.\d+))"}, "",
                                         "$traceroute_result");
        return ParseWith(lines, startLine, endLine);
    }
};

struct HopRow {
    const char* name;
    const char* tenant;
    const char* target;
    const char* hop;
    const char* wanted;
};

const HopRow HopRows[] = {
    {"the target itself", "", "192.0.2.7", "192.0.2.7", "True"},
    {"another address of its device", "acme", "192.0.2.9", "192.0.2.10", "True"},
    {"a name with that address", "acme", "core (192.0.2.9)", "192.0.2.10", "True"},
    {"another device", "acme", "192.0.2.9", "198.51.100.1", "False"},
    {"an unknown target", "acme", "192.0.2.8", "192.0.2.10", "False"},
    {"an unknown hop", "acme", "192.0.2.9", "192.0.2.8", "False"},
    {"no target", "acme", "core", "192.0.2.10", "False"},
    {"another tenant", "other", "192.0.2.9", "192.0.2.10", "False"},
    {"no answer", "", "192.0.2.9", "*", nullptr},
};

TEST(KeyWordBuiltIn, TraceResultByTheInventory) {
    const auto inventory = std::make_shared<CMemoryInventory>();
    std::string error;
    ASSERT_TRUE(inventory->Upsert("acme",
                                  {{"core", "Gi0/1", "192.0.2.9", 24},
                                   {"core", "Gi0/2", "192.0.2.10", 24},
                                   {"edge", "Gi0/1", "198.51.100.1", 24}},
                                  error))
        << error;
    const auto result = [](const HopRow& row) {
        CAppParseRuleSample sample("test");
        auto* rule = new CTraceOfLastHop(&sample);
        sample.AddChildRule(rule);
        const CAddressTenantScope scope(row.tenant);
        sample.Parse(std::string("traceroute to ") + row.target + "\n 1 " + row.hop, 0, -1,
                     nullptr);
        EXPECT_EQ(rule->GetVariableType("$traceroute_result"), row.wanted != nullptr ? "bool" : "");
        return DumpLets(rule->GetVariableValue("traceroute_result"));
    };
    SetInventory(inventory);
    for (const auto& row : HopRows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(result(row),
                  row.wanted != nullptr ? "0:0-0 \"" + std::string(row.wanted) + "\"" : "");
    }
    SetInventory(std::make_shared<CFailingInventory>("down"));
    EXPECT_EQ(result(HopRows[1]), "0:0-0 \"False\"");
    SetInventory(nullptr);
}

// A block variable of the document's own can be called $last_hop: then there is a result after all.
TEST(KeyWordBuiltIn, ABlockCanBeTheLastHop) {
    auto sample = LoadRules(R"({"type":6,"keywords":{"keyword":["mline[$last_hop]:$ip"]}})");
    sample->Parse("traceroute to 192.0.2.9\n192.0.2.9", 0, -1, nullptr);
    EXPECT_EQ(DumpPositions(KeyWordAt(*sample, 0).GetVariablePos()),
              "$ip 1: 1:0-9 \"192.0.2.9\";\n$last_hop 1: 1:0-9 \"192.0.2.9\\n\" 1;\n"
              "$traceroute_result 0: 0:0-0 \"False\";\n");
}

}  // namespace
