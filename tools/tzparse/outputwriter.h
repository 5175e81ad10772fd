#pragma once

#include <string>
#include <string_view>

// COutputWriter gathers output and writes it to a file descriptor in large pieces.
//
//     COutputWriter out(STDOUT_FILENO);
//     out.Buffer() += "text";
//     out.Drain();                        // now and then, so that the buffer stays small
//     out.Finish();                       // once, at the end
//
// Whatever can't be written (a full disk, a closed pipe) throws CToolError. What wasn't drained or
// finished is lost.
class COutputWriter {
public:
    explicit COutputWriter(int descriptor) : m_descriptor(descriptor) {}

    // What is to be written next; append to it.
    std::string& Buffer() { return m_buffer; }
    // Writes the buffer out when it has become large.
    void Drain() {
        if (m_buffer.size() >= DrainSize) Flush();
    }
    // Writes the rest.
    void Finish() { Flush(); }

private:
    static constexpr std::size_t DrainSize = 64 * 1024;

    void Flush();

    int m_descriptor;
    std::string m_buffer;
};
