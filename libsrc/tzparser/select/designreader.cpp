#include "tzparser/select/designreader.h"

#include <mutex>
#include <utility>

namespace {

struct ReaderState {
    std::mutex mutex;
    std::shared_ptr<IDesignReader> reader;
};

// Never destroyed: a thread of the host may still parse while static objects go.
ReaderState& State() {
    static ReaderState* const state = new ReaderState;
    return *state;
}

}  // namespace

// The former reader goes after the lock, since its destructor is the host's.
void SetDesignReader(std::shared_ptr<IDesignReader> reader) {
    const std::lock_guard<std::mutex> lock(State().mutex);
    State().reader.swap(reader);
}

std::shared_ptr<IDesignReader> GetDesignReader() {
    const std::lock_guard<std::mutex> lock(State().mutex);
    return State().reader;
}
