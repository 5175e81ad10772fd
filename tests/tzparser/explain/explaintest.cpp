#include "tzparser/explain/tzexplain.h"
#include "tzparser/select/designreader.h"

#include "support/ruletree.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace {

std::string DumpFact(const ExplainFact& fact) {
    std::string dump = fact.isTrouble ? "! " + fact.text : fact.text;
    if (fact.line >= 0) dump += " @" + std::to_string(fact.line);
    if (fact.column >= 0) dump += ":" + std::to_string(fact.column);
    if (fact.statementColumn >= 0) dump += " /" + std::to_string(fact.statementColumn);
    if (!fact.replacedLine.empty()) dump += " (" + fact.replacedLine + ")";
    return dump;
}

// A line a rule, `kind name range open xruns`, and its facts below it; silent roots are left out.
std::string DumpRules(const ExplainReport& report) {
    std::string dump;
    for (const auto& rule : report.rules) {
        if (rule.type == RuleType_Sample) continue;
        dump += rule.kind + (rule.name.empty() ? "" : " " + rule.name);
        if (rule.hasRun)
            dump += " " + std::to_string(rule.beginLine) + "-" + std::to_string(rule.endLine) +
                    " " + std::to_string(rule.openLines);
        if (rule.runs > 1) dump += " x" + std::to_string(rule.runs);
        dump += "\n";
        for (const auto& fact : rule.facts) dump += "  " + DumpFact(fact) + "\n";
    }
    return dump;
}

ExplainReport ExplainRules(const std::string& nodes, const std::string& text) {
    return CTzExplain::Explain(
        ParseJson(R"({"samples":[{"parserRules":{"parserule":[)" + nodes + "]}}]}"), text);
}

struct Row {
    const char* name;
    const char* nodes;
    const char* text;
    const char* wanted;
};

template <std::size_t Count>
void CheckAll(const Row (&rows)[Count]) {
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(DumpRules(ExplainRules(row.nodes, row.text)), row.wanted);
    }
}

TEST(Explain, Scripts) {
    const Row rows[] = {
        {"what came back",
         R"({"type":8,"script":"def ParseText(text):\n    return {'host': text[:2], 't': {'a': ['1', '2'], 'b': ['3']}, 'e': {'c': []}}"})",
         "sw\n1",
         "script 0-2 2\n  $host = \"sw\"\n  ! table \"e\": 1 column, 0 rows\n"
         "  table \"t\": 2 columns, 2 rows\n"},
        {"nothing came back", R"({"type":8,"script":"def ParseText(text):\n    return {}"})", "sw",
         "script 0-1 1\n  ! the script gave nothing back\n"},
        {"it fails, and what stands beside it runs",
         R"({"type":8,"script":"def ParseText(text):\n    return 1 / 0"},{"keywords":{"keyword":["s$x"]}})",
         "sw",
         "script 0-1 1\n  ! the script failed: Failed to execute the parser script:Traceback (most "
         "recent call last):\n  File \"<string>\", line 4, in <module>\n  File \"<string>\", line "
         "2, in ParseText\nZeroDivisionError: division by zero\n"
         "keyword 0-1 1\n  \"s$x\" matched: $x = \"w\" @0\n"},
    };
    CheckAll(rows);
}

TEST(Explain, KeywordStatements) {
    const Row rows[] = {
        {"a line with its values", R"({"keywords":{"keyword":["^eth$n is $s $_dummy"]}})",
         "x\neth0 is up 1\neth1 is down 2",
         "keyword 0-3 3\n"
         "  \"^eth$n is $s $_dummy\" matched: $n = \"0\", $s = \"up\" @1\n"},
        {"the nearest line", R"({"keywords":{"keyword":["mtu $int:mtu bytes"]}})",
         "mtu auto\nmtu 1500 b",
         "keyword 0-2 2\n"
         "  ! no line fits \"mtu $int:mtu bytes\" @1:10 /14\n"},
        {"another way to write a line that matched",
         R"({"keywords":{"keyword":["mtu $int:mtu","MTU is $int:mtu"]}})", "mtu 1500",
         "keyword 0-1 1\n"
         "  \"mtu $int:mtu\" matched: $mtu = \"1500\" @0\n"
         "  no line fits \"MTU is $int:mtu\"; its variables have their values from other statements"
         " @0:4 /4\n"},
        {"a line that replacements changed",
         R"({"operations":[{"originalstr":"Up","replacestr":"down"}],)"
         R"("keywords":{"keyword":["link is up $x"]}})",
         "link is up 1",
         "keyword 0-1 1\n"
         "  ! no line fits \"link is up $x\" @0:8 /8 (link is down 1)\n"},
        {"over several lines",
         R"x({"keywords":{"keyword":["mregex[$x]:a\\n(b)","mregex[$y]:a\\nc(d)"]}})x", "-\na\nb",
         "keyword 0-3 3\n"
         "  \"mregex[$x]:a\\n(b)\" matched: $x = \"b\" @1\n"
         "  ! no line fits \"mregex[$y]:a\\nc(d)\"\n"},
        {"spans of lines", R"({"keywords":{"keyword":["a $a","mline[$s]:$a-","mline[$t]:$b-"]}})",
         "-\na 1\nb",
         "keyword 0-3 3\n"
         "  \"a $a\" matched: $a = \"1\" @1\n"
         "  \"mline[$s]:$a-\" matched: $s = \"a 1\nb\n\n\" @1\n"
         "  ! no lines stand between the variables of \"mline[$t]:$b-\"\n"},
        {"statements that don't compile", R"({"keywords":{"keyword":["none","regex[$a]:(b"]}})",
         "none",
         "keyword 0-1 1\n"
         "  ! \"none\" plays no part: Invalid pattern. There is no variable in it.\n"
         "  ! \"regex[$a]:(b\" plays no part: Invalid regex. Unmatched marking parenthesis ( or "
         "\\(."
         " /12\n"},
        {"a long value is cut, and so is a long statement in a sentence",
         R"({"keywords":{"keyword":["a $a"]}})",
         "a 0123456789012345678901234567890123456789012345678901234567890123456789",
         "keyword 0-1 1\n"
         "  \"a $a\" matched: $a = "
         "\"012345678901234567890123456789012345678901234567890123456789...\""
         " @0\n"},
    };
    CheckAll(rows);
}

TEST(Explain, PingsAndTraces) {
    const Row rows[] = {
        {"a ping that counts what was lost", R"({"type":5})",
         "x\nLost = 1 (25% loss)\nAverage = 12ms",
         "ping 0-3 3\n"
         "  \"Lost =\" stands in the text, so the rate is what was lost @1\n"
         "  \"regex[$int:lost_rate]:\\((\\d+)% loss\\)\" matched: $lost_rate = \"25\" @1\n"
         "  \"regex[$int:average_time]:Average = (\\d+)ms\" matched: $average_time = \"12\" @2\n"
         "  $ping_result = \"True\"\n"},
        {"a ping that counts what came back", R"({"type":5})",
         "x\nSuccess rate is 80 percent, round-trip min/avg/max = 1/2/3 ms",
         "ping 0-2 2\n"
         "  no \"Lost =\" stands in the text, so the rate is what came back\n"
         "  \"Success rate is $int:lost_rate percent\" matched: $lost_rate = \"20\" @1\n"
         "  \"regex[$int:average_time]:round-trip min/avg/max = \\d+/(\\d+)/\\d+ ms\" matched: "
         "$average_time = \"2\" @1\n"
         "  $ping_result = \"True\"\n"},
        {"a ping without statistics", R"({"type":5})", "Success rate: 80\nround-trip x",
         "ping 0-2 2\n"
         "  no \"Lost =\" stands in the text, so the rate is what came back\n"
         "  ! no line fits \"Success rate is $int:lost_rate percent\" @0:12 /12\n"
         "  ! no line fits \"regex[$int:average_time]:round-trip min/avg/max = \\d+/(\\d+)/\\d+ "
         "ms\""
         " @1:11 /36\n"
         "  $ping_result = \"False\": without a rate it counts as 0\n"},
        {"a trace", R"({"type":6})", "traceroute to 192.0.2.9\n 1 192.0.2.1\n 2 192.0.2.9\n 3 *",
         "traceroute 2-4 2\n"
         "  the header, with the target 192.0.2.9 @0\n"
         "  the last line with an address, from which the rule reads on @2\n"
         "  \"regex[$ip:last_hop]:(\\d+\\.\\d+\\.\\d+\\.\\d+)\" matched: $ip = \"192.0.2.9\" @2\n"},
        {"a trace without hops", R"({"type":6})", "x\ntracing x\n 1 *",
         "traceroute 0-3 3\n"
         "  the header, without an address @1\n"
         "  ! no line below the header has an address\n"},
        {"a trace without a header", R"({"type":6,"nistart":{"type":2,"pattern":"x"}})",
         "1 192.0.2.1",
         "traceroute 0-1 1\n"
         "  ! no header: no line has a text behind \"tracing\", \"traceroute to\" or "
         "\"Traceroute=\"\n"},
        {"a trace below a filter that keeps nothing",
         R"({"type":1,"name":"f","startline":"x","child":{"parserule":[{"type":6}]}})", "y",
         "filter f 0-1 0\n"
         "  ! no line fits the begin line \"x\"; so it keeps nothing\n"
         "  ! keeps no line\n"
         "keyword 0-1 0\n"
         "traceroute 0-1 0\n"
         "  ! no header: no line has a text behind \"tracing\", \"traceroute to\" or "
         "\"Traceroute=\"\n"},
    };
    CheckAll(rows);
}

TEST(Explain, Bounds) {
    const Row rows[] = {
        {"by patterns",
         R"({"nistart":{"type":2,"pattern":"== a","skip":1},)"
         R"("niend":{"type":2,"pattern":"== b"},"keywords":{"keyword":["n $n","m $m"]}})",
         "m 0\n== a\nn 1\nn 2\n== b",
         "keyword 2-5 3\n"
         "  start bound found by \"== a\", 1 line skipped @2\n"
         "  end bound found by \"== b\" @4\n"
         "  \"n $n\" matched: $n = \"1\" @2\n"
         "  ! no line fits \"m $m\"; line 1 would fit, but the rule doesn't see it\n"},
        {"a pattern that isn't found, with the nearest line",
         R"({"nistart":{"type":2,"pattern":"== begin $x"},"keywords":{"keyword":["n $n"]}})",
         "n 1\n== began x",
         "keyword\n"
         "  ! start bound: no line fits \"== begin $x\"; so the rule didn't run @1:6 /6\n"},
        {"a variable of a rule that stands behind it",
         R"({"nistart":{"type":1,"text":"$n","xxid":"i"}},)"
         R"({"xxid":"i","keywords":{"keyword":["n $n"]}})",
         "n 1",
         "keyword\n"
         "  ! start bound: the rule \"i\" stands behind this one, so it hadn't run yet; so the rule"
         " didn't run\n"
         "keyword 0-1 1\n"
         "  \"n $n\" matched: $n = \"1\" @0\n"},
        {"variables that can't tell a line",
         R"({"xxid":"i","keywords":{"keyword":["n $n"]}},{"niend":{"type":1,"text":"$x","xxid":"i"}},)"
         R"({"niend":{"type":1,"text":"$x","xxid":"j"}},{"niend":{"type":1,"xxid":"i"}},)"
         R"({"niend":{"type":9}},{"niend":{"type":1,"text":"$n","xxid":"i"}})",
         "-\nn 1\n-",
         "keyword 0-3 3\n"
         "  \"n $n\" matched: $n = \"1\" @1\n"
         "keyword\n"
         "  ! end bound: $x of the rule \"i\" has no line; so the rule didn't run\n"
         "keyword\n"
         "  ! end bound: no rule has the id \"j\"; so the rule didn't run\n"
         "keyword\n"
         "  ! end bound: it names no variable; so the rule didn't run\n"
         "keyword\n"
         "  ! end bound: its type 9 is no kind of bound; so the rule didn't run\n"
         "keyword 0-2 2\n"
         "  end bound found by $n @1\n"},
    };
    CheckAll(rows);
}

// Gives the lines behind a mark back, one that no text has among them.
class CTailReader : public IDesignReader {
    bool Select(const std::string&, const std::string& code, const std::string& text,
                std::string& selected) override {
        selected = text.substr(std::min(text.find(code), text.size())) + "\nunknown";
        return true;
    }
};

TEST(Explain, DesignReaders) {
    const char* const node = R"({"type":2,"name":"d","drcode":"b",)"
                             R"("child":{"parserule":[{"keywords":{"keyword":["b $b"]}}]}})";
    EXPECT_EQ(DumpRules(ExplainRules(node, "a\nb 1")),
              "design reader d 0-2 0\n"
              "  ! no design reader is set, so it keeps nothing\n"
              "keyword 0-2 0\n"
              "  ! no line fits \"b $b\"; there is no line to fit; line 2 would fit, but the rule "
              "doesn't see it\n");
    SetDesignReader(std::make_shared<CTailReader>());
    const auto found = DumpRules(ExplainRules(node, "a\nb 1\nc"));
    const auto nothing = DumpRules(ExplainRules(node, "a"));
    SetDesignReader(nullptr);
    EXPECT_EQ(found,
              "design reader d 0-3 2\n"
              "  ! selected, but no open line that is left: \"unknown\"\n"
              "  the first of 2 lines kept @1\n"
              "keyword 0-3 2\n"
              "  \"b $b\" matched: $b = \"1\" @1\n");
    EXPECT_EQ(nothing.substr(0, nothing.find("keyword")),
              "design reader d 0-1 0\n"
              "  ! selected, but no open line that is left: \"unknown\"\n"
              "  ! keeps no line\n");
}

TEST(Explain, TextRules) {
    const Row rows[] = {
        {"found, out of order, with other blanks, out of bounds, nowhere",
         R"({"type":15,"name":"t","nistart":{"type":2,"pattern":"from"},"lines":[{"text":"b"},)"
         R"({"text":"c"},{"text":"b"},{"text":"d"},{"text":"a"},{"text":""},{"text":"e"}]})",
         "a\nfrom\nb\nd \nc\ne",
         "text t 1-6 5\n"
         "  start bound found by \"from\" @1\n"
         "  3 of 7 lines found, the first here @2\n"
         "  ! not found: \"b\"; this line stands in front of the one found before it @2\n"
         "  ! not found: \"d\"; this line has other blanks at its ends @3\n"
         "  ! not found: \"a\"; this line stands outside of the rule's range @0\n"
         "  ! not found: \"\"\n"},
        {"a bound that isn't there",
         R"({"type":15,"name":"t","nistart":{"type":2,"pattern":"from"},"lines":[{"text":"b"}]})",
         "b",
         "text t\n"
         "  ! start bound: no line fits \"from\"; so the rule didn't run\n"},
    };
    CheckAll(rows);
}

TEST(Explain, Filters) {
    const Row rows[] = {
        {"range, patterns and the lines kept",
         R"({"type":1,"name":"f","startline":"regex:^begin","endline":"regex:^end",)"
         R"("includelines":{"includeline":["a"]},"filterloop":true,)"
         R"("child":{"parserule":{"keywords":{"keyword":["a $a"]}}}})",
         "a 0\nbegin\na 1\nb\na 2\nend",
         "filter f 1-6 2\n"
         "  begin line found by \"regex:^begin\" @1\n"
         "  end line found by \"regex:^end\" @5\n"
         "  2 lines fit the include pattern \"a\"\n"
         "  the first of 2 lines kept @2\n"
         "keyword 1-6 2\n"
         "  \"a $a\" matched: $a = \"1\" @2\n"},
        {"no begin line", R"({"type":1,"name":"f","startline":"regex:^begin$","endline":"x"})",
         "a\nbeg",
         "filter f 0-2 0\n"
         "  ! no line fits the begin line \"regex:^begin$\"; so it keeps nothing @1:3 /10\n"
         "  ! keeps no line\n"
         "keyword 0-2 0\n"},
        {"no end line, and patterns that fit nothing",
         R"({"type":1,"name":"f","startline":"a","endline":"enx",)"
         R"("includelines":{"includeline":["none","b"]},"excludelines":{"excludeline":"no"}})",
         "a\nb\nend",
         "filter f 0-3 1\n"
         "  begin line found by \"a\" @0\n"
         "  no line fits the end line \"enx\"; so it goes on to the last line @2:2 /2\n"
         "  ! no line fits the include pattern \"none\"\n"
         "  1 line fits the include pattern \"b\"\n"
         "  no line fits the exclude pattern \"no\"\n"
         "  the first of 1 line kept @1\n"
         "keyword 0-3 1\n"},
    };
    CheckAll(rows);
}

TEST(Explain, DiffFilters) {
    const std::string rows3 =
        R"("lines":[{"row":0,"text":"a"},{"row":1,"text":"b","added":true},{"row":2,"text":"c"}])";
    const auto nested = R"({"type":9,"name":"d",)" + rows3 + R"(,"child":{"parserule":[)" +
                        R"({"type":9,"name":"e","lines":[{"row":2}]}]}})";
    const Row rows[] = {
        {"rows, lines kept and closed, and one below", nested.c_str(), "new\na\nb\nc",
         "diff filter d 0-4 2\n"
         "  3 of 3 rows have a text and a number in the range, from 0 to 3\n"
         "  the first of 2 lines kept comes from row 0 @1\n"
         "  the first of 2 lines kept whose row has another number; it comes from row 0 @1\n"
         "  the first of 1 line closed, which no row is common with @0\n"
         "  the first of 1 line closed, which a row marked as added has @2\n"
         "diff filter e 0-4 1\n"
         "  takes the comparison of the diff filter above it, and looks for its own 1 row in it\n"
         "  the first of 1 line kept comes from row 2 @3\n"
         "  the first of 1 line kept whose row has another number; it comes from row 2 @3\n"
         "  the first of 1 line closed, which no row is common with @1\n"},
        {"no row in the range",
         R"({"type":9,"name":"d","lines":[{"row":7,"text":"a"}],"child":{"parserule":[{}]}},)"
         R"({"keywords":{"keyword":["$w"]}})",
         "a",
         "diff filter d 0-1 1\n"
         "  ! 0 of 1 row has a text and a number in the range, from 0 to 0, so it fails and "
         "nothing "
         "below it runs\n"
         "keyword\n"
         "keyword 0-1 1\n"
         "  \"$w\" matched: $w = \"a\" @0\n"},
    };
    CheckAll(rows);
}

TEST(Explain, Tables) {
    const std::string ports =
        R"({"type":3,"name":"ports","headers":"Port;Name;VLAN","headertovariables":"Port:$port;)"
        R"(VLAN:$int:vlan","endline":"Total $x")";
    const auto plain = ports + "}";
    const auto skipping = ports +
                          R"(,"child":{"parserule":[{"type":1,"name":"f","includelines":)"
                          R"({"includeline":["down"]}},{"keywords":{"keyword":["a $a"]}}]}})";
    const auto tokens = ports + R"(,"aligntype":3,"alignrange":"1;2"})";
    const std::string found = "  header line found, with each header in it @1\n";
    const std::string dropped = "  the column \"Name\" has no variable and is dropped\n";
    const std::string columns = "  columns begin at \"Port\" 1, \"Name\" 8, \"VLAN\" ";
    const struct {
        const char* name;
        std::string nodes;
        const char* text;
        std::string wanted;
    } rows[] = {
        {"header, columns, end, rows", plain,
         "x\nPort   Name   VLAN\nGi0/1  uplink 10\nGi0/2  down   11\nTotal 2",
         "table ports 0-5 5\n" + found + columns + "15\n" + dropped +
             "  end found by \"Total $x\" @4\n  the first of 2 rows @2\n"},
        {"rows left out by a filter; other rules below never run", skipping,
         "x\nPort   Name   VLAN\n===--- ===--- ===---\nGi0/1  uplink 10\nGi0/2  down   11\na 1",
         "table ports 0-6 6\n" + found + "  the columns are those of the ruled line @2\n" +
             columns + "15\n" + dropped +
             "  no line fits the end condition \"Total $x\"; so the table goes on to the last "
             "line\n"
             "  the first of 2 rows @3\n"
             "filter f 3-6 1\n"
             "  1 line fits the include pattern \"down\"\n"
             "  the first of 1 line taken for no rows @4\n"
             "keyword 3-6 1\n"
             "keyword\n"},
        {"a header in other letters", plain, "x\nPort   Name   Vlan\nGi0/1  uplink 10",
         "table ports 0-3 3\n" + found + columns + "nowhere\n" +
             "  ! the column \"VLAN\" has no place: its very text, capitals too, isn't in the "
             "header "
             "line behind the header before\n" +
             dropped +
             "  no line fits the end condition \"Total $x\"; so the table goes on to the last "
             "line\n"
             "  the first of 1 row @2\n"},
        {"how far the nearest line follows the headers", plain,
         "Port\nPort   Name   Wlan\nPort   Nome\nGi0/1  uplink 10",
         "table ports 0-4 4\n  ! no line is the header line of \"Port Name VLAN\" @1:14 /10\n"},
        {"no line looks like one", plain, "x\nPart   Nama   VLAN\nGi0/1  uplink 10",
         "table ports 0-3 3\n"
         "  ! no line is the header line of \"Port Name VLAN\" @1:1 /1\n"},
        {"too few columns", tokens, "x\nPort   Name   VLAN\nGi0/1  uplink 10",
         "table ports 0-3 3\n" + found + "  ! 2 columns for 3 headers, so no row is read\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(DumpRules(ExplainRules(row.nodes, row.text)), row.wanted);
    }
}

TEST(Explain, Paragraphs) {
    const std::string ports =
        R"({"type":4,"name":"ports","startline":"^interface $port","endline":"regex:^!","child":)"
        R"({"parserule":[{"keywords":{"keyword":["mtu $int:mtu","vlan $int:v"]}},)"
        R"({"type":3,"name":"t","headers":"A;B","headertovariables":"A:$a;B:$b"}]}})";
    const std::string filtered =
        R"({"type":4,"startline":"^interface $port","child":{"parserule":[{"type":0},)"
        R"({"type":1,"name":"f","includelines":{"includeline":["mtu"]},"child":{"parserule":)"
        R"([{"keywords":{"keyword":["mtu $q"]}}]}}]}})";
    const Row rows[] = {
        {"statements and tables over all paragraphs", ports.c_str(),
         "x\ninterface a\n mtu 9\n A  B\n 1  2\n!\ninterface b\n mtu x",
         "paragraph ports 0-8 8\n"
         "  the first of 2 paragraphs, lines 2 to 6 @1\n"
         "  the first line that fits the end line \"regex:^!\" @5\n"
         "keyword 6-8 2 x2\n"
         "  \"^interface $port\" matched in 2 of 2 paragraphs, first: $port = \"a\" @1\n"
         "  \"mtu $int:mtu\" matched in 1 of 2 paragraphs, first: $mtu = \"9\" @2\n"
         "  the first paragraph without a match, lines 7 to 8, doesn't fit \"mtu $int:mtu\"; $mtu "
         "takes a whole number @7:5 /4\n"
         "  ! no paragraph fits \"vlan $int:v\"\n"
         "table t 6-8 2 x2\n"
         "  header line found in 1 of 2 paragraphs; lines 7 to 8 have none of \"A B\"\n"
         "  the first header line found, with each header in it @3\n"
         "  the first of 1 row @4\n"},
        {"no paragraph", ports.c_str(), "x\ninterfaces a\n mtu 9",
         "paragraph ports 0-3 3\n"
         "  ! no paragraph\n"
         "  ! no line fits the start line \"^interface $port\" @1:9 /10\n"
         "keyword\n"
         "table t\n"},
        {"a filter below: the values of earlier runs are gone", filtered.c_str(),
         "interface a\n mtu 9\ninterface b\n",
         "paragraph 0-4 4\n"
         "  the first of 2 paragraphs, lines 1 to 2 @0\n"
         "keyword 2-4 2 x2\n"
         "  \"^interface $port\" matched in 2 of 2 paragraphs, first: $port = \"a\" @0\n"
         "filter f 2-4 0 x2\n"
         "  1 line fits the include pattern \"mtu\"\n"
         "  the first of 1 line kept @1\n"
         "keyword 2-4 0 x2\n"
         "  \"mtu $q\" matched in 1 of 2 paragraphs; a later run dropped the values or another "
         "statement wrote over them @1\n"
         "  the first paragraph without a match, lines 3 to 4, doesn't fit \"mtu $q\"; there is no "
         "line to fit\n"},
        {"neither a start line nor line mode", R"({"type":4})", "x",
         "paragraph 0-1 1\n"
         "  ! no paragraph: it has no start line, and a line alone is none\n"
         "keyword\n"},
        {"id lines", R"({"type":4,"startline":"regex:^i","idlines":["mtu $m"]})", "i\nmtu 1\ni",
         "paragraph 0-3 3\n"
         "  the first of 2 paragraphs, lines 1 to 2 @0\n"
         "  1 of 2 paragraphs have the id line \"mtu $m\"\n"
         "keyword 2-3 1 x2\n"
         "  \"regex:^i\" matched in 2 of 2 paragraphs @0\n"
         "  \"mtu $m\" matched in 1 of 2 paragraphs, first: $m = \"1\" @1\n"
         "  the first paragraph without a match, line 3, doesn't fit \"mtu $m\"\n"},
    };
    CheckAll(rows);
}

// The first rule of a filter may be one that no node of the document stands for.
TEST(Explain, PathsLeadToTheDocument) {
    const auto report = CTzExplain::Explain(ParseJson(R"({"sequences":[4],"samples":[
        {"index":7,"identify":"broken"},{"index":4,"identify":{"ConfigKey":{"MustConditions":{"Item":
        [{"@Index":1,"@Type":1,"@Value":"zzz"}]}}}},
        {"index":7,"parserRules":"{\"ParseRule\":[{\"type\":1,\"child\":{\"parserule\":[{\"type\":1},{\"type\":0}]}},{\"type\":1,\"child\":{\"parserule\":{\"type\":0}}}]}"}]})"),
                                            "text");
    std::string paths;
    for (const auto& rule : report.rules)
        paths += std::to_string(rule.parent) + " " + rule.path + "\n";
    const std::string root = "samples[2].parserRules";
    EXPECT_EQ(paths, "-1 " + root + "\n0 " + root + ".parserule[0]\n1 " + root +
                         ".parserule[0]\n1 " + root + ".parserule[0].child.parserule[0]\n3 " +
                         root + ".parserule[0].child.parserule[0]\n1 " + root +
                         ".parserule[0].child.parserule[1]\n0 " + root + ".parserule[1]\n6 " +
                         root + ".parserule[1].child.parserule\n");
    EXPECT_EQ(report.choice.reason, SampleChoice_CatchAll);
    ASSERT_EQ(report.choice.trials.size(), 1U);
    EXPECT_TRUE(report.choice.trials[0].failed);
}

TEST(Explain, ValuesKnowTheirRules) {
    const auto report = ExplainRules(
        R"({"keywords":{"keyword":["a $int:a"]}},{"keywords":{"keyword":["b $b","c $c"]}})",
        "a 12\r\nb xyz\n");
    std::string values;
    for (const auto& value : report.values)
        values += std::to_string(value.rule) + " " + value.name + "[" +
                  std::to_string(value.index) + "] " + value.type + " " +
                  std::to_string(value.beginRow) + ":" + std::to_string(value.beginCol) + "-" +
                  std::to_string(value.endRow) + ":" + std::to_string(value.endCol) + " " +
                  value.text + "\n";
    EXPECT_EQ(values, "1 a[0] int 0:2-0:4 12\n2 b[0] string 1:2-1:5 xyz\n2 c[0] string 0:0-0:0 \n");
    EXPECT_EQ(report.lines, (std::vector<std::string>{"a 12", "b xyz", ""}));
}

TEST(Explain, WhatCantBeParsed) {
    const struct {
        const char* name;
        const char* definition;
        const char* error;
        std::size_t rules;
    } rows[] = {
        {"no definition", "[]", "cannot find matched parser.", 0},
        {"no rule", R"({"samples":[{}]})", "parse failed when using parser rules. reseason:", 1},
        {"no rule that ran",
         R"({"samples":[{"parserRules":{"parserule":[{"nistart":{"type":9}}]}}]})",
         "parse failed when using parser rules. reseason:not support start end line type.", 2},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto report = CTzExplain::Explain(ParseJson(row.definition), "text");
        EXPECT_FALSE(report.isParsed);
        EXPECT_EQ(report.error, row.error);
        EXPECT_EQ(report.rules.size(), row.rules);
        EXPECT_TRUE(report.values.empty());
    }
}

// Rules may stand as deep as they like, and lines may be many.
TEST(Explain, DeepRulesAndManyLines) {
    std::string nodes = R"({"keywords":{"keyword":["zzz $z"]}})";
    for (int i = 0; i < 60; ++i) nodes = R"({"type":1,"child":{"parserule":[)" + nodes + "]}}";
    std::string text;
    for (int i = 0; i < 20000; ++i) text += "zz line " + std::to_string(i) + "\n";
    const auto report = ExplainRules(nodes, text);
    const auto& facts = report.rules.back().facts;
    ASSERT_FALSE(facts.empty());
    EXPECT_NE(facts[0].text.find("the nearest of the first 4000 lines"), std::string::npos)
        << facts[0].text;
}

}  // namespace
