// Many threads with one definition, and the host's own Python beside them.
#include "tzparser/engine/tzparser.h"

#include "scriptsupport.h"

#include <atomic>
#include <thread>

namespace {

constexpr int Threads = 8;
constexpr int Rounds = 250;

TEST(ScriptThreads, ResultsDontMix) {
    hxJson::Value definition;
    hxJson::Reader reader;
    const std::string rules =
        R"({\"parserule\":[{\"type\":8,)"
        R"(\"variabletypes\":{\"variabletype\":{\"name\":\"$t\",\"type\":\"string\"}},)"
        R"(\"script\":\"import time\\ndef ParseText(t):\\n    time.sleep(0)\\n    return {'t': t}\"}]})";
    ASSERT_TRUE(reader.parse(R"({"samples":[{"identify":"{}","parserRules":")" + rules + "\"}]}",
                             definition, true));
    CTzParser parser;
    ASSERT_TRUE(parser.SetParser(definition));
    std::atomic<bool> isDone{false};
    std::thread host([&isDone] {
        while (!isDone) {
            if (!pythonlib_is_inited()) continue;
            const PyThreadStateLock lock(1000, __FILE__, __LINE__);
            EXPECT_EQ(PyRun_SimpleString("[i for i in range(1000)]"), 0);
        }
    });
    std::vector<std::thread> threads;
    for (int i = 0; i < Threads; ++i)
        threads.emplace_back([&parser, i] {
            for (int round = 0; round < Rounds; ++round) {
                const auto text = std::to_string(i) + "/" + std::to_string(round);
                std::string error;
                const auto values = parser.Parse(text, error);
                ASSERT_NE(values, nullptr) << error;
                EXPECT_EQ(values->GetChildValueByName("t")->GetVariableValue(0)->text, text);
            }
        });
    for (auto& thread : threads) thread.join();
    isDone = true;
    host.join();
}

// The last copy may die where nobody holds the interpreter, while another thread does for long.
TEST(ScriptThreads, CopiesDieWithoutTheInterpreter) {
    ASSERT_TRUE(pythonlib_init_ex(nullptr, 0, 0));
    auto rule = ScriptRule(Returning("{}"));
    ASSERT_TRUE(rule->Parse("", 0, -1, nullptr));
    const PyThreadStateLock lock(1000, __FILE__, __LINE__);
    std::thread([&rule] { rule.reset(); }).join();
    EXPECT_EQ(rule, nullptr);
}

}  // namespace
