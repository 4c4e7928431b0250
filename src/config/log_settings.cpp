#include "config/log_settings.h"

#include "config/properties.h"
#include "logging/log.h"
#include "platform/environment.h"
#include "platform/text.h"
#include "platform/text_encoding.h"

#include <map>
#include <optional>
#include <string_view>

namespace config {
namespace {

using logging::LogLevel;

std::optional<LogLevel> levelNamed(const std::string& name) {
    static const std::map<std::string_view, LogLevel> levels{
        {"debug", LogLevel::debug},  {"info", LogLevel::info},   {"warning", LogLevel::warning},
        {"warn", LogLevel::warning}, {"error", LogLevel::error}, {"off", LogLevel::off},
        {"none", LogLevel::off},     {"disabled", LogLevel::off}};
    const auto found = levels.find(name);
    return found == levels.end() ? std::nullopt : std::optional(found->second);
}

std::filesystem::path propertiesDirectory() {
    return PropertiesFilePath().parent_path();
}

std::filesystem::path defaultLogDirectory() {
    const auto local = platform::environmentPath("LOCALAPPDATA");
    return local && !local->empty() ? *local / "Pivra" / "NX" / "logs" : propertiesDirectory();
}

}  // namespace

std::filesystem::path logDirectory() {
    const auto value = platform::Trim(GetProperty("pivra_nx_log_directory"));
    const auto base = value.empty() ? defaultLogDirectory() : propertiesDirectory();
    return logging::ResolveLogPath(base, platform::pathFromUtf8(value));
}

void applyLogLevel(const std::string& key, const std::string& value) {
    const auto level = value.empty() ? LogLevel::info : levelNamed(platform::toLower(platform::Trim(value)));
    if (!level) {
        logging::logUnfiltered(LogLevel::warning, "pivra.properties: unrecognized value for " +
                                                      (key.empty() ? "log_level" : key) + ": \"" + value +
                                                      "\"; ignoring.");
        return;
    }
    const auto previous = logging::currentLevel();
    logging::setCurrentLevel(*level);
    if (*level == LogLevel::off || (*level == previous && logging::IsLogFilePresent())) return;
    logging::logUnfiltered(LogLevel::info, "Log level set to " + std::string(logging::displayName(*level)) +
                                               (value.empty() ? " (default)" : " (properties)"));
}

void ApplyLogSettings() {
    LoadProperties();
    logging::setLogDirectory(logDirectory());
    applyLogLevel("pivra_nx_log_level", GetProperty("pivra_nx_log_level"));
}

}  // namespace config
