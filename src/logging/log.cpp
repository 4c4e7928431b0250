#include "logging/log.h"

#include "platform/calendar.h"
#include "platform/files.h"
#include "platform/text.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <mutex>
#include <optional>
#include <system_error>
#include <utility>

namespace logging {
namespace fs = std::filesystem;

// Read without a lock: other threads see a new level at their next line.
constinit std::atomic<LogLevel> activeLevel{LogLevel::info};

namespace {

struct LogPlace {
    std::mutex mutex;
    fs::path file;  // in the log directory; empty while there is none
    std::string stamp;
    std::optional<std::time_t> stampedSecond;  // the stamp's; none before the first line
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

/// `second` as "2026-01-31 08:15:00 +0100".
std::string localTimestamp(std::time_t second) {
    const auto local = platform::localCalendarTime(std::chrono::system_clock::from_time_t(second));
    char date[32];
    std::strftime(date, sizeof date, "%Y-%m-%d %H:%M:%S", &local.fields);
    const int minutes = std::abs(local.offsetMinutes);
    char stamp[48];
    std::snprintf(stamp, sizeof stamp, "%s %c%02d%02d", date, local.offsetMinutes < 0 ? '-' : '+', minutes / 60,
                  minutes % 60);
    return stamp;
}

/// The present second; a change of the time zone shows in the next one. Call with the mutex held.
const std::string& currentStamp(LogPlace& log) {
    const std::time_t second = std::time(nullptr);
    if (second != log.stampedSecond) {
        log.stamp = localTimestamp(second);
        log.stampedSecond = second;
    }
    return log.stamp;
}

void appendValue(std::string& line, std::string_view text) {
    line += text;
}

void appendValue(std::string& line, Field::Quoted value) {
    line += '"';
    line += value.text;
    line += '"';
}

void appendValue(std::string& line, std::int64_t number) {
    line += std::to_string(number);
}

void appendValue(std::string& line, double value) {
    constexpr int significantDigits = 6;
    const int magnitude = value == 0 ? 0 : static_cast<int>(std::floor(std::log10(std::abs(value))));
    const int decimals = std::clamp(significantDigits - 1 - magnitude, 0, 30);
    auto text = platform::decimalText(value, decimals);
    if (decimals > 0) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.ends_with('.')) text.pop_back();
    }
    line += text;
}

void appendFields(std::string& line, std::initializer_list<Field> fields) {
    for (const Field& field : fields) {
        if (!field.name.empty()) ((line += ' ') += field.name) += '=';
        std::visit([&](auto value) { appendValue(line, value); }, field.value);
    }
    if (fields.size() > 0) line += '.';
}

std::string formatLine(std::string_view stamp, LogLevel level, std::string_view head,
                       std::initializer_list<Field> fields) {
    constexpr std::size_t usualLength = 500;
    std::string line;
    line.reserve(usualLength);
    ((line += '[') += stamp) += "] [";
    (line += displayName(level)) += "] ";
    if (!head.starts_with("[cpp-piv]")) line += "[Pivra] ";
    line += head;
    appendFields(line, fields);
    line = platform::oneLine(std::move(line));
    return line += "\r\n";
}

/// A line that could be written in part, because the disk is full, is not written again.
void appendLine(const fs::path& file, const std::string& line) {
    if (file.empty() || platform::appendToFile(file, line)) return;
    std::error_code error;
    const auto directory = file.parent_path();
    const bool isMissing = platform::pathKind(directory, error) == platform::PathKind::missing && !error;
    if (isMissing && !platform::createDirectories(directory)) platform::appendToFile(file, line);
}

}  // namespace

void logUnfiltered(LogLevel level, std::string_view head, std::initializer_list<Field> fields) {
    auto& log = place();
    const std::lock_guard lock(log.mutex);
    try {
        appendLine(log.file, formatLine(currentStamp(log), level, head, fields));
    } catch (const std::exception&) {
        // The line is lost: callers could do nothing about it.
    }
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

void setCurrentLevel(LogLevel level) {
    activeLevel.store(level, std::memory_order_relaxed);
}

void setLogDirectory(const fs::path& directory) {
    auto& log = place();
    const std::lock_guard lock(log.mutex);
    log.file = ResolveLogPath(directory, logFileName);
    log.stampedSecond.reset();
    if (!directory.empty()) platform::createDirectories(directory);
}

fs::path LogFilePath(const fs::path& fileName) {
    const std::lock_guard lock(place().mutex);
    return ResolveLogPath(place().file.parent_path(), fileName);
}

bool IsLogFilePresent() {
    const std::lock_guard lock(place().mutex);
    const auto& file = place().file;
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
