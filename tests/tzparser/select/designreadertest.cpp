// Design readers: which lines are taken for those that the host's reader selected, what the rule
// answers, its documents, and readers that fail.
#include "host/runtime/diagnostics.h"
#include "host/xml/markup.h"
#include "tzparser/engine/tzparser.h"
#include "tzparser/select/appparseruledesignreader.h"
#include "tzparser/select/designreader.h"
#include "tzparser/select/selectedlines.h"
#include "tzparser/variable/appvariabledef.h"

#include "filtersupport.h"
#include "support/plainselection.h"

#include <atomic>
#include <functional>
#include <random>
#include <stdexcept>
#include <thread>

namespace {

using Selecting = std::function<bool(const std::string& text, std::string& selected)>;

// A reader in force as long as the object lives; notes what it was asked last.
class CReaderInForce : public IDesignReader {
public:
    static std::shared_ptr<CReaderInForce> Make(Selecting selecting) {
        auto reader = std::make_shared<CReaderInForce>();
        reader->m_selecting = std::move(selecting);
        SetDesignReader(reader);
        return reader;
    }
    static std::shared_ptr<CReaderInForce> Giving(const std::string& answer) {
        return Make([answer](const std::string&, std::string& selected) {
            selected = answer;
            return true;
        });
    }
    bool Select(const std::string& name, const std::string& code, const std::string& text,
                std::string& selected) override {
        asked = name + "|" + code + "|" + text;
        return m_selecting(text, selected);
    }
    std::string asked;

private:
    Selecting m_selecting;
};

class DesignReader : public testing::Test {
protected:
    void TearDown() override { SetDesignReader(nullptr); }
};

CAppParseRuleDesignReader& ReaderAt(CAppParseRule& parent, std::size_t index) {
    return dynamic_cast<CAppParseRuleDesignReader&>(*parent.Children().at(index));
}

const char* const Node =
    R"({"type":2,"name":"d","drname":"who","drcode":"what",
        "child":{"parserule":[{"keywords":{"keyword":["v $v"]}}]}})";

// No reader comes with the engine: nothing is selected.
TEST_F(DesignReader, WithoutAReaderNoLineStaysOpen) {
    const auto sample = LoadRules(Node);
    EXPECT_TRUE(sample->Parse("v 1\nv 2", 0, -1, nullptr));
    auto& rule = ReaderAt(*sample, 0);
    EXPECT_EQ(DumpStatus(rule.GetLineStatus()), "");
    EXPECT_TRUE(sample->IsNoneExist());
    EXPECT_EQ(DumpLets(sample->GetVariableValue("v")), "0:0-0 \"\"");
    EXPECT_EQ(DumpLets(sample->GetVariableValue("d")), "0:0-0 \"\"");
    EXPECT_EQ(sample->GetLastError(), "");
    EXPECT_EQ(sample->GetChildRuleByVariableName("$d"), &rule);
    EXPECT_EQ(sample->GetChildRuleByVariableName("d"), &rule);
    EXPECT_NE(sample->GetChildRuleByVariableName("$$d"), &rule);
}

struct Row {
    const char* name;
    const char* text;
    const char* selected;
    const char* wanted;  // the open lines
};

TEST_F(DesignReader, KeepsTheLinesOfTheRows) {
    const Row rows[] = {
        {"one line", "a\nb\nc", "b", "1"},
        {"none of the text", "a\nb", "x\ny", ""},
        {"nothing", "a\nb", "", ""},
        {"line ends of any kind", "a\nb\nc", "\n\r\na\r\n\n\rc\n", "0 2"},
        {"blanks at the ends don't count, those within do", " a\t\nb  c\nb c", "a\n\tb c ", "0 2"},
        {"case counts", "a", "A", ""},
        {"equal lines in their order", "x\nx\nx", "x\nx", "0 1"},
        {"all of them taken", "x\nx", "x\nx\nx", "0 1"},
        {"behind the line before", "x\na\nx", "a\nx", "1 2"},
        {"in front when there is none behind", "x\na\nx\nb", "b\nx", "0 3"},
        {"the one in front sets the place for the next", "a\nb\na\nb", "b\nb\na\na", "0 1 2 3"},
        {"the place is that of the one in front", "x\na\nx\nc", "c\na\nx", "1 2 3"},
        {"empty lines close, selected or not", "a\n\n \nb", "a\n \n\nb", "0 3"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto reader = CReaderInForce::Giving(row.selected);
        const auto sample = LoadRules(Node);
        EXPECT_TRUE(sample->Parse(row.text, 0, -1, nullptr));
        EXPECT_EQ(DumpStatus(ReaderAt(*sample, 0).GetLineStatus()), row.wanted);
    }
}

// Only open lines of the range are given to the reader and taken for its lines.
TEST_F(DesignReader, SeesTheOpenLinesOfItsRange) {
    const auto reader = CReaderInForce::Giving("a\nv 2\nv 4\nlast");
    const auto sample = LoadRules(std::string(R"({"type":1,"startline":"v 1","filterloop":true,
        "excludelines":{"excludeline":"regex:^a$"},"child":{"parserule":[{},)") +
                                  Node + "]}}");
    sample->Parse("v 0\nv 1\na\nv 2\n\nv 4 \nlast", 0, -1, nullptr);
    EXPECT_EQ(reader->asked, "who|what|v 1\r\nv 2\r\n\r\nv 4 \r\nlast");
    auto& rule = ReaderAt(*sample->Children()[0], 1);
    EXPECT_EQ(DumpStatus(rule.GetLineStatus()), "3 5 6");
    EXPECT_EQ(DumpLets(sample->GetVariableValue("v")), "3:2-3 \"2\"");
    EXPECT_EQ(DumpLets(rule.GetVariableValue("$d")), "0:0-0 \"a\\nv 2\\nv 4\\nlast\"");
    for (const char* name : {"dd", "$$d", "x", ""})
        EXPECT_EQ(DumpLets(rule.GetVariableValue(name)), "") << name;
    EXPECT_FALSE(rule.IsNoneExist());
    EXPECT_TRUE(rule.Parse("", -5, 6, nullptr));
    EXPECT_EQ(DumpStatus(rule.GetLineStatus()), "3 5");
    EXPECT_TRUE(rule.Parse("", 6, 5, nullptr));
    EXPECT_EQ(DumpStatus(rule.GetLineStatus()), "");
    EXPECT_EQ(reader->asked, "who|what|");
}

TEST_F(DesignReader, FindsLinesAsThePlainSearchDoes) {
    std::mt19937 random(11);
    const auto below = [&random](unsigned limit) { return random() % limit; };
    const char* const words[] = {"a", "b", " a", "b ", "", " ", "c", "d", "\td "};
    for (int round = 0; round < 3000; ++round) {
        SCOPED_TRACE(round);
        PlainSelection plain;
        std::string text;
        AppLineStatus status;
        const auto count = static_cast<int>(1 + below(14));
        for (int i = 0; i < count; ++i) {
            plain.lines.emplace_back(words[below(9)]);
            plain.open.push_back(below(5) != 0);
            status.push_back(plain.open.back());
            text += (i == 0 ? "" : "\n") + plain.lines.back();
        }
        const auto start = static_cast<int>(below(3)) % count;
        const auto end = count - static_cast<int>(below(3)) % (count - start);
        std::vector<std::string> selected;
        std::string joined;
        for (auto lines = below(12); lines > 0; --lines) {
            selected.emplace_back(words[below(9)]);
            joined += selected.back() + "\n";
        }
        CAppSampleLines lines;
        ASSERT_TRUE(lines.Assign(text));
        std::vector<int> sources;
        for (const auto& line : FindSelectedLines(lines, status, start, end, joined))
            sources.push_back(line.line);
        auto wanted = plain.Keep(start, end, selected);
        std::size_t kept = 0;  // lines without a text are left out of the answer
        for (std::size_t i = 0; i < selected.size(); ++i)
            if (!PlainSelection::Trim(selected[i]).empty()) wanted[kept++] = wanted[i];
        wanted.resize(kept);
        EXPECT_EQ(sources, wanted);
    }
}

// A reader that fails selects nothing, whatever it wrote before, and the parse goes on.
TEST_F(DesignReader, AFailingReaderSelectsNothing) {
    const Selecting failing[] = {
        [](const std::string&, std::string& selected) {
            selected = "v 1";
            return false;
        },
        [](const std::string&, std::string& selected) -> bool {
            selected = "v 1";
            throw std::runtime_error("broken");
        },
        [](const std::string&, std::string&) -> bool { throw 7; },
    };
    const auto sample = LoadRules(Node);
    for (const auto& selecting : failing) {
        const auto reader = CReaderInForce::Make(selecting);
        EXPECT_TRUE(sample->Parse("v 1", 0, -1, nullptr));
        EXPECT_EQ(DumpLets(sample->GetVariableValue("d")), "0:0-0 \"\"");
        EXPECT_TRUE(sample->IsNoneExist());
    }
}

// Threads that parse share the reader, also while it is being replaced.
TEST_F(DesignReader, ServesSeveralThreads) {
    CTzParser parser;
    ASSERT_TRUE(parser.SetParser(ParseJson(
        std::string(R"({"samples":[{"index":1,"parserRules":{"parserule":[)") + Node + "]}}]}")));
    std::atomic<int> wrong{0};
    class CLastLine : public IDesignReader {
        bool Select(const std::string&, const std::string&, const std::string& text,
                    std::string& selected) override {
            selected = text.substr(text.rfind('\n') + 1);
            return true;
        }
    };
    SetDesignReader(std::make_shared<CLastLine>());
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&parser, &wrong, i] {
            const auto wanted = std::to_string(i);
            for (int round = 0; round < 50; ++round) {
                std::string error;
                const auto value = parser.Parse("v x\nv " + wanted, error);
                auto* found = value ? value->GetChildValueByName("v") : nullptr;
                if (found == nullptr || found->GetVariableValue(0)->text != wanted) ++wrong;
            }
        });
    for (int round = 0; round < 50; ++round) SetDesignReader(std::make_shared<CLastLine>());
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(wrong, 0);
}

TEST_F(DesignReader, Documents) {
    const auto sample = LoadRules(std::string(Node) + R"(,{"type":2})");
    hxJson::Value json;
    ASSERT_TRUE(sample->Save(json));
    auto own = json["parserules"]["parserule"][0];
    EXPECT_EQ(own["child"]["parserule"].size(), 1U);
    own.removeMember("child");
    EXPECT_EQ(own, ParseJson(R"({"type":2,"name":"d","drname":"who","drcode":"what"})"))
        << own.toString();

    const auto reader = CReaderInForce::Giving("v 2\nx");
    sample->Parse("x\nv 1\nv 2", 0, -1, nullptr);
    hxJson::Value result;
    EXPECT_TRUE(sample->SaveResultAsJson(result));
    EXPECT_EQ(result["_original_result"][0]["parseResult"]["lines"], ParseJson("[0,2]"));
    EXPECT_EQ(result["_original_result"][0].size(), 1U);
    EXPECT_EQ(result["_original_result"][1],
              ParseJson(R"({"parseResult":{"parserName":"","parserType":2,"lines":[0,2],
                  "childs":[{"parseResult":{"parserType":0,"variables":[]}}]}})"))
        << result.toString();
    CMarkup xml;
    sample->SaveResultAsXML(xml);
    const auto text = xml.GetDoc();
    std::string squeezed;
    for (const char c : text)
        if (c != '\r' && c != '\n' && c != '\t' && c != ' ') squeezed += c;
    EXPECT_NE(squeezed.find("<parseResult><parserName>d</parserName><parserType>2</parserType>"
                            "<filterLines><filterLine>0</filterLine><filterLine>2</filterLine>"
                            "</filterLines><child>"),
              std::string::npos)
        << text;
}

TEST_F(DesignReader, EditingAndClones) {
    const auto sample = LoadRules(Node);
    const auto reader = CReaderInForce::Giving("v 2");
    sample->Parse("v 1\nv 2", 0, -1, nullptr);
    const std::unique_ptr<CAppParseRule> clone(sample->Clone(nullptr));
    auto& copy = ReaderAt(*clone, 0);
    EXPECT_EQ(copy.Children().size(), 1U);
    EXPECT_EQ(DumpLets(copy.GetVariableValue("d")), "0:0-0 \"v 2\"");
    copy.SetName("e");
    copy.SetDRName("n");
    copy.SetDRCode("c");
    copy.AddKVP("w $w");
    copy.AddStatement("$x=1");
    auto& rule = ReaderAt(*sample, 0);
    EXPECT_EQ(rule.GetName() + rule.GetDRName() + rule.GetDRCode(), "dwhowhat");
    EXPECT_EQ(copy.GetName() + copy.GetDRName() + copy.GetDRCode(), "enc");
    EXPECT_EQ(copy.GetKVPs(), (std::vector<std::string>{"v $v", "w $w"}));
    EXPECT_EQ(rule.GetKVPs(), std::vector<std::string>{"v $v"});
    copy.Reset();
    EXPECT_EQ(copy.GetName() + copy.GetDRName() + copy.GetDRCode(), "");
    EXPECT_TRUE(copy.GetKVPs().empty() && copy.GetStatements().empty());

    sample->RenameVariable("$d", "$new");
    EXPECT_EQ(rule.GetName(), "new");
    sample->DeleteVariable("$v");
    EXPECT_EQ(rule.Children().size(), 1U);  // the default child stays
    sample->DeleteVariable("new");
    EXPECT_TRUE(sample->IsLeaf());
}

// The name stands beside the variables of the children.
TEST_F(DesignReader, InTheVariableTrees) {
    const auto sample = LoadRules(Node);
    const std::unique_ptr<CAppVariableDef> tree(sample->GetVariableTree());
    ASSERT_NE(tree->GetChild("$d"), nullptr);
    EXPECT_EQ(tree->GetChild("$d")->GetDataType(), AppDataType_Node20);
    EXPECT_NE(tree->GetChild("$v"), nullptr);

    CTzParser parser;
    ASSERT_TRUE(parser.SetParser(ParseJson(R"({"samples":[{"parserRules":{"parserule":[
        {"type":2,"name":"my lines"},{"type":4,"name":"p","startline":"x",
         "child":{"parserule":[{},{"type":2,"name":"in"}]}}]}}]})")));
    const auto variables = parser.GetVariableTree();
    const auto* name = variables->GetChild("my lines");
    ASSERT_NE(name, nullptr);
    EXPECT_EQ(name->GetDataType(), AppDataType_String);
    EXPECT_EQ(name->GetPyName(), "my_lines");
    const auto* column = variables->GetChild("p")->GetChild("in");
    ASSERT_NE(column, nullptr);
    EXPECT_EQ(column->GetDataType(), AppDataType_Array);
}

}  // namespace
