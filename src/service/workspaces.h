// The user's workspaces, and whether the latest revision of a file is already in one.
//
// Host's thread: both operations wait for the service. Neither throws.
#pragma once

#include "export/model_metadata.h"
#include "service/auth_session.h"

#include <cpp_piv/records.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace pivra {

/// The version that the service gets for every source file. Revisions, not versions, tell the states of a file apart.
inline constexpr const char* sourceVersion = "1";

/// What workspaces and uploads need of the service; any may be missing.
struct WorkspaceServiceCallbacks {
    std::function<std::vector<cpp_piv::CppPivWorkspace>(const std::string&, const std::string&)> listWorkspaces;
    std::function<std::vector<cpp_piv::CppPivFindRevisionResult>(const std::string&, std::int64_t, const std::string&,
                                                                 const std::string&, const std::string&,
                                                                 const std::string&, bool, bool, bool, bool)>
        findRevision;
    std::function<cpp_piv::CppPivDirectory(const std::string&, std::int64_t)> rootDirectory;
    std::function<cpp_piv::CppPivUploadResult(const std::string&, const cpp_piv::CppPivUploadPayload&, bool)> upload;
};

struct WorkspaceLoadResult {
    bool succeeded = false;
    std::vector<cpp_piv::CppPivWorkspace> workspaces;  ///< in the service's order
    std::string message;                               ///< for the user; empty on success
};

struct RevisionLookupResult {
    bool lookedUp = false;       ///< the selected workspace was found
    bool matchesLatest = false;  ///< the service knows this revision of the file
    std::string lookupKey;       ///< the file identifier that was asked for
    std::string message;         ///< why the lookup failed; empty otherwise
};

WorkspaceLoadResult loadWorkspaces(const auth::AuthSession& session, const WorkspaceServiceCallbacks& callbacks);

/// A copy of the first workspace with that identifier.
std::optional<cpp_piv::CppPivWorkspace> findWorkspaceById(const std::vector<cpp_piv::CppPivWorkspace>& workspaces,
                                                          std::int64_t identifier);

/// `name` on one line, or a stand-in for an empty one.
std::string workspaceLabel(const std::string& name);

RevisionLookupResult lookupRevision(std::int64_t selectedIdentifier,
                                    const std::vector<cpp_piv::CppPivWorkspace>& workspaces,
                                    const auth::AuthSession& session, const ModelMetadata& metadata,
                                    const WorkspaceServiceCallbacks& callbacks);

/// The identifier under which the service keeps a file: `sourceFileId`, and for a member of a part family the stem of
/// `fileName` behind it, so that each member is a file of its own wherever it is sent from.
std::string revisionLookupKey(const std::string& sourceFileId, const std::string& fileName, bool isPartFamily);
/// That of the displayed part.
std::string revisionLookupKey(const ModelMetadata& metadata);

}  // namespace pivra
