#pragma once

// The debugger output: where the engine leaves a note about something it got over in silence, such
// as a pattern that does not compile. Nobody has to listen: without a sink the notes are dropped,
// as a debugger output drops them when no debugger is attached. Results never depend on a sink.
//
//     void Print(std::string_view text, void*) { std::cerr << text; }
//     SetDiagnosticSink(&Print, nullptr);
//     DiagnosticOutput("Catch any exception");   // Print gets the text
//     SetDiagnosticSink(nullptr, nullptr);       // back to dropping
//
// Thread-safe. There is one sink a process. Its calls never overlap, and once SetDiagnosticSink has
// returned on another thread the former sink is not called any more, so its context can go.

#include "host/runtime/tzexport.h"

#include <string_view>

// Takes one note; `text` lives as long as the call and need not end in a line feed or a NUL. A sink
// may throw (what it throws is dropped), may call SetDiagnosticSink, and may call DiagnosticOutput
// (the inner note is dropped, so a sink cannot call itself without end).
using DiagnosticSink = void (*)(std::string_view text, void* context);

// Replaces the sink; null drops all notes. `context` is handed to every call and stays the
// caller's.
TZPARSER_API void SetDiagnosticSink(DiagnosticSink sink, void* context) noexcept;

// Hands the note to the sink, if there is one. Costs one atomic read if there is none.
TZPARSER_API void DiagnosticOutput(std::string_view text) noexcept;
