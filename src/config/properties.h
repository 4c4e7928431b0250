// The settings file `pivra.properties`, kept beside the plug-in's own file.
//
// One setting a line, "key = value"; "#" and "!" begin a comment line. Settings never fail: a missing file, a malformed
// line or an unknown key leaves the defaults. docs/settings.md lists the keys.
//
// The table has no lock: it is replaced on the host's thread at the start of each run, and every read takes a copy.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>

namespace config {

/// Settings as read, bytes without conversion, ordered by key.
using PropertiesTable = std::map<std::string, std::string>;

/// Full name of `pivra.properties` in the module's folder; the bare name, resolved against the process's current
/// directory, when the module's folder cannot be found. Never throws for that reason. Any thread.
std::filesystem::path PropertiesFilePath();

/// Reads the file again and replaces the process-wide table, with an empty one when there is no readable file. Returns
/// whether a file was read. Host's thread, or the thread that creates the service client.
bool LoadProperties();

/// Value of `key`, matched exactly; empty when absent.
std::string GetProperty(const std::string& key);

/// Reads a boolean setting: "1", "true", "yes", "on", "enabled" and "0", "false", "no", "off", "disabled" in any case.
/// An empty value gives `defaultValue` silently; anything else gives it after one warning line in the log.
bool ParseBooleanSetting(const std::string& key, const std::string& value, bool defaultValue);

/// Parses the file's text; a leading UTF-8 byte-order mark is passed over, and the last of several equal keys wins.
PropertiesTable parseProperties(std::string_view text);

}  // namespace config
