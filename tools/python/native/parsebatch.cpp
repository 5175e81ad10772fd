// Threads take the number of the next text from one counter, so a large text keeps nobody waiting
// but at the end. Each outcome has a place of its own, and the threads share nothing else.
#include "parsebatch.h"

#include <algorithm>
#include <system_error>
#include <utility>

CParseBatch::CParseBatch(CTzParser& parser, const std::vector<std::string_view>& texts)
    : m_parser(parser), m_texts(texts), m_outcomes(texts.size()) {}

bool CParseBatch::Run(int threads, const std::function<bool()>& goesOn) {
    const auto most = static_cast<int>(std::min<std::size_t>(m_texts.size(), 1024));
    StartHelpers(std::min(threads, most) - 1);
    ParseSome(goesOn);
    AwaitHelpers(goesOn);
    for (auto& helper : m_helpers) helper.join();
    if (m_failure) std::rethrow_exception(m_failure);
    return !m_isRefused;
}

void CParseBatch::StartHelpers(int count) {
    if (count <= 0) return;
    m_helpers.reserve(static_cast<std::size_t>(count));
    try {
        for (int i = 0; i < count; ++i) {
            const std::lock_guard<std::mutex> lock(m_lock);
            m_helpers.emplace_back([this] { Help(); });
            ++m_busyHelpers;
        }
    } catch (const std::system_error&) {
        // The threads that there are do the work.
    }
}

void CParseBatch::Help() {
    try {
        std::string text;
        while (ParseNext(text)) {
        }
    } catch (...) {
        NoteFailure(std::current_exception());
    }
    const std::lock_guard<std::mutex> lock(m_lock);
    --m_busyHelpers;
    m_helperEnded.notify_one();
}

void CParseBatch::ParseSome(const std::function<bool()>& goesOn) {
    try {
        std::string text;
        auto nextQuestion = Clock::now() + AskInterval;
        while (ParseNext(text)) {
            if (Clock::now() < nextQuestion) continue;
            m_isRefused = !goesOn();
            if (m_isRefused) return Stop();
            nextQuestion = Clock::now() + AskInterval;
        }
    } catch (...) {
        NoteFailure(std::current_exception());
    }
}

// The text is a buffer of the thread, used again for each.
bool CParseBatch::ParseNext(std::string& text) {
    if (m_isStopped.load(std::memory_order_relaxed)) return false;
    const auto index = m_next.fetch_add(1, std::memory_order_relaxed);
    if (index >= m_texts.size()) return false;
    text.assign(m_texts[index]);
    auto& outcome = m_outcomes[index];
    outcome.value = m_parser.Parse(text, outcome.error);
    return true;
}

void CParseBatch::AwaitHelpers(const std::function<bool()>& goesOn) {
    const auto haveEnded = [this] { return m_busyHelpers == 0; };
    std::unique_lock<std::mutex> lock(m_lock);
    while (!m_helperEnded.wait_for(lock, AskInterval, haveEnded)) {
        if (m_isRefused) continue;
        lock.unlock();
        m_isRefused = !goesOn();
        if (m_isRefused) Stop();
        lock.lock();
    }
}

void CParseBatch::NoteFailure(std::exception_ptr failure) {
    Stop();
    const std::lock_guard<std::mutex> lock(m_lock);
    if (!m_failure) m_failure = std::move(failure);
}
