// Where a table is: its header, its columns, its end, the lines that are no rows.
#include "host/runtime/diagnostics.h"
#include "tzparser/keyword/appparserulekeyword.h"

#include "tablesupport.h"

#include <gtest/gtest.h>

namespace {

const char* const Spread =
    R"("headers":"Local Intf;Hold Time","headertovariables":"Local Intf:$a;Hold Time:$b")";

const TableRow HeaderRows[] = {
    {"the first line that fits", "",
     "AA BB\n"
     "x: AA  BB CC\n"
     "   x   y  z\n"
     "AA  BB  CC\n",
     "$a 2:3-4 'x' 3:4-6 'BB'\n$b 2:7-8 'y' 3:8-10 'CC'\n$c 2:10-11 'z' 3:10-10 ''\n"},
    {"no header", "", "AA  BB\nx   y", "no table"},
    {"no headers", R"("headers":"")", "AA  BB\nx   y", "no table"},
    {"no such alignment", R"("aligntype":"4")", "AA  BB  CC\nx   y   z", "no table"},
    {"no such alignment below zero", R"("aligntype":"-1")", "AA  BB  CC\nx   y   z", "no table"},
    {"a header with a bar is found by either side",
     R"("headers":"AA|XX;BB","headertovariables":"BB:$b")",
     "AA|XX  BB\n"
     "x      y",
     "$b 1:7-8 'y'\n"},
    {"a statement has to fit the whole line",
     R"("headers":"regex:AA;BB","headertovariables":"regex:AA:$a;BB:$b")",
     "AA  BB \n"
     "AA  BB\n"
     "x   y",
     "$b 2:4-5 'y'\n"},
    {"headers spread word by word take the next line along", Spread,
     "Local  Intf  Hold  Time\n"
     "Gi0/1        120\n"
     "Gi0/2        150",
     "$a 2:0-5 'Gi0/2'\n$b 2:13-16 '150'\n"},
    {"but not where lines are skipped",
     R"("isskipline":true,"skipline":"1","headers":"Local Intf;Hold Time",
        "headertovariables":"Local Intf:$a;Hold Time:$b")",
     "Local  Intf  Hold  Time\n"
     "Gi0/1        120\n"
     "Gi0/2        150",
     "$a 2:0-5 'Gi0/2'\n$b 2:13-16 '150'\n"},
    {"and not where the first word isn't the first header's begin",
     R"("headers":"The Intf;Hold Time","headertovariables":"The Intf:$a")",
     "(The  Intf  Hold  Time)\n", "no table"},
    {"a word that repeats begins the next header",
     R"("headers":"IP Address;Address Type","headertovariables":"IP Address:$a;Address Type:$b")",
     "IP  Address  Address  Type\n"
     "\n"
     "192.0.2.1    dynamic",
     "$a 2:0-9 '192.0.2.1'\n$b 2:13-20 'dynamic'\n"},
    {"words may be left over", R"("headers":"AA BB;BB CC","headertovariables":"AA BB:$a;BB CC:$b")",
     "AA  BB  BB  CC DD EE\n"
     "\n"
     "x       y",
     "$a 2:0-1 'x'\n$b 2:8-9 'y'\n"},
    {"words used up before the headers", R"("headers":"A B;A B")", "A  B  A  B\n\nx", "no table"},
    {"fixed columns need words left over",
     R"("aligntype":"2","alignrange":"0;13","headers":"Local Intf;Hold Time",
        "headertovariables":"Local Intf:$a;Hold Time:$b")",
     "Local  Intf  Hold  Time\n"
     "Local  Intf  Hold  Time  .\n"
     "\n"
     "Gi0/1        120",
     "$a 3:0-5 'Gi0/1'\n$b 3:13-16 '120'\n"},
    {"skipped lines", R"("isskipline":true,"skipline":"2")",
     "AA  BB  CC\n"
     "1\n"
     "2\n"
     "x   y   z",
     "$a 3:0-1 'x'\n$b 3:4-5 'y'\n$c 3:8-9 'z'\n"},
    {"a count without the flag skips none", R"("skipline":"2")",
     "AA  BB  CC\n"
     "x   y   z",
     "$a 1:0-1 'x'\n$b 1:4-5 'y'\n$c 1:8-9 'z'\n"},
    {"below zero the header is a row", R"("isskipline":true,"skipline":"-9")",
     "q\n"
     "AA  BB  CC\n",
     "$a 1:0-2 'AA'\n$b 1:4-6 'BB'\n$c 1:8-10 'CC'\n"},
    {"with fixed columns all lines before it are rows too",
     R"("isskipline":true,"skipline":"-9","aligntype":"2","alignrange":"0;4;8")",
     "q   r   s\n"
     "AA  BB  CC\n",
     "$a 0:0-1 'q' 1:0-2 'AA'\n$b 0:4-5 'r' 1:4-6 'BB'\n$c 0:8-9 's' 1:8-10 'CC'\n"},
    {"and with tokens", R"("isskipline":true,"skipline":"-9","aligntype":"3","alignrange":"1;1;1")",
     "q   r   s\n"
     "AA  BB  CC\n",
     "$a 0:0-1 'q' 1:0-2 'AA'\n$b 0:4-5 'r' 1:4-6 'BB'\n$c 0:8-9 's' 1:8-10 'CC'\n"},
    {"a huge count skips all", R"("isskipline":true,"skipline":"2147483647")",
     "AA  BB  CC\nx   y   z", ""},
};

TEST(TableLayout, Header) {
    CheckTables(HeaderRows);
}

const TableRow SeparatorRows[] = {
    {"plain dashes move nothing", "",
     "AA  BB  CC\n"
     "---- ---- ----\n"
     "x   y   z",
     "$a 2:0-1 'x'\n$b 2:4-5 'y'\n$c 2:8-9 'z'\n"},
    {"nor do plain equal signs", "",
     "AA  BB  CC\n"
     "==== ==== ====\n"
     "x   y   z",
     "$a 2:0-1 'x'\n$b 2:4-5 'y'\n$c 2:8-9 'z'\n"},
    {"groups of both give the columns", "",
     " AA    BB     CC\n"
     "===--- ===--- ===---\n"
     "x      y      z",
     "$a 2:0-1 'x'\n$b 2:7-8 'y'\n$c 2:14-15 'z'\n"},
    {"lines before them are no rows", "",
     "AA    BB     CC\n"
     "u1    u2     u3\n"
     "---===\n"
     "===--- ===--- ===---\n"
     "x      y      z",
     "$a 4:0-1 'x'\n$b 4:7-8 'y'\n$c 4:14-15 'z'\n"},
    {"further down than five lines they are rows", "",
     "AA  BB  CC\n"
     "1\n2\n3\n4\n5\n"
     "===--- ===--- ===---",
     "$a 1:0-1 '1' 2:0-1 '2' 3:0-1 '3' 4:0-1 '4' 5:0-1 '5'\n$b 1:1-1 '' 2:1-1 '' 3:1-1 '' "
     "4:1-1 '' 5:1-1 ''\n$c 1:1-1 '' 2:1-1 '' 3:1-1 '' 4:1-1 '' 5:1-1 ''\n"},
    {"more lines to skip are skipped behind them", R"("isskipline":true,"skipline":"2")",
     "AA  BB  CC\n"
     "1\n"
     "2\n"
     "===--- ===--- ===---\n"
     "3\n"
     "4\n"
     "x      y      z",
     "$a 6:0-1 'x'\n$b 6:7-8 'y'\n$c 6:14-15 'z'\n"},
};

TEST(TableLayout, Separator) {
    CheckTables(SeparatorRows);
}

const TableRow EndRows[] = {
    {"the end line is no row", R"("endline":"Total")",
     "AA  BB  CC\n"
     "x   y   z\n"
     "total 1\n"
     "x   y   z",
     "$a 1:0-1 'x'\n$b 1:4-5 'y'\n$c 1:8-9 'z'\n"},
    {"at the first row", R"("endline":"x")", "AA  BB  CC\nx   y   z", ""},
    {"not found", R"("endline":"q")", "AA  BB  CC\nx   y   z",
     "$a 1:0-1 'x'\n$b 1:4-5 'y'\n$c 1:8-9 'z'\n"},
    {"the header line is no end", R"("endline":"AA")", "AA  BB  CC\nx   y   z",
     "$a 1:0-1 'x'\n$b 1:4-5 'y'\n$c 1:8-9 'z'\n"},
    {"an empty line", R"("endline":"^$")",
     "AA  BB  CC\n"
     "x   y   z\n"
     "\n"
     "x   y   z",
     "$a 1:0-1 'x'\n$b 1:4-5 'y'\n$c 1:8-9 'z'\n"},
    {"over lines", R"("endline":"mregex:q\n\nr")",
     "AA  BB  CC\n"
     "q\n"
     "q\n"
     "\n"
     "r",
     "$a 1:0-1 'q'\n$b 1:1-1 ''\n$c 1:1-1 ''\n"},
    {"broken, it fits nothing", R"j("endline":"$x(a|[)")j", "AA  BB  CC\nx   y   z",
     "$a 1:0-1 'x'\n$b 1:4-5 'y'\n$c 1:8-9 'z'\n"},
};

TEST(TableLayout, End) {
    CheckTables(EndRows);
}

const TableRow IgnoredRows[] = {
    {"rules and blank lines", "",
     "AA  BB  CC\n"
     "\n"
     "  -- == \t\n"
     " \v\f\n"
     "-x",
     "$a 4:0-2 '-x'\n$b 4:2-2 ''\n$c 4:2-2 ''\n"},
    {"exclude lines", R"("enableexcludelines":true,"excludelines":{"excludeline":["^#","[","",
        "regex:[","regex:q\\d"]})",
     "AA  BB  CC\n"
     "# 1\n"
     "x #\n"
     "[\n"
     "q7",
     "$a 2:0-3 'x #'\n$b 2:3-3 ''\n$c 2:3-3 ''\n"},
    {"only with the flag", R"("excludelines":{"excludeline":["x"]})", "AA  BB  CC\nx   y   z",
     "$a 1:0-1 'x'\n$b 1:4-5 'y'\n$c 1:8-9 'z'\n"},
    {"a filter below selects lines that are no rows",
     R"("child":{"parserule":[{"type":1,"filterloop":true,"includelines":{"includeline":["q"]}}]})",
     "AA  BB  CC\n"
     "q\n"
     "x   y   z\n"
     "q",
     "$a 2:0-1 'x'\n$b 2:4-5 'y'\n$c 2:8-9 'z'\n"},
    {"an ignored line can still be the second half of a row",
     R"("enableexcludelines":true,"excludelines":{"excludeline":["z"]})",
     "AA  BB  CC\n"
     "x   y\n"
     "        z",
     "$a 1:0-1 'x'\n$b 1:4-5 'y'\n$c 2:8-9 'z'\n"},
    {"lines that are closed above", R"("nistart":{"type":2,"pattern":"go"})",
     "AA  BB  CC\n"
     "x   y   z\n"
     "go\n"
     "AA BB CC\n"
     "x  y  z",
     "$a 4:0-1 'x'\n$b 4:3-4 'y'\n$c 4:6-7 'z'\n"},
};

TEST(TableLayout, LinesThatAreNoRows) {
    CheckTables(IgnoredRows);
}

// The rows of all runs add up; a run takes out only what holds no text.
TEST(TableLayout, RunsAddUp) {
    const std::string text =
        "AA  BB  CC\n"
        "x   y   z\n"
        "AA BB CC\n"
        "x  y  z\n";
    const auto sample = LoadRules(TableNode(R"("endline":"AA")"));
    auto& table = TableAt(*sample, 0);
    EXPECT_EQ(table.GetBeginLine(), -1);
    sample->Parse(text, 0, 2, nullptr);
    EXPECT_TRUE(table.Parse(text, 2, 4, nullptr));
    EXPECT_EQ(DumpCells(table.VariablePos()),
              "$a 1:0-1 'x' 3:0-1 'x'\n$b 1:4-5 'y' 3:3-4 'y'\n$c 1:8-9 'z' 3:6-7 'z'\n");
    EXPECT_EQ(table.GetBeginLine(), 2);
    EXPECT_FALSE(table.Parse(text, 3, 4, nullptr));
    EXPECT_EQ(table.GetBeginLine(), 2);

    table.AddVariablePosInfo("$d", 9, CAppTextLet(9, 0, 9, 0, ""));
    table.AddVariablePosInfo("$b", 3, CAppTextLet(3, 0, 3, 0, "lost span"));
    EXPECT_TRUE(table.IsNoneExist());
    table.Parse(text, 2, 4, nullptr);
    EXPECT_EQ(DumpCells(table.VariablePos()),
              "$a 1:0-1 'x' 3:0-1 'x'\n$b 1:4-5 'y' 3:3-4 'y'\n$c 1:8-9 'z' 3:6-7 'z'\n$d\n");
    EXPECT_FALSE(table.IsNoneExist());

    auto& host = table.GetVariablePos();
    table.Parse(text, 2, 4, nullptr);
    for (const char* name : {"$a", "$b", "$c"}) host[name][1].text.clear();
    table.Parse(text, 2, 4, nullptr);
    EXPECT_EQ(DumpCells(host), "$a 3:0-1 'x'\n$b 3:3-4 'y'\n$c 3:6-7 'z'\n$d\n");
}

std::string Dump(const HeaderTrial& trial) {
    const char* const verdicts[] = {"whole line",  "few tokens", "token",
                                    "few headers", "direct",     "words"};
    std::string dump = std::to_string(trial.line) + " " + verdicts[trial.verdict];
    if (trial.missingHeader >= 0) dump += " missing " + std::to_string(trial.missingHeader);
    if (trial.header >= 0)
        dump += " at " + std::to_string(trial.header) + "/" + std::to_string(trial.token) + "/" +
                std::to_string(trial.column);
    return dump + "\n";
}

std::string Trials(const char* keys, const std::string& text) {
    const auto sample = LoadRules(TableNode(keys));
    sample->Parse(text, 0, -1, nullptr);
    std::string dump;
    for (const auto& trial : TableAt(*sample, 0).ExplainHeader(0, 99)) dump += Dump(trial);
    return dump;
}

TEST(TableLayout, TellsHowFarEachLineGot) {
    EXPECT_EQ(Trials("", "q\n\nAA  BB\nAA  BB  CC\nAA  BB  CC"),
              "0 whole line\n2 whole line\n3 direct\n");
    EXPECT_EQ(Trials(R"("headers":"A B;A B")", "say A  B  A  B\nA  B  A  B"),
              "0 token missing 0 at 0/0/0\n1 few headers missing 0 at 0/4/10\n");
    EXPECT_EQ(Trials(Spread, "- Local  Intf  Hold  Time\nLocal  Intf  Hold  Time\n"),
              "0 token missing 0 at 0/0/0\n1 words missing 0\n");
    EXPECT_EQ(Trials(R"("headers":"regex:.*;B;C")", "  B  C"), "0 few tokens missing 0 at 0/0/2\n");
}

TEST(TableLayout, TellsWhatTheLastParseDecided) {
    const auto sample = LoadRules(TableNode(R"("endline":"Total")"));
    sample->Parse("q\nAA  BB  CC\n===--- ===--- ===---\nx\nTotal\n", 0, -1, nullptr);
    const auto& layout = TableAt(*sample, 0).LastLayout();
    EXPECT_TRUE(layout.isHeaderFound);
    EXPECT_EQ(layout.separatorLine, 2);
    EXPECT_EQ(layout.headerLine, 2);
    EXPECT_EQ(layout.columns, (std::vector<std::ptrdiff_t>{0, 7, 14}));
    EXPECT_EQ(layout.firstRow, 3);
    EXPECT_EQ(layout.endLine, 4);
    EXPECT_TRUE(layout.isEndFound);
}

// Which lines a table leaves open, to whoever asks it for them.
TEST(TableLayout, LinesLeftOpen) {
    struct Row {
        const char* name;
        const char* keys;
        const char* text;
        const char* open;
    };
    const Row rows[] = {
        {"columns of the header line close the lines before it", R"("endline":"Total")",
         "Total\nAA  BB  CC\nx\nTotal\nx", "0 1 1 0 0"},
        {"fixed columns leave them open",
         R"("endline":"Total","aligntype":"2","alignrange":"0;4;8")",
         "Total\nAA  BB  CC\nx\nTotal\nx", "1 1 1 0 0"},
        {"tokens leave them open", R"("endline":"Total","aligntype":"3","alignrange":"1;1;1")",
         "Total\nAA  BB  CC\nx\nTotal\nx", "1 1 1 0 0"},
        {"the end is looked for from the first line without a header", R"("endline":"Total")",
         "x\nTotal\nx", "1 0 0"},
        {"or from the first one not skipped",
         R"("endline":"Total","isskipline":true,"skipline":"2")", "x\nTotal\nx\nTotal\nx",
         "1 1 1 0 0"},
        {"no end condition, no header", "", "x\nTotal\nx", "1 1 1"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto sample = LoadRules(TableNode(row.keys));
        sample->Parse(row.text, 0, -1, nullptr);
        const auto& status = TableAt(*sample, 0).LineStatus();
        std::string open;
        for (int line = 0; line < status.Count(); ++line)
            open += (line == 0 ? "" : " ") + std::string(status.IsOpen(line) ? "1" : "0");
        EXPECT_EQ(open, row.open);
    }
}

void CountNote(std::string_view note, void* count) {
    if (note.substr(0, 25) == "Invalid regex expression:") ++*static_cast<int*>(count);
}

// A broken end condition says so for every line that it is tried on.
TEST(TableLayout, BrokenEndConditionsAreNoted) {
    const auto sample = LoadRules(TableNode(R"j("endline":"$x(a|[)")j"));
    int count = 0;
    SetDiagnosticSink(&CountNote, &count);
    sample->Parse("AA  BB  CC\nx\nx\nx", 0, -1, nullptr);
    SetDiagnosticSink(nullptr, nullptr);
    EXPECT_EQ(count, 3);
}

class CAskedTable : public CAppParseRuleTable {
public:
    using CAppParseRuleTable::CAppParseRuleTable;
    using CAppParseRuleTable::GetAllExcludeLines;
    using CAppParseRuleTable::GetAllFilterLines;
};

TEST(TableLayout, TellsTheLinesThatAreNoRows) {
    CAppParseRuleSample sample("");
    auto* rule = new CAskedTable(&sample);
    sample.AddChildRule(rule);
    rule->Load(ParseJson(TableNode(
        R"("enableexcludelines":true,"excludelines":{"excludeline":["#"]},
           "child":{"parserule":[{"type":1,"filterloop":true,"includelines":{"includeline":["q"]}}]})")));
    const std::string text = "AA  BB  CC\n#   b\nq   b\na   b\n#   q";
    EXPECT_TRUE(sample.Parse(text, 0, -1, nullptr));
    std::set<int> lines = {9};
    rule->GetAllFilterLines(text, 1, 4, lines);
    EXPECT_EQ(lines, (std::set<int>{1, 2}));
    rule->GetAllExcludeLines(text, -5, 100, lines);
    EXPECT_EQ(lines, (std::set<int>{1, 2, 4}));
    rule->GetAllFilterLines("", 1, 4, lines);
    EXPECT_TRUE(lines.empty());
}

}  // namespace
