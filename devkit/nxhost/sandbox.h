// The folder in which one replay plays: the plug-in as it is deployed, the user's parts and folders, the service's
// data.
#pragma once

#include "replay.h"

#include <filesystem>
#include <string>
#include <vector>

namespace nxhost {

/// The built files that a sandbox gets copies of, unless a package is installed.
struct Product {
    std::filesystem::path plugin;
    std::filesystem::path application;  ///< the folder that ships beside the plug-in
    std::filesystem::path service;      ///< the native service library
    std::filesystem::path installed;    ///< folder of an installed package; empty for none
};

class Sandbox {
 public:
    /// Takes over `root`, which must be empty or not there. Temporary files go into `temp`, which several hosts may
    /// share, or into a folder of the sandbox's own when it is empty. Throws std::runtime_error.
    Sandbox(const std::filesystem::path& root, std::filesystem::path temp);

    /// Lays out what the replay needs, and points the process's environment into the sandbox. Throws
    /// std::runtime_error.
    void fill(const Replay& replay, const Product& product);

    const std::filesystem::path& root() const { return root_; }
    const std::filesystem::path& application() const { return application_; }
    std::filesystem::path parts() const { return root_ / "parts"; }
    const std::filesystem::path& plugin() const { return plugin_; }

    /// Writes `pivra.properties` from null, a text or an object. The address of the embedded service is added unless
    /// its key is there; "<sandbox>" stands for the sandbox's path.
    void writeProperties(const Json& properties) const;
    /// Replaces members of the service's description and writes it.
    void changeService(const Json& members);

    /// The file that a replay calls `name`: a path below the sandbox. Throws StepError for one that leaves it.
    std::filesystem::path inside(const std::string& name) const;

    /// Everything that lies in the sandbox's own temp/, by its path from there, in order.
    std::vector<std::string> temporaryFiles() const;

 private:
    void deploy(const Product& product);

    std::filesystem::path root_;
    std::filesystem::path temp_;
    std::filesystem::path application_;
    std::filesystem::path plugin_;
    Json service_ = Json::object();
};

}  // namespace nxhost
