// The folder in which one replay plays: the plug-in as it is deployed, the user's parts and folders, the service's
// data.
#pragma once

#include "options.h"
#include "replay.h"

#include <filesystem>
#include <string>
#include <vector>

namespace nxhost {

class Sandbox {
 public:
    /// Uses the folder `root`, which must be empty or not exist. Temporary files go into `temp`, which several hosts
    /// may share, or into a folder of the sandbox's own when it is empty. Throws std::runtime_error.
    Sandbox(const std::filesystem::path& root, std::filesystem::path temp);

    /// Writes the files that the replay needs, and points the process's environment into the sandbox. Throws
    /// std::runtime_error.
    void fill(const Replay& replay, const Options& options);

    const std::filesystem::path& root() const { return root_; }
    const std::filesystem::path& application() const { return application_; }
    std::filesystem::path parts() const { return root_ / "parts"; }
    const std::filesystem::path& plugin() const { return plugin_; }

    /// Writes `pivra.properties` from null, a text or an object. The address of the embedded service is added unless
    /// its key is there; "<sandbox>" stands for the sandbox's path.
    void writeProperties(const Json& properties) const;
    /// Replaces members of the service's description and writes it.
    void changeService(const Json& members);

    /// The file that a replay calls `name`: a path below the sandbox. Throws std::runtime_error for one that leaves it.
    std::filesystem::path inside(const std::string& name) const;

    /// All files and folders in the sandbox's own temp/, by their paths from there, sorted.
    std::vector<std::string> temporaryFiles() const;

 private:
    void deploy(const Options& options);

    std::filesystem::path root_;
    std::filesystem::path temp_;
    std::filesystem::path application_;
    std::filesystem::path plugin_;
    Json service_ = Json::object();
};

}  // namespace nxhost
