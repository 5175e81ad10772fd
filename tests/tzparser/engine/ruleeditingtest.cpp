// What each editing operation leaves, kind by kind.
#include "tzparser/select/appparseruledesignreader.h"
#include "tzparser/select/appparserulefilter.h"

#include "ruleeditingsupport.h"

#include <gtest/gtest.h>

namespace {

CAppParseRuleKeyWord& KeyWord(CAppParseRule& sample) {
    return At<CAppParseRuleKeyWord>(sample, 0);
}
CAppParseRuleTable& Table(CAppParseRule& sample) {
    return At<CAppParseRuleTable>(sample, 0);
}
CAppParseRuleParagraph& Paragraph(CAppParseRule& sample) {
    return At<CAppParseRuleParagraph>(sample, 0);
}
CAppParseRuleFilter& Filter(CAppParseRule& sample) {
    return At<CAppParseRuleFilter>(sample, 0);
}

const char* const TwoKvps = R"({"keywords":{"keyword":["x $a and $int:b","y $c"]}})";
const char* const TwoValues = "x 1 and 2\ny 3\nz 4";

const EditRow KeyWordRows[] = {
    {"a rename leaves the type of the old name", TwoKvps,
     [](auto& sample) { sample.RenameVariable("a", "parser.$alpha"); },
     R"({"keywords":{"keyword":["x $alpha and $int:b","y $c"]},
         "variabletypes":{"variabletype":["$a:string","$b:int","$c:string"]}})",
     TwoValues, "0 $a 0:0-0'' $alpha 0:2-3'1' $b 0:8-9'2' $c 1:2-3'3'"},
    {"a rename doesn't find a name behind its type", TwoKvps,
     [](auto& sample) { sample.RenameVariable("b", "z"); },
     R"({"keywords":{"keyword":["x $a and $int:b","y $c"]},
         "variabletypes":{"variabletype":["$a:string","$b:int","$c:string"]}})",
     TwoValues, "0 $a 0:2-3'1' $b 0:8-9'2' $c 1:2-3'3'"},
    {"a rename reaches each line once, also longer names",
     R"({"keywords":{"keyword":["x $a","x $aa"]}})",
     [](auto& sample) { sample.RenameVariable("$a", "$aa"); },
     R"({"keywords":{"keyword":["x $aa","x $aaa"]},
         "variabletypes":{"variabletype":["$a:string","$aa:string"]}})",
     TwoValues, "0 $a 0:0-0'' $aa 0:2-3'1' $aaa 0:2-3'1'"},
    {"unknown names", TwoKvps,
     [](auto& sample) {
         EXPECT_TRUE(sample.RenameVariable("q", "r"));
         EXPECT_TRUE(sample.DeleteVariable("q"));
         EXPECT_TRUE(sample.DeleteVariable("_original_result"));
     },
     R"({"keywords":{"keyword":["x $a and $int:b","y $c"]},
         "variabletypes":{"variabletype":["$a:string","$b:int","$c:string"]}})",
     TwoValues, "0 $a 0:2-3'1' $b 0:8-9'2' $c 1:2-3'3'"},
    {"one of two variables: nothing until it is loaded again", TwoKvps,
     [](auto& sample) { sample.DeleteVariable("$a"); },
     R"({"keywords":{"keyword":["x $_dummy and $int:b","y $c"]},
         "variabletypes":{"variabletype":["$b:int","$c:string"]}})",
     TwoValues, "0 $b 0:0-0'' $c 1:2-3'3'", "0 $b 0:8-9'2' $c 1:2-3'3'"},
    {"one over several lines", R"j({"keywords":{"keyword":["mregex[$a,$b]:x (.) and (.)"]}})j",
     [](auto& sample) { sample.DeleteVariable("a"); },
     R"j({"keywords":{"keyword":["mregex[$_dummy,$b]:x (.) and (.)"]},
         "variabletypes":{"variabletype":["$b:string"]}})j",
     TwoValues, "0 $b 0:0-0''", "0 $b 0:8-9'2'"},
    {"the only variable of a rule takes it along",
     R"({"keywords":{"keyword":["x $a"]}},{"keywords":{"keyword":["y $c"]}})",
     [](auto& sample) { sample.DeleteVariable("a"); },
     R"({"keywords":{"keyword":["y $c"]},"variabletypes":{"variabletype":["$c:string"]}})",
     TwoValues, "0 $c 1:2-3'3'"},
    {"a variable without a line", TwoKvps,
     [](auto& sample) {
         KeyWord(sample).UpdateKVP("y $c", "y $d");
         sample.DeleteVariable("c");
     },
     R"({"keywords":{"keyword":["x $a and $int:b","y $d"]},
         "variabletypes":{"variabletype":["$a:string","$b:int","$c:string","$d:string"]}})",
     TwoValues, "0 $a 0:2-3'1' $b 0:8-9'2' $c 0:0-0'' $d 1:2-3'3'"},
    {"a new line has no stand-by value in its first parse", TwoKvps,
     [](auto& sample) {
         auto& rule = KeyWord(sample);
         rule.AddKVP("z $d");
         rule.AddKVP("q $e");
         rule.AddStatement("$s=1");
         rule.AddStatement("$t=2");
         rule.DelStatement("$s=1");
         rule.DelStatement("none");
     },
     R"({"keywords":{"keyword":["x $a and $int:b","y $c","z $d","q $e"]},
         "statements":{"statement":["$t=2"]},
         "variabletypes":{"variabletype":["$a:string","$b:int","$c:string"]}})",
     TwoValues, "0 $a 0:2-3'1' $b 0:8-9'2' $c 1:2-3'3' $d 2:2-3'4'",
     "0 $a 0:2-3'1' $b 0:8-9'2' $c 1:2-3'3' $d 2:2-3'4' $e 0:0-0''", Note_KeptInXml},
    {"a line takes types along that another line has too",
     R"({"keywords":{"keyword":["q $c","y $c"]}})",
     [](auto& sample) { KeyWord(sample).DelKVP("q $c"); }, R"({"keywords":{"keyword":["y $c"]}})",
     TwoValues, "0", "0 $c 1:2-3'3'"},
    {"a line that goes and comes back", TwoKvps,
     [](auto& sample) {
         KeyWord(sample).UpdateKVP("x $a and $int:b", "");
         KeyWord(sample).UpdateKVP("none", "x $a and $int:b");
     },
     R"({"keywords":{"keyword":["y $c","x $a and $int:b"]},
         "variabletypes":{"variabletype":["$c:string"]}})",
     TwoValues, "0 $a 0:2-3'1' $b 0:8-9'2' $c 1:2-3'3'"},
    {"a line that isn't there", TwoKvps, [](auto& sample) { KeyWord(sample).DelKVP("none"); },
     R"({"keywords":{"keyword":["x $a and $int:b","y $c"]},
         "variabletypes":{"variabletype":["$a:string","$b:int","$c:string"]}})",
     TwoValues, "0 $a 0:2-3'1' $b 0:8-9'2' $c 1:2-3'3'"},
    {"emptied and filled", TwoKvps,
     [](auto& sample) {
         KeyWord(sample).Reset();
         KeyWord(sample).AddKVP("y $q");
     },
     R"({"keywords":{"keyword":["y $q"]}})", TwoValues, "0 $q 1:2-3'3'"},
    {"rules come and go", TwoKvps,
     [](auto& sample) {
         auto* rule = new CAppParseRuleKeyWord(&sample);
         sample.AddChildRule(rule);
         rule->AddKVP("z $d");
         sample.DelChildRule(sample.Children()[0].get());
         EXPECT_TRUE(sample.DelChildRule(&sample));
         EXPECT_TRUE(sample.AddChildRule(nullptr));
     },
     R"({"keywords":{"keyword":["z $d"]}})", TwoValues, "0 $d 2:2-3'4'"},
};

TEST(RuleEditing, KeyWords) {
    CheckEdits(KeyWordRows);
    CheckXml(KeyWordRows);
}

const char* const Ports =
    R"({"type":3,"name":"t","headers":"AA;BB;CC","headertovariables":"AA:$a;BB:$int:b;CC:$c"})";
const std::string PortTypes = R"("variabletypes":["$a:string","$b:int","$c:string"]})";
const char* const PortLines = "AA  BB  CC\nx   y z\n    u   v";

const EditRow TableRows[] = {
    {"the table itself", Ports, [](auto& sample) { sample.DeleteVariable("$t"); }, "", PortLines,
     ""},
    {"a column keeps its type", Ports, [](auto& sample) { sample.DeleteVariable("t.b"); },
     R"({"type":3,"name":"t","headers":"AA;BB;CC",
         "headertovariables":"AA:$string:a;CC:$string:c",)" +
         PortTypes,
     PortLines, "3 $a 1:0-1'x' 2:0-0'' $c 1:7-7'' 2:8-9'v'"},
    {"a column's new name takes the type over", Ports,
     [](auto& sample) { sample.RenameVariable("$t.$b", "$t.$n"); },
     R"({"type":3,"name":"t","headers":"AA;BB;CC",
         "headertovariables":"AA:$string:a;BB:$int:n;CC:$string:c",
         "variabletypes":["$a:string","$b:int","$c:string","$n:int"]})",
     PortLines, "3 $a 1:0-1'x' 2:0-0'' $c 1:7-7'' 2:8-9'v' $n 1:4-7'y z' 2:4-5'u'"},
    {"the table's new name", Ports,
     [](auto& sample) {
         sample.RenameVariable("t", "");
         sample.RenameVariable("t", "$ports");
         sample.RenameVariable("ports.q", "r");
     },
     R"({"type":3,"name":"ports","headers":"AA;BB;CC",
         "headertovariables":"AA:$string:a;BB:$int:b;CC:$string:c",)" +
         PortTypes,
     PortLines, "3 $a 1:0-1'x' 2:0-0'' $b 1:4-7'y z' 2:4-5'u' $c 1:7-7'' 2:8-9'v'"},
    {"two columns of one name: the first by header goes", Ports,
     [](auto& sample) {
         sample.RenameVariable("t.b", "t.a");
         sample.DeleteVariable("t.a");
     },
     R"({"type":3,"name":"t","headers":"AA;BB;CC",
         "headertovariables":"BB:$int:a;CC:$string:c",
         "variabletypes":["$a:int","$b:int","$c:string"]})",
     PortLines, "3 $a 1:4-7'y z' 2:4-5'u' $c 1:7-7'' 2:8-9'v'"},
    {"saving loses the alignment", Ports,
     [](auto& sample) {
         Table(sample).SetAlign("2");
         Table(sample).SetAlignRange("0;4;6");
         Table(sample).SetAlignLeft(false);
     },
     R"({"type":3,"name":"t","headers":"AA;BB;CC","leftalign":"0;4;6",
         "headertovariables":"AA:$string:a;BB:$int:b;CC:$string:c",)" +
         PortTypes,
     "AA  BB  CC\nx   y z", "3 $a 1:0-1'x' $b 1:4-5'y' $c 1:6-7'z'",
     "3 $a 1:0-1'x' $b 1:4-7'y z' $c 1:7-7''", Note_KeptInXml},
    {"headers, skipped lines and the end", Ports,
     [](auto& sample) {
         auto& rule = Table(sample);
         rule.SetHeader(" AA ;CC");
         rule.AddHeaderVar("CC", "$int:n");
         rule.SetIsSkipLine(true);
         rule.SetSkipLine("1");
         rule.SetEndCond("^$");
     },
     R"({"type":3,"name":"t","headers":"AA;CC","endline":"^$","isskipline":true,"skipline":1,
         "headertovariables":"AA:$string:a;BB:$int:b;CC:$int:n",
         "variabletypes":["$a:string","$b:int","$c:string","$n:int"]})",
     "AA  CC\n1   2\n3   4\n\n5   6", "3 $a 2:0-1'3' $n 2:4-5'4'"},
    {"headers by hand", Ports, [](auto& sample) { Table(sample).GetHeader().pop_back(); },
     R"({"type":3,"name":"t","headers":"AA;BB",
         "headertovariables":"AA:$string:a;BB:$int:b;CC:$string:c",)" +
         PortTypes,
     "AA  BB\n1   2", "3 $a 1:0-1'1' $b 1:4-5'2'", nullptr, Note_Unmarked},
    {"a header's variable goes without a mark", Ports,
     [](auto& sample) { Table(sample).DelHeaderVar("BB"); },
     R"({"type":3,"name":"t","headers":"AA;BB;CC",
         "headertovariables":"AA:$string:a;CC:$string:c",)" +
         PortTypes,
     "AA  BB  CC\n1   2   3", "3 $a 1:0-1'1' $c 1:8-9'3'", nullptr, Note_Unmarked},
    {"saving loses that values are carried over", Ports,
     [](auto& sample) {
         auto& rule = Table(sample);
         rule.SetIsUsePreVars(true);
         rule.AddFollowVar("$a");
         rule.AddFollowVar("$b");
         rule.DelFollowVar("$b");
     },
     R"({"type":3,"name":"t","headers":"AA;BB;CC","isuseprevars":true,"useprevars":"$a",
         "headertovariables":"AA:$string:a;BB:$int:b;CC:$string:c",)" +
         PortTypes,
     "AA  BB  CC\nx   1   2\n    3   4",
     "3 $a 1:0-1'x' 2:0-1'x' $b 1:4-5'1' 2:4-5'3' $c 1:8-9'2' 2:8-9'4'",
     "3 $a 1:0-1'x' 2:0-0'' $b 1:4-5'1' 2:4-5'3' $c 1:8-9'2' 2:8-9'4'", Note_KeptInXml},
    {"keys are no change, statements and hash columns aren't saved", Ports,
     [](auto& sample) {
         auto& rule = Table(sample);
         rule.AddKeyVar("$a");
         rule.AddKeyVar("$b");
         rule.DelKeyVar("$a");
         rule.AddStatement("s");
         rule.DelStatement("none");
         rule.AddTableKey("a");
         rule.AddTableInterfaceKey("b");
         std::set<std::string> columns{"a"};
         rule.SetTableCmpColumns(columns);
         rule.SetTableCmpSort(true);
         rule.SetTableRowCount(7);
         rule.SetTableHash("h");
     },
     R"({"type":3,"name":"t","headers":"AA;BB;CC","keyvariables":"$b",
         "headertovariables":"AA:$string:a;BB:$int:b;CC:$string:c",)" +
         PortTypes,
     "AA  BB  CC\n1   2   3", "3 $a 1:0-1'1' $b 1:4-5'2' $c 1:8-9'3'"},
    {"emptied and filled", Ports,
     [](auto& sample) {
         Table(sample).Reset();
         Table(sample).SetHeader("CC");
         Table(sample).AddHeaderVar("CC", "$c");
     },
     R"({"type":3,"name":"t","headers":"CC","headertovariables":"CC:$string:c",
         "variabletypes":["$c:string"]})",
     "CC\n2", "3 $c 1:0-1'2'"},
};

TEST(RuleEditing, Tables) {
    CheckEdits(TableRows);
    CheckXml(TableRows);
}

const char* const Blocks =
    R"({"type":4,"name":"p","startline":"^port $n",
        "child":{"parserule":[{"keywords":{"keyword":["mtu $int:m"]}}]}})";
const std::string BlockChild =
    R"("child":{"parserule":[{"keywords":{"keyword":["mtu $int:m"]},
        "variabletypes":{"variabletype":["$m:int","$n:string"]}}]}})";
const char* const BlockLines = "port a\nmtu 1\n!\nport b";

const EditRow ParagraphRows[] = {
    {"the paragraph itself", Blocks, [](auto& sample) { sample.DeleteVariable("p"); }, "",
     BlockLines, ""},
    {"its new name", Blocks, [](auto& sample) { sample.RenameVariable("$p", "x.$ports"); },
     R"({"type":4,"name":"ports","startline":"^port $n",)" + BlockChild, BlockLines,
     "4 0-3 3-4 (0 $m 1:4-5'1' 3:0-0'' $n 0:5-6'a' 3:5-6'b')"},
    {"the only variable of the default child, which stays", Blocks,
     [](auto& sample) { sample.DeleteVariable("p.m"); },
     R"({"type":4,"name":"p","startline":"^port $n",
         "child":{"parserule":[{"variabletypes":{"variabletype":["$n:string"]}}]}})",
     BlockLines, "4 0-3 3-4 (0 $n 0:5-6'a' 3:5-6'b')"},
    {"the variable of the start line", Blocks, [](auto& sample) { sample.DeleteVariable("p.n"); },
     R"({"type":4,"name":"p","startline":"^port $_dummy",
         "child":{"parserule":[{"keywords":{"keyword":["mtu $int:m"]},
         "variabletypes":{"variabletype":["$m:int"]}}]}})",
     BlockLines, "4 0-3 3-4 (0 $m 1:4-5'1' 3:0-0'')"},
    {"a property of a variable is none", R"({"type":4,"name":"p","startline":"^port $_n"})",
     [](auto& sample) {
         sample.DeleteVariable("p._n");
         sample.RenameVariable("p._n", "p.n");
     },
     R"({"type":4,"name":"p","startline":"^port $_n",
         "child":{"parserule":[{"variabletypes":{"variabletype":["$_n:string"]}}]}})",
     BlockLines, "4 0-3 3-4 (0 $_n 0:5-6'a' 3:5-6'b')"},
    {"lines of the first child", Blocks,
     [](auto& sample) {
         Paragraph(sample).AddKVP("! $q");
         Paragraph(sample).AddStatement("$s=1");
     },
     R"({"type":4,"name":"p","startline":"^port $n",
         "child":{"parserule":[{"keywords":{"keyword":["mtu $int:m","! $q"]},
         "statements":{"statement":["$s=1"]},
         "variabletypes":{"variabletype":["$m:int","$n:string"]}}]}})",
     "port a\nmtu 1\n! x", "4 0-3 (0 $m 1:4-5'1' $n 0:5-6'a' $q 2:2-3'x')"},
    {"another start and an end", Blocks,
     [](auto& sample) {
         Paragraph(sample).SetStartExpr("^mtu $k");
         Paragraph(sample).SetEndExpr("!");
     },
     R"({"type":4,"name":"p","startline":"^mtu $k","endline":"!",)" + BlockChild, BlockLines,
     "4 1-3 (0 $k 1:4-5'1' $m 1:4-5'1' $n 1:0-0'')"},
    {"saving loses the flag of the end line", Blocks,
     [](auto& sample) {
         Paragraph(sample).SetEndExpr("!");
         Paragraph(sample).SetIsExcludeEndLine(true);
     },
     R"({"type":4,"name":"p","startline":"^port $n","endline":"!","isuseprevars":true,)" +
         BlockChild,
     BlockLines, "4 0-2 3-4 (0 $m 1:4-5'1' 3:0-0'' $n 0:5-6'a' 3:5-6'b')",
     "4 0-3 3-4 (0 $m 1:4-5'1' 3:0-0'' $n 0:5-6'a' 3:5-6'b')", Note_KeptInXml},
    {"saving loses that values are carried over", Blocks,
     [](auto& sample) {
         auto& rule = Paragraph(sample);
         rule.SetIsUsePreVars(true);
         rule.AddFollowVar("$m");
         rule.AddFollowVar("$n");
         rule.DelFollowVar("$n");
         rule.AddKeyVar("$n");
         rule.AddKeyVar("$m");
         rule.DelKeyVar("$m");
     },
     R"({"type":4,"name":"p","startline":"^port $n","keyvariables":"$n","useprevars":"$m",)" +
         BlockChild,
     BlockLines, "4 0-3 3-4 (0 $m 1:4-5'1' 3:0-0'1' $n 0:5-6'a' 3:5-6'b')",
     "4 0-3 3-4 (0 $m 1:4-5'1' 3:0-0'' $n 0:5-6'a' 3:5-6'b')", Note_KeptInXml},
    {"saving loses how many lines make a group", Blocks,
     [](auto& sample) {
         Paragraph(sample).SetStartExpr("");
         Paragraph(sample).SetIsLineAsParagraph(true);
         Paragraph(sample).SetLineAsParagraph(2);
     },
     R"({"type":4,"name":"p","islineasparagraph":true,"lineasparagraph":2,)" + BlockChild,
     "mtu 1\nx\nmtu 2", "4 0-2 2-3 (0 $m 0:4-5'1' 2:4-5'2' $n 0:0-0'' 2:0-0'')",
     "4 0-1 1-2 2-3 (0 $m 0:4-5'1' 1:0-0'' 2:4-5'2' $n 0:0-0'' 1:0-0'' 2:0-0'')", Note_KeptInXml},
    {"without a first child equal starts part; loading brings one back", Blocks,
     [](auto& sample) { Paragraph(sample).DelChildRule(Paragraph(sample).GetFirstKeywordRule()); },
     R"({"type":4,"name":"p","startline":"^port $n"})", "port a\nx\nport a", "4 0-2 2-3",
     "4 0-3 (0 $n 0:5-6'a')"},
    {"emptied and filled", Blocks,
     [](auto& sample) {
         Paragraph(sample).Reset();
         Paragraph(sample).SetStartExpr("port");
         Paragraph(sample).AddKVP("mtu $k");
     },
     R"({"type":4,"name":"p","startline":"port","lineasparagraph":1,"isuseprevars":true,
         "child":{"parserule":[{"keywords":{"keyword":["mtu $k"]}}]}})",
     BlockLines, "4 0-3 3-4 (0 $k 1:4-5'1' 3:0-0'')"},
    {"a table below", Blocks,
     [](auto& sample) {
         auto* table = new CAppParseRuleTable(&Paragraph(sample));
         Paragraph(sample).AddChildRule(table);
         table->SetName("t");
         table->SetHeader("AA;BB");
         table->AddHeaderVar("BB", "$b");
     },
     R"({"type":4,"name":"p","startline":"^port $n",
         "child":{"parserule":[{"keywords":{"keyword":["mtu $int:m"]},
         "variabletypes":{"variabletype":["$m:int","$n:string"]}},
         {"type":3,"name":"t","headers":"AA;BB","headertovariables":"BB:$string:b",
          "variabletypes":["$b:string"]}]}})",
     "port a\nAA  BB\n1   2\nport b",
     "4 0-3 3-4 (0 $m 0:0-0'' 3:0-0'' $n 0:5-6'a' 3:5-6'b' | 3 $b 2:4-5'2' 3:0-0'')"},
};

TEST(RuleEditing, Paragraphs) {
    CheckEdits(ParagraphRows);
    CheckXml(ParagraphRows);
}

const char* const Lines =
    R"({"type":1,"name":"f","startline":"one",
        "child":{"parserule":[{"keywords":{"keyword":["v $v"]}}]}})";
const std::string LinesChild =
    R"("child":{"parserule":[{"keywords":{"keyword":["v $v"]},
        "variabletypes":{"variabletype":["$v:string"]}}]}})";
const char* const FourLines = "one\nv 1\ntwo\nv 2";

const EditRow FilterRows[] = {
    {"the filter itself", Lines, [](auto& sample) { sample.DeleteVariable("$f"); }, "", FourLines,
     ""},
    {"its new name", Lines, [](auto& sample) { sample.RenameVariable("f", "$g"); },
     R"({"type":1,"name":"g","startline":"one",)" + LinesChild, FourLines,
     "1 [0 1 2 3] (0 $v 1:2-3'1')"},
    {"the only variable of the default child, which stays", Lines,
     [](auto& sample) { sample.DeleteVariable("v"); },
     R"({"type":1,"name":"f","startline":"one","child":{"parserule":[{}]}})", FourLines,
     "1 [0 1 2 3] (0)"},
    {"bounds and their flags", Lines,
     [](auto& sample) {
         auto& rule = Filter(sample);
         rule.SetBeginLine("v 1");
         rule.SetEndLine("v 2");
         rule.SetIsExcludeBeginLine(true);
         rule.SetIsExcludeEndLine(true);
         rule.SetAsConfiglet("TRUE");
         rule.AddKVP("t$rest");
         rule.AddStatement("$s=1");
     },
     R"({"type":1,"name":"f","startline":"v 1","endline":"v 2","excludebeginline":true,
         "excludeendline":true,"asconfiglet":true,
         "child":{"parserule":[{"keywords":{"keyword":["v $v","t$rest"]},
         "statements":{"statement":["$s=1"]},"variabletypes":{"variabletype":["$v:string"]}}]}})",
     FourLines, "1 [2] (0 $rest 2:1-3'wo' $v 2:0-0'')"},
    {"lists are saved in a form that isn't loaded", Lines,
     [](auto& sample) {
         auto& rule = Filter(sample);
         rule.SetIsFilterLoop(true);
         rule.AddIncludeLine("v");
         rule.SetExcludeLine({"1", "2", "2"});
         rule.DelExcludeLine("2");
         rule.SetSkipLine({"v"});
     },
     R"({"type":1,"name":"f","startline":"one","filterloop":true,"includelines":["v"],
         "excludelines":["1"],"skiplines":["v"],)" +
         LinesChild,
     FourLines, "1 [3] (0 $v 3:2-3'2')", "1 [0 1 2 3] (0 $v 1:2-3'1')", Note_KeptInXml},
    {"flags that are so already are no change", Lines,
     [](auto& sample) {
         Filter(sample).SetIsFilterLoop(false);
         Filter(sample).SetIsExcludeEndLine(false);
         Filter(sample).SetAsConfiglet(false);
     },
     R"({"type":1,"name":"f","startline":"one",)" + LinesChild, FourLines,
     "1 [0 1 2 3] (0 $v 1:2-3'1')", nullptr, Note_Unmarked},
    {"emptied and filled", Lines,
     [](auto& sample) {
         Filter(sample).Reset();
         Filter(sample).SetEndLine("two");
         Filter(sample).AddKVP("v $w");
     },
     R"({"type":1,"name":"f","endline":"two","excludeendline":true,
         "child":{"parserule":[{"keywords":{"keyword":["v $w"]}}]}})",
     FourLines, "1 [0 1] (0 $w 1:2-3'1')"},
};

TEST(RuleEditing, Filters) {
    CheckEdits(FilterRows);
    CheckXml(FilterRows);
}

const char* const Reader =
    R"({"type":2,"name":"r","drname":"a","drcode":"b",
        "child":{"parserule":[{"keywords":{"keyword":["v $v"]}}]}})";

// No design reader is set, so none selects a line.
const EditRow ReaderRows[] = {
    {"the design reader itself", Reader, [](auto& sample) { sample.DeleteVariable("r"); }, "",
     FourLines, ""},
    {"its new name, and what the reader gets", Reader,
     [](auto& sample) {
         sample.RenameVariable("$r", "p.q");
         auto& rule = At<CAppParseRuleDesignReader>(sample, 0);
         rule.SetDRName("c");
         rule.SetDRCode("d");
         rule.AddStatement("$s=1");
     },
     R"({"type":2,"name":"q","drname":"c","drcode":"d",
         "child":{"parserule":[{"keywords":{"keyword":["v $v"]},"statements":{"statement":["$s=1"]},
         "variabletypes":{"variabletype":["$v:string"]}}]}})",
     FourLines, "2 [] (0 $v 0:0-0'')"},
    {"the only variable of the default child, which stays", Reader,
     [](auto& sample) { sample.DeleteVariable("v"); },
     R"({"type":2,"name":"r","drname":"a","drcode":"b","child":{"parserule":[{}]}})", FourLines,
     "2 [] (0)"},
    {"emptied", Reader, [](auto& sample) { At<CAppParseRuleDesignReader>(sample, 0).Reset(); },
     R"({"type":2,"child":{"parserule":[{}]}})", FourLines, "2 [] (0)"},
};

const char* const Record =
    R"({"type":15,"name":"x","lines":[{"row":7,"text":"one"}],
        "child":{"parserule":[{"keywords":{"keyword":["v $v"]}}]}})";
const char* const Baseline =
    R"({"type":9,"name":"x","lines":[{"row":0,"text":"one"},{"row":1,"text":"v 1"}],
        "child":{"parserule":[{"keywords":{"keyword":["v $v"]}}]}})";

const EditRow NamelessRows[] = {
    {"a text rule's name is nobody's", Record,
     [](auto& sample) {
         sample.DeleteVariable("x");
         sample.RenameVariable("x", "y");
     },
     R"({"type":15,"name":"x","lines":[{"row":7,"text":"one"}],)" + LinesChild, FourLines,
     "15 'one' (0)"},
    {"a keyword rule below it goes with its variable", Record,
     [](auto& sample) { sample.DeleteVariable("v"); },
     R"({"type":15,"name":"x","lines":[{"row":7,"text":"one"}]})", FourLines, "15 'one'"},
    {"nor does a diff filter answer to its name", Baseline,
     [](auto& sample) {
         sample.DeleteVariable("$x");
         sample.RenameVariable("$x", "y");
         sample.RenameVariable("v", "w");
     },
     R"({"type":9,"name":"x","lines":[{"text":"one"},{"row":1,"text":"v 1"}],
         "child":{"parserule":[{"keywords":{"keyword":["v $w"]},
         "variabletypes":{"variabletype":["$v:string"]}}]}})",
     FourLines, "9 [0 1] (0 $v 0:0-0'' $w 1:2-3'1')"},
};

TEST(RuleEditing, DesignReadersTextsAndDiffFilters) {
    CheckEdits(ReaderRows);
    CheckXml(ReaderRows);
    CheckEdits(NamelessRows);
}

// Nor does a script rule own a name, be it that of its own variable.
TEST(RuleEditing, AScriptOwnsNoName) {
    const auto sample = LoadRules(R"({"type":8,"variables":[{"name":"$v","type":"int"}]})");
    sample->RenameVariable("v", "w");
    sample->DeleteVariable("v");
    ASSERT_EQ(sample->Children().size(), 1U);
}

// The built-in forms take their own statements in each parse, so edits show in the document and in
// the variable tree alone; what is loaded comes behind the statements that a form begins with.
const EditRow BuiltInRows[] = {
    {"ping", R"({"type":5})",
     [](auto& sample) {
         sample.DeleteVariable("lost_rate");
         sample.RenameVariable("average_time", "time");
         sample.DeleteVariable("ping_result");
         sample.DeleteVariable("average_time");
     },
     R"({"type":5,"statements":{"statement":["$ping_result=$lost_rate"]},
         "variabletypes":{"variabletype":["$ping_result:bool"]}})",
     "Success rate is 80 percent (4/5)",
     "5 $average_time 0:0-0'' $lost_rate 0:0-0'20' $ping_result 0:0-0'True'"},
    {"traceroute", R"({"type":6})",
     [](auto& sample) {
         KeyWord(sample).Reset();
         KeyWord(sample).AddKVP("traceroute to $host");
     },
     R"({"type":6,"keywords":{"keyword":["traceroute to $host"]}})",
     "traceroute to 192.0.2.1\n 1 198.51.100.1\n 2 192.0.2.1", "6 $ip 2:3-12'192.0.2.1'"},
};

TEST(RuleEditing, BuiltInForms) {
    CheckEdits(BuiltInRows);
}

// A host may keep the headers and write to them after the rule was cloned, loaded or parsed.
TEST(RuleEditing, HeadersInAHostsHands) {
    const auto sample = LoadRules(Ports);
    auto& headers = Table(*sample).GetHeader();
    const std::unique_ptr<CAppParseRule> clone(sample->Clone(nullptr));
    headers.erase(headers.begin());
    EXPECT_EQ(DumpParse(*clone, "AA  BB  CC\n1   2   3"), "3 $a 1:0-1'1' $b 1:4-5'2' $c 1:8-9'3'");
    EXPECT_EQ(DumpParse(*sample, "BB  CC\n1   2"), "3 $b 1:0-1'1' $c 1:4-5'2'");
    Table(*sample).Load(ParseJson(Ports));
    headers.pop_back();
    sample->Parse("AA  BB\n1   2", 0, -1, nullptr);
    EXPECT_EQ(DumpRules(*sample), "3 $a 1:0-1'1' $b 1:4-5'2'");
    headers.pop_back();
    sample->Parse("\n\nAA\n3", 0, -1, nullptr);
    EXPECT_EQ(DumpRules(*sample), "3 $a 1:0-1'1' 3:0-1'3' $b 1:4-5'2'");
}

}  // namespace
