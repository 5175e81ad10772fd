// Filling of gaps: a paragraph in which a table or a nested paragraph found nothing gets empty
// values at its first line.
#include "tzparser/table/appparseruletable.h"

#include "paragraphsupport.h"

namespace {

const char* const PortTable =
    R"(,{"type":3,"name":"t","headers":"Port;Vlan","headertovariables":"Port:$port;Vlan:$vlan"})";

CAppParseRuleTable& TableAt(CAppParseRule& parent, std::size_t index) {
    return dynamic_cast<CAppParseRuleTable&>(*parent.Children().at(index));
}

// Slot 2 has no ports: its row of empty cells keeps the rows of slots and ports in step.
TEST(ParagraphFill, ATableWithoutRowsGetsAnEmptyOne) {
    auto sample =
        LoadRules(ParagraphNode(R"("name":"slots","startline":"^slot $slot")", "", PortTable));
    sample->Parse("slot 1\nPort  Vlan\n1/1   10\nslot 2\nno ports\nslot 3\nPort  Vlan\n3/1   30", 0,
                  -1, nullptr);
    auto& table = TableAt(ParagraphAt(*sample, 0), 1);
    EXPECT_EQ(DumpPositions(table.VariablePos()),
              "$port 2: 2:0-3 \"1/1\"; 3: 3:0-0 \"\"; 7: 7:0-3 \"3/1\";\n"
              "$vlan 2: 2:6-8 \"10\"; 3: 3:0-0 \"\"; 7: 7:6-8 \"30\";\n");
    EXPECT_TRUE(table.IsNoneExist());
    // Rows of tables stay when the rules run again, but the rows that filled gaps of the earlier
    // text go with the next run of the table.
    sample->Parse("slot 1\nPort  Vlan\n1/1   10", 0, -1, nullptr);
    EXPECT_EQ(DumpLets(table.GetVariableValue("t.port")), "2:0-3 \"1/1\"; 7:0-3 \"3/1\"");
}

TEST(ParagraphFill, ATableThatFoundNothingGetsARowAParagraph) {
    auto sample =
        LoadRules(ParagraphNode(R"("name":"slots","startline":"^slot $slot")", "", PortTable));
    sample->Parse("slot 1\nslot 2", 0, -1, nullptr);
    EXPECT_EQ(DumpLets(TableAt(ParagraphAt(*sample, 0), 1).GetVariableValue("t.port")),
              "0:0-0 \"\"; 1:0-0 \"\"");
}

// Without a variable of its own the paragraph yields no rows to keep in step.
TEST(ParagraphFill, NothingIsFilledWithoutVariables) {
    auto sample =
        LoadRules(ParagraphNode(R"("name":"slots","startline":"regex:^slot")", "", PortTable));
    sample->Parse("slot 1\nslot 2", 0, -1, nullptr);
    EXPECT_TRUE(TableAt(ParagraphAt(*sample, 0), 1).VariablePos().empty());
}

std::string VrfNode(const std::string& children = "") {
    return ParagraphNode(R"("name":"vrfs","startline":"^vrf $v")", "",
                         "," + ParagraphNode(R"("name":"peers","startline":"^ neighbor $n")",
                                             R"("as $int:as")", children));
}

TEST(ParagraphFill, ANestedParagraphThatIsMissing) {
    auto sample = LoadRules(VrfNode());
    sample->Parse("vrf red\n neighbor 192.0.2.1\nvrf blue\nvrf green\n neighbor 192.0.2.3\n  as 1",
                  0, -1, nullptr);
    auto& peers = ParagraphAt(ParagraphAt(*sample, 0), 1);
    EXPECT_EQ(DumpPositions(KeyWordAt(peers, 0).GetVariablePos()),
              "$as 1: 1:0-0 \"\"; 2: 2:0-0 \"\"; 5: 5:5-6 \"1\";\n"
              "$n 1: 1:10-19 \"192.0.2.1\"; 2: 2:0-0 \"\"; 4: 4:10-19 \"192.0.2.3\";\n");
    EXPECT_EQ(DumpLets(sample->GetVariableValue("peers.v")),
              "0:4-7 \"red\"; 2:4-8 \"blue\"; 3:4-9 \"green\"");
}

// The families nested in the peers: "blue" has no peer at all, and its one row goes down to the
// families; the peer of "red" has no family.
TEST(ParagraphFill, GapsGoDownThroughNestedParagraphs) {
    auto sample =
        LoadRules(VrfNode("," + ParagraphNode(R"("name":"families","startline":"^  family $f")")));
    sample->Parse(
        "vrf red\n neighbor 192.0.2.1\nvrf blue\nvrf green\n neighbor 192.0.2.3\n  family ipv4", 0,
        -1, nullptr);
    auto& peers = ParagraphAt(ParagraphAt(*sample, 0), 1);
    EXPECT_EQ(DumpPositions(KeyWordAt(ParagraphAt(peers, 1), 0).GetVariablePos()),
              "$f 1: 1:0-0 \"\"; 2: 2:0-0 \"\"; 5: 5:9-13 \"ipv4\";\n");
}

// Before "green" the nested rule had found nothing, so its variables were unknown and "red" and
// "blue" couldn't be filled; they are as soon as the names are there.
TEST(ParagraphFill, EarlierGapsAreFilledWhenVariablesComeUp) {
    const auto node = ParagraphNode(
        R"("name":"devices","startline":"^device $d")", "",
        "," + ParagraphNode(R"("name":"vrfs","startline":"^ vrf $v")", "",
                            "," + ParagraphNode(R"("name":"peers","startline":"^  peer $n")")));
    auto sample = LoadRules(node);
    sample->Parse("device 1\n vrf red\n vrf blue\ndevice 2\n vrf green\n  peer 192.0.2.1", 0, -1,
                  nullptr);
    auto& peers = ParagraphAt(ParagraphAt(ParagraphAt(*sample, 0), 1), 1);
    EXPECT_EQ(DumpPositions(KeyWordAt(peers, 0).GetVariablePos()),
              "$n 1: 1:0-0 \"\"; 2: 2:0-0 \"\"; 5: 5:7-16 \"192.0.2.1\";\n");
}

// A table two levels down takes the begin lines of the gaps for indexes. In the first text lines
// and indexes agree. With two lines more in front the number of "red" is 2, so its row stands at
// the begin of "green", and that of "blue" is no index and gives no row.
TEST(ParagraphFill, TablesFurtherDownTakeLinesForIndexes) {
    const auto node = VrfNode(
        "," + ParagraphNode(R"("name":"families","startline":"^  family $f")", "", PortTable));
    const struct {
        const char* text;
        const char* wanted;
    } rows[] = {
        {"vrf red\nvrf blue\nvrf green\n neighbor 192.0.2.1\n  family ipv4\nPort  Vlan\n1     2",
         "0:0-0 \"\"; 1:0-0 \"\"; 6:0-1 \"1\""},
        {"x\nx\nvrf red\nvrf blue\nvrf green\n neighbor 192.0.2.1\n  family ipv4\nPort  Vlan\n1    "
         " "
         "2",
         "4:0-0 \"\"; 8:0-1 \"1\""},
    };
    for (const auto& row : rows) {
        auto sample = LoadRules(node);
        sample->Parse(row.text, 0, -1, nullptr);
        auto& families = ParagraphAt(ParagraphAt(ParagraphAt(*sample, 0), 1), 1);
        EXPECT_EQ(DumpLets(TableAt(families, 1).GetVariableValue("t.port")), row.wanted);
    }
}

// Rows of empty cells go with the next run of the table and come back with the next filling, unless
// what made a paragraph no gap has changed meanwhile.
TEST(ParagraphFill, RowsThatFillGapsGoWithTheNextRunOfTheTable) {
    const auto start = [](const char* letter) {
        return std::string(R"("name":"p)") + letter + R"(","startline":"regex[$)" + letter +
               "]:^ *" + letter + R"x( (\\S+)")x";
    };
    const auto nested = ParagraphNode(
        start("A"), "",
        "," + ParagraphNode(start("B"), "",
                            "," + ParagraphNode(R"("name":"pC","startline":"regex:^ *C")", "",
                                                "," + ParagraphNode(start("D"), "", PortTable))));
    const auto flat = ParagraphNode(start("A"), "", "," + ParagraphNode(start("B"), "", PortTable));
    const struct {
        const char* name;
        const std::string& node;
        const char* text;
        const char* wanted;
    } rows[] = {
        {"a row from further up stands before all paragraphs, so the first one is no gap until the "
         "table runs",
         nested,
         " A 2\nB 2 3\n B alpha 2 3\nA 1\n B alpha alpha\n C alpha beta\n   D alpha 2 alpha\n"
         "Port  Vlan",
         "2:0-0 \"\"; 4:0-0 \"\"; 6:0-0 \"\""},
        {"without a run of the table it stays no gap", nested,
         " A 2\nB 2 3\n B alpha 2 3\nA 1\n B alpha alpha\n C alpha beta\n   D alpha 2 alpha\n",
         "2:0-0 \"\"; 4:0-0 \"\""},
        {"gaps of runs before the last table", flat,
         "A 1\nB 1\nA 2\nB 2\nPort  Vlan\n1/1   2\nB 3\nA 3\nB 4",
         "1:0-0 \"\"; 5:0-3 \"1/1\"; 6:0-0 \"\"; 8:0-0 \"\""},
    };
    for (const auto& row : rows) {
        auto sample = LoadRules(row.node);
        for (int parse = 0; parse < 2; ++parse) {
            sample->Parse(row.text, 0, -1, nullptr);
            EXPECT_EQ(DumpLets(sample->GetVariableValue("t.port")), row.wanted)
                << row.name << ", parse " << parse;
        }
    }
}

TEST(ParagraphFill, ByHand) {
    auto sample = LoadRules(VrfNode());
    sample->Parse("vrf red\n neighbor 192.0.2.1", 0, -1, nullptr);
    auto& vrfs = ParagraphAt(*sample, 0);
    auto& peers = ParagraphAt(vrfs, 1);
    vrfs.FillEmptyParagraphValue(nullptr, {5});
    vrfs.FillEmptyParagraphValue(&peers, {0, 5});
    EXPECT_EQ(DumpLets(KeyWordAt(peers, 0).GetVariableValue("n")),
              "0:0-0 \"\"; 1:10-19 \"192.0.2.1\"; 5:0-0 \"\"");
    vrfs.ClearChildParagraphVariablePos(&vrfs);
    EXPECT_TRUE(KeyWordAt(peers, 0).GetVariablePos().empty());
}

}  // namespace
