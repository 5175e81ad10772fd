#include "tzparser/pattern/parserpatternhelper.h"

#include <string>

#include <gtest/gtest.h>

namespace {

std::string DumpStatement(const std::string& statement) {
    CParserPatternHelper helper;
    std::string error;
    if (!helper.Parse(statement, error)) return "error: " + error;
    EXPECT_EQ(error, "Invalid pattern.");
    std::string dump = helper.GetRegex();
    if (helper.IsRegex()) dump += " regex";
    if (helper.IsMultiLineRegex()) dump += " multi";
    if (helper.IsMline()) dump += " mline";
    for (const auto& [name, type] : helper.GetVarTypesWithOrder())
        dump.append(" ").append(name).append(":").append(type);
    std::string name;
    std::vector<std::pair<std::string, std::string>> spans;
    if (helper.GetMlineVariables(name, spans)) {
        dump += " " + name + " =";
        for (const auto& [first, second] : spans)
            dump.append(" ").append(first).append("..").append(second);
    }
    return dump;
}

struct StatementRow {
    const char* name;
    const char* statement;
    const char* wanted;
};

const StatementRow StatementRows[] = {
    {"int", "Success rate is $int:lost_rate percent",
     "Success\\s+rate\\s+is\\s+(\\-?\\d+)\\s+percent $lost_rate:int"},
    {"a run of blanks", "Lost  \t $x", "Lost\\s+(\\S+) $x:string"},
    {"alternatives", "$status(up|down) link", "(up|down)\\s+link $status:string"},
    {"alternatives keep their blanks and metacharacters", "is $x(a b|c.*) now",
     "is\\s+(a b|c.*)\\s+now $x:string"},
    {"alternatives end at the first parenthesis", "$x(a|(b)c)", "(a|(b)c\\) $x:string"},
    {"no bar, no alternatives", "$count(a)", "(\\S+)\\(a\\) $count:string"},
    {"the empty line", "^$", "^$"},
    {"no variable", "no variable here", "error: Invalid pattern."},
    {"an empty statement", "", "error: Invalid pattern."},
    {"anchors stay", "^$a b$", "^(\\S+)\\s+b$ $a:string"},
    {"an anchor inside is literal", "a^$x$b.", "a\\^(\\S+)(\\S+)\\. $x:string $b:string"},
    {"only the last dollar is an anchor", "$x $$", "(\\S+)\\s+\\$$ $x:string"},
    {"a name in front of a longer one", "$a $ab $a",
     "(\\S+)\\s+(\\S+)\\s+(\\S+) $a:string $ab:string $a:string"},
    {"no such type", "$ip:addr 1", "(\\S+):addr\\s+1 $ip:string"},
    {"a type without a name", "$int: 5", "(\\S+):\\s+5 $int:string"},
    {"types in capitals", "$INT:a $MSTRING:b", "(\\-?\\d+)\\s+(.+) $a:int $b:string"},
    {"mstr is exported as it is", "$mstr:x", "(.+) $x:mstr"},
    {"mword", "$mword:x,", "([^\\s\\.;,]+[^\\n\\r\\.;,]*[^\\s\\.;,]+|[^\\s\\.;,]+), $x:string"},
    {"float", "$float:x%", "(\\-?\\d+(?:\\.\\d+)?)% $x:double"},
    {"bool and configlet", "$bool:a $configlet:b",
     "(1|0|True|False)\\s+(\\S+) $a:bool $b:configlet"},
    {"a dummy", "$_dummy $x", "(\\S+)\\s+(\\S+) $_dummy:string $x:string"},
    {"an author's placeholder is taken for the compiler's", "#PH1000hp# $x",
     "(\\S+)\\s+#ph1000hp# $x:string"},
    {"regex", "regex:\\d+", "\\d+ regex"},
    {"regex with variables", "regex[$a,$int:b]:(\\d+)-(\\d+)",
     "(\\d+)-(\\d+) regex $a:string $b:int"},
    {"a broken regex", "regex:(", "error: Invalid regex."},
    {"regex without variables in its bracket", "regex[]:abc", "error: Invalid regex."},
    {"mregex without variables in its bracket", "mregex[]:abc", "error: Invalid pattern."},
    {"a broken mregex", "mregex[$a]:(", "error: Invalid regex."},
    {"no end of the bracket", "regex[$a]abc", "error: Invalid pattern."},
    {"what stands before a marker is gone", "foo mregex:bar", "bar regex multi"},
    {"mregex goes before regex", "regex:a mregex[$x]:(b)", "(b) regex multi $x:string"},
    {"mline", "mline[$body]:$a - $b, $c,, $d-", " mline $body:string $body = $a..$b $c..$c $d.."},
    {"mline without spans", "mline[$body]:,", "error: Invalid pattern."},
    {"mline without variable", "mline[x]:$a", "error: Invalid pattern."},
    {"a bad built expression passes here", "$x(a|b[)", "(a|b[) $x:string"},
};

TEST(ParserPatternHelper, CompilesAsTheRowsSay) {
    for (const auto& row : StatementRows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(DumpStatement(row.statement), row.wanted);
    }
}

TEST(ParserPatternHelper, DataTypesOfWords) {
    const std::pair<const char*, AppDataType_e> rows[] = {
        {"INT", AppDataType_Int},
        {"double", AppDataType_Double},
        {"Float", AppDataType_Float},
        {"bool", AppDataType_Bool},
        {"ip", AppDataType_IP},
        {"mac", AppDataType_Mac},
        {"percent", AppDataType_Percent},
        {"IPv6", AppDataType_IPv6},
        {"configlet", AppDataType_ConfigLet},
        {"mstr", AppDataType_String},
        {"", AppDataType_String},
    };
    for (const auto& [word, type] : rows)
        EXPECT_EQ(CParserPatternHelper::GetDataType(word), type) << word;
}

TEST(ParserPatternHelper, VariablesOfAnEarlierStatementStay) {
    CParserPatternHelper helper;
    std::string error;
    ASSERT_TRUE(helper.Parse("$a", error));
    EXPECT_TRUE(helper.Parse("b c", error)) << "the variables of the first statement still count";
    EXPECT_EQ(helper.GetRegex(), "b\\s+c");
    EXPECT_EQ(helper.GetVarNames(), std::vector<std::string>{"$a"});
}

TEST(ParserPatternHelper, EscapesWithAndWithoutAnchors) {
    EXPECT_EQ(CParserPatternHelper::RegexEscape("^a.b$", true, true), "^a\\.b$");
    EXPECT_EQ(CParserPatternHelper::RegexEscape("^a.b$", false, false), "\\^a\\.b\\$");
    EXPECT_EQ(CParserPatternHelper::RegexEscape("$", true, true), "$");
}

}  // namespace
