#include "checksupport.h"

namespace {

TEST(DefinitionCheck, Documents) {
    const Row rows[] = {
        {"not JSON", "{\"samples\":\n  [1,,]}",
         "definition, line 2, column 6: This is not JSON: A value was expected.\n"
         "      [1,,]}\n"
         "         ^\n"},
        {"nothing", "", "definition: This is not an object, so every parse fails.\n"},
        {"no samples", "{}", "definition: There is no sample, so every parse fails.\n"},
        {"shapes", R"({"accessType":"16","samples":{"a":1},"sequences":7})",
         "accessType: Only an integer counts as an access type; this is ignored.\n"
         "samples: This is not an array and is ignored.\n"
         "definition: There is no sample, so every parse fails.\n"
         "sequences: This is not an array and is ignored.\n"},
        {"a broken text in a sample",
         R"({"samples":[{"parserRules":"{\"parserule\":\n\t[{\"type\" 0}]}"}]})",
         "samples[0].parserRules, line 2, column 11: This is not JSON, so the sample has no rule "
         "and every parse with it fails: A colon was expected behind the name of a member.\n"
         "    ?[{\"type\" 0}]}\n"
         "              ^\n"},
        {"capitals in keys",
         R"({"samples":[{"parserRules":"{\"PARSERULE\":{\"KeyWords\":{\"KeyWord\":[\"a\"]}}}"}]})",
         "@.keywords.keyword[0]: Invalid pattern. There is no variable in it. The statement is "
         "left out.\n"
         "    a\n"},
    };
    CheckAll(rows, "", "");
}

TEST(DefinitionCheck, Samples) {
    const Row rows[] = {
        {"all reached",
         R"("sequences":[2,1],"samples":[{"index":1,#,@},{"index":2,#,@},{"index":9,@}])", ""},
        {"sequences names none", R"("sequences":[1,7],"samples":[{"index":1,@}])",
         "sequences[1]: No sample has the index 7.\n"},
        {"not named and not the last", R"("samples":[{"index":1,@},{"index":2,@}])",
         "samples[0]: \"sequences\" doesn't name the index 1, and the sample isn't the last: "
         "nothing reaches it.\n"},
        {"two of one index",
         R"("sequences":[1],"samples":[{"index":1,#,@},{"index":1,@},{"index":1,@}])",
         "samples[1]: An earlier sample has the index 1, and this one isn't the last: nothing "
         "reaches it.\n"},
        {"behind one without conditions",
         R"("sequences":[1,2,3],"samples":[{"index":3,@},{"index":1,#,@},{"index":2,@},
            {"index":4,@}])",
         "samples[0]: The sample with the index 2 is tried first and, without conditions, fits "
         "every text: nothing reaches this one.\n"
         "samples[3]: The sample with the index 2 is tried first and, without conditions, fits "
         "every text: nothing reaches this one.\n"},
        {"the last is tried and is the catch-all too",
         R"("sequences":[2,1],"samples":[{"index":1,@},{"index":2,#,@}])", ""},
        {"a dropped sample doesn't count",
         R"("sequences":[1,2],"samples":[{"index":1,"identify":"[",@},{"index":2,@}])",
         "samples[0].identify, line 1, column 2: This is not JSON, so the sample is dropped: A "
         "value was expected.\n"
         "    [\n"
         "     ^\n"
         "sequences[0]: No sample has the index 1.\n"},
        {"no rules",
         R"("sequences":[1,2,3],"samples":[{"index":1,#},{"index":2,#,"parserRules":
            {"parserule":[]}},{"index":3,#,"parserRules":"[1]"},4])",
         "samples[0]: The sample has no rule, so every parse with it fails.\n"
         "samples[1]: The sample has no rule, so every parse with it fails.\n"
         "samples[2].parserRules: This is not an object and is ignored.\n"
         "samples[2]: The sample has no rule, so every parse with it fails.\n"
         "samples[3]: This is not an object and is ignored.\n"
         "samples[3]: The sample has no rule, so every parse with it fails.\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        std::string definition = row.definition;
        for (auto at = definition.find('@'); at != std::string::npos; at = definition.find('@'))
            definition.replace(at, 1, R"("parserRules":{"parserule":[{}]})");
        for (auto at = definition.find('#'); at != std::string::npos; at = definition.find('#'))
            definition.replace(at, 1,
                               R"("identify":{"ConfigKey":{"MustConditions":{"Item":[
                               {"@Index":1,"@Type":1,"@Value":"x"}]}}})");
        EXPECT_EQ(Found("{" + definition + "}"), row.wanted);
    }
}

TEST(DefinitionCheck, IdentifyDocuments) {
    const Row rows[] = {
        {"sound", R"({"ConfigKey":{"MustConditions":{"Item":[{"@Index":1,"@Type":1,"@Value":"a"}]},
            "OptionalConditions":{"Item":[{"@Index":1,"@Type":3,"@Value":"a"}]}}})",
         ""},
        {"nothing in it", R"("{}")", ""},
        {"no ConfigKey", R"({"MustConditions":{"Item":[]}})",
         "@: There is no \"ConfigKey\", so the sample has no conditions and fits every text.\n"},
        {"shapes", R"({"ConfigKey":{"MustConditions":{"Item":{"@Index":1}},
            "OptionalConditions":[{"@Index":1}]}})",
         "@.ConfigKey.MustConditions.Item: This is not an array and is ignored.\n"
         "@.ConfigKey.OptionalConditions: This is not an object and is ignored.\n"},
        {"no object", R"("[1]")", "@: This is not an object and is ignored.\n"},
        {"ConfigKey is a text", R"({"ConfigKey":"x"})",
         "@.ConfigKey: This is not an object and is ignored.\n"},
        {"conditions", R"({"ConfigKey":{"OptionalConditions":{"Item":[
            {"@Index":1,"@Type":7,"@Value":"a"},{"@Index":1,"@Type":3,"@Value":"Version (\\d"},
            {"@Index":1,"@Type":4,"@Value":"[a-Z]"},{"@Index":1,"@Type":0,"@Value":" ; "},
            {"@Index":1,"@Type":1,"@Value":"a"},{"@Index":2,"@Type":2,"@Value":""}]}}})",
         "@.ConfigKey.OptionalConditions.Item[0]: No kind of condition has the type 7; the "
         "condition is left out, and the sample fits more texts.\n"
         "@.ConfigKey.OptionalConditions.Item[1]: The expression doesn't compile; the condition is "
         "left out, and the sample fits more texts. Unmatched marking parenthesis ( or \\(.\n"
         "    Version (\\d\n"
         "               ^\n"
         "@.ConfigKey.OptionalConditions.Item[2]: The expression doesn't compile; the condition is "
         "left out, and the sample fits more texts. It only compiles when case is ignored.\n"
         "    [a-Z]\n"
         "    ^\n"
         "@.ConfigKey.OptionalConditions.Item[3]: The value holds no string, so the sample fits no "
         "text.\n"
         "@.ConfigKey.OptionalConditions.Item[4]: An earlier condition of the list has the index "
         "1; this one is left out, and the sample fits more texts.\n"
         "@.ConfigKey.OptionalConditions.Item[5]: The value holds no string, so the condition "
         "holds for every text.\n"},
    };
    CheckAll(rows, R"({"samples":[{"identify":)", R"(,"parserRules":{"parserule":[{}]}}]})",
             "samples[0].identify");
}

TEST(DefinitionCheck, Tables) {
    const Row rows[] = {
        {"nothing to mend",
         R"("headers":"Port;Name","headertovariables":"Port:$port;","keyvariables":"$port;",
            "useprevars":"port","hashcolumns":["port"],"alignrange":"7","endline":"Total (",
            "enableexcludelines":true,"excludelines":{"excludeline":["[","regex:^#"]})",
         ""},
        {"no headers", R"("headertovariables":"Port:$port")",
         "@.headers: There is no header, so the rule finds no table.\n"},
        {"no variables", R"("headers":"Port")",
         "@.headertovariables: No column has a variable, so the rule yields nothing.\n"},
        {"variables that get nothing",
         R"("headers":"Port;Name","headertovariables":"Port:$port;Nome:$name;Name:$a $b")",
         "@.headertovariables: No header is \"Nome\"; the variable gets nothing.\n"
         "    Nome:$name\n"
         "    ^\n"
         "@.headertovariables: The pattern gives no variable, or more than one; the column "
         "\"Name\" is dropped.\n"
         "    Name:$a $b\n"
         "         ^\n"},
        {"columns that aren't there",
         R"("headers":"Port","headertovariables":"Port:$port","keyvariables":"$port;$x",
            "useprevars":"y","hashcolumns":["$port","z"])",
         "@.keyvariables: No column has the variable \"$x\".\n"
         "@.useprevars: No column has the variable \"y\".\n"
         "@.hashcolumns[1]: No column has the variable \"z\".\n"},
        {"alignment",
         R"("headers":"Port","headertovariables":"Port:$port","aligntype":"4","alignrange":"1")",
         "@.aligntype: No alignment has the number 4, so the rule finds no table.\n"},
        {"a count of numbers",
         R"("headers":"A;B","headertovariables":"A:$a","aligntype":"2","alignrange":"0;4;")",
         "@.alignrange: Number of headers: 2, of numbers: 3. The rule finds no table.\n"},
        {"headers that are a statement",
         R"("headers":"Cost $USD;Port","headertovariables":"Port:$port")",
         "@.headers: All headers together are a statement; only a line that it fits from end to "
         "end can be the header, and each header is looked for as a plain text all the same.\n"},
        {"broken patterns",
         R"j("headers":"Port","headertovariables":"Port:$port","endline":"$x(a|[)",
            "enableexcludelines":true,"excludelines":{"excludeline":["regex:a(b"]})j",
         "@.endline: The pattern doesn't compile and ends no table. Unmatched [ or [^ in "
         "character class declaration.\n"
         "    $x(a|[)\n"
         "           ^\n"
         "@.excludelines.excludeline[0]: The expression doesn't compile and is left out. Unmatched "
         "marking parenthesis ( or \\(.\n"
         "    regex:a(b\n"
         "             ^\n"},
    };
    CheckAll(rows, R"({"samples":[{"parserRules":{"parserule":{"type":3,)", "}}}]}");
}

TEST(DefinitionCheck, RuleNodes) {
    const Row rows[] = {
        {"a lone rule", R"({"type":"0"})", ""},
        {"an unknown kind ends its array", R"([{},{"type":"42"},{},{}])",
         "@[1]: This version has no kind of rule with the type 42; the rule is left out, and all "
         "behind it in the array are lost too (number: 2).\n"},
        {"the root is no rule node", R"([{},{"type":7}])",
         "@[1]: This version has no kind of rule with the type 7; the rule is left out.\n"},
        {"nothing left", R"({"type":42})",
         "@: This version has no kind of rule with the type 42; the rule is left out.\n"
         "samples[0]: The sample has no rule, so every parse with it fails.\n"},
        {"a name for a number, and no object", R"([{"type":"table"},5])",
         "@[0]: \"table\" is no number, so this is taken for a keyword rule (type 0).\n"
         "@[1]: The rule is not an object; it is taken for a keyword rule without statements.\n"},
        {"below a keyword rule", R"([{"child":{"parserule":[{"type":99}]}}])",
         "@[0].child: Rules below a keyword rule never run.\n"
         "@[0].child.parserule[0]: This version has no kind of rule with the type 99; the rule is "
         "left out.\n"},
        {"shapes", R"([{"keywords":["$a"],"operations":{"originalstr":"a"},"nistart":"2"}])",
         "@[0].nistart: This is not an object and is ignored.\n"
         "@[0].operations: This is not an array and is ignored.\n"
         "@[0].keywords: This is not an object and is ignored.\n"},
        {"operations",
         R"([{"operations":[{"originalstr":"a(b","isregex":true},{"originalstr":"a(b"},
            {"originalstr":"a(b","iswholeword":true},{"isregex":true},5,
            {"originalstr":"x[a-Z]","isregex":true},
            {"originalstr":"x[a-Z]","isregex":true,"iscasesensetive":true}]}])",
         "@[0].operations[0]: The expression doesn't compile, so every parse that uses the "
         "operation fails. Unmatched marking parenthesis ( or \\(.\n"
         "    a(b\n"
         "       ^\n"
         "@[0].operations[3]: There is nothing to search for (\"originalstr\"), so the operation "
         "does nothing.\n"
         "@[0].operations[4]: This is not an object and is ignored.\n"
         "@[0].operations[6]: The expression doesn't compile, so every parse that uses the "
         "operation fails. It only compiles when case is ignored.\n"
         "    x[a-Z]\n"
         "    ^\n"},
    };
    CheckAll(rows, R"({"samples":[{"parserRules":{"parserule":)", "}}]}");
}

TEST(DefinitionCheck, BuiltInRules) {
    const Row rows[] = {
        {"nothing of their own", R"({"type":5},{"type":6})", ""},
        {"what they declare, as saved",
         R"({"type":5,"keywords":{"keyword":["$int:lost_rate","$int:average_time"]},)"
         R"("statements":{"statement":["$ping_result=$lost_rate"]}})",
         ""},
        {"lines that are forgotten",
         R"({"type":6,"keywords":{"keyword":["to $x","mline[$m]:$ip"]},)"
         R"("statements":{"statement":["$y=1"]},"child":{"parserule":[{"type":5}]}})",
         "@[0].keywords.keyword[0]: A ping or traceroute rule brings its own lines and forgets "
         "those of its definition; only mline statements count.\n"
         "    to $x\n"
         "@[0].statements.statement[0]: A ping or traceroute rule brings its own lines and forgets "
         "those of its definition; only mline statements count.\n"
         "    $y=1\n"
         "@[0].child: Rules below a keyword rule never run.\n"},
    };
    CheckAll(rows, R"({"samples":[{"parserRules":{"parserule":[)", "]}}]}");
}

TEST(DefinitionCheck, Bounds) {
    const Row rows[] = {
        {"sound", R"("nistart":{"type":1,"xxid":"first","text":"$a"},"niend":{"type":2,
            "pattern":"plain (text"})",
         ""},
        {"unknown type", R"("nistart":{"type":3},"niend":{"type":-1})",
         "@[1].nistart: No bound has the type 3, so the rule never runs.\n"
         "@[1].niend: No bound has the type -1, so the rule never runs.\n"},
        {"no variable", R"("niend":{"type":1,"xxid":"first"})",
         "@[1].niend: The bound names no variable (\"text\"), so the rule never runs.\n"},
        {"unknown rule", R"("niend":{"type":1,"xxid":"inner","text":"$a"})",
         "@[1].niend: No rule directly under the sample has the id \"inner\", so the rule never "
         "runs.\n"},
        {"variable without its dollar", R"("nistart":{"type":1,"xxid":"first","text":"a"})",
         "@[1].nistart: The rule with the id \"first\" has no variable \"a\", so this one never "
         "runs.\n"},
        {"itself, and a later rule",
         R"("xxid":"me","nistart":{"type":1,"xxid":"me","text":"$a"},
            "niend":{"type":1,"xxid":"last","text":"$a"})",
         "@[1].nistart: The rule with the id \"me\" doesn't run before this one, so this one never "
         "runs.\n"
         "@[1].niend: The rule with the id \"last\" doesn't run before this one, so this one never "
         "runs.\n"},
        {"patterns", R"("nistart":{"type":2,"pattern":"regex:(a"},"niend":{"type":2})",
         "@[1].nistart: Invalid regex. Unmatched marking parenthesis ( or \\(. The pattern is "
         "searched for as a plain text.\n"
         "    regex:(a\n"
         "            ^\n"
         "@[1].niend: The pattern (\"pattern\") is empty and fits the first line.\n"},
        {"a pattern that fails when it is used", R"j("nistart":{"type":2,"pattern":"$x(a|[)"})j",
         "@[1].nistart: The pattern doesn't compile, so the rule never runs. Unmatched [ or [^ in "
         "character class declaration.\n"
         "    $x(a|[)\n"
         "           ^\n"},
    };
    CheckAll(rows,
             R"({"samples":[{"parserRules":{"parserule":[
            {"xxid":"first","keywords":{"keyword":["a $a"]}},{)",
             R"(},{"xxid":"last","keywords":{"keyword":["a $a"]}}]}}]})");
}

TEST(DefinitionCheck, Paragraphs) {
    const Row rows[] = {
        {"nothing to begin with", R"("name":"p")",
         "@[0]: There is no start line and no line mode, so there are no paragraphs.\n"},
        {"line mode", R"("islineasparagraph":true,"lineasparagraph":3)",
         "@[0].lineasparagraph: A document can say 1 or 0 here; any other number counts as 1.\n"},
        {"variables",
         R"("startline":"^p $n","keyvariables":"n;$m;$x","isuseprevars":true,)"
         R"("useprevars":"$m;m")",
         "@[0].keyvariables: The paragraph has no variable \"$x\".\n"
         "@[0].useprevars: The paragraph has no variable \"m\".\n"},
        {"a parent line without variables", R"("startline":"p","parentline":"regex:x")",
         "@[0].parentline: The parent line has no variable, so nothing is read from it.\n"
         "    regex:x\n"},
        {"an id line as a list", R"("startline":"p","idlines":"x")",
         "@[0].idlines: This is not an array and is ignored.\n"},
    };
    CheckAll(rows, R"({"samples":[{"parserRules":{"parserule":[{"type":4,)",
             R"(,"child":{"parserule":[{"keywords":{"keyword":["m $m"]}}]}}]}}]})");
    const auto broken =
        Found(R"-({"samples":[{"parserRules":{"parserule":[{"type":4,"startline":"$x(a|b[)",)-"
              R"-("endline":"$x(a|b[)","idlines":["$x(a|b[)"],"parentline":"$x(a|b[)"}]}}]})-");
    for (const char* words : {"so there are no paragraphs", "ends no paragraph",
                              "fails the check of its id lines", "is never read"})
        EXPECT_NE(broken.find(words), std::string::npos) << broken;
}

TEST(DefinitionCheck, Scripts) {
    const Row rows[] = {
        {"sound",
         R"("script":"def ParseText(t): return {}",
            "variabletypes":{"variabletype":{"name":"$a","type":"int"}})",
         ""},
        {"no script", "\"a\":1",
         "@.script: The script has no function ParseText, so every parse with it fails.\n"},
        {"a script that doesn't compile", R"("script":"def ParseText(t):\n\treturn {\n")",
         "@.script, line 2: The script doesn't compile, so every parse with it fails: '{' was "
         "never closed\n"
         "        return {\n"
         "               ^\n"},
        {"a declaration that is no JSON",
         R"("script":"# Begin Declare Variable [{'name' 1}] End Declare\nParseText = dict")",
         "@.script, declaration, line 1, column 11: This is not JSON, so nothing is declared and "
         "all that the script returns is dropped: A colon was expected behind the name of a "
         "member.\n"
         "     [{\"name\" 1}] \n"
         "              ^\n"},
        {"a declaration of other things",
         R"("script":"'''Begin Declare Variable {} End Declare''';ParseText = dict")",
         "@.script, declaration: This is not an array, so nothing is declared and all that the "
         "script returns is dropped.\n"},
        {"what a declaration says",
         R"("script":"'''Begin Declare Variable [{'name':'a','type':'Int'},)"
         R"({'name':'b','type':'number'},{'type':'int'},{'name':'t','type':'table'},)"
         R"({'name':'u','type':'table','columns':[{'type':'str'},{'name':'c','type':'list'}]}])"
         R"( End Declare''';ParseText = dict",
            "variabletypes":{"variabletype":[{"name":"$a","type":"int"},
                                             {"name":"$z","type":"int"}]})",
         "@.script, declaration[1]: \"number\" is no type word; the variable is taken for a "
         "string.\n"
         "@.script, declaration[2]: There is no \"name\"; the element is left out.\n"
         "@.script, declaration[3]: The table \"t\" declares no column, so all that the script "
         "returns for it is dropped.\n"
         "@.script, declaration[4].columns[0]: There is no \"name\"; the element is left out.\n"
         "@.script, declaration[4].columns[1]: \"list\" is no type word; the variable is taken for "
         "a string.\n"
         "@.variabletypes: The declaration inside the script doesn't have \"$z\", so it never has "
         "a "
         "value.\n"},
        {"lists of the document",
         R"("script":"ParseText = dict","nistart":{"type":2},
            "variabletypes":{"variabletype":[{"name":"$a","type":"number"},{"name":"$b"}]},
            "tablevariabletypes":{"tablevariabletype":{"name":"$Ifs","variabletypes":{
                "variabletype":{"name":"$n","type":"string"},"tablecolumns":["n","$n"]}}},
            "tablekeys":{"ifs":["n","m"]},"hashsort":{"other":true})",
         "@.nistart: A script rule takes no bounds, no operations and no rules below it; this is "
         "ignored.\n"
         "@.variabletypes.variabletype[0]: \"number\" is no type word; the variable is taken for a "
         "string.\n"
         "@.variabletypes.variabletype[1]: A name or a type is missing; the entry is left out.\n"
         "@.tablevariabletypes.tablevariabletype.variabletypes.tablecolumns[0]: The table has no "
         "column \"n\"; this is ignored.\n"
         "@.tablekeys.ifs[1]: The table has no column \"m\"; this is ignored.\n"
         "@.hashsort: No table is called \"other\" in small letters and without \"$\"; this is "
         "ignored.\n"},
    };
    CheckAll(rows, R"({"samples":[{"parserRules":{"parserule":{"type":8,)", "}}}]}");
}

TEST(DefinitionCheck, DiffFilters) {
    const Row rows[] = {
        {"fine", R"("lines":[{"row":0,"text":"a"},{"row":1,"text":"b","added":1}])", ""},
        {"no baseline", R"("name":"d")",
         "@.lines: There is no array with rows, so the rule has nothing in common with any "
         "text.\n"},
        {"a baseline of another shape", R"("lines":{"row":0,"text":"a"})",
         "@.lines: There is no array with rows, so the rule has nothing in common with any "
         "text.\n"},
        {"no row to compare", R"("lines":[{"row":-1,"text":"a"},{"row":0},7])",
         "@.lines[2]: This is not an object and is ignored.\n"
         "@.lines: No row has a text and a number from 0, so the rule has nothing in common with "
         "any text.\n"},
        {"rows", R"("lines":[{"text":"a"},{"row":0,"text":"b","added":"yes"}])",
         "@.lines[0].row: There is no integer \"row\"; this is taken for the row 0.\n"
         "@.lines[1]: An earlier element is the row 0 too; this text takes the place of its text.\n"
         "@.lines[1].added: Only true, false and integers count here; the row isn't marked as "
         "added.\n"},
        {"bounds", R"("nistart":{"type":2,"pattern":"a"},"lines":[{"row":0,"text":"a"}])",
         "@.nistart: A filter takes no bounds and no operations; this is ignored.\n"},
    };
    CheckAll(rows, R"({"samples":[{"parserRules":{"parserule":[{"type":9,)", "}]}}]}",
             "samples[0].parserRules.parserule[0]");
}

// Raw strings hold JSON: a backslash of an expression stands twice.
TEST(DefinitionCheck, Statements) {
    const Row rows[] = {
        {"sound",
         R"j("$int:a $_dummy $b(x|y)","regex[$c,$d]:(x)|(y)","mline[$m]:$a-$b,$c-,$m","")j", ""},
        {"no variable", R"j("plain text","regex:\\d+","^$","$_dummy ")j",
         "@.keywords.keyword[0]: Invalid pattern. There is no variable in it. The statement is "
         "left out.\n"
         "    plain text\n"
         "@.keywords.keyword[1]: The statement has no variable, so it yields nothing here.\n"
         "    regex:\\d+\n"
         "@.keywords.keyword[2]: The statement has no variable, so it yields nothing here.\n"
         "    ^$\n"
         "@.keywords.keyword[3]: The statement has no variable, so it yields nothing here.\n"
         "    $_dummy \n"},
        {"brackets", R"j("regex[]:abc","x mregex[]:(y","regex[$a]abc","mline[$a]:,","mline[$a")j",
         "@.keywords.keyword[0]: Invalid regex. The bracket names no variable. The statement is "
         "left out.\n"
         "    regex[]:abc\n"
         "          ^\n"
         "@.keywords.keyword[1]: Invalid pattern. The bracket names no variable. The statement is "
         "left out.\n"
         "    x mregex[]:(y\n"
         "             ^\n"
         "@.keywords.keyword[2]: Invalid pattern. No \"]:\" ends the bracket. The statement is "
         "left out.\n"
         "    regex[$a]abc\n"
         "                ^\n"
         "@.keywords.keyword[3]: Invalid pattern. There is no span behind \"]:\". The statement is "
         "left out.\n"
         "    mline[$a]:,\n"
         "               ^\n"
         "@.keywords.keyword[4]: Invalid pattern. No \"]:\" ends the bracket. The statement is "
         "left out.\n"
         "    mline[$a\n"
         "            ^\n"},
        {"the caret goes behind the marker", R"j("note regex[$a]:a{2,1}(b)","mregex[$a]:)(")j",
         "@.keywords.keyword[0]: Invalid regex. Invalid content of repeat range. The statement is "
         "left out.\n"
         "    note regex[$a]:a{2,1}(b)\n"
         "                       ^\n"
         "@.keywords.keyword[1]: Invalid regex. Found a closing ) with no corresponding opening "
         "parenthesis. The "
         "statement is left out.\n"
         "    mregex[$a]:)(\n"
         "               ^\n"},
        {"broken alternatives", R"j("$a(x|y) $b(u|(v)w)")j",
         "@.keywords.keyword[0]: The statement doesn't compile and never matches. Unmatched "
         "marking parenthesis ( or "
         "\\(.\n"
         "    $a(x|y) $b(u|(v)w)\n"
         "                    ^\n"},
        {"case is ignored by rules and not by the compiler",
         R"j("regex[$a]:([a-Z])","regex[$a]:([Z-a])")j",
         "@.keywords.keyword[0]: Invalid regex. It only compiles when case is ignored. The "
         "statement is left out.\n"
         "    regex[$a]:([a-Z])\n"
         "              ^\n"
         "@.keywords.keyword[1]: The statement doesn't compile and never matches. Invalid "
         "character class name, "
         "collating name, or character range.\n"
         "    regex[$a]:([Z-a])\n"
         "                    ^\n"},
        {"groups", R"j("regex[$a]:","regex[$a,$b]:(?:x)(y)","mregex[$a]:x")j",
         "@.keywords.keyword[0]: The expression is empty, so the statement yields nothing.\n"
         "    regex[$a]:\n"
         "              ^\n"
         "@.keywords.keyword[1]: Number of variables: 2, of groups: 1. The last variables get "
         "nothing.\n"
         "    regex[$a,$b]:(?:x)(y)\n"
         "@.keywords.keyword[2]: Number of variables: 1, of groups: 0. The last variables get "
         "nothing.\n"
         "    mregex[$a]:x\n"},
        {"spans", R"j("$from x","mline[$m]:$fromage-$from, $fro-$to,from,$_dummy","$_dummy $x")j",
         "@.keywords.keyword[1]: No statement of this rule declares \"$fromage\".\n"
         "    mline[$m]:$fromage-$from, $fro-$to,from,$_dummy\n"
         "              ^\n"
         "@.keywords.keyword[1]: No statement of this rule declares \"$fro\".\n"
         "    mline[$m]:$fromage-$from, $fro-$to,from,$_dummy\n"
         "                              ^\n"
         "@.keywords.keyword[1]: No statement of this rule declares \"$to\".\n"
         "    mline[$m]:$fromage-$from, $fro-$to,from,$_dummy\n"
         "                                   ^\n"
         "@.keywords.keyword[1]: No statement of this rule declares \"from\".\n"
         "    mline[$m]:$fromage-$from, $fro-$to,from,$_dummy\n"
         "                                       ^\n"
         "@.keywords.keyword[1]: No statement of this rule declares \"$_dummy\".\n"
         "    mline[$m]:$fromage-$from, $fro-$to,from,$_dummy\n"
         "                                            ^\n"},
        {"foreign bytes", "\"regex[$a]:\xC3\xA9\xE9\\u001b[31m\\u0000(\"",
         "@.keywords.keyword[0]: Invalid regex. Unmatched [ or [^ in character class declaration. "
         "The statement is "
         "left out.\n"
         "    regex[$a]:\xC3\xA9\xE9?[31m?(\n"
         "                       ^\n"},
    };
    CheckAll(rows, R"({"samples":[{"parserRules":{"parserule":{"keywords":{"keyword":[)",
             "]}}}}]}");
}

TEST(DefinitionCheck, VariableTypes) {
    const Row rows[] = {
        {"type words", R"("$a:IP","$b:mstr","$c:mword","$d:configlet","$e:string")", ""},
        {"none", R"("$a","$b:","$c:ipx","$d:int:")",
         "@.variabletypes.variabletype[0]: There is no colon behind the name; the entry is "
         "ignored.\n"
         "    $a\n"
         "@.variabletypes.variabletype[1]: \"\" is no type word; the variable is taken for a "
         "string.\n"
         "    $b:\n"
         "       ^\n"
         "@.variabletypes.variabletype[2]: \"ipx\" is no type word; the variable is taken for a "
         "string.\n"
         "    $c:ipx\n"
         "       ^\n"
         "@.variabletypes.variabletype[3]: \"int:\" is no type word; the variable is taken for a "
         "string.\n"
         "    $d:int:\n"
         "       ^\n"},
    };
    CheckAll(rows, R"({"samples":[{"parserRules":{"parserule":{"variabletypes":{"variabletype":[)",
             "]}}}}]}");
}

TEST(DefinitionCheck, LongListsAndStatementsAreCut) {
    std::string rules;
    for (std::size_t i = 0; i < CTzDefinitionCheck::MaxFindings + 5; ++i) rules += "\"x\",";
    const auto findings = CTzDefinitionCheck::Check(
        R"({"samples":[{"parserRules":{"parserule":{"keywords":{"keyword":[)" + rules +
        R"("x"]}}}}]})");
    ASSERT_EQ(findings.size(), CTzDefinitionCheck::MaxFindings + 1);
    EXPECT_EQ(CTzDefinitionCheck::Format(findings.back()),
              "definition: There is more to mend, which is not listed.\n");

    DefinitionFinding finding;
    finding.where = "x";
    finding.message = "y.";
    finding.statement = std::string(100, 'a') + "!" + std::string(100, 'b');
    finding.caret = 100;
    EXPECT_EQ(CTzDefinitionCheck::Format(finding), "x: y.\n    ..." + std::string(60, 'a') + "!" +
                                                       std::string(59, 'b') + "...\n    " +
                                                       std::string(63, ' ') + "^\n");
}

// The rule document of a text may be nested as deep as the reader allows, and is walked without
// recursion.
TEST(DefinitionCheck, DeepDocuments) {
    std::string rules = R"({"type":99})";
    for (int i = 0; i < 330; ++i) rules = R"({"child":{"parserule":[)" + rules + "]}}";
    const auto findings =
        CTzDefinitionCheck::Check(R"({"samples":[{"parserRules":{"parserule":)" + rules + "}}]}");
    ASSERT_EQ(findings.size(), 331U);
    EXPECT_EQ(findings.back().message,
              "This version has no kind of rule with the type 99; the rule is left out.");
}

}  // namespace
