#include "host/runtime/diagnostics.h"

#include <atomic>
#include <mutex>

namespace {

struct SinkState {
    std::recursive_mutex
        mutex;  // held while the sink runs; recursive, for a sink that replaces itself
    std::atomic<bool> hasSink{false};
    DiagnosticSink sink = nullptr;
    void* context = nullptr;
};

// Never destroyed: a static object of the host may leave a note as late as it likes.
SinkState& State() {
    static SinkState* const state = new SinkState;
    return *state;
}

thread_local bool t_insideSink = false;

void CallSink(SinkState& state, std::string_view text) {
    std::lock_guard<std::recursive_mutex> lock(state.mutex);
    if (state.sink == nullptr) return;
    t_insideSink = true;
    try {
        state.sink(text, state.context);
    } catch (...) {
    }
    t_insideSink = false;
}

}  // namespace

void SetDiagnosticSink(DiagnosticSink sink, void* context) noexcept {
    SinkState& state = State();
    std::lock_guard<std::recursive_mutex> lock(state.mutex);
    state.sink = sink;
    state.context = context;
    state.hasSink.store(sink != nullptr, std::memory_order_release);
}

void DiagnosticOutput(std::string_view text) noexcept {
    SinkState& state = State();
    if (t_insideSink || !state.hasSink.load(std::memory_order_acquire)) return;
    CallSink(state, text);
}
