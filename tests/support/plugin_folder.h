// A folder of its own for each test, standing in for the one that holds the plug-in.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace test_support {

/// Makes a fresh temporary folder, names it to the plug-in as its module's folder, and points `LOCALAPPDATA` and the
/// user's temporary folder into it. On destruction everything is removed, and the log, the settings, the module's name
/// and the variables are as before the first one.
class PluginFolder {
 public:
    PluginFolder();
    ~PluginFolder();
    PluginFolder(const PluginFolder&) = delete;
    PluginFolder& operator=(const PluginFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    /// Where the user's temporary files go: an existing folder.
    std::filesystem::path temp() const { return path_ / "temp"; }
    std::filesystem::path localAppData() const { return path_ / "local"; }

    /// Writes `pivra.properties` beside the module.
    void writeProperties(const std::string& text) const;
    /// Writes `pivra.properties` with `extra` and a log directory "logs" at level debug, and applies the log settings.
    void startLogging(const std::string& extra = "") const;
    /// The lines of the log under "logs" without their time: "[INFO] [Pivra] text".
    std::vector<std::string> logLines() const;
    /// Creates `name` in the folder with `content`, and its parents; returns its full path.
    std::filesystem::path writeFile(const std::filesystem::path& name, const std::string& content) const;

 private:
    std::filesystem::path path_;
    std::vector<std::filesystem::path> outer_;  ///< the variables' values outside
};

/// Sets, or with an empty value removes, an environment variable as the platform reads it.
void setEnvironment(const char* name, const std::filesystem::path& value);

/// Makes platform::moduleFileName() answer `file`; an empty path makes it fail as when the module cannot be resolved.
void setModuleFileName(const std::filesystem::path& file);

/// How much a test does: `usual`, or under `./dev test load`, which sets PIVRA_LOAD, `full`.
inline std::size_t underLoad(std::size_t usual, std::size_t full) {
    return std::getenv("PIVRA_LOAD") != nullptr ? full : usual;
}

/// The bytes of `file`; empty when it cannot be read.
std::string readFile(const std::filesystem::path& file);

}  // namespace test_support
