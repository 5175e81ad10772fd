#pragma once

#include <cstdint>

// CScriptTimer limits the time of a script that runs in the calling thread, from its making to
// Stop.
//
//     CScriptTimer timer(250);                 // milliseconds; 0 is no limit and costs nothing
//     ... run the script ...
//     if (timer.Stop()) ...                    // it was interrupted
//
// When the time is over, the script gets a KeyboardInterrupt where it stands, and one again each
// time it goes on for ten milliseconds more. An operation outside of Python, such as a sleep, is
// interrupted when it comes back. After Stop nothing of it reaches the thread any more.
//
// Whoever makes one, stops it or destroys it holds the interpreter. One thread of the process
// watches over all of them; it is started with the first.
class CScriptTimer {
public:
    explicit CScriptTimer(int milliseconds);
    ~CScriptTimer() { Stop(); }
    CScriptTimer(const CScriptTimer&) = delete;
    CScriptTimer& operator=(const CScriptTimer&) = delete;

    // Ends the limit; whether the script was interrupted, at the first call. False at later ones.
    bool Stop();

private:
    std::uint64_t m_run = 0;  // 0: no limit, or stopped
};
