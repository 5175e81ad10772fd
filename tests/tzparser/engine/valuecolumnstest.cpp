// Value trees share the columns that rules stored. What they show has to be what they would show of
// rules whose values a host had taken over as maps, over all the definitions of the golden cases.
#include "tzparser/engine/tzparser.h"
#include "tzparser/keyword/appparserulekeyword.h"
#include "tzparser/table/appparseruletable.h"

#include "support/letdump.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// Makes all rules below a rule work on the maps that a host has.
void TakeMaps(CAppParseRule& rule) {
    if (auto* keyword = dynamic_cast<CAppParseRuleKeyWord*>(&rule)) keyword->GetVariablePos();
    if (auto* table = dynamic_cast<CAppParseRuleTable*>(&rule)) table->GetVariablePos();
    for (const auto& child : rule.Children()) TakeMaps(*child);
}

// All nodes with their lets, once through texts and copies and once through the lets themselves.
std::string Dump(const CAppVariableValue& root, bool makesLets) {
    std::string dump;
    std::vector<const CAppVariableValue*> pending{&root};
    while (!pending.empty()) {
        const auto* node = pending.back();
        pending.pop_back();
        dump += node->GetVariableFullName() + " " + std::to_string(node->GetValueCount());
        for (std::size_t i = 0; i < node->GetLetCount(); ++i) {
            if (!makesLets) {
                EXPECT_EQ(node->GetText(i), node->CopyLet(i).text);
            }
            dump += " " + DumpLet(makesLets ? node->GetValues()[i] : node->CopyLet(i));
        }
        dump += "\n";
        for (const auto* child : node->GetChildValues()) pending.push_back(child);
    }
    return dump;
}

std::unique_ptr<CTzParser> MakeParser(const std::string& text) {
    auto parser = std::make_unique<CTzParser>();
    hxJson::Value definition;
    hxJson::Reader().parse(text, definition, true);
    parser->SetParser(definition);
    return parser;
}

TEST(ValueColumns, ShowWhatMapsShow) {
    int trees = 0;
    for (const auto& entry : std::filesystem::directory_iterator(TZ_GOLDEN)) {
        if (!std::filesystem::exists(entry.path() / "expected.json")) continue;
        SCOPED_TRACE(entry.path().filename().string());
        const auto parser = MakeParser(ReadFile(entry.path() / "definition.json"));
        const auto text = ReadFile(entry.path() / "input.txt");
        std::string error;
        const auto parsed = parser->Parse(text, error);
        const auto rules = parser->GetSampleParseRuleClone(text, error);
        if (!parsed || !rules || !rules->Parse(text, 0, -1, nullptr)) continue;
        ++trees;
        const auto definition = parser->GetVariableTree();
        const CAppVariableValue ofColumns(definition.get(), true, rules.get(), nullptr, 0);
        TakeMaps(*rules);
        const CAppVariableValue ofMaps(definition.get(), true, rules.get(), nullptr, 0);
        const auto wanted = Dump(ofMaps, true);
        EXPECT_EQ(Dump(*parsed, false), wanted);
        EXPECT_EQ(Dump(ofColumns, false), wanted) << "rules that are still there";
        EXPECT_EQ(Dump(*parsed, true), wanted) << "after lets were made";
        EXPECT_EQ(Dump(CAppVariableValue(&ofColumns), true), wanted) << "of a copy";
    }
    EXPECT_GT(trees, 50);
}

constexpr const char* PortTable = R"({"samples": [{"index": 1, "parserRules": {"parserule": [
    {"type": 3, "name": "ports", "headers": "Port;Name", "headertovariables": "Port:$port;Name:$name"},
    {"type": 0, "keywords": {"keyword": ["^Total $int:total"]}}]}}]})";

std::string Ports(int rows, const std::string& filler) {
    std::string text = "Total " + std::to_string(rows) + "\nPort    Name\n";
    for (int row = 0; row < rows; ++row) text += "Gi0/" + std::to_string(row) + "   uplink\n";
    return text + filler;
}

// A tree of few values doesn't keep a large text alive, one of many does: their texts are the same.
TEST(ValueColumns, OutliveTheTextWhateverShareOfItTheyAre) {
    const auto parser = MakeParser(PortTable);
    for (const auto& filler : {std::string(), std::string(100000, '=')}) {
        std::string error;
        std::shared_ptr<CAppVariableValue> root;
        {
            const auto text = Ports(3, filler);
            root = parser->Parse(text, error);
        }
        const auto* name = root->GetChildValueByName("ports.name");
        EXPECT_EQ(name->GetText(2), "uplink");
        EXPECT_EQ(DumpLets(name->GetValues()),
                  "2:8-14 \"uplink\"; 3:8-14 \"uplink\"; 4:8-14 \"uplink\"");
        EXPECT_EQ(root->GetChildValueByName("total")->GetVariableText(0), "3");
    }
}

// Rules that go on and trees made of them share values, but no thread sees what another does.
TEST(ValueColumns, AreSharedByThreadsThatEachWriteTheirs) {
    const auto parser = MakeParser(PortTable);
    std::string error;
    const auto text = Ports(200, "");
    const auto rules = parser->GetSampleParseRuleClone(text, error);
    ASSERT_TRUE(rules->Parse(text, 0, -1, nullptr));
    const auto definition = parser->GetVariableTree();
    std::vector<std::thread> threads;
    for (int i = 0; i < 3; ++i) {
        auto root =
            std::make_shared<CAppVariableValue>(definition.get(), true, rules.get(), nullptr, 0);
        threads.emplace_back([root] {
            auto* port = root->GetChildValueByName("ports.port");
            EXPECT_EQ(port->GetText(199), "Gi0/199");
            port->GetValues()[199].text = "mine";
            EXPECT_EQ(port->GetText(199), "mine");
            root->ClearValue(true);
        });
    }
    ASSERT_TRUE(rules->Parse(Ports(2, ""), 0, -1, nullptr));
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(rules->GetVariableValue("ports.port").size(), 200U) << "rows of both parses";
}

}  // namespace
