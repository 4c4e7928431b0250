// What the embedded service knows and how it misbehaves: the file service.json of its folder, written by whoever runs
// the service. README.md describes it.
#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>

namespace gopiv {

/// service.json, with a sample user and a sample workspace where it has none.
struct ServiceData {
    nlohmann::json user;
    nlohmann::json workspaces;  ///< array; each has an integer "id"
    nlohmann::json revisions;   ///< array of revisions that no upload made, as RevisionStore keeps them
    bool logoutAddress = true;
    nlohmann::json misbehave;

    /// How the `number`th call of `operation` misbehaves: an object, empty when it behaves.
    nlohmann::json misbehaviour(const std::string& operation, int number) const;
    /// The first workspace with that id. Throws Refusal when there is none.
    const nlohmann::json& workspace(std::int64_t id) const;
};

/// Id of a workspace's root directory.
std::int64_t rootDirectoryId(const nlohmann::json& workspace);

/// Reads the file afresh. Throws Refusal that names what is wrong with it; a missing file is no error.
ServiceData readServiceData(const std::filesystem::path& folder);

}  // namespace gopiv
