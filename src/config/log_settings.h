// Applies the log settings of `pivra.properties` to the logger. It lives here and not with the logger because it needs
// both, and the settings themselves write log lines.
#pragma once

#include <filesystem>
#include <string>

namespace config {

/// Reads the properties file again, sets and creates the log directory, and sets the level. Called at the start of each
/// run and before the service client is built. Never throws for settings that make no sense. Host's thread, or the
/// thread that creates the service client.
void ApplyLogSettings();

/// The log directory by the properties that were loaded last, a relative one in the folder of their file. Without the
/// setting `%LOCALAPPDATA%\Pivra\NX\logs`, or the folder of the properties file when that variable is unset or empty.
std::filesystem::path logDirectory();

/// Applies one level setting; `key` may be empty and then shows as "log_level" in the warning.
void applyLogLevel(const std::string& key, const std::string& value);

}  // namespace config
