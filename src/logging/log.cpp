#include "logging/log.h"

#include "platform/calendar.h"
#include "platform/files.h"
#include "platform/text.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <system_error>

namespace logging {
namespace fs = std::filesystem;

namespace {

// Read without a lock: other threads see a new level at their next line.
std::atomic<LogLevel> level{LogLevel::info};

struct LogPlace {
    std::mutex mutex;
    fs::path directory;
};

// Never destroyed: a worker may log while the process exits.
LogPlace& place() {
    static LogPlace& instance = *new LogPlace;
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
    line += platform::oneLine(text);
    return line += "\r\n";
}

/// Call with the mutex held.
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
        // The line is lost: callers could do nothing about it.
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

std::string lowerCaseName(LogLevel named) {
    return platform::toLower(displayName(named));
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

LogLine& LogLine::quoted(std::string_view name, std::string_view value) {
    return plain(name, '"' + std::string(value) + '"');
}

LogLine& LogLine::plain(std::string_view name, std::string_view value) {
    text_ += ' ';
    text_ += name;
    text_ += '=';
    text_ += value;
    return *this;
}

LogLine& LogLine::flag(std::string_view name, bool value) {
    return plain(name, value ? "true" : "false");
}

LogLine& LogLine::decimal(std::string_view name, double value) {
    constexpr int significantDigits = 6;
    const int magnitude = value == 0 ? 0 : static_cast<int>(std::floor(std::log10(std::abs(value))));
    const int decimals = std::clamp(significantDigits - 1 - magnitude, 0, 30);
    auto text = platform::decimalText(value, decimals);
    if (decimals > 0) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.ends_with('.')) text.pop_back();
    }
    return plain(name, text);
}

std::string LogLine::text(std::string_view end) const {
    return text_ + std::string(end);
}

}  // namespace logging
