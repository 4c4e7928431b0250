#include <logging/log.h>
#include <platform/calendar.h>
#include <platform/files.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <system_error>

namespace logging {
namespace fs = std::filesystem;

namespace {

// Read without a lock: a change of level takes effect on another thread at its next line.
std::atomic<LogLevel> level{LogLevel::info};

struct LogPlace {
    std::mutex mutex;
    fs::path directory;
};

LogPlace& place() {
    static LogPlace instance;
    return instance;
}

bool isSeparator(fs::path::value_type unit) {
    return unit == '/' || unit == '\\';
}

bool isLetter(fs::path::value_type unit) {
    return (unit >= 'A' && unit <= 'Z') || (unit >= 'a' && unit <= 'z');
}

bool beginsWithDrive(const fs::path::string_type& text) {
    return text.size() >= 3 && isLetter(text[0]) && text[1] == ':' && isSeparator(text[2]);
}

bool beginsWithServer(const fs::path::string_type& text) {
    return text.size() >= 3 && isSeparator(text[0]) && isSeparator(text[1]) && !isSeparator(text[2]);
}

/// The present moment as "2026-01-31 08:15:00 +0100".
std::string localTimestamp() {
    const auto now = platform::localCalendarTime(std::chrono::system_clock::now());
    char date[32];
    std::strftime(date, sizeof date, "%Y-%m-%d %H:%M:%S", &now.fields);
    const int minutes = std::abs(now.offsetMinutes);
    char stamp[48];
    std::snprintf(stamp, sizeof stamp, "%s %c%02d%02d", date, now.offsetMinutes < 0 ? '-' : '+', minutes / 60,
                  minutes % 60);
    return stamp;
}

std::string formatLine(LogLevel lineLevel, std::string_view text) {
    constexpr std::string_view libraryPrefix = "[cpp-piv]";
    std::string line("[");
    line += localTimestamp();
    line += "] [";
    line += displayName(lineLevel);
    line += "] ";
    if (text.substr(0, libraryPrefix.size()) != libraryPrefix) line += "[Pivra] ";
    line += text;
    return line += "\r\n";
}

/// To be called with the mutex held.
void appendLine(const fs::path& directory, const std::string& line) {
    const auto file = ResolveLogPath(directory, logFileName);
    if (file.empty()) return;
    platform::createDirectories(file.parent_path());
    platform::appendToFile(file, line);
}

}  // namespace

void logUnfiltered(LogLevel lineLevel, std::string_view text) {
    const std::lock_guard lock(place().mutex);
    try {
        appendLine(place().directory, formatLine(lineLevel, text));
    } catch (const std::exception&) {
        // A line that cannot be made is lost: nobody who logs can do anything about it.
    }
}

void Log(LogLevel lineLevel, std::string_view text) {
    const auto current = currentLevel();
    if (current != LogLevel::off && lineLevel >= current) logUnfiltered(lineLevel, text);
}

void LogDebug(std::string_view text) {
    Log(LogLevel::debug, text);
}
void LogInfo(std::string_view text) {
    Log(LogLevel::info, text);
}
void LogWarning(std::string_view text) {
    Log(LogLevel::warning, text);
}
void LogError(std::string_view text) {
    Log(LogLevel::error, text);
}

std::string_view displayName(LogLevel named) {
    switch (named) {
        case LogLevel::debug:
            return "DEBUG";
        case LogLevel::info:
            return "INFO";
        case LogLevel::warning:
            return "WARNING";
        case LogLevel::error:
            return "ERROR";
        default:
            return "OFF";
    }
}

std::string_view lowerCaseName(LogLevel named) {
    switch (named) {
        case LogLevel::debug:
            return "debug";
        case LogLevel::info:
            return "info";
        case LogLevel::warning:
            return "warning";
        case LogLevel::error:
            return "error";
        default:
            return "off";
    }
}

LogLevel currentLevel() {
    return level.load(std::memory_order_relaxed);
}

void setCurrentLevel(LogLevel newLevel) {
    level.store(newLevel, std::memory_order_relaxed);
}

void setLogDirectory(const fs::path& directory) {
    const std::lock_guard lock(place().mutex);
    place().directory = directory;
    if (!directory.empty()) platform::createDirectories(directory);
}

fs::path LogFilePath(const fs::path& fileName) {
    const std::lock_guard lock(place().mutex);
    return ResolveLogPath(place().directory, fileName);
}

bool IsLogFilePresent() {
    const std::lock_guard lock(place().mutex);
    const auto file = ResolveLogPath(place().directory, logFileName);
    std::error_code ignored;
    return !file.empty() && platform::pathKind(file, ignored) != platform::PathKind::missing;
}

fs::path ResolveLogPath(const fs::path& base, const fs::path& value) {
    const auto& text = value.native();
    if (text.empty()) return base;
    if (beginsWithDrive(text) || beginsWithServer(text)) return value;
    return base.empty() ? fs::path() : base / value;
}

}  // namespace logging
