// The limit of time.
#include "tzparser/engine/tzparser.h"
#include "tzparser/rule/appparserulesample.h"

#include "scriptsupport.h"

#include <chrono>
#include <cstdlib>
#include <thread>

namespace {

// No program of a script that fails can be saved there.
const int NoDumps = setenv("TMPDIR", "/proc/self", 1);

struct LimitedScript {
    explicit LimitedScript(const std::string& script, int milliseconds) : sample("") {
        sample.SetScriptTimeLimit(milliseconds);
        rule = new CAppParseRuleScript(&sample);
        sample.AddChildRule(rule);
        rule->SetScript(script);
    }
    CAppParseRuleSample sample;
    CAppParseRuleScript* rule;
};

TEST(ScriptTime, ALongRunIsInterrupted) {
    ASSERT_EQ(NoDumps, 0);
    const char* const scripts[] = {
        "def ParseText(t):\n    while True: pass\n",
        "while True: pass\n",
        "def ParseText(t):\n    while True:\n        try:\n            while True: pass\n"
        "        except: pass\n",
        "def ParseText(t):\n    try:\n        while True: pass\n    except: return {'a': 1}\n",
        "def ParseText(t):\n    try:\n        while True: pass\n"
        "    except KeyboardInterrupt: raise ValueError('mine')\n",
    };
    LogCatcher log;
    for (const auto* script : scripts) {
        LimitedScript limited(script, 30);
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_FALSE(limited.rule->Parse("", 0, -1, nullptr)) << script;
        EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(29));
        const auto& words = limited.rule->GetLastError();
        EXPECT_EQ(words.rfind("Failed to execute the parser script:", 0), 0U) << words;
        const std::string end = "TimeoutError: the script ran longer than 30 ms";
        EXPECT_EQ(words.substr(words.size() - std::min(end.size(), words.size())), end) << words;
    }
}

// The interruption reaches neither the next run nor the host's own code.
TEST(ScriptTime, NothingOfALimitOutlivesItsRun) {
    LogCatcher log;
    LimitedScript slow("def ParseText(t):\n    while True: pass\n", 2);
    LimitedScript fast("def ParseText(t):\n    return {'n': sum(range(100))}\n", 10000);
    for (int i = 0; i < 100; ++i) {
        slow.rule->Parse("", 0, -1, nullptr);
        ASSERT_TRUE(fast.rule->Parse("", 0, -1, nullptr)) << fast.rule->GetLastError();
        const PyThreadStateLock lock(1000, __FILE__, __LINE__);
        ASSERT_EQ(PyRun_SimpleString("for _ in range(1000): pass"), 0);
    }
}

// Runs whose limit is about as long as they take, in several threads: each either fails for its
// time or is right.
TEST(ScriptTime, LimitsThatAreJustReached) {
    LogCatcher log;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([] {
            LimitedScript limited(
                "def ParseText(t):\n    n = 0\n    for i in range(30000): n += 1\n"
                "    return {'n': n}\n",
                2);
            for (int round = 0; round < 100; ++round)
                if (limited.rule->Parse("", 0, -1, nullptr))
                    EXPECT_EQ(DumpResult(*limited.rule), "$n int 0:\"30000\"\n");
                else
                    EXPECT_NE(limited.rule->GetLastError().find("TimeoutError"), std::string::npos)
                        << limited.rule->GetLastError();
        });
    for (auto& thread : threads) thread.join();
}

TEST(ScriptTime, TheEngineHandsItOn) {
    LogCatcher log;
    hxJson::Value definition;
    hxJson::Reader reader;
    ASSERT_TRUE(reader.parse(R"({"samples":[{"identify":"{}","parserRules":
        "{\"parserule\":[{\"type\":8,\"script\":\"while True: pass\"}]}"}]})",
                             definition, true));
    CTzParser parser;
    ASSERT_TRUE(parser.SetParser(definition));
    parser.SetScriptTimeLimit(20);
    std::string error;
    EXPECT_EQ(parser.Parse("", error), nullptr);
    EXPECT_NE(error.find("TimeoutError: the script ran longer than 20 ms"), std::string::npos)
        << error;
}

}  // namespace
