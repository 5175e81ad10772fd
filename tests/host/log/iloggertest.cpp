#include "host/log/ilogger.h"

#include <algorithm>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

class KeepingLogger : public ILogger {
public:
    void LogStr(const char* first, const char* second, const char* file, const char* function,
                int line, ELogLevel level, const std::string& text) override {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_entries.push_back(std::string(first) + "|" + second + "|" + file + "|" + function + "|" +
                            std::to_string(line) + "|" + std::to_string(level) + "|" + text);
    }
    std::mutex m_mutex;
    std::vector<std::string> m_entries;
};

std::string Written(const char* function, int level, const std::string& text) {
    testing::internal::CaptureStderr();
    ILogger::GetInstance()->LogStr("LumoTask", "TzApp", "rule", function, 307,
                                   static_cast<ELogLevel>(level), text);
    return testing::internal::GetCapturedStderr();
}

TEST(ILogger, DefaultWritesOneLine) {
    const struct {
        const char* name;
        const char* function;
        int level;
        std::string text;
        std::string wanted;
    } rows[] = {
        {"plain", "Run", 3, "failed", "[LumoTask][TzApp] error rule:307 Run: failed\n"},
        {"line ends", "Run", 1, "a\r\nb\n", "[LumoTask][TzApp] info rule:307 Run: a\\r\\nb\\n\n"},
        {"terminal commands and NUL", "Run", 0, std::string("\x1B[2J\0\x7F", 6),
         "[LumoTask][TzApp] debug rule:307 Run: \\x1b[2J\\x00\\x7f\n"},
        {"unknown level, null text", nullptr, 9, "", "[LumoTask][TzApp] level 9 rule:307 : \n"},
        {"level below zero", "Run", -1, "\xC3\xA9",
         "[LumoTask][TzApp] level -1 rule:307 Run: \xC3\xA9\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Written(row.function, row.level, row.text), row.wanted);
    }
}

TEST(ILogger, HostInstallsItsOwn) {
    KeepingLogger logger;
    ILogger* const standard = ILogger::GetInstance();
    ILogger::SetInstance(&logger);
    EXPECT_EQ(ILogger::GetInstance(), &logger);
    ILogger::GetInstance()->LogVar("a", "b", "f", "g", 1, ELogLevel_Warning, "%s has %d%%", "cpu",
                                   97);
    ILogger::GetInstance()->LogVar("a", "b", "f", "g", 2, ELogLevel_Error, "%s",
                                   std::string(5000, 'x').c_str());
    ILogger::SetInstance(nullptr);
    EXPECT_EQ(ILogger::GetInstance(), standard);
    ASSERT_EQ(logger.m_entries.size(), 2U);
    EXPECT_EQ(logger.m_entries[0], "a|b|f|g|1|2|cpu has 97%");
    EXPECT_EQ(logger.m_entries[1], "a|b|f|g|2|3|" + std::string(5000, 'x'));
}

TEST(ILogger, EntriesOfThreadsStayWhole) {
    testing::internal::CaptureStderr();
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([] {
            for (int entry = 0; entry < 50; ++entry)
                ILogger::GetInstance()->LogVar("a", "b", "f", "g", 1, ELogLevel_Info, "%0200d",
                                               entry);
        });
    for (std::thread& thread : threads) thread.join();
    const std::string written = testing::internal::GetCapturedStderr();
    const std::size_t length = std::string("[a][b] info f:1 g: \n").size() + 200;
    ASSERT_EQ(written.size(), 200 * length);
    for (std::size_t at = 0; at < written.size(); at += length) {
        EXPECT_EQ(written.compare(at, 7, "[a][b] "), 0);
        EXPECT_EQ(written[at + length - 1], '\n');
    }
}

}  // namespace
