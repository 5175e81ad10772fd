// What becomes of the returned dict.
#include "host/json/hxjson.h"

#include "scriptsupport.h"

namespace {

struct Row {
    const char* name;
    const char* returned;
    const char* wanted;
};

void RunRows(const std::string& before, const Row* rows, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const auto rule = ScriptRule(before + Returning(rows[i].returned));
        EXPECT_TRUE(rule->Parse("text", 0, -1, nullptr)) << rows[i].name << rule->GetLastError();
        EXPECT_EQ(DumpResult(*rule), rows[i].wanted) << rows[i].name;
    }
}

TEST(ScriptResult, ValuesOfTheRows) {
    const Row rows[] = {
        {"plain", "{'a': 1, '$b': 'x', 'c': True}",
         "$a int 0:\"1\"\n$b string 0:\"x\"\n$c bool 0:\"True\"\n"},
        {"floats have two decimals and their own type", "{'a': 1.5, 'b': 1234.567, 'c': -1e-9}",
         "$a float 0:\"1.50\"\n$b float 0:\"1234.57\"\n$c float 0:\"-0.00\"\n"},
        {"None is a string without text", "{'a': None}", "$a string 0:\"\"\n"},
        {"an int beyond 64 bits reads as -1", "{'a': 2**64, 'b': -2**63}",
         "$a int 0:\"-1\"\n$b int 0:\"-9223372036854775808\"\n"},
        {"subclasses", "{'a': type('S', (str,), {})('s'), 'b': type('I', (int,), {})(3)}",
         "$a string 0:\"s\"\n$b int 0:\"3\"\n"},
        {"what can't be converted is dropped", "{'a': (1,), 'b': b'x', 'c': object(), 'd': 1j}",
         ""},
        {"a class that only has the name", "{'a': type('PyIP', (), {})()}", ""},
        {"lists and keys that are no texts", "{'l': [1, 2], 1: 'x', None: {'y': [1]}}", ""},
        {"an empty name", "{'': 1}", "$ int 0:\"1\"\n"},
        {"the first type of a name stays", "{'a': 1, '$a': 'x'}", "$a int 0:\"x\"\n"},
        {"a short column is filled up", "{'t': {'x': [1, 2], 'y': ['a']}}",
         "$t\n  $x int 0:\"1\" 1:\"2\"\n  $y string 0:\"a\" 1:\"None\"\n"},
        {"mixed types end as string, None changes nothing",
         "{'t': {'x': [1, 'a'], 'y': [None, 2], 'z': [None, None]}}",
         "$t\n  $x string 0:\"1\" 1:\"a\"\n  $y int 0:\"\" 1:\"2\"\n  $z string 0:\"\" 1:\"\"\n"},
        {"order of columns", "{'t': {'_columns': ['y', '', 'none', '$x'], 'x': 1, 'y': 2, 'a': 3}}",
         "$t\n  $y int 0:\"2\"\n  $x int 0:\"1\"\n  $a int 0:\"3\"\n"},
        {"only a list with elements is an order", "{'t': {'_columns': [], 'x': [1]}}",
         "$t\n  $_columns string -1:\"\"\n  $x int 0:\"1\"\n"},
        {"a text is no order", "{'t': {'_columns': 'x'}}", "$t\n  $_columns string 0:\"x\"\n"},
        {"a row -1 counts when columns are made equally long", "{'t': {'x': [1, 2], 'y': []}}",
         "$t\n  $x int 0:\"1\" 1:\"2\"\n  $y string -1:\"\" 0:\"None\"\n"},
        {"an empty table", "{'t': {}}", ""},
        {"a dict in a table, a cell that is dropped from the only column",
         "{'t': {'d': {}, 'x': [1, [], 3]}}", "$t\n  $x int 0:\"1\" 2:\"3\"\n"},
        {"a dropped cell beside a whole column", "{'t': {'x': [1, [], 3], 'y': [4, 5, 6]}}",
         "$t\n  $x int 0:\"1\" 1:\"None\" 2:\"3\"\n  $y int 0:\"4\" 1:\"5\" 2:\"6\"\n"},
        {"a column of which nothing is left", "{'t': {'x': [[], ()]}}", ""},
    };
    RunRows("", rows, std::size(rows));
}

// Objects of the library's classes, and of classes that only look like them.
TEST(ScriptResult, ObjectsOfTheRows) {
    const Row rows[] = {
        {"addresses", "{'i': PyIP('192.0.2.7/24'), 'm': PyMac('00:00:5e:00:53:01')}",
         "$i IP 0:\"192.0.2.7/24\"\n$m MAC 0:\"0000.5e00.5301\"\n"},
        {"a configlet", "{'t': {'c': [PyConfigLet('a\\nb')]}}", "$t\n  $c configlet 0:\"a\nb\"\n"},
        {"a configlet whose method fails has no words", "{'c': Bad(), 'd': 1}",
         "$c configlet 0:\"\"\n$d int 0:\"1\"\n"},
        {"a class that is called so",
         "{'i': type('PyMac', (), {})(), 'j': type('X', (PyIP,), {})()}", ""},
    };
    RunRows(
        "from pyapplib import PyIP, PyMac\n"
        "from pyapplib  import  PyConfigLet\n"
        "class Bad:\n    def GetStrValue(self): return 1 // 0\n"
        "Bad.__name__ = 'PyConfigLet'\n",
        rows, std::size(rows));
}

// A block in the source decides alone, however it is written.
TEST(ScriptResult, DeclarationsOfTheRows) {
    struct {
        const char* name;
        const char* block;
        const char* returned;
        const char* wanted;
    } const rows[] = {
        {"words in any case", "Begin declare variable [{'name':'x','type':'int'}] end DECLARE",
         "{'x': 5, 'y': 6}", "$x int 0:\"5\"\n"},
        {"what isn't set stands by, the declared type stays",
         "Begin Declare Variable [{'name':'$x','type':'INT'},{'name':'y','type':'str'}]\n"
         "End Declare",
         "{'x': 'text'}", "$x int 0:\"text\"\n$y string 0:\"None\"\n"},
        {"an unknown type word", "Begin Declare Variable [{'name':'x','type':'what'}] End Declare",
         "{}", "$x string 0:\"None\"\n"},
        {"nameless elements and other values",
         "Begin Declare Variable [{'type':'int'}, 7, {'name':''}] End Declare", "{'x': 1}", ""},
        {"no JSON declares nothing", "Begin Declare Variable [{'name':'o'clock'}] End Declare",
         "{'x': 1}", ""},
        {"no array declares nothing", "Begin Declare Variable {'name':'x'} End Declare", "{'x': 1}",
         ""},
        {"no end is no block", "Begin Declare Variable [{'name':'x','type':'int'}]", "{'y': 1}",
         "$y int 0:\"1\"\n"},
        {"the first block counts",
         "Begin Declare Variable [] End Declare Begin Declare Variable [{'name':'x'}] End Declare",
         "{'x': 1}", ""},
        {"a table keeps its declared order, and a row -1",
         "Begin Declare Variable [{'name':'t','type':'Table','columns':["
         "{'name':'b','type':'int'},{'name':''},{'name':'a','type':'Table'}]}] End Declare",
         "{'t': {'_columns': ['a', 'b'], 'b': ['x', 2], 'c': [1]}}",
         "$t\n  $b int -1:\"\" 0:\"x\" 1:\"2\"\n"
         "  $a string -1:\"\" 0:\"None\" 1:\"None\"\n"},
        {"a table without columns",
         "Begin Declare Variable [{'name':'t','type':'table'}] End Declare", "{'t': {'a': [1]}}",
         ""},
    };
    for (const auto& row : rows) {
        const auto rule =
            ScriptRule("'''" + std::string(row.name) + " \"\"\" '''\n" + "_ = \"\"\"" + row.block +
                       "\"\"\"\n" + Returning(row.returned));
        EXPECT_TRUE(rule->Parse("", 0, -1, nullptr)) << row.name << rule->GetLastError();
        EXPECT_EQ(DumpResult(*rule), row.wanted) << row.name;
    }
}

// Rows below 0 aren't handed out of tables, but count when columns are made equally long.
TEST(ScriptResult, LookUpsByName) {
    const auto rule = ScriptRule(Returning("{'a': {'b': [1, 2], 'c': []}, 'p': 'x'}"));
    ASSERT_TRUE(rule->Parse("", 0, -1, nullptr));
    EXPECT_EQ(DumpLets(rule->GetVariableValue("a.b")), "0:0-0 \"1\"; 1:0-0 \"2\"");
    EXPECT_EQ(DumpLets(rule->GetVariableValue("$a.$b")), "0:0-0 \"1\"; 1:0-0 \"2\"");
    EXPECT_EQ(DumpLets(rule->GetVariableValue("a.c")), "0:0-0 \"None\"");
    EXPECT_EQ(DumpLets(rule->GetVariableValue("p")), "0:0-0 \"x\"");
    EXPECT_EQ(DumpLets(rule->GetVariableValue(".p")), "0:0-0 \"x\"");
    for (const char* name : {"b", "a", "a.x", "x.b", "a.b.c", "", "."})
        EXPECT_TRUE(rule->GetVariableValue(name).empty()) << name;
}

TEST(ScriptResult, Document) {
    const auto rule = ScriptRule(Returning("{'p': 1, 't': {'_columns': ['y'], 'x': [], 'y': 2}}"));
    ASSERT_TRUE(rule->Parse("", 0, -1, nullptr));
    hxJson::Value document;
    ASSERT_TRUE(rule->SaveResultAsJson(document));
    const char* const let = R"("beginRow":0,"beginCol":0,"endRow":0,"endCol":0)";
    hxJson::Value wanted;
    hxJson::Reader reader;
    ASSERT_TRUE(reader.parse(
        std::string(R"({"parseResult":{"parserName":"Script","parserType":8,"variables":[
            {"name":"$p","valueType":"int","details":[{"text":"1",)") +
            let + R"(}]}],
            "tables":[{"name":"$t","variables":[
                {"name":"$y","valueType":"int","details":[{"text":"2",)" +
            let + R"(}]},
                {"name":"$x","valueType":"string","details":[]}]}]}})",
        wanted, true));
    EXPECT_EQ(document, wanted) << document.toString();
}

TEST(ScriptResult, OnlyADictIsAResult) {
    for (const char* returned : {"[1]", "None", "'text'"}) {
        LogCatcher log;
        const auto rule = ScriptRule(Returning(returned));
        EXPECT_FALSE(rule->Parse("", 0, -1, nullptr));
        EXPECT_EQ(rule->GetLastError(), "The type of the returned value must be dict.");
        EXPECT_EQ(log.Take(), "");
    }
}

}  // namespace
