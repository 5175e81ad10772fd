#include "host/runtime/diagnostics.h"

#include <atomic>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Notes = std::vector<std::string>;

void Collect(std::string_view text, void* context) {
    static_cast<Notes*>(context)->emplace_back(text);
}

void CollectAndThrow(std::string_view text, void* context) {
    Collect(text, context);
    throw std::runtime_error("sink");
}

void CollectAndAnswer(std::string_view text, void* context) {
    Collect(text, context);
    DiagnosticOutput("inner");
}

void CollectOnce(std::string_view text, void* context) {
    Collect(text, context);
    SetDiagnosticSink(nullptr, nullptr);
}

struct Row {
    const char* name;
    DiagnosticSink sink;
    Notes wanted;
};

TEST(Diagnostics, SinksGetTheNotes) {
    const Row rows[] = {
        {"no sink", nullptr, {}},
        {"plain sink", &Collect, {"one", "two"}},
        {"a sink that throws is called again", &CollectAndThrow, {"one", "two"}},
        {"notes of a sink are dropped", &CollectAndAnswer, {"one", "two"}},
        {"a sink may take itself off", &CollectOnce, {"one"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Notes notes;
        SetDiagnosticSink(row.sink, &notes);
        DiagnosticOutput("one");
        DiagnosticOutput("two");
        SetDiagnosticSink(nullptr, nullptr);
        DiagnosticOutput("three");
        EXPECT_EQ(notes, row.wanted);
    }
}

TEST(Diagnostics, AContextCanGoOnceItsSinkIsReplaced) {
    std::atomic<bool> isDone{false};
    std::vector<std::thread> threads;
    for (int i = 0; i < 2; ++i) {
        threads.emplace_back([&isDone] {
            while (!isDone) DiagnosticOutput("note");
        });
    }
    for (int i = 0; i < 200; ++i) {
        Notes notes;
        SetDiagnosticSink(&Collect, &notes);
        std::this_thread::yield();
        SetDiagnosticSink(nullptr, nullptr);
    }
    isDone = true;
    for (std::thread& thread : threads) thread.join();
}

}  // namespace
