// The watching thread sleeps until the first of the runs is due. It takes the interpreter before it
// looks again which runs are due and interrupts them while it has it, and a run is entered and
// taken out by a thread that has it as well: so an interruption can't be on its way when a run
// ends.
#include "tzparser/script/scripttimer.h"

#include "host/python/pythonapi.h"
#include "host/python/pythreadstatelock.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::milliseconds Again{10};

struct TimedRun {
    std::uint64_t number;
    unsigned long thread;  // Python's number of it
    Clock::time_point due;
    bool isInterrupted;
};

bool IsEarlier(const TimedRun& a, const TimedRun& b) {
    return a.due < b.due;
}

// Never destroyed: its thread sleeps on until the process has ended.
class ScriptWatch {
public:
    static ScriptWatch& Instance() {
        static auto* const watch = new ScriptWatch;
        return *watch;
    }

    std::uint64_t Add(Clock::time_point due);
    bool Remove(std::uint64_t number);

private:
    void StartThread();
    void Watch();
    void InterruptDue();

    std::mutex m_lock;
    std::condition_variable m_changed;
    std::vector<TimedRun> m_runs;
    // When the thread looks at the runs again: one that is due later needn't wake it.
    Clock::time_point m_wakesAt = Clock::time_point::max();
    std::uint64_t m_lastNumber = 0;
    pid_t m_process = 0;  // that has the thread: a child of it has none
};

// Without a thread there is no limit: the script runs on. What a child of the process takes over
// from its parent are runs of threads that it doesn't have.
void ScriptWatch::StartThread() {
    if (m_process == getpid()) return;
    m_runs.clear();
    try {
        std::thread([this] { Watch(); }).detach();
        m_process = getpid();
    } catch (const std::system_error&) {
        m_process = 0;
    }
}

std::uint64_t ScriptWatch::Add(Clock::time_point due) {
    const std::lock_guard<std::mutex> lock(m_lock);
    StartThread();
    m_runs.push_back({++m_lastNumber, PyThread_get_thread_ident(), due, false});
    if (due < m_wakesAt) m_changed.notify_one();
    return m_lastNumber;
}

bool ScriptWatch::Remove(std::uint64_t number) {
    const std::lock_guard<std::mutex> lock(m_lock);
    const auto at = std::find_if(m_runs.begin(), m_runs.end(),
                                 [number](const TimedRun& run) { return run.number == number; });
    if (at == m_runs.end()) return false;  // begun before a fork
    const bool isInterrupted = at->isInterrupted;
    if (isInterrupted) PyThreadState_SetAsyncExc(at->thread, nullptr);
    m_runs.erase(at);
    return isInterrupted;
}

void ScriptWatch::Watch() {
    std::unique_lock<std::mutex> lock(m_lock);
    for (;;) {
        const auto first = std::min_element(m_runs.begin(), m_runs.end(), IsEarlier);
        m_wakesAt = first != m_runs.end() ? first->due : Clock::time_point::max();
        if (first == m_runs.end()) {
            m_changed.wait(lock);
        } else if (Clock::now() < first->due) {
            m_changed.wait_until(lock, m_wakesAt);
        } else {
            lock.unlock();
            InterruptDue();
            lock.lock();
        }
    }
}

void ScriptWatch::InterruptDue() {
    const PyThreadStateLock python(1000, "scripttimer", __LINE__);
    const std::lock_guard<std::mutex> lock(m_lock);
    const auto now = Clock::now();
    for (auto& run : m_runs) {
        if (now < run.due) continue;
        if (python.IsHeld()) {
            PyThreadState_SetAsyncExc(run.thread, PyExc_KeyboardInterrupt);
            run.isInterrupted = true;
        }
        run.due = now + Again;
    }
}

}  // namespace

CScriptTimer::CScriptTimer(int milliseconds) {
    if (milliseconds > 0)
        m_run = ScriptWatch::Instance().Add(Clock::now() + std::chrono::milliseconds(milliseconds));
}

bool CScriptTimer::Stop() {
    if (m_run == 0) return false;
    const bool isInterrupted = ScriptWatch::Instance().Remove(m_run);
    m_run = 0;
    return isInterrupted;
}
