// The command line.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace nxhost {

struct Options {
    bool stable = false;       ///< placeholders for what differs from run to run
    bool keep = false;         ///< sandboxes stay
    bool exportCheck = false;  ///< only list what the plug-in exports
    std::size_t fault = 0;     ///< number of the host's call that fails; 0 for none
    bool nullFault = false;    ///< it returns null where it can
    bool times = false;        ///< report how long the plug-in took to show each dialog
    bool recover = false;      ///< after the replay, whatever failed in it, a user uploads once more
    bool interactive = false;  ///< a person uses the plug-in; the one file's steps are left out
    std::filesystem::path sandbox;
    std::filesystem::path temp;  ///< folder for temporary files; empty: the sandbox's own
    std::filesystem::path pictures;
    std::filesystem::path plugin;
    std::filesystem::path application;
    std::filesystem::path installed;  ///< folder of an installed package, run from where it lies; empty: what was built
    std::filesystem::path browser;    ///< program that is given each opened address; empty starts none
    std::vector<std::string> files;   ///< as written
};

/// Reads the command line; what it leaves out is what was built and what ships. Throws std::invalid_argument with what
/// is wrong and how to use the program.
Options readOptions(std::vector<std::string> arguments, const std::filesystem::path& programFolder);

}  // namespace nxhost
