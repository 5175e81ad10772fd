// Which lines a filter keeps, and what it answers for them.
#include "host/xml/markup.h"

#include "filtersupport.h"

namespace {

struct Row {
    const char* name;
    const char* keys;  // of the filter's node
    const char* text;
    const char* wanted;  // the open lines
};

const Row Rows[] = {
    {"everything", "", "a\nb", "0 1"},
    {"from the begin line", R"("startline":"b")", "a\nb\nb\nc", "1 2 3"},
    {"without the begin line", R"("startline":"b","excludebeginline":true)", "a\nb\nc", "2"},
    {"no begin line closes all", R"("startline":"x","endline":"c")", "a\nb\nc", ""},
    {"begin on the last line, left out", R"("startline":"c","excludebeginline":true)", "a\nb\nc",
     ""},
    {"the end line is in unless told", R"("endline":"b")", "a\nb\nc", "0 1"},
    {"without the end line", R"("endline":"b","excludeendline":true)", "a\nb\nc", "0"},
    {"no end line", R"("startline":"b","endline":"x")", "a\nb\nc", "1 2"},
    {"the end is searched behind the begin", R"("startline":"b","endline":"b")", "b\na\nb\nc",
     "0 1 2"},
    {"a statement", R"("startline":"port $int:n up")", "port x up\nport 7 up\nz", "1 2"},
    {"a text that is no statement", R"("startline":"(a.")", "a.\n(ab\n(a.\nz", "2 3"},
    {"a broken begin fits nothing", R"j("startline":"$x(a|[)")j", "a\nb", ""},
    {"a broken end fits nothing", R"j("endline":"$x(a|[)")j", "a\nb", "0 1"},
    {"begin over lines", R"("startline":"mregex:b\nc")", "a\nb\nc\nd", "1 2 3"},
    {"begin over lines, left out", R"("startline":"mregex:b\nc","excludebeginline":true)",
     "a\nb\nc\nd", "2 3"},
    {"the end is searched behind the match over lines",
     R"("startline":"mregex:b\nc","endline":"c","excludeendline":true)", "b\nc\nd\nc\ne", "0 1 2"},
    {"end over lines", R"("endline":"mregex:b\nc")", "a\nb\nc\nd", "0 1"},
    {"include, each for its first line", R"("includelines":{"includeline":["a","b"]})",
     "a\na\nb\nc", "0 2"},
    {"include, all lines", R"("filterloop":true,"includelines":{"includeline":["a","b"]})",
     "a\na\nb\nc", "0 1 2"},
    {"one line may use up two patterns", R"("includelines":{"includeline":["a","b"]})", "ab\na\nb",
     "0"},
    {"a pattern listed twice counts once", R"("includelines":{"includeline":["a","a"]})", "a\na\nb",
     "0"},
    {"include by one text", R"("includelines":{"includeline":"b"})", "a\nb", "1"},
    {"empty include texts count for nothing", R"("includelines":{"includeline":["",""]})", "a\nb",
     "0 1"},
    {"skip lines count for nothing", R"("skiplines":[{"skipline":"a"}])", "a\nb", "0 1"},
    {"exclude drops the first alone", R"("excludelines":{"excludeline":["x"]})", "x\na\nx", "1 2"},
    {"exclude all", R"("filterloop":true,"excludelines":{"excludeline":"x"})", "x\na\nx", "1"},
    {"include, then exclude",
     R"("filterloop":true,"includelines":{"includeline":"a"},"excludelines":{"excludeline":"x"})",
     "a\nax\nb", "0"},
    {"a broken include keeps nothing", R"j("includelines":{"includeline":"$x(a|[)"})j", "a\nb", ""},
    {"include over lines", R"("includelines":{"includeline":"mregex:b\nc"})", "a\nb\nc\nb\nc",
     "1 2"},
    {"include all over lines", R"("filterloop":true,"includelines":{"includeline":"mregex:b\nc"})",
     "b\nc\na\nb\nc", "0 1 3 4"},
    {"exclude over lines", R"("excludelines":{"excludeline":"mregex:b\nc"})", "a\nb\nc\nd", "0 3"},
    {"an empty match over lines ends",
     R"("filterloop":true,"includelines":{"includeline":"mregex:x*"})", "a\nb\nc", "0 1 2"},
    {"a looping pattern leaves the later ones what is behind it",
     R"("filterloop":true,"includelines":{"includeline":["mregex:c\nd","mregex:a\nb"]})",
     "a\nb\nc\nd\na\nb", "2 3 4 5"},
    {"bounds have no effect", R"("nistart":{"type":2,"pattern":"nowhere"})", "a", "0"},
    {"case is ignored", R"("startline":"B")", "a\nb", "1"},
};

std::string NodeOf(const std::string& keys) {
    return "{\"type\":1" + (keys.empty() ? keys : "," + keys) + "}";
}

TEST(FilterParse, KeepsTheLinesOfTheRows) {
    for (const auto& row : Rows) {
        SCOPED_TRACE(row.name);
        const auto sample = LoadRules(NodeOf(row.keys));
        EXPECT_TRUE(sample->Parse(row.text, 0, -1, nullptr));
        EXPECT_EQ(DumpStatus(FilterAt(*sample, 0).GetLineStatus()), row.wanted);
        EXPECT_EQ(sample->IsNoneExist(), *row.wanted == '\0');
        // A clone has the same definition; a second parse begins afresh.
        const std::unique_ptr<CAppParseRule> clone(sample->Clone(nullptr));
        EXPECT_EQ(FilterAt(*clone, 0).Children().size(), 1U);
        clone->Parse(row.text, 0, -1, nullptr);
        clone->Parse(row.text, 0, -1, nullptr);
        EXPECT_EQ(DumpStatus(FilterAt(*clone, 0).GetLineStatus()), row.wanted);
    }
}

TEST(FilterParse, RangesFromOutsideAreCut) {
    const auto sample = LoadRules(R"({"type":1,"startline":"b"})");
    sample->Parse("a\nb\nc\nd", 0, -1, nullptr);
    auto& filter = FilterAt(*sample, 0);
    EXPECT_TRUE(filter.Parse("", -5, 3, nullptr));
    EXPECT_EQ(DumpStatus(filter.GetLineStatus()), "1 2");
    EXPECT_TRUE(filter.Parse("", 1, 1000, nullptr));
    EXPECT_EQ(DumpStatus(filter.GetLineStatus()), "1 2 3");
    EXPECT_TRUE(filter.Parse("", 3, 2, nullptr));
    EXPECT_EQ(DumpStatus(filter.GetLineStatus()), "");
}

// Children see the filter's lines only, those beside it see all.
TEST(FilterParse, NarrowsWhatItsChildrenSee) {
    const auto sample = LoadRules(
        R"({"type":1,"name":"part","startline":"two","filterloop":true,
            "excludelines":{"excludeline":"no"},
            "child":{"parserule":[{"keywords":{"keyword":["v $v"]}},
                {"type":1,"name":"inner","startline":"v","excludebeginline":true}]}},
           {"keywords":{"keyword":["v $w"]}})");
    sample->Parse("v 1\ntwo\nv 2 no\nv 3\nlast", 0, -1, nullptr);
    auto& filter = FilterAt(*sample, 0);
    ASSERT_EQ(filter.Children().size(), 2U);
    EXPECT_EQ(DumpLets(sample->GetVariableValue("v")), "3:2-3 \"3\"");
    EXPECT_EQ(DumpLets(sample->GetVariableValue("w")), "0:2-3 \"1\"");
    EXPECT_EQ(sample->GetVariableValue("$part").at(0).text, "two\r\nv 3\r\nlast");
    EXPECT_EQ(DumpLets(sample->GetVariableValue("inner")), "0:0-0 \"last\"");
    EXPECT_EQ(sample->GetChildRuleByVariableName("$part"), &filter);
    EXPECT_EQ(sample->GetChildRuleByVariableName("v"), &KeyWordAt(filter, 0));
    EXPECT_EQ(filter.GetRuleLevel(), KeyWordAt(filter, 0).GetRuleLevel());
    filter.ClearVariablePosition();
    EXPECT_TRUE(filter.IsNoneExist());
    EXPECT_EQ(DumpLets(filter.GetVariableValue("part")), "0:0-0 \"\"");
}

// Children run over no open line, and say so.
TEST(FilterParse, FindingNothingIsNoFailure) {
    const auto sample = LoadRules(
        R"({"type":1,"startline":"x","child":{"parserule":[{"keywords":{"keyword":["v $v"]}}]}})");
    EXPECT_TRUE(sample->Parse("v 1", 0, -1, nullptr));
    EXPECT_EQ(DumpLets(sample->GetVariableValue("v")), "0:0-0 \"\"");
    EXPECT_TRUE(sample->IsNoneExist());
    EXPECT_EQ(sample->GetLastError(), "");
}

// Any character may stand in front of the name, and the first place of the name counts.
TEST(FilterParse, AnswersForItsName) {
    const auto sample = LoadRules(R"({"type":1,"name":"ab"})");
    sample->Parse("x", 0, -1, nullptr);
    for (const char* name : {"ab", "$ab", ".ab"})
        EXPECT_EQ(DumpLets(sample->GetVariableValue(name)), "0:0-0 \"x\"") << name;
    for (const char* name : {"", "abab", "$$ab", "abc", "b"})
        EXPECT_EQ(DumpLets(sample->GetVariableValue(name)), "") << name;
}

// The line at the end of the range isn't closed when the end line belongs to the range.
TEST(FilterParse, ContainLineLeavesTheEndLine) {
    const auto sample = LoadRules(R"({"type":1,"filterloop":true})");
    auto& filter = FilterAt(*sample, 0);
    const auto contain = [&](int end, bool include) {
        sample->Parse("a\nb\na\nb\na", 0, -1, nullptr);
        filter.FilterContainLine({"b"}, 1, end, include);
        return DumpStatus(filter.GetLineStatus());
    };
    EXPECT_EQ(contain(3, true), "1 3");
    EXPECT_EQ(contain(3, false), "2 3");
    filter.SetIsExcludeEndLine(true);
    EXPECT_EQ(contain(3, true), "1");
    EXPECT_EQ(contain(100, false), "2 4");
}

class Globals final : public IAppVariableCallback {
public:
    void GetVariableValue(const std::string& name, std::string& value) override {
        asked += name + ";";
        value = name == "$$version" ? given : "";
    }
    std::string asked;
    std::string given = "1[57]";
};

// Values are pieces of the expression. An integer has no word that a value could replace, so its
// value goes to the next word.
TEST(FilterParse, GlobalVariablesBelongToTheParse) {
    const auto sample = LoadRules(R"({"type":1,"startline":"version $$version end"})");
    auto& filter = FilterAt(*sample, 0);
    Globals globals;
    const auto run = [&](IAppVariableCallback* callback) {
        sample->Parse("version 12 end\nversion  end\nversion 17 end\nx", 0, -1, callback);
        return DumpStatus(filter.GetLineStatus());
    };
    EXPECT_EQ(run(&globals), "2 3");
    EXPECT_EQ(globals.asked, "$$version;");
    globals.given = "12";
    EXPECT_EQ(run(&globals), "0 1 2 3");
    EXPECT_EQ(filter.FilterByGlobalVariable("a $$x b", nullptr), "a\\s+\\s+b");
    EXPECT_EQ(filter.FilterByGlobalVariable("$$int:n $$version $w", &globals),
              "(\\-?\\d+)\\s+\\s+12");
    EXPECT_EQ(filter.FilterByGlobalVariable("no variable", &globals), "");
}

TEST(FilterParse, ResultDocuments) {
    const auto sample = LoadRules(
        R"({"type":1,"name":"f","startline":"b","asconfiglet":true},
           {"type":1,"name":"g","startline":"x"})");
    sample->Parse("a\nb\nc", 0, -1, nullptr);
    hxJson::Value json;
    EXPECT_TRUE(sample->SaveResultAsJson(json));
    const std::string child = R"("childs":[{"parseResult":{"parserType":0,"variables":[]}}],)";
    EXPECT_EQ(json, ParseJson(R"({"_original_result":[{"parseResult":{)" + child +
                              R"("parserName":"f","parserType":1,"valueType":"configlet",
            "lines":[1,2]}},{"parseResult":{)" +
                              child + R"("parserName":"g","parserType":1,"valueType":"string",
            "lines":[]}}],"error":["",""]})"))
        << json.toString();
    CMarkup xml;
    sample->SaveResultAsXML(xml);
    const auto text = xml.GetDoc();
    const auto at = text.find("<parseresult>");
    ASSERT_NE(at, std::string::npos);
    std::string flat;
    for (const char c : text.substr(at))
        if (c != '\n' && c != '\r' && c != ' ' && c != '\t') flat += c;
    EXPECT_EQ(flat.find("<parseresult><name>f</name><type>1</type><lines><line>1</line>"
                        "<line>2</line></lines><child>"),
              0U)
        << flat;
}

}  // namespace
