// The revisions in the folder of the embedded service; README.md describes the folder. Ids are consecutive: programs
// and clients may share a folder, and whoever makes a revision's folder has its id.
#pragma once

#include <cstdint>
#include <filesystem>
#include <nlohmann/json.hpp>

namespace gopiv {

/// Any thread. Throws std::exception when the folder cannot be read or written.
class RevisionStore {
 public:
    explicit RevisionStore(std::filesystem::path folder) : folder_(std::move(folder)) {}

    /// The descriptions of `earlier` revisions and then of all uploaded ones, oldest first.
    nlohmann::json revisions(nlohmann::json earlier) const;

    /// Takes the next revision's id, and makes its folder.
    std::int64_t reserve() const;

    /// Copies the local file "path" of `file` (an entry of an upload) into the folder of revision `id`. Returns its
    /// description: "name", "storedAs", "fileId", "revision", "size", "sha256". A name that the revision has already is
    /// kept in a folder of its own below it. Throws Refusal for a file that cannot be read and for a name that is none.
    nlohmann::json storeFile(std::int64_t id, const nlohmann::json& file) const;

    /// Makes the revision known, with this description.
    void commit(const nlohmann::json& revision) const;

 private:
    std::filesystem::path revisionFolder(std::int64_t id) const;

    std::filesystem::path folder_;
};

}  // namespace gopiv
