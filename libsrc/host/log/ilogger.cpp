#include "host/log/ilogger.h"

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <exception>
#include <new>
#include <string>
#include <string_view>

namespace {

std::atomic<ILogger*> InstalledLogger{nullptr};

constexpr const char* LevelNames[] = {"debug", "info", "warning", "error"};

std::string LevelName(ELogLevel level) {
    const auto number = static_cast<std::size_t>(level);
    if (number < sizeof LevelNames / sizeof *LevelNames) return LevelNames[number];
    return "level " + std::to_string(static_cast<int>(level));
}

std::string TextOrEmpty(const char* text) {
    return text == nullptr ? "" : text;
}

// The entry as one line, whatever bytes its texts hold: device output that reached a message can
// neither forge a second entry nor send commands to the terminal.
std::string OneLine(std::string_view text) {
    constexpr char Digits[] = "0123456789abcdef";
    std::string line;
    line.reserve(text.size() + 1);
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '\n') {
            line += "\\n";
        } else if (c == '\r') {
            line += "\\r";
        } else if (byte < 0x20 || byte == 0x7F) {
            line += {'\\', 'x', Digits[byte >> 4], Digits[byte & 15]};
        } else {
            line += c;
        }
    }
    return line += '\n';
}

class StderrLogger : public ILogger {
public:
    void LogStr(const char* first, const char* second, const char* file, const char* function,
                int line, ELogLevel level, const std::string& text) override {
        try {
            const std::string entry =
                OneLine("[" + TextOrEmpty(first) + "][" + TextOrEmpty(second) + "] " +
                        LevelName(level) + " " + TextOrEmpty(file) + ":" + std::to_string(line) +
                        " " + TextOrEmpty(function) + ": " + text);
            // One call an entry: the stream's own lock keeps the entries of several threads apart.
            std::fwrite(entry.data(), 1, entry.size(), stderr);
        } catch (const std::exception&) {
            std::fputs("[TzParser] an entry was dropped for want of memory\n", stderr);
        }
    }
};

std::string Formatted(const char* format, std::va_list arguments) {
    std::va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, again);
    va_end(again);
    if (length < 0) return format;
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    std::vsnprintf(text.data(), text.size(), format, arguments);
    text.pop_back();
    return text;
}

}  // namespace

ILogger* ILogger::GetInstance() {
    // Never destroyed, so that destructors of static objects can still log.
    static ILogger* const standard = new StderrLogger;
    ILogger* const installed = InstalledLogger.load(std::memory_order_acquire);
    return installed == nullptr ? standard : installed;
}

void ILogger::SetInstance(ILogger* logger) {
    InstalledLogger.store(logger, std::memory_order_release);
}

void ILogger::LogVar(const char* first, const char* second, const char* file, const char* function,
                     int line, ELogLevel level, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::string text;
    try {
        if (format != nullptr) text = Formatted(format, arguments);
    } catch (const std::bad_alloc&) {
        text.clear();  // the place that speaks still tells something
    }
    va_end(arguments);
    LogStr(first, second, file, function, line, level, text);
}
