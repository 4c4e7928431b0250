// The command line.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace nxhost {

struct Options {
    bool stable = false;       ///< placeholders for what differs from run to run
    bool keep = false;         ///< sandboxes stay
    bool exportCheck = false;  ///< only list what the plug-in exports
    std::filesystem::path sandbox;
    std::filesystem::path pictures;
    std::filesystem::path plugin;
    std::filesystem::path application;
    std::vector<std::filesystem::path> files;
};

extern const char* const usage;

/// Reads the command line; what it leaves out is what was built and what ships. Throws std::invalid_argument.
Options readOptions(const std::vector<std::string>& arguments, const std::filesystem::path& programFolder);

}  // namespace nxhost
