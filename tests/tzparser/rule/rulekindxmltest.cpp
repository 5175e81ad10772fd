// The XML form of each kind: what a rule reads, what it writes of what it holds, and what its other
// form, JSON, then shows of it.
#include "host/xml/markup.h"
#include "tzparser/paragraph/appparseruleparagraph.h"
#include "tzparser/script/appparserulescript.h"
#include "tzparser/select/appparseruledifffilter.h"
#include "tzparser/select/appparserulefilter.h"
#include "tzparser/select/appparseruletext.h"
#include "tzparser/table/appparseruletable.h"

#include "support/letdump.h"
#include "support/ruletree.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace {

std::unique_ptr<CAppParseRuleSample> LoadXml(const std::string& rules) {
    auto sample = std::make_unique<CAppParseRuleSample>("test");
    CMarkup xml;
    EXPECT_TRUE(xml.SetDoc("<parserules>" + rules + "</parserules>")) << xml.GetError();
    EXPECT_TRUE(sample->LoadFromXml(xml));
    return sample;
}

// Takes out line feeds and the blanks behind them.
std::string WithoutIndent(const std::string& text) {
    std::string dense;
    for (std::size_t at = 0; at < text.size();) {
        const auto end = std::min(text.find('\n', at), text.size());
        dense.append(text, at, end - at);
        at = std::min(text.find_first_not_of("\n ", end), text.size());
    }
    return dense;
}

// The rules of a sample as text without indent.
std::string SaveXml(CAppParseRule& sample) {
    CMarkup xml;
    EXPECT_TRUE(sample.SaveToXml(xml));
    const auto text = WithoutIndent(xml.GetDoc());
    const auto first = text.find("<parserules>") + std::string("<parserules>").size();
    const auto end = text.find("</parserules>");
    return end == std::string::npos ? "" : text.substr(first, end - first);
}

template <class Rule>
Rule& FirstOf(CAppParseRule& parent) {
    return dynamic_cast<Rule&>(*parent.Children().at(0));
}

std::string KeyWordXml(const std::string& kvp) {
    return "<parserule><type>0</type><keywords><keyword>" + kvp +
           "</keyword></keywords><statements /><variabletypes /></parserule>";
}

const std::string NoKeyWord =
    "<parserule><type>0</type><keywords /><statements /><variabletypes /></parserule>";

// Each form is read and written again as it stands, directly and by way of a clone.
TEST(RuleKindXml, FormsOfTheKindsComeBack) {
    struct Row {
        const char* name;
        std::string rule;
    };
    const Row rows[] = {
        {"keyword",
         "<parserule><type>0</type><keywords><keyword>up $int:a &lt;x&gt; </keyword>"
         "<keyword>b\r\n</keyword></keywords><statements><statement>$x=1</statement></statements>"
         "<variabletypes><variabletype>$a:ip:4</variabletype></variabletypes></parserule>"},
        {"filter",
         "<parserule><type>1</type><name>eth</name><startline>^a</startline><endline>!</endline>"
         "<skiplines><skipline>s</skipline><skipline /></skiplines><includelines>"
         "<includeline>i</includeline></includelines><excludelines><excludeline>e</excludeline>"
         "<excludeline>e2</excludeline></excludelines><filterloop>1</filterloop>"
         "<excludeendline>0</excludeendline><excludebeginline>1</excludebeginline>"
         "<asconfiglet>1</asconfiglet><child>" +
             KeyWordXml("mtu $int:mtu") + KeyWordXml("second") + "</child></parserule>"},
        {"filter with empty containers",
         "<parserule><type>1</type><name /><startline /><endline /><skiplines /><includelines />"
         "<excludelines /><filterloop>0</filterloop><excludeendline>1</excludeendline>"
         "<excludebeginline>0</excludebeginline><asconfiglet>0</asconfiglet><child>" +
             NoKeyWord + "</child></parserule>"},
        {"design reader",
         "<parserule><type>2</type><name>d</name><drname>n</drname><drcode>x &lt; "
         "1</drcode><child>" +
             KeyWordXml("k") + "</child></parserule>"},
        {"paragraph",
         "<parserule><type>4</type><name>p</name><keyvariables>$a;$b</keyvariables>"
         "<startline>interface $a</startline><endline>!</endline><islineasparagraph>1"
         "</islineasparagraph><lineasparagraph>3</lineasparagraph><excludeendline>0"
         "</excludeendline><isuseprevars>1</isuseprevars><useprevars>$b</useprevars>"
         "<hashColumns>$a</hashColumns><hashColumns>$b</hashColumns><hashSort>true</hashSort>"
         "<child>" +
             NoKeyWord + "</child></parserule>"},
        {"table",
         "<parserule><type>3</type><name>t</name><headers>Port;;VLAN</headers><endline>end"
         "</endline><isskipline>1</isskipline><skipline>2</skipline><headertovariables>"
         "Port:$string:port;VLAN:$int:vlan</headertovariables><leftalign>0</leftalign>"
         "<aligntype>2</aligntype><alignrange>0;8</alignrange><keyvariables>$port</keyvariables>"
         "<isuseprevars>1</isuseprevars><useprevars>$port;$vlan</useprevars><variabletypes>"
         "<variabletype>$port:string</variabletype><variabletype>$vlan:int</variabletype>"
         "</variabletypes><hashColumns>$vlan</hashColumns><hashSort>false</hashSort>"
         "<child>" +
             NoKeyWord + "</child></parserule>"},
        {"script",
         "<parserule><type>8</type><script>def ParseText(t):\n\treturn {'a': '&lt;&amp;'}\n"
         "</script><variabletypes><variabletype><name>$a</name><type>int</type></variabletype>"
         "</variabletypes><tablevariabletypes><tablevariabletype><name>$T</name><variabletypes>"
         "<variabletype><name>$m</name><type>int</type></variabletype><variabletype>"
         "<name>$n</name><type>string</type></variabletype></variabletypes><tablecolumns>"
         "<tablecolumns>$n</tablecolumns><tablecolumns>$m</tablecolumns></tablecolumns>"
         "</tablevariabletype><tablevariabletype><name>u</name><variabletypes><variabletype>"
         "<name>$x</name><type>ip</type></variabletype></variabletypes><tablecolumns>"
         "<tablecolumns>$x</tablecolumns></tablecolumns></tablevariabletype>"
         "</tablevariabletypes></parserule>"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto sample = LoadXml(row.rule);
        const auto wanted = WithoutIndent(row.rule);
        EXPECT_EQ(SaveXml(*sample), wanted);
        const std::unique_ptr<CAppParseRule> clone(sample->Clone(nullptr));
        EXPECT_EQ(SaveXml(*clone), wanted);
    }
}

// What is read of elements that stand there in other ways than a rule writes them.
TEST(RuleKindXml, ReadsWhatIsThere) {
    struct Row {
        const char* name;
        const char* type;
        const char* elements;
        const char* json;
    };
    const Row rows[] = {
        {"a keyword with a type twice and one without a colon", "0",
         "<variabletypes><variabletype>$a:int</variabletype><variabletype>$a:ip</variabletype>"
         "<variabletype>$b</variabletype></variabletypes><statements>x<statement>s</statement>y"
         "</statements><keywords><other/><keyword>k<b/></keyword><keyword/></keywords>",
         R"({"keywords":{"keyword":["k",""]},"statements":{"statement":["s"]},)"
         R"("type":0,"variabletypes":{"variabletype":["$a:int"]}})"},
        {"a table without elements is a new one, with all defaults", "3", "",
         R"({"endline":"","headers":"","headertovariables":"","isskipline":false,)"
         R"("isuseprevars":false,"keyvariables":"","leftalign":"","name":"","skipline":0,)"
         R"("type":3,"useprevars":"","variabletypes":[]})"},
        {"a table's numbers are texts that begin with one, flags are words", "3",
         "<isskipline>TRUE</isskipline><skipline>7x</skipline><isuseprevars>true</isuseprevars>"
         "<headers> a ; b\t</headers><headertovariables>a:$x;$y</headertovariables>"
         "<useprevars>;</useprevars>",
         R"({"endline":"","headers":"a;b","headertovariables":"$y:$string:y;a:$string:x",)"
         R"("isskipline":true,"isuseprevars":false,"keyvariables":"","leftalign":"","name":"",)"
         R"("skipline":7,"type":3,"useprevars":"","variabletypes":["$x:string","$y:string"]})"},
        {"a paragraph's lines as any number", "4",
         "<lineasparagraph>-5</lineasparagraph><islineasparagraph>2</islineasparagraph>"
         "<isuseprevars>1</isuseprevars><idlines>x</idlines>",
         R"({"child":{"parserule":[{"keywords":{"keyword":[]},"statements":{"statement":[]},)"
         R"("type":0,"variabletypes":{"variabletype":[]}}]},"endline":"",)"
         R"("islineasparagraph":true,"isuseprevars":true,"keyvariables":"",)"
         R"("lineasparagraph":-5,"name":"","startline":"","type":4,"useprevars":""})"},
        {"a filter's configlet as a word, its end line excluded by default", "1",
         "<asconfiglet>True</asconfiglet><filterloop>yes</filterloop>",
         R"({"asconfiglet":true,"child":{"parserule":[{"keywords":{"keyword":[]},)"
         R"("statements":{"statement":[]},"type":0,"variabletypes":{"variabletype":[]}}]},)"
         R"("endline":"","excludebeginline":false,"excludeendline":true,"excludelines":[],)"
         R"("filterloop":false,"includelines":[],"name":"","skiplines":[],"startline":"",)"
         R"("type":1})"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto sample = LoadXml(std::string("<parserule><type>") + row.type + "</type>" +
                                    row.elements + "</parserule>");
        hxJson::Value saved;
        sample->Save(saved);
        EXPECT_EQ(saved["parserules"]["parserule"][0U].toString(false), row.json);
    }
}

// Rules of these kinds read their elements, a text rule though no document leads to one. They write
// what stands below them, without an element of their own around that.
TEST(RuleKindXml, DiffFiltersAndTextRulesAreNotWritten) {
    const std::string elements =
        "<lines><row>7</row><text> a </text></lines><name>t</name><lines><text>b</text>"
        "<added>1</added></lines><lines><row>7</row><text>c</text><added>0</added></lines><lines/>";
    struct Row {
        CAppParseRule* rule;
        const char* json;
    };
    CAppParseRuleSample sample("test");
    const Row rows[] = {
        {new CAppParseRuleText(&sample),
         R"({"lines":[{"row":7,"text":" a "},{"row":-1,"text":"b"},{"row":7,"text":"c"},)"
         R"({"row":-1,"text":""}],"name":"t"})"},
        {new CAppParseRuleDiffFilter(&sample),
         R"({"lines":[{"added":true,"row":-1,"text":""},{"row":7,"text":"c"}],"name":"t"})"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.rule->GetRuleType());
        sample.AddChildRule(row.rule);
        CMarkup xml;
        ASSERT_TRUE(xml.SetDoc("<rule>" + elements + "</rule>"));
        xml.FindElem("rule");
        xml.IntoElem();
        EXPECT_TRUE(row.rule->LoadFromXml(xml));
        hxJson::Value json;
        row.rule->Save(json);
        EXPECT_EQ(json.toString(false), row.json);
        EXPECT_EQ(SaveXml(sample), "");
        row.rule->AddChildRule(new CAppParseRuleKeyWord(row.rule));
        const auto saved = SaveXml(sample);
        EXPECT_EQ(saved, "<child>" + NoKeyWord + "</child>");
        EXPECT_TRUE(LoadXml(saved)->IsLeaf());
        sample.DelChildRule(row.rule);
    }
    const std::string diff = "<parserule><type>9</type>" + elements + "</parserule>";
    const auto read =
        LoadXml(diff + "<parserule><type>3</type><child>" + diff + "</child></parserule>");
    EXPECT_EQ(FirstOf<CAppParseRuleDiffFilter>(*read).GetLines().m_rows.size(), 2U);
    EXPECT_EQ(FirstOf<CAppParseRuleDiffFilter>(*read->Children()[1]).GetName(), "t");
}

// The built-in forms bring lines of their own, to which those of a document are added.
TEST(RuleKindXml, BuiltInLinesDouble) {
    const auto sample = LoadXml(
        "<parserule><type>5</type></parserule>"
        "<parserule><type>6</type></parserule>");
    const auto again = LoadXml(SaveXml(*sample));
    const std::vector<std::string> lines = KeyWordAt(*sample, 0).GetKVPs();
    auto twice = lines;
    twice.insert(twice.end(), lines.begin(), lines.end());
    EXPECT_EQ(KeyWordAt(*again, 0).GetKVPs(), twice);
    EXPECT_EQ(KeyWordAt(*again, 0).GetRuleType(), RuleType_Ping);
    EXPECT_EQ(KeyWordAt(*again, 1).GetRuleType(), RuleType_TraceRoute);
    EXPECT_EQ(KeyWordAt(*again, 1).GetStatements().size(), 2U);
}

TEST(RuleKindXml, MissingElementsLeaveARuleAsItWas) {
    CMarkup xml;
    ASSERT_TRUE(xml.SetDoc("<filter><endline>z</endline></filter><paragraph/><table/><script/>"));
    CAppParseRuleSample sample("test");
    const auto load = [&xml](CAppParseRule& rule, const char* element) {
        EXPECT_TRUE(xml.FindElem(element));
        xml.IntoElem();
        EXPECT_TRUE(rule.LoadFromXml(xml));
        xml.OutOfElem();
    };
    CAppParseRuleFilter filter(&sample);
    filter.SetName("kept");
    filter.SetBeginLine("a");
    filter.AddIncludeLine("i");
    load(filter, "filter");
    EXPECT_EQ(filter.GetName() + filter.GetBeginLine() + filter.GetEndLine(), "keptaz");
    EXPECT_EQ(filter.GetIncludeLine(), std::vector<std::string>{"i"});
    CAppParseRuleParagraph paragraph(&sample);
    paragraph.SetLineAsParagraph(4);
    paragraph.SetTableCmpSort(true);
    load(paragraph, "paragraph");
    EXPECT_EQ(paragraph.GetLineAsParagraph(), 4);
    EXPECT_TRUE(paragraph.IsTableCmpSort() && paragraph.IsExcludeEndLine());
    CAppParseRuleTable table(&sample);
    table.SetAlign(2);
    table.AddHeaderVar("h", "$int:v");
    load(table, "table");
    EXPECT_EQ(table.GetAlign(), 2);
    EXPECT_EQ(table.GetVariableType("$v"), "int");
    CAppParseRuleScript script(&sample);
    script.SetScript("x = 1");
    load(script, "script");
    EXPECT_EQ(script.GetScript(), "x = 1");
}

// Only what stands behind the element read before is found.
TEST(RuleKindXml, AScriptsElementsHaveAnOrder) {
    const std::string types =
        "<variabletypes><variabletype><name>$a</name><type>int</type>"
        "</variabletype></variabletypes>";
    const std::string tables =
        "<tablevariabletypes><tablevariabletype><name>t</name>" + types +
        "<tablecolumns><tablecolumns/><tablecolumns>$a</tablecolumns></tablecolumns>"
        "</tablevariabletype><tablevariabletype><name>none</name></tablevariabletype>"
        "</tablevariabletypes>";
    struct Row {
        std::string elements;
        const char* wanted;
    };
    const Row rows[] = {
        {"<script>s</script>" + types + tables, "s 1 1"},
        {types + tables, " 1 1"},
        {tables + "<script>s</script>" + types, "s 1 0"},
        {types + tables + "<script>s</script>", "s 0 0"},
        {tables + types, " 1 0"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.elements);
        const auto sample = LoadXml("<parserule><type>8</type>" + row.elements + "</parserule>");
        auto& script = FirstOf<CAppParseRuleScript>(*sample);
        EXPECT_EQ(script.GetScript() + " " + std::to_string(script.GetVariableNames().size()) +
                      " " + std::to_string(script.GetTableNames().size()),
                  row.wanted);
    }
}

// Bounds, operations, ids, id lines, parent lines and exclude lines have no element.
TEST(RuleKindXml, WhatTheFormDoesNotHaveIsLost) {
    const auto sample = LoadRules(
        R"({"type":0,"xxid":"id","nistart":{"type":2,"pattern":"a"},"keywords":{"keyword":["k $x"]},
            "operations":[{"originalstr":"a","replacestr":"b"}]},
           {"type":4,"name":"p","idlines":["i"],"parentline":"l","startline":"s"},
           {"type":3,"name":"t","enableexcludelines":true,"excludelines":{"excludeline":["x"]}})");
    const std::string saved = SaveXml(*sample);
    const auto again = LoadXml(saved);
    EXPECT_EQ(SaveXml(*again), saved);
    EXPECT_EQ(again->Children()[0]->GetRuleGuid(), "");
    EXPECT_EQ(again->Children()[0]->GetNIStart().m_pattern, "");
    auto& paragraph = dynamic_cast<CAppParseRuleParagraph&>(*again->Children()[1]);
    EXPECT_EQ(paragraph.GetIDLines(), std::vector<std::string>{"s"});
    EXPECT_EQ(paragraph.GetParentLine(), "");
    auto& table = dynamic_cast<CAppParseRuleTable&>(*again->Children()[2]);
    EXPECT_TRUE(table.GetExcludeLines().empty());
}

// A tree that came from XML is compiled by its first run; it and its clones find what the same tree
// from JSON does.
TEST(RuleKindXml, ATreeFromXmlParsesAsTheOneItCameFrom) {
    const auto sample = LoadRules(
        R"({"type":0,"keywords":{"keyword":["host $name"]}},
           {"type":4,"name":"ports","startline":"interface $port","child":{"parserule":[
               {"type":0,"keywords":{"keyword":["mtu $int:mtu"]}},
               {"type":1,"name":"ip","startline":"ip","endline":"no","excludeendline":true}]}},
           {"type":3,"name":"vlans","headers":"VLAN;Name","headertovariables":
               "VLAN:$int:vlan;Name:$string:label","leftalign":true,"endline":"done"})");
    const auto again = LoadXml(SaveXml(*sample));
    const std::string text =
        "host r1\ninterface a\n mtu 9\n ip x\n no y\ninterface b\n ip z\n"
        "VLAN  Name\n10    red\n20    blue\ndone\n30    none\n";
    const auto dump = [&text](CAppParseRule& rule) {
        const std::unique_ptr<CAppParseRule> clone(rule.Clone(nullptr));
        EXPECT_TRUE(clone->Parse(text, 0, -1, nullptr));
        hxJson::Value result;
        clone->SaveResultAsJson(result);
        return result.toString(false);
    };
    const auto wanted = dump(*sample);
    EXPECT_NE(wanted.find("blue"), std::string::npos);
    EXPECT_EQ(dump(*again), wanted);
    EXPECT_EQ(dump(*again), wanted) << "the second clone";
}

// A document could hold more rules below each other than a tree may.
TEST(RuleKindXml, TreesAsDeepAsTheyMayBe) {
    for (const char* type : {"1", "3", "4"}) {
        SCOPED_TRACE(type);
        std::string rules;
        for (int i = 0; i < 499; ++i)
            rules += std::string("<parserule><type>") + type + "</type><child>";
        for (int i = 0; i < 499; ++i) rules += "</child></parserule>";
        const auto sample = LoadXml(rules);
        const CAppParseRule* deepest = sample.get();
        int depth = 0;
        for (; !deepest->IsLeaf(); deepest = deepest->Children().back().get()) ++depth;
        EXPECT_EQ(depth - (deepest->GetRuleType() == RuleType_KeyWord ? 1 : 0), 333);
        const std::unique_ptr<CAppParseRule> clone(sample->Clone(nullptr));
        clone->Parse("a\nb\n", 0, -1, nullptr);
        hxJson::Value json;
        clone->Save(json);
        clone->SaveResultAsJson(json);
        const auto saved = SaveXml(*clone);
        EXPECT_EQ(SaveXml(*LoadXml(saved)), saved);
    }
}

// A document that is too deep at the start has no room for a rule, or none for all of it.
TEST(RuleKindXml, WhatHasNoRoomIsLeftOut) {
    const auto sample = LoadXml(KeyWordXml("k"));
    for (const int used : {996, 997, 999, 1000}) {
        SCOPED_TRACE(used);
        CMarkup xml;
        for (int i = 0; i < used; ++i) ASSERT_TRUE(xml.AddElem("x") && xml.IntoElem());
        EXPECT_EQ(sample->SaveToXml(xml), used == 996);
        EXPECT_TRUE(xml.OutOfElem());
        EXPECT_EQ(xml.FindElem("x"), false) << "the cursor is where it was";
        CMarkup read;
        EXPECT_TRUE(read.SetDoc(xml.GetDoc())) << read.GetError();
    }
}

}  // namespace
