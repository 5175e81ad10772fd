#pragma once

#include "tzparser/engine/tzparser.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

// CParseBatch parses many texts by one parser, on several threads.
//
//     CParseBatch batch(parser, texts);
//     if (batch.Run(2, [] { return true; }))
//         for (auto& outcome : batch.Outcomes()) ...      // in the order of the texts
//
// It knows nothing of Python. One object serves one run; the parser must not be loaded meanwhile,
// and the texts must live until the end of it.
class CParseBatch {
public:
    struct Outcome {
        std::shared_ptr<CAppVariableValue> value;  // null on failure
        std::string error;                         // the words of CTzParser::Parse
    };

    CParseBatch(CTzParser& parser, const std::vector<std::string_view>& texts);

    // Parses all texts on so many threads, at least one, of which the calling thread is the first;
    // where the system gives no further thread, on fewer. About ten times a second, between two
    // texts, the calling thread asks whether to go on. False when it was told not to: some outcomes
    // are empty then. Throws what a parse has thrown (want of memory), once all threads have ended.
    bool Run(int threads, const std::function<bool()>& goesOn);

    std::vector<Outcome>& Outcomes() { return m_outcomes; }

private:
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::milliseconds AskInterval{100};

    void StartHelpers(int count);
    void Help();
    void ParseSome(const std::function<bool()>& goesOn);
    bool ParseNext(std::string& text);
    void AwaitHelpers(const std::function<bool()>& goesOn);
    void Stop() { m_isStopped.store(true, std::memory_order_relaxed); }
    void NoteFailure(std::exception_ptr failure);

    CTzParser& m_parser;
    const std::vector<std::string_view>& m_texts;
    std::vector<Outcome> m_outcomes;
    std::atomic<std::size_t> m_next{0};
    std::atomic<bool> m_isStopped{false};
    bool m_isRefused = false;  // the calling thread was told to stop

    std::vector<std::thread> m_helpers;
    std::mutex m_lock;  // for the two below
    int m_busyHelpers = 0;
    std::exception_ptr m_failure;
    std::condition_variable m_helperEnded;
};
