// The plug-in's log: one text file, opened and closed for each line, shared by the host's thread and the workers.
//
// Logging never fails a caller and never shows anything. Lines logged before the first setLogDirectory() are lost.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace logging {

/// A line is written when its level is at least the current one and the current one is not off.
enum class LogLevel : std::int32_t { debug = 0, info = 1, warning = 2, error = 3, off = 4 };

/// Name of the plug-in's log file in the log directory.
inline constexpr const char* logFileName = "pivra-integration.log";

/// Writes one line at the named level, subject to the current level. `text` goes out byte by byte; UTF-8 is expected.
/// A text that begins with "[cpp-piv]" stands as it is, any other behind "[Pivra] ". Any thread; never throws.
void LogDebug(std::string_view text);
void LogInfo(std::string_view text);
void LogWarning(std::string_view text);
void LogError(std::string_view text);
void Log(LogLevel level, std::string_view text);

/// Writes the line that `build` returns; a line that cannot be built, for lack of memory, is lost. For destructors and
/// other functions that must not throw.
template <typename Build>
void logBuilt(LogLevel level, Build build) noexcept {
    try {
        Log(level, build());
    } catch (...) {
        // Nobody who logs can do anything about it.
    }
}

/// Writes one line whatever the current level is. For what is said about the level itself.
void logUnfiltered(LogLevel level, std::string_view text);

/// "DEBUG", "INFO", "WARNING", "ERROR", and "OFF" for any other value.
std::string_view displayName(LogLevel level);
/// "debug", "info", "warning", "error", and "off" for any other value: the form that the client library takes.
std::string_view lowerCaseName(LogLevel level);

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

}  // namespace logging
