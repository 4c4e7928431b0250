// What the embedded service knows and how it misbehaves: the file service.json of its folder, written by whoever runs
// the service. README.md describes it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <limits>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace gopiv {

struct Workspace {
    std::int64_t id = 0;
    std::string name;
    std::int64_t rootDirectoryId = 0;
    nlohmann::json record;  ///< all members
};

/// How one call, or each call, of an operation misbehaves.
struct Misbehaviour {
    std::int64_t call = -1;  ///< from 1; -1: each
    nlohmann::json error;    ///< null: none
    bool emptyError = false;
    std::int64_t delayMs = 0;
    bool disconnect = false;
    bool emptyAddress = false;
    std::string address;  ///< instead of the one to open; none when empty
    bool emptyToken = false;
    std::vector<std::string> errors;
    bool omitLink = false;
    bool wrongLink = false;
    std::size_t partial = std::numeric_limits<std::size_t>::max();
};

/// service.json, with a sample user and a sample workspace where it has none.
struct ServiceData {
    nlohmann::json user;
    std::vector<Workspace> workspaces;
    nlohmann::json revisions;  ///< array of revisions that no upload made, in the form of RevisionStore
    bool logoutAddress = true;
    std::map<std::string, std::vector<Misbehaviour>> misbehave;  ///< by operation

    /// How the `number`th call of `operation` misbehaves.
    Misbehaviour misbehaviour(const std::string& operation, int number) const;
    /// The first workspace with that id. Throws Refusal when there is none.
    const Workspace& workspace(std::int64_t id) const;
};

/// Reads the file afresh. Throws Refusal that names what is wrong with it; a missing file is no error.
ServiceData readServiceData(const std::filesystem::path& folder);

}  // namespace gopiv
