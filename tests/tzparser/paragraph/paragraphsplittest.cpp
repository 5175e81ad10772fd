// Where paragraphs begin and end, which lines are open to the children, and what nested rules keep.
#include "paragraphsupport.h"

#include <vector>

namespace {

struct SplitRow {
    const char* name;
    const char* keys;
    const char* text;
    const char* wanted;  // begins | ends
};

const SplitRow SplitRows[] = {
    {"no start and no line mode", R"("endline":"regex:^!")", "a\n!", "|"},
    {"each line by itself", R"("islineasparagraph":true,"lineasparagraph":true)", "a\nb\nc",
     "0 1 2 | 1 2 3"},
    {"groups of a document are of one line", R"("islineasparagraph":true,"lineasparagraph":3)",
     "a\nb", "0 1 | 1 2"},
    {"groups of no line", R"("islineasparagraph":true,"lineasparagraph":0)", "a\nb", "|"},
    {"line mode takes no end line",
     R"("islineasparagraph":true,"lineasparagraph":1,"endline":"regex:b","excludeendline":true)",
     "a\nb", "0 1 | 1 2"},
    {"a start pattern is stronger than line mode",
     R"("startline":"regex:^a","islineasparagraph":true,"lineasparagraph":1)", "a\nb\na",
     "0 2 | 2 3"},
    {"start at the last line", R"("startline":"^interface $n")", "x\ninterface a", "1 | 2"},
    {"end line behind the start",
     R"("startline":"^interface $n","endline":"regex:^!",)"
     R"("excludeendline":true)",
     "interface a\n!\ninterface b\n mtu 1\n!\nx", "0 2 | 1 4"},
    {"end line included", R"("startline":"^interface $n","endline":"regex:^!")",
     "interface a\n!\ninterface b\n mtu 1\n!\nx", "0 2 | 2 5"},
    {"no end line found", R"("startline":"^interface $n","endline":"regex:^!")",
     "interface a\nb\ninterface c\nd", "0 2 | 2 4"},
    {"an empty line ends",
     R"("startline":"^interface $n","endline":"regex:^$",)"
     R"("excludeendline":true)",
     "interface a\n m\n\n n\ninterface b", "0 4 | 2 5"},
    {"only that expression is tried with empty lines",
     R"("startline":"^interface $n","endline":"regex:^\\s*$","excludeendline":true)",
     "interface a\n m\n\n n\ninterface b", "0 4 | 4 5"},
    {"a broken end pattern ends nothing", R"-("startline":"^interface $n","endline":"$x(a|b[)")-",
     "interface a\nb\ninterface c", "0 2 | 2 3"},
    {"a broken start pattern begins nothing", R"-("startline":"$x(a|b[)")-", "a\nb", "|"},
    {"a start that is no statement is a text", R"("startline":"if (a")", "if (a\nIF (A\nx",
     "0 1 | 1 3"},
    // Sub-interfaces repeat the port in their head: consecutive blocks of one port are one.
    {"equal key values go on", R"("startline":"^port $n unit")",
     "port a unit 0\nport a unit 1\nport a unit 2\nport b unit 0", "0 3 | 3 4"},
    {"several lines begin with each match", R"-("startline":"mregex[$n]:^port (\\S+)")-",
     "port a\nport a\nport a\nport b", "0 1 2 3 | 1 2 3 4"},
    {"an empty key is no key", R"-("startline":"regex[$n]:^port( \\S+)?")-", "port\nport a",
     "1 | 2"},
    {"dummies are no keys", R"("startline":"^port $_dummy vlan $v")",
     "port a vlan 1\nport b vlan 1\nport b vlan 2", "0 2 | 2 3"},
    {"a head of two lines", R"("startline":"mregex:^port \\S+\\n mtu")",
     "port a\n mtu 1\nx\nport b\nx\nport c\n mtu 2", "0 5 | 5 7"},
    {"a head that ends with its line feed takes the next line too",
     R"("startline":"mregex:^port\\n")", "port\nport\nport\nport\nx", "0 2 | 2 5"},
    {"an earlier equal text is the place", R"("startline":"mregex:^port a")",
     "no port a\nport a\nx", "0 1 | 1 3"},
    {"an end over several lines is its first line",
     R"("startline":"^port $n","endline":"mregex:^end\\n!","excludeendline":true)",
     "port a\nend\nx\nend\n!\nport b", "0 5 | 3 6"},
    {"one line of several matches", R"-("startline":"mregex[$n]:(\\d)")-", "1 2\n3",
     "0 0 1 | 0 1 2"},
    {"lines are searched as replaced",
     R"("startline":"^port $n","operations":[{"originalstr":"^slot","replacestr":"port",)"
     R"("isregex":true,"isreplaceall":true}])",
     "slot a\nx\nslot b", "0 2 | 2 3"},
    {"within the bounds",
     R"("startline":"^port $n","nistart":{"type":2,"pattern":"regex:^begin"},)"
     R"("niend":{"type":2,"pattern":"regex:^end"})",
     "port a\nbegin\nport b\nx\nend\nport c", "2 | 5"},
};

TEST(ParagraphSplit, RangesOfTheRows) {
    for (const auto& row : SplitRows) {
        auto sample = LoadRules(ParagraphNode(row.keys));
        EXPECT_TRUE(sample->Parse(row.text, 0, -1, nullptr)) << row.name;
        EXPECT_EQ(DumpRanges(ParagraphAt(*sample, 0)), row.wanted) << row.name;
    }
}

TEST(ParagraphSplit, ABoundThatIsNotFoundFails) {
    auto sample = LoadRules(
        ParagraphNode(R"("startline":"regex:a","nistart":{"type":2,"pattern":"regex:^begin"})"));
    EXPECT_FALSE(sample->Parse("a\n", 0, -1, nullptr));
    EXPECT_EQ(DumpRanges(ParagraphAt(*sample, 0)), "|");
}

// Larger groups are set in code. Closed lines inside a group belong to it: the filter above drops
// the comment.
TEST(ParagraphSplit, GroupsOfOpenLines) {
    auto sample = LoadRules(
        R"({"type":1,"name":"f","excludelines":{"excludeline":"regex:^#"},"filterloop":true,
           "child":{"parserule":[{"type":0},)" +
        ParagraphNode(R"("islineasparagraph":true,"lineasparagraph":1)") + "]}}");
    auto& rule = ParagraphAt(*sample->Children()[0], 1);
    rule.SetLineAsParagraph(3);
    sample->Parse("1\n2\n#\n3\n4\n5\n6\n7", 0, -1, nullptr);
    EXPECT_EQ(DumpRanges(rule), "0 4 7 | 4 7 8");
}

// The failing paragraph's index is compared with line numbers. In the first text the interfaces
// stand further down, so all stay; in the second the begin of the first one goes, and the ends stay
// as they were; in the third it is the end of the first that goes for the second one's failure.
TEST(ParagraphSplit, FailedIdLinesRemoveLinesByNumber) {
    const SplitRow rows[] = {
        {"further down", R"("startline":"^port $n","idlines":["regex:mtu"])",
         "x\nx\nx\nport a\n mtu 1\nport b\n no", "3 5 | 5 7"},
        {"the first", R"("startline":"^port $n","idlines":["regex:mtu"])", "port a\nport b\n mtu 1",
         "1 | 1 3"},
        {"the second", R"("startline":"^port $n mtu","idlines":["regex:mtu 1"])",
         "port a mtu 1\nport b mtu 2", "0 | 2"},
        {"one of two patterns", R"("startline":"^port $n","idlines":["mtu $int:m","regex:up"])",
         "port a\n mtu 1", "| 2"},
        {"empty lines are no patterns", R"("startline":"^port $n","idlines":["","regex:mtu"])",
         "port a\n mtu 1", "0 | 2"},
        {"original lines count",
         R"("startline":"^port $n","idlines":["regex:mtu"],"operations":[)"
         R"({"originalstr":"mtu","replacestr":"size","isreplaceall":true}])",
         "port a\n mtu 1", "0 | 2"},
        {"a variable without any text isn't there",
         R"-("startline":"^port $n","idlines":["regex[$m]:mtu(\\d*)"])-", "port a\n mtu", "| 2"},
    };
    for (const auto& row : rows) {
        auto sample = LoadRules(ParagraphNode(row.keys));
        sample->Parse(row.text, 0, -1, nullptr);
        EXPECT_EQ(DumpRanges(ParagraphAt(*sample, 0)), row.wanted) << row.name;
    }
}

// Lines before, between and behind the paragraphs are closed to the children. An end line that
// belongs to its paragraph leaves the line behind it open as well.
TEST(ParagraphSplit, LinesBetweenParagraphsAreClosed) {
    const char* const text = "x\nport a\n!\ny\nz\nport b\n!\ny\nz";
    const struct {
        const char* keys;
        const char* wanted;
    } rows[] = {{R"("startline":"^port $n","endline":"regex:^!","excludeendline":true)", "15"},
                {R"("startline":"^port $n","endline":"regex:^!")", "123567"}};
    for (const auto& row : rows) {
        auto sample = LoadRules(ParagraphNode(row.keys));
        sample->Parse(text, 0, -1, nullptr);
        std::string open;
        for (int line = 0; line < 9; ++line)
            if (ParagraphAt(*sample, 0).IsLineOpen(line)) open += std::to_string(line);
        EXPECT_EQ(open, row.wanted);
    }
}

// The first child reads start, id and parent lines; others see their own statements alone.
TEST(ParagraphSplit, ValuesOfTheChildren) {
    auto sample = LoadRules(
        ParagraphNode(R"("startline":"^port $n","idlines":["mtu $int:m"],"isuseprevars":true,)"
                      R"("useprevars":"$s")",
                      R"("speed $s")", R"(,{"type":0,"keywords":{"keyword":["mtu $size"]}})"));
    sample->Parse("port a\n mtu 1\n speed 10\nport b\n mtu 2", 0, -1, nullptr);
    auto& rule = ParagraphAt(*sample, 0);
    EXPECT_EQ(DumpPositions(KeyWordAt(rule, 0).GetVariablePos()),
              "$m 1: 1:5-6 \"1\"; 4: 4:5-6 \"2\";\n"
              "$n 0: 0:5-6 \"a\"; 3: 3:5-6 \"b\";\n"
              "$s 2: 2:7-9 \"10\"; 3: 3:0-0 \"10\";\n");
    EXPECT_EQ(DumpPositions(KeyWordAt(rule, 1).GetVariablePos()),
              "$size 1: 1:5-6 \"1\"; 4: 4:5-6 \"2\";\n");
}

// The slot stands above its ports. The first port has no slot above it and keeps its stand-by
// value; in the last slot the later of two lines counts. Nothing below the last begin is read.
TEST(ParagraphSplit, ParentLinesOverwriteWhatStandsBelow) {
    const char* const text = "port a\nslot 1\nport b\nport c\nslot 2\nslot 3\n!\nport d\nslot 4";
    for (const char* line : {"^slot $slot", "mregex[$slot]:^slot (\\\\d)"}) {
        auto sample = LoadRules(ParagraphNode(
            R"("name":"p","startline":"^port $n","parentline":")" + std::string(line) + "\""));
        sample->Parse(text, 0, -1, nullptr);
        EXPECT_EQ(DumpLets(ParagraphAt(*sample, 0).GetVariableValue("p.slot")),
                  "0:0-0 \"\"; 1:5-6 \"1\"; 1:5-6 \"1\"; 5:5-6 \"3\"")
            << line;
    }
}

// Groups go to the names by their number, so the dummy's text is taken for the slot.
TEST(ParagraphSplit, ADummyOfAParentLineTakesAName) {
    auto sample = LoadRules(
        ParagraphNode(R"("name":"p","startline":"^port $n","parentline":"^$_dummy slot $slot")"));
    sample->Parse("card slot 1\nport a", 0, -1, nullptr);
    EXPECT_EQ(DumpLets(ParagraphAt(*sample, 0).GetVariableValue("p.slot")), "0:0-4 \"card\"");
}

const char* const NestedText =
    "vrf red\n neighbor 192.0.2.1\n  as 64500\n neighbor 192.0.2.2\n  as 64501\n"
    "vrf blue\n neighbor 192.0.2.3\n  as 64502";

std::string NestedNode() {
    return ParagraphNode(
        R"("name":"vrfs","startline":"^vrf $v")", "",
        "," + ParagraphNode(R"("name":"peers","startline":"^ neighbor $n")", R"("as $int:as")"));
}

TEST(ParagraphSplit, NestedRangesOfAllRuns) {
    auto sample = LoadRules(NestedNode());
    for (int run = 0; run < 2; ++run) {
        sample->Parse(NestedText, 0, -1, nullptr);
        auto& outer = ParagraphAt(*sample, 0);
        auto& inner = ParagraphAt(outer, 1);
        EXPECT_EQ(DumpRanges(outer), "0 5 | 5 8");
        EXPECT_EQ(DumpRanges(inner), "1 3 6 | 3 5 8");
        EXPECT_EQ(DumpPositions(KeyWordAt(inner, 0).GetVariablePos()),
                  "$as 2: 2:5-10 \"64500\"; 4: 4:5-10 \"64501\"; 7: 7:5-10 \"64502\";\n"
                  "$n 1: 1:10-19 \"192.0.2.1\"; 3: 3:10-19 \"192.0.2.2\"; "
                  "6: 6:10-19 \"192.0.2.3\";\n");
        EXPECT_EQ(DumpLets(sample->GetVariableValue("peers.v")),
                  "0:4-7 \"red\"; 0:4-7 \"red\"; 5:4-8 \"blue\"");
    }
}

// What the ranges answer by line, in a text whose first paragraph begins at line 1.
TEST(ParagraphSplit, ParagraphsByLine) {
    auto sample = LoadRules(
        ParagraphNode(R"("startline":"^port $n","endline":"regex:^!","excludeendline":true)"));
    sample->Parse("x\nport a\n!\ny\nport b\nz", 0, -1, nullptr);
    auto& rule = ParagraphAt(*sample, 0);
    const struct {
        int line, begin, end, index, ending;
    } rows[] = {
        {0, -7, -7, 0, 0}, {1, 1, 2, 0, 0}, {2, -7, -7, 0, 1}, {5, 4, 6, 1, 1}, {6, -7, -7, 0, -1}};
    for (const auto& row : rows) {
        int begin = -7;
        int end = -7;
        EXPECT_TRUE(rule.GetPosAtParagraphRange(row.line, begin, end));
        EXPECT_EQ(begin, row.begin) << row.line;
        EXPECT_EQ(end, row.end) << row.line;
        EXPECT_EQ(rule.GetParagraphIndexByPos(row.line), row.index) << row.line;
        EXPECT_EQ(rule.GetVariableAtParagraphIndex(row.line), row.ending) << row.line;
    }
}

TEST(ParagraphSplit, SearchesOverLinesForHosts) {
    auto sample = LoadRules(ParagraphNode(R"("startline":"^port $n")"));
    sample->Parse("x\nport a\nport a\nport b", 0, -1, nullptr);
    auto& rule = ParagraphAt(*sample, 0);
    std::vector<std::string> values(1);
    bool changed = false;
    int matchEnd = 0;
    for (const bool wanted : {true, false}) {
        changed = false;
        EXPECT_EQ(rule.ParseMultipleLineMatchWithVariableValue(1, 4, "port (\\S+)\\nport", values,
                                                               changed, matchEnd),
                  1);
        EXPECT_EQ(changed, wanted);
        EXPECT_EQ(matchEnd, 2);
        EXPECT_EQ(values[0], "a");
    }
    EXPECT_EQ(rule.ParseMultipleLineMatchWithVariableValue(1, 4, "none", values, changed, matchEnd),
              4);
    EXPECT_EQ(matchEnd, 4);
    std::vector<int> headEnds;
    EXPECT_EQ(rule.ParseMultipleLineMatchBeginLineWithVariableValue(1, 4, "port (\\S+)", values,
                                                                    headEnds),
              3);
    EXPECT_EQ(headEnds, (std::vector<int>{2, 3, 4}));
    EXPECT_EQ(rule.ParseMultipleLineMatchBeginLineWithVariableValue(1, 4, "(", values, headEnds),
              4);
}

}  // namespace
