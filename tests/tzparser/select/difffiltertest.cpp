// Which lines a diff filter keeps, which row each comes from, and what it answers for them.
#include "host/xml/markup.h"
#include "tzparser/select/appparseruledifffilter.h"
#include "tzparser/variable/appvariabledef.h"

#include "filtersupport.h"

namespace {

CAppParseRuleDiffFilter& DiffFilterAt(CAppParseRule& parent, std::size_t index) {
    return dynamic_cast<CAppParseRuleDiffFilter&>(*parent.Children().at(index));
}

// "open lines; line<row ...; last error"
std::string DumpRun(CAppParseRuleDiffFilter& rule) {
    auto dump = DumpStatus(rule.GetLineStatus()) + ";";
    for (const auto& [line, row] : rule.GetLineMapping())
        dump += " " + std::to_string(line) + "<" + std::to_string(row);
    return dump + (rule.GetLastError().empty() ? "" : "; " + rule.GetLastError());
}

std::string Node(const std::string& rows, const std::string& more = "") {
    return R"({"type":9,"name":"d","lines":[)" + rows + "]" + more + "}";
}

const char* const Abc = R"({"row":0,"text":"a"},{"row":1,"text":"b"},{"row":2,"text":"c"})";

struct Row {
    const char* name;
    std::string rows;
    std::string text;
    std::string wanted;
    int startLine = 0;
    int endLine = -1;
};

const Row Rows[] = {
    {"all common", Abc, "a\nb\nc", "0 1 2; 0<0 1<1 2<2"},
    {"new and changed lines close", Abc, "a\nx\nb\ny\n", "0 2; 0<0 2<1"},
    {"the diff decides, not the number", Abc, "x\ny\nb\nc", "2 3; 2<1 3<2"},
    {"nothing common", Abc, "x\ny\nz", ";"},
    {"an added row closes its line", R"({"row":0,"text":"a"},{"row":1,"text":"b","added":true})",
     "a\nb", "0; 0<0"},
    {"added as a number", R"({"row":0,"text":"a","added":1},{"row":1,"text":"b","added":0})",
     "a\nb", "1; 1<1"},
    {"added as another type counts for nothing",
     R"({"row":0,"text":"a","added":"true"},{"row":1,"text":"b","added":[1]})", "a\nb",
     "0 1; 0<0 1<1"},
    {"an added row takes part in the diff",
     R"({"row":0,"text":"a","added":true},{"row":1,"text":"a"})", "a\nx", ";"},
    {"a later text of a row counts, the mark stays",
     R"({"row":0,"text":"a","added":true},{"row":0,"text":"b"},{"row":1,"text":"c"})", "b\nc",
     "1; 1<1"},
    {"what is no object is skipped", R"(7,null,[],{"row":0,"text":"a"})", "a", "0; 0<0"},
    {"rows are compared in the order of their numbers",
     R"({"row":2,"text":"c"},{"row":0,"text":"a"})", "a\nb\nc", "0 2; 0<0 2<2"},
    {"empty rows take no index", R"({"row":0,"text":""},{"row":1,"text":"b"})", "\nb\n", "1; 1<1"},
    {"row texts with line ends stand for their first line",
     R"({"row":0,"text":"a\nb"},{"row":1,"text":"c"},{"row":2,"text":"\rd"})", "a\nb\nc\nd",
     "0 2 3; 0<0 2<1 3<2"},
    {"rows beyond the lines aren't compared", Abc, "b\nc", "0; 0<1"},
    {"rows behind the range fail", R"({"row":2,"text":"a"})", "a\nb",
     "0 1;; Cannot get diff text. start line:0, end line:2."},
    {"a negative row is in no range", R"({"row":-1,"text":"a"})", "a",
     "0;; Cannot get diff text. start line:0, end line:1."},
    {"no row", "", "a", "0;; Cannot get diff text. start line:0, end line:1."},
    {"rows without a text fail", R"({"row":0})", "a",
     "0;; Cannot get diff text. start line:0, end line:1."},
    {"a range has its own rows", Abc, "a\nb\nc\nb", "1; 1<1", 1, 2},
    {"lines outside of the range keep their entries", Abc, "b\nc\nx", "1; 0<1 1<2", 1, 3},
    {"rows in front of the range fail", Abc, "a\nb\nc\na\nb",
     "3 4;; Cannot get diff text. start line:3, end line:5.", 3, 5},
    {"the line behind the last line feed yields to a row",
     R"({"row":0,"text":"end"},{"row":1,"text":"r#"},{"row":2,"text":"x"})", "end\n\nr#",
     "0 2; 0<0 2<1"},
    {"but not where both have a partner", R"({"row":0,"text":"a"},{"row":1,"text":"b"})", "b\n\na",
     "0; 0<1"},
};

TEST(DiffFilter, KeepsTheLinesOfTheRows) {
    for (const auto& row : Rows) {
        SCOPED_TRACE(row.name);
        const auto sample = LoadRules(Node(row.rows));
        auto& rule = DiffFilterAt(*sample, 0);
        const bool isParsed = sample->Parse(row.text, row.startLine, row.endLine, nullptr);
        EXPECT_EQ(isParsed, row.wanted.find("Cannot") == std::string::npos);
        EXPECT_EQ(DumpRun(rule), row.wanted);
        EXPECT_EQ(sample->GetLastError(), rule.GetLastError());
    }
}

TEST(DiffFilter, ANestedOneWorksWithTheDiffOfTheOuterOne) {
    const auto inner = Node(R"({"row":0,"text":"other"},{"row":2,"text":"c","added":true},
                               {"row":3,"text":""})",
                            R"(,"child":{"parserule":[{"keywords":{"keyword":["^$w$"]}}]})");
    const auto sample =
        LoadRules(Node(std::string(Abc) + R"(,{"row":3,"text":"e"})",
                       R"(,"child":{"parserule":[{"type":1,"name":"f","child":{"parserule":[{},)" +
                           inner + "]}}]}"));
    EXPECT_TRUE(sample->Parse("a\nb\nc\ne\nz", 0, -1, nullptr));
    auto& outer = DiffFilterAt(*sample, 0);
    EXPECT_EQ(DumpRun(outer), "0 1 2 3; 0<0 1<1 2<2 3<3");
    auto& nested = DiffFilterAt(*outer.Children().at(0), 1);
    EXPECT_EQ(nested.GetOuterDiffFilter(), &outer);
    EXPECT_EQ(DumpRun(nested), "0 3; 0<0 3<3");
    EXPECT_EQ(DumpLets(nested.GetVariableValue("$w")), "0:0-1 \"a\"");
}

// A line that a filter above has closed loses its entry.
TEST(DiffFilter, SeesTheLinesOfTheRuleAbove) {
    const auto sample = LoadRules(R"({"type":1,"name":"f","filterloop":true,
        "excludelines":{"excludeline":"b"},"child":{"parserule":[{},)" +
                                  Node(Abc) + "]}}");
    sample->Parse("a\nb\nc", 0, -1, nullptr);
    EXPECT_EQ(DumpRun(DiffFilterAt(*sample->Children()[0], 1)), "0 2; 0<0 2<2");
}

TEST(DiffFilter, AFailureLeavesTheChildrenAndTheOtherRulesAlone) {
    const auto sample =
        LoadRules(Node("", R"(,"child":{"parserule":[{"keywords":{"keyword":["^$w$"]}}]})") +
                  R"(,{"keywords":{"keyword":["^$v$"]}})");
    EXPECT_TRUE(sample->Parse("a", 0, -1, nullptr));
    EXPECT_EQ(sample->GetLastError(), "Cannot get diff text. start line:0, end line:1.");
    EXPECT_TRUE(sample->GetVariableValue("$w").empty());
    EXPECT_FALSE(sample->GetVariableValue("$v").empty());
}

TEST(DiffFilter, LoadsSavesAndClones) {
    const auto text = Node(R"({"row":4,"text":"b","added":true},{"row":-2,"text":"a"})");
    const auto sample = LoadRules(text);
    hxJson::Value saved;
    ASSERT_TRUE(sample->Save(saved));
    EXPECT_EQ(saved["parserules"]["parserule"][0],
              ParseJson(R"({"type":9,"name":"d","lines":[{"row":-2,"text":"a"},
                            {"row":4,"text":"b","added":true}]})"))
        << saved.toString();
    CAppParseRuleSample root("");
    CAppParseRuleDiffFilter rule(&root);
    EXPECT_FALSE(rule.Load(ParseJson(R"({"name":"n","lines":{"row":0}})")));
    EXPECT_EQ(rule.GetName(), "n");
    EXPECT_TRUE(rule.Load(ParseJson(R"({"lines":[]})")));

    const std::unique_ptr<CAppParseRule> clone(sample->Clone(nullptr));
    auto& copy = DiffFilterAt(*clone, 0);
    copy.SetName("e");
    copy.SetLines({{{0, "z"}}, {}});
    clone->Parse("a\nz", 0, -1, nullptr);
    EXPECT_EQ(DumpRun(copy), "1; 1<0");
    EXPECT_EQ(DiffFilterAt(*sample, 0).GetLines().m_rows.size(), 2U);
    EXPECT_EQ(DiffFilterAt(*sample, 0).GetName(), "d");
    const std::unique_ptr<CAppParseRule> again(clone->Clone(nullptr));
    EXPECT_EQ(DumpRun(DiffFilterAt(*again, 0)), "1; 1<0");
}

// By itself in "parserule", without an array, the kind isn't known.
TEST(DiffFilter, LoadsFromArraysOnly) {
    EXPECT_TRUE(LoadSample("{\"parserules\":{\"parserule\":" + Node(Abc) + "}}")->IsLeaf());
    EXPECT_FALSE(LoadSample("{\"parserules\":{\"parserule\":[" + Node(Abc) + "]}}")->IsLeaf());
}

TEST(DiffFilter, AnswersForItsName) {
    const auto sample = LoadRules(Node(Abc));
    sample->Parse("a\r\nx\r\nc\r\n", 0, -1, nullptr);
    auto& rule = DiffFilterAt(*sample, 0);
    for (const auto* name : {"d", "$d", "xd"})
        EXPECT_EQ(DumpLets(rule.GetVariableValue(name)), "0:0-0 \"a\\nc\"") << name;
    for (const auto* name : {"", "$", "$$d", "dd.d", "e"})
        EXPECT_TRUE(rule.GetVariableValue(name).empty()) << name;
    EXPECT_EQ(sample->GetChildRuleByVariableName("d"), nullptr);
    std::set<int> lines;
    std::set<int> extended;
    sample->GetAllVarLineNums(lines, extended);
    EXPECT_EQ(lines, (std::set<int>{0, 2}));
    EXPECT_TRUE(extended.empty());
}

TEST(DiffFilter, ResultDocuments) {
    const auto sample =
        LoadRules(Node(Abc, R"(,"child":{"parserule":[{"keywords":{"keyword":["^$w$"]}}]})"));
    sample->Parse("b\nx\nc", 0, -1, nullptr);
    auto& rule = DiffFilterAt(*sample, 0);
    const std::string common =
        R"({"parserName":"d","parserType":9,"valueType":"string","lines":[0,2])";
    for (const bool isExtended : {false, true}) {
        rule.SetSaveExBuiltInInfo(isExtended);
        hxJson::Value json;
        EXPECT_TRUE(rule.SaveResultAsJson(json));
        auto& result = json["parseResult"];
        EXPECT_EQ(result["childs"].size(), 1U);
        result.removeMember("childs");
        const auto wanted = common + (isExtended ? R"(,"lineMapping":[[1,0],[2,2]]})" : "}");
        EXPECT_EQ(result, ParseJson(wanted)) << result.toString();
    }
    CMarkup xml;
    sample->SaveResultAsXML(xml);
    EXPECT_EQ(xml.GetDoc().find("arse"), std::string::npos) << xml.GetDoc();
}

TEST(DiffFilter, ItsChildrenStandBelowItInTheTreeOfItsSample) {
    const auto sample =
        LoadRules(Node(Abc, R"(,"child":{"parserule":[{"keywords":{"keyword":["^$w$"]}}]})"));
    const std::unique_ptr<CAppVariableDef> tree(sample->GetVariableTree());
    const auto* own = tree->GetChild("$d");
    ASSERT_NE(own, nullptr);
    EXPECT_EQ(static_cast<int>(own->GetDataType()), 27);
    EXPECT_NE(own->GetChild("$w"), nullptr);
}

}  // namespace
