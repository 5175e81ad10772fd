// Matching of keyword rules directly under a sample.
#include "host/xml/markup.h"

#include "support/letdump.h"
#include "support/ruletree.h"

#include <random>

#include <gtest/gtest.h>

namespace {

struct MatchRow {
    const char* name;
    const char* kvps;  // JSON strings
    const char* text;
    const char* wanted;
};

const MatchRow MatchRows[] = {
    {"a value where it stands", R"j("ab $v")j", "ab x", "$v 0: 0:3-4 \"x\";\n"},
    {"anywhere in the line, in any case", R"j("UP $int:d days")j", "r1 up 12 days",
     "$d 0: 0:6-8 \"12\";\n"},
    {"the first line that matches", R"j("up $int:d")j", "\n\nup 2\n\n\nup 5",
     "$d 2: 2:3-4 \"2\";\n"},
    {"nothing matched", R"j("ab $v")j", "x\ny", "$v 0: 0:0-0 \"\";\n"},
    {"lines aren't used up", R"j("a $x","$y b")j", "a b",
     "$x 0: 0:2-3 \"b\";\n$y 0: 0:0-1 \"a\";\n"},
    {"one variable on two lines", R"j("a $x","b $x")j", "b 1\na 2",
     "$x 0: 0:2-3 \"1\"; 1: 1:2-3 \"2\";\n"},
    {"on one line the later KVP wins", R"j("a $x","b $x")j", "a 1 b 2", "$x 0: 0:6-7 \"2\";\n"},
    {"a dummy takes a group", R"j("a $_dummy c $x")j", "a b c d", "$x 0: 0:6-7 \"d\";\n"},
    {"surplus groups without a name", R"j("regex[$a,$b]:(\\d+)-(\\d+)(x)?")j", "1-2x",
     "$a 0: 0:0-1 \"1\";\n$b 0: 0:2-3 \"2\";\n"},
    {"an empty group is passed over when groups are surplus", R"j("regex[$a,$b]:(\\d+)()-(\\d+)")j",
     "1-2", "$a 0: 0:0-1 \"1\";\n$b 0: 0:2-3 \"2\";\n"},
    {"whichever branch matched", R"j("regex[$a]:(x\\d)|(y\\d)")j", "z y7", "$a 0: 0:2-4 \"y7\";\n"},
    {"an empty group takes its name when groups aren't surplus",
     R"j("regex[$a,$b]:x(\\d*)(\\w)?")j", "x", "$a 0: 0:1-1 \"\";\n$b 0: 0:-1--1 \"\";\n"},
    {"fewer groups than names", R"j("regex[$a,$b]:x(\\d)")j", "x1",
     "$a 0: 0:1-2 \"1\";\n$b 0: 0:0-0 \"\";\n"},
    {"a dummy in a bracket", R"j("regex[$_dummy,$a]:(\\d)(\\w)")j", "1b", "$a 0: 0:1-2 \"b\";\n"},
    {"a KVP that doesn't compile", R"j("regex[$a]:(","ab $v","$w(a|b[)")j", "ab x",
     "$v 0: 0:3-4 \"x\";\n$w 0: 0:0-0 \"\";\n"},
    {"empty lines are never searched", R"j("^$","regex[$a]:^(x?)$","b $c")j", "\nb 1",
     "$a 0: 0:0-0 \"\";\n$c 1: 1:2-3 \"1\";\n"},
    {"CRLF and lone CR", R"j("b $x","c $y")j", "a\r\nb 1\rc 2",
     "$x 1: 1:2-3 \"1\";\n$y 2: 2:2-3 \"2\";\n"},
    {"Latin-1 bytes are columns", R"j("\u00e9 $x")j", "\xc3\xa9 1", "$x 0: 0:3-4 \"1\";\n"},
    {"over several lines", R"j("mregex[$a,$b]:x (\\w+)\\n(\\w+)")j", "-\n x 1\n23",
     "$a 1: 1:3-4 \"1\";\n$b 2: 2:0-2 \"23\";\n"},
    {"a group over several lines", R"j("mregex[$a]:<(.*?)>")j", "a <1\n2\n3> b",
     "$a 0: 0:3-2:1 \"1\\n2\\n3\";\n"},
    {"empty groups never take a name over lines", R"j("mregex[$a,$b]:x(\\d*)(\\w)")j", "xy",
     "$a 0: 0:1-2 \"y\";\n$b 0: 0:0-0 \"\";\n"},
    {"only the first match over lines", R"j("mregex[$a]:x(\\d)")j", "x1\nx2",
     "$a 0: 0:1-2 \"1\";\n"},
    {"dummies over lines", R"j("mregex[$_dummy,$a]:(\\d)\\n(\\d)")j", "1\n2",
     "$a 1: 1:0-1 \"2\";\n"},
    {"two KVPs of one expression share the first one's dummies",
     R"j("mregex[$a,$_dummy]:(\\d)(\\w)","mregex[$_dummy,$b]:(\\d)(\\w)")j", "1x",
     "$a 0: 0:1-2 \"x\";\n$b 0: 0:1-2 \"x\";\n"},
    {"a block between two values", R"j("from $a","to $b","mline[$m]:$a-$b")j",
     "x\nfrom 1\n y\nto 2\nz",
     "$a 1: 1:5-6 \"1\";\n$b 3: 3:3-4 \"2\";\n$m 1: 1:0-6 \"from 1\\n y\\nto 2\\n\" 1 2 3;\n"},
    {"a block open to the end takes one line more", R"j("from $a","mline[$m]:$a-")j", "from 1\ny",
     "$a 0: 0:5-6 \"1\";\n$m 0: 0:0-6 \"from 1\\ny\\n\\n\" 0 1 2;\n"},
    {"the end of a block stands by", R"j("from $a","to $b","mline[$m]:$a-$b")j", "x\nfrom 1\ny",
     "$a 1: 1:5-6 \"1\";\n$b 0: 0:0-0 \"\";\n$m 1: 1:0-6 \"from 1\\n\" 1;\n"},
    {"a block whose end no KVP names stops at its start",
     R"j("from $a","mline[$m]:$a-$no, $no, $a")j", "from 1\ny",
     "$a 0: 0:5-6 \"1\";\n$m 0: 0:0-6 \"from 1\\n\" 0;\n"},
    {"a block of nothing", R"j("mline[$m]:$no")j", "x", "$m 0: 0:0-0 \"\";\n"},
    {"an empty text", R"j("a $x")j", "", "$x 0: 0:0-0 \"\";\n"},
};

TEST(KeyWordMatch, ValuesOfTheRows) {
    for (const auto& row : MatchRows) {
        SCOPED_TRACE(row.name);
        auto sample = LoadRules(std::string("{\"keywords\":{\"keyword\":[") + row.kvps + "]}}");
        const std::unique_ptr<CAppParseRule> clone(sample->Clone(nullptr));
        ASSERT_TRUE(clone->Parse(row.text, 0, -1, nullptr));
        EXPECT_EQ(DumpPositions(KeyWordAt(*clone, 0).GetVariablePos()), row.wanted);
        ASSERT_TRUE(clone->Parse(row.text, 0, -1, nullptr));
        EXPECT_EQ(DumpPositions(KeyWordAt(*clone, 0).GetVariablePos()), row.wanted)
            << "the second time";
        EXPECT_EQ(clone->IsNoneExist(), std::string(row.wanted).find(" \"\"") != std::string::npos);
    }
}

// Rows of a match over several lines go by the open lines alone: behind a closed line they are
// those of later ones.
TEST(KeyWordMatch, ClosedLinesShiftRowsOverLines) {
    auto sample =
        LoadRules("{\"keywords\":{\"keyword\":[\"mregex[$a]:x(\\\\d)\",\"b $b\",\"y $c\"]}}");
    sample->Parse("a\nb 0\nx1\nx2\ny 5", 0, -1, nullptr);
    sample->GetLineStatus().reset(1);
    auto& rule = KeyWordAt(*sample, 0);
    rule.Parse("", 0, 5, nullptr);
    EXPECT_EQ(DumpPositions(rule.GetVariablePos()),
              "$a 3: 3:1-2 \"1\";\n$b 0: 0:0-0 \"\";\n$c 4: 4:2-3 \"5\";\n");
}

// A statement finds what the plain expression finds first, line by line, whatever the lines are.
TEST(KeyWordMatch, FindsWhatAPlainSearchFinds) {
    const std::string words[] = {"up", "down", " ", "is", "12", "-3",   "x",
                                 "\t", "10.5", ",", "(",  "UP", "is up"};
    const std::string statements[] = {"is $int:v",  "$v(up|down)",  "^$mword:v",
                                      "$double:v$", "x $mstring:v", "up $v"};
    std::mt19937 random(99);
    for (int round = 0; round < 400; ++round) {
        std::string text;
        for (auto count = random() % 40; count > 0; --count)
            text += random() % 4 == 0 ? std::string("\n") : words[random() % std::size(words)];
        const auto& statement = statements[random() % std::size(statements)];
        auto sample =
            LoadRules("{\"keywords\":{\"keyword\":[" + hxJson::Value(statement).toString() + "]}}");
        sample->Parse(text, 0, -1, nullptr);
        auto& rule = KeyWordAt(*sample, 0);
        const CAppRegex plain(rule.GetKVPRegex(statement), CAppRegex::RuleFlags);
        std::string wanted = "0:0-0 \"\"";
        CAppRegexMatch match;
        for (int line = 0; line < sample->GetLines().Count(); ++line) {
            const auto view = sample->GetLines().View(line);
            if (view.empty() || plain.Search(view, match) != AppRegexSearch_Match) continue;
            const auto column = static_cast<int>(match.Position(1));
            const std::string value(match.Text(1));
            wanted = DumpLet({line, column, line, column + static_cast<int>(value.size()), value});
            break;
        }
        ASSERT_EQ(DumpLets(rule.GetVariableValue("v")), wanted) << statement << "\n" << text;
    }
}

TEST(KeyWordMatch, LinesAroundAValueAreContext) {
    auto sample = LoadRules("{\"keywords\":{\"keyword\":[\"x $a\",\"mline[$m]:$a\"]}}");
    sample->Parse("0\nx 1\n2\n3\n\n5\n6\n7", 0, -1, nullptr);
    std::set<int> lines;
    std::set<int> around;
    EXPECT_EQ(sample->GetOriTextInfo(lines, around), "0\nx 1\n2\n3\n\n");
    EXPECT_EQ(around, (std::set<int>{0, 2, 3, 4})) << "the variable's own line isn't context";
    hxJson::Value context;
    EXPECT_TRUE(sample->SaveLineNumberAndResult(context));
    EXPECT_EQ(context.toString(), "{\"0\":\"0\",\"1\":\"x 1\",\"2\":\"2\",\"3\":\"3\"}")
        << "empty lines are left out";
}

TEST(KeyWordMatch, TheResultDocument) {
    auto sample =
        LoadRules("{\"keywords\":{\"keyword\":[\"x $int:a\"]}},{\"nistart\":{\"type\":9}}");
    sample->Parse("x 1", 0, -1, nullptr);
    hxJson::Value result;
    EXPECT_TRUE(sample->SaveResultAsJson(result));
    EXPECT_EQ(result.toString(),
              "{\"_original_result\":[{\"parseResult\":{\"parserType\":0,\"variables\":[{"
              "\"details\":[{\"beginCol\":2,"
              "\"beginRow\":0,\"endCol\":3,\"endRow\":0,\"text\":\"1\"}],\"name\":\"$a\","
              "\"valueType\":\"int\"}]}},"
              "{\"parseResult\":{\"parserType\":0,\"variables\":[]}}],"
              "\"error\":[\"\",\"not support start end line type.\"]}");
    KeyWordAt(*sample, 0).SetSaveExBuiltInInfo(true);
    sample->SaveResultAsJson(result);
    EXPECT_EQ(result.toString().find("\"text\""), std::string::npos) << "positions only";
}

// The XML form names the variables in order, holds texts whatever the access, and has no errors.
TEST(KeyWordMatch, TheResultDocumentAsXml) {
    auto sample = LoadRules("{\"keywords\":{\"keyword\":[\"x $int:b $a\",\"mline[$m]:$a\"]}}");
    KeyWordAt(*sample, 0).SetSaveExBuiltInInfo(true);
    sample->Parse("\nx 1 <2>", 0, -1, nullptr);
    CMarkup xml;
    sample->SaveResultAsXML(xml);
    std::string flat;
    for (const char c : xml.GetDoc())
        if (c != '\n' && !(c == ' ' && (flat.empty() || flat.back() == '>'))) flat += c;
    const auto let = [](const char* cols, const char* text, const char* lines) {
        const std::string begin(cols, 1);
        const std::string end(cols + 2, 1);
        return "<detail><BeginRow>1</BeginRow><BeginCol>" + begin +
               "</BeginCol><EndRow>1</EndRow><EndCol>" + end + "</EndCol><Text>" + text +
               "</Text>" + lines + "</detail>";
    };
    const auto variable = [](const char* name, const char* type, const std::string& detail) {
        return std::string("<variable><name>") + name + "</name><valueType>" + type +
               "</valueType><details>" + detail + "</details></variable>";
    };
    EXPECT_EQ(
        flat,
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?><_original_result><parseResult>"
        "<parserType>0</parserType><variables>" +
            variable("$a", "string", let("4-7", "&lt;2&gt;", "")) +
            variable("$b", "int", let("2-3", "1", "")) +
            variable("$m", "string", let("0-7", "x 1 &lt;2&gt;", "<lines><line>1</line></lines>")) +
            "</variables></parseResult></_original_result>");
    CAppTextLet read(9, 9, 9, 9, "old");
    read.lines = {7};
    xml.ResetPos();
    for (const char* name :
         {"_original_result", "parseResult", "variables", "variable", "details", "detail"}) {
        ASSERT_TRUE(xml.FindElem(name)) << name;
        if (std::string(name) != "detail") xml.IntoElem();
    }
    EXPECT_TRUE(read.LoadFromXml(xml));
    EXPECT_EQ(DumpLet(read), "1:4-7 \"<2>\" 7") << "lines aren't read back";
}

TEST(KeyWordMatch, LinesOfVariables) {
    auto sample = LoadRules("{\"keywords\":{\"keyword\":[\"x $a\"]}}");
    sample->Parse("\nx 1", 0, -1, nullptr);
    auto& rule = KeyWordAt(*sample, 0);
    int line = 7;
    EXPECT_TRUE(rule.GetVariableLine("$a", line));
    EXPECT_EQ(line, 1);
    EXPECT_FALSE(rule.GetVariableLine("a", line)) << "the name as it stands";
    EXPECT_EQ(line, -1);
    rule.GetVariablePos()["$e"];
    EXPECT_TRUE(rule.GetVariableLine("$e", line));
    EXPECT_EQ(line, -1);
    rule.AddVariablePosInfo("$unknown", 0, CAppTextLet("x"));
    EXPECT_EQ(rule.GetChildRuleByVariableName("unknown"), nullptr);
}

}  // namespace
