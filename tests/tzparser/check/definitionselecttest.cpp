// What the check tells of the rules that select lines.
#include "checksupport.h"

namespace {

TEST(DefinitionCheck, Filters) {
    const Row rows[] = {
        {"sound",
         R"j("startline":"plain (text","endline":"regex:^!","includelines":{"includeline":["a",""]},
             "child":{"parserule":[{"keywords":{"keyword":["a $a"]}}]})j",
         ""},
        {"global variables aren't known", R"j("startline":"regex:($$x")j", ""},
        {"patterns and lists",
         R"j("startline":"$x(a|[)","includelines":["a"],"excludelines":{"excludeline":"regex:(a"})j",
         "@.startline: The pattern doesn't compile and fits no line. Unmatched [ or [^ in "
         "character class declaration.\n"
         "    $x(a|[)\n"
         "           ^\n"
         "@.includelines: This is not an object and is ignored.\n"
         "@.excludelines.excludeline: Invalid regex. Unmatched marking parenthesis ( or \\(. The "
         "pattern is searched for as a plain text.\n"
         "    regex:(a\n"
         "            ^\n"},
        {"anchors of a plain text", R"("startline":"^!","endline":"end$")",
         "@.startline: Without a variable the pattern is searched for as it stands, with its "
         "\"^\" or \"$\". An expression begins with \"regex:\".\n"
         "    ^!\n"
         "    ^\n"
         "@.endline: Without a variable the pattern is searched for as it stands, with its \"^\" "
         "or \"$\". An expression begins with \"regex:\".\n"
         "    end$\n"
         "       ^\n"},
        {"bounds and operations", R"("nistart":{"type":2,"pattern":"a"},"operations":[{}])",
         "@.nistart: A filter takes no bounds and no operations; this is ignored.\n"
         "@.operations: A filter takes no bounds and no operations; this is ignored.\n"},
        {"below it", R"("child":{"parserule":[{"keywords":{"keyword":["a"]}}]})",
         "@.child.parserule[0].keywords.keyword[0]: Invalid pattern. There is no variable in it. "
         "The statement is left out.\n"
         "    a\n"},
    };
    CheckAll(rows, R"({"samples":[{"parserRules":{"parserule":{"type":1,)", "}}}]}");
}

// Raw strings hold JSON: a backslash of an expression stands twice.
TEST(DefinitionCheck, DesignReaders) {
    EXPECT_EQ(
        Found(R"({"samples":[{"parserRules":{"parserule":{"type":2,"name":"d","niend":{"type":3},
                    "operations":[{}]}}}]})"),
        "samples[0].parserRules.parserule.niend: A design reader takes no bounds and no "
        "operations; this is ignored.\n"
        "samples[0].parserRules.parserule.operations: A design reader takes no bounds and no "
        "operations; this is ignored.\n");
}

TEST(DefinitionCheck, TextRules) {
    const Row rows[] = {
        {"sound",
         R"("name":"t","nistart":{"type":2,"pattern":"a"},"lines":[{"row":1,"text":" a"},{}])", ""},
        {"nothing to find", "\"child\":{\"parserule\":[]}",
         "@[0]: There is no name, so nobody can ask for the lines that the rule finds.\n"
         "@[0].child: Rules below a text rule never run.\n"
         "@[0]: There are no lines to look for, so the rule finds nothing.\n"},
        {"shapes", R"("name":"t","lines":{"row":1,"text":"a"})",
         "@[0].lines: This is not an array and is ignored.\n"
         "@[0]: There are no lines to look for, so the rule finds nothing.\n"},
        {"lines that are never found",
         R"("name":"t","operations":[{}],"niend":{"type":3},"lines":["a",{"text":"a\nb"}])",
         "@[0].niend: No bound has the type 3, so the rule never runs.\n"
         "@[0].operations: A text rule takes no operations; this is ignored.\n"
         "@[0].lines[0]: This is not an object and is ignored.\n"
         "@[0].lines[1].text: No line of a text holds a line end, so this is never found.\n"
         "    a?b\n"
         "     ^\n"},
    };
    CheckAll(rows, R"({"samples":[{"parserRules":{"parserule":[{"type":15,)", "}]}}]}");
    EXPECT_EQ(Found(R"({"samples":[{"parserRules":{"parserule":{"type":15,"name":"t"}}}]})"),
              "samples[0].parserRules.parserule: A rule of type 15 works in an array only; by "
              "itself it is left out.\n"
              "samples[0]: The sample has no rule, so every parse with it fails.\n");
}

}  // namespace
