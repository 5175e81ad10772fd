#pragma once

#include "host/runtime/tzexport.h"

#include <string>

// How much an entry matters, in rising order.
enum ELogLevel {
    ELogLevel_Debug = 0,
    ELogLevel_Info = 1,
    ELogLevel_Warning = 2,
    ELogLevel_Error = 3,
};

// ILogger is where the library leaves words for whoever runs the host. A library must not force a
// logging framework on its host, so there is one operation to implement, and a default that writes
// each entry as one line to stderr:
//
//     ILogger::GetInstance()->LogVar("LumoTask", "TzApp", "script", "Parse", 307,
//                                    ELogLevel_Error, "%d rules failed", count);
//
//     [LumoTask][TzApp] error script:307 Parse: 2 rules failed
//
// Every operation may be called from any thread at any time. None of them throws; the default drops
// an entry that it can't write.
class TZPARSER_API ILogger {
public:
    virtual ~ILogger() = default;

    // The logger in force: the host's, or the default. Never null; not owned by the caller.
    static ILogger* GetInstance();
    // Puts the host's logger in force for the whole process; null puts the default back. It isn't
    // owned: the host keeps it alive until it was replaced and no thread is inside a call to it any
    // more.
    static void SetInstance(ILogger* logger);

    // One entry: two categories, from the wider to the narrower, the place in the code that speaks,
    // and the text, which may hold any bytes and line ends. An implementation must be callable from
    // several threads at once and mustn't throw. Null pointers count as empty texts.
    virtual void LogStr(const char* first, const char* second, const char* file,
                        const char* function, int line, ELogLevel level,
                        const std::string& text) = 0;

    // The same with a printf format; formats and calls LogStr.
    void LogVar(const char* first, const char* second, const char* file, const char* function,
                int line, ELogLevel level, const char* format, ...)
        __attribute__((format(printf, 8, 9)));
};
