// The library's log: a file of its own, and the log of the program that uses it. Neither ever holds a token, a code or
// the state of a sign-in.
#pragma once

#include <filesystem>
#include <mutex>
#include <string>

#include "gopiv.h"

namespace gopiv {

enum class LogLevel { debug, info, warning, error };

/// The level of that name; info for any other.
LogLevel logLevelFrom(const std::string& name);

/// Any thread. Writing never fails a caller.
class Log {
 public:
    /// Lines of at least `level` are appended to `file` from now on.
    void openFile(const std::filesystem::path& file, LogLevel level);
    void setSink(gopiv_log_function sink, void* context);

    /// Writes one line to the file, and to the sink whatever its level is. On a thread of the library's user only.
    void write(LogLevel level, const std::string& text);
    /// Writes one line to the file alone.
    void writeFile(LogLevel level, const std::string& text);

 private:
    std::mutex mutex_;
    std::filesystem::path file_;
    LogLevel fileLevel_ = LogLevel::info;
    gopiv_log_function sink_ = nullptr;
    void* context_ = nullptr;
};

}  // namespace gopiv
