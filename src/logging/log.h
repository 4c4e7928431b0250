// The plug-in's log: one text file, opened and closed for each line, shared by the host's thread and the workers.
//
// Logging never fails a caller and never shows anything. Lines logged before the first setLogDirectory() are lost.
#pragma once

#include <concepts>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace logging {

/// A line is written when its level is at least the current one and the current one is not off.
enum class LogLevel : std::int32_t { debug = 0, info = 1, warning = 2, error = 3, off = 4 };

/// Name of the plug-in's log file in the log directory.
inline constexpr const char* logFileName = "pivra-integration.log";

/// Writes one line at the named level, subject to the current level. `text` goes out byte by byte, UTF-8 is expected,
/// but for control characters: a name that holds a line break must not look like a line of its own
/// (platform::oneLine()). Unless `text` begins with "[cpp-piv]", "[Pivra] " is put before it. Any thread; never throws.
void LogDebug(std::string_view text);
void LogInfo(std::string_view text);
void LogWarning(std::string_view text);
void LogError(std::string_view text);
void Log(LogLevel level, std::string_view text);

/// Writes the line that `build` returns; when memory runs out, the line is lost. For functions that must not throw.
template <typename Build>
void logBuilt(LogLevel level, Build build) noexcept {
    try {
        Log(level, build());
    } catch (...) {
        // The line is lost: callers could do nothing about it.
    }
}

/// Writes one line whatever the current level is. For what is said about the level itself.
void logUnfiltered(LogLevel level, std::string_view text);

/// "DEBUG", "INFO", "WARNING", "ERROR", and "OFF" for any other value.
std::string_view displayName(LogLevel level);
/// "debug", "info", "warning", "error", and "off" for any other value: the form that the client library takes.
std::string lowerCaseName(LogLevel level);

/// The current level; info at first. Any thread.
LogLevel currentLevel();
void setCurrentLevel(LogLevel level);

/// Sets the log directory and creates it with its parents when it is not empty, ignoring every error. Any thread.
void setLogDirectory(const std::filesystem::path& directory);

/// `fileName` resolved against the log directory by ResolveLogPath(); empty while there is no log directory. Any
/// thread.
std::filesystem::path LogFilePath(const std::filesystem::path& fileName);

/// Whether the log file exists in the log directory. Any thread.
bool IsLogFilePresent();

/// `base` for an empty `value`; `value` itself when it is absolute (drive letter, colon and slash, or a UNC name); else
/// `base` joined with `value`, or nothing when `base` is empty.
std::filesystem::path ResolveLogPath(const std::filesystem::path& base, const std::filesystem::path& value);

/// Builds log lines of one shape: a fixed head, then " name=value" for each field, then a full stop. Text values stand
/// in double quotes, booleans as true and false.
///
/// Example: LogLine("Preparing NX upload files:").quoted("part", label).flag("drawing", false).text()
/// gives: Preparing NX upload files: part="bolt" drawing=false.
class LogLine {
 public:
    explicit LogLine(std::string_view head) : text_(head) {}

    LogLine& quoted(std::string_view name, std::string_view value);
    LogLine& plain(std::string_view name, std::string_view value);
    LogLine& flag(std::string_view name, bool value);
    LogLine& number(std::string_view name, std::integral auto value) { return plain(name, std::to_string(value)); }
    /// A plain decimal number, however small: up to six significant digits, no trailing zeros, no exponent.
    LogLine& decimal(std::string_view name, double value);

    /// The line with `end` behind the last field.
    std::string text(std::string_view end = ".") const;

 private:
    std::string text_;
};

}  // namespace logging
