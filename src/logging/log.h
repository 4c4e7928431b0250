// The plug-in's log: one text file, opened and closed for each line, shared by the host's thread and the workers.
//
// Logging never fails a caller and never shows anything. Lines logged before the first setLogDirectory() are lost.
#pragma once

#include <atomic>
#include <concepts>
#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace logging {

/// A line is written when its level is at least the current one and the current one is not off.
enum class LogLevel : std::int32_t { debug = 0, info = 1, warning = 2, error = 3, off = 4 };

/// Name of the plug-in's log file in the log directory.
inline constexpr const char* logFileName = "pivra-integration.log";

/// The current level; info at first. Any thread.
extern constinit std::atomic<LogLevel> activeLevel;
inline LogLevel currentLevel() {
    return activeLevel.load(std::memory_order_relaxed);
}
void setCurrentLevel(LogLevel level);

/// Whether a line of `level` is written. Any thread.
inline bool isLogged(LogLevel level) {
    const auto current = currentLevel();
    return current != LogLevel::off && level >= current;
}

/// What a line says of one thing: " name=value", or the value alone where the name is empty. Made by the functions
/// below, in the call that logs it: it refers to its texts and has none of its own.
struct Field {
    struct Quoted {
        std::string_view text;
    };
    std::string_view name;
    std::variant<std::string_view, Quoted, std::int64_t, double> value;
};

inline Field quoted(std::string_view name, std::string_view value) {
    return {name, Field::Quoted{value}};
}
inline Field plain(std::string_view name, std::string_view value) {
    return {name, value};
}
/// True or false.
inline Field flag(std::string_view name, bool value) {
    return {name, value ? std::string_view("true") : std::string_view("false")};
}
inline Field number(std::string_view name, std::integral auto value) {
    return {name, static_cast<std::int64_t>(value)};
}
/// A plain decimal number, however small: up to six significant digits, no trailing zeros, no exponent.
inline Field decimal(std::string_view name, double value) {
    return {name, value};
}
/// Nothing when there is no value.
inline Field quotedIfAny(std::string_view name, const std::optional<std::string>& value) {
    return value ? quoted(name, *value) : Field{};
}
/// `text` as it is, behind the field before it.
inline Field remark(std::string_view text) {
    return {{}, text};
}

/// Writes one line whatever the current level is: `head`, then `fields`, if any, and a full stop behind them. The text
/// goes out byte by byte, UTF-8 is expected, but for control characters: a name that holds a line break must not look
/// like a line of its own (platform::oneLine()). Unless `head` begins with "[cpp-piv]", "[Pivra] " is put before it.
/// Any thread; never throws.
void logUnfiltered(LogLevel level, std::string_view head, std::initializer_list<Field> fields = {});

/// Writes the line if its level is logged; otherwise the call costs no more than that question.
///
/// Example: LogInfo("Preparing NX upload files:", quoted("part", label), flag("drawing", false))
/// gives: Preparing NX upload files: part="bolt" drawing=false.
inline void Log(LogLevel level, std::string_view head, const std::same_as<Field> auto&... fields) {
    if (isLogged(level)) logUnfiltered(level, head, {fields...});
}
inline void LogDebug(std::string_view head, const std::same_as<Field> auto&... fields) {
    Log(LogLevel::debug, head, fields...);
}
inline void LogInfo(std::string_view head, const std::same_as<Field> auto&... fields) {
    Log(LogLevel::info, head, fields...);
}
inline void LogWarning(std::string_view head, const std::same_as<Field> auto&... fields) {
    Log(LogLevel::warning, head, fields...);
}
inline void LogError(std::string_view head, const std::same_as<Field> auto&... fields) {
    Log(LogLevel::error, head, fields...);
}

/// Writes the line that `build` returns, which is asked only if its level is logged; when memory runs out, the line is
/// lost. For functions that must not throw.
template <typename Build>
void logBuilt(LogLevel level, Build build) noexcept {
    try {
        if (isLogged(level)) logUnfiltered(level, build());
    } catch (...) {
        // The line is lost: callers could do nothing about it.
    }
}

/// "DEBUG", "INFO", "WARNING", "ERROR", and "OFF" for any other value.
std::string_view displayName(LogLevel level);
/// "debug", "info", "warning", "error", and "off" for any other value: the form that the client library takes.
std::string lowerCaseName(LogLevel level);

/// Sets the log directory and creates it with its parents when it is not empty, ignoring every error. Any thread.
/// A directory that is missing later is created again for the next line.
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
