#include "service/workspaces.h"

#include "platform/error_text.h"
#include "platform/text.h"

#include <algorithm>

namespace pivra {

namespace {

constexpr const char* noToken =
    "No Pivra auth token is available to load workspaces. Sign out, sign in again, and reopen the Pivra dialog.";
constexpr const char* notConfigured =
    "The Pivra workspace client is not configured. NX could not request the workspace list from Pivra.";
constexpr const char* failedWithoutDetails =
    "Workspace fetch failed before Pivra returned details. Sign in again or try reopening the Pivra dialog.";

}  // namespace

WorkspaceLoadResult loadWorkspaces(const auth::AuthSession& session, const WorkspaceServiceCallbacks& callbacks) {
    WorkspaceLoadResult result;
    try {
        const std::string token = session.accessToken();
        if (token.empty()) {
            result.message = noToken;
        } else if (!callbacks.listWorkspaces) {
            result.message = notConfigured;
        } else {
            result.workspaces = callbacks.listWorkspaces(token, {});
            result.succeeded = true;
        }
    } catch (...) {
        result.message = platform::currentErrorText(failedWithoutDetails);
    }
    return result;
}

std::optional<cpp_piv::CppPivWorkspace> findWorkspaceById(const std::vector<cpp_piv::CppPivWorkspace>& workspaces,
                                                          std::int64_t identifier) {
    const auto found = std::find_if(workspaces.begin(), workspaces.end(),
                                    [identifier](const auto& workspace) { return workspace.id == identifier; });
    if (found == workspaces.end()) return std::nullopt;
    return *found;
}

std::string workspaceLabel(const std::string& name) {
    return name.empty() ? "(unnamed workspace)" : platform::oneLine(name);
}

RevisionLookupResult lookupRevision(std::int64_t selectedIdentifier,
                                    const std::vector<cpp_piv::CppPivWorkspace>& workspaces,
                                    const auth::AuthSession& session, const ModelMetadata& metadata,
                                    const WorkspaceServiceCallbacks& callbacks) {
    RevisionLookupResult result;
    try {
        const auto workspace = findWorkspaceById(workspaces, selectedIdentifier);
        if (!workspace) return result;
        result.lookedUp = true;
        const std::string token = session.accessToken();
        if (token.empty() || !callbacks.findRevision) return result;
        result.lookupKey = revisionLookupKey(metadata);
        const auto revisions = callbacks.findRevision(token, workspace->id, result.lookupKey, sourceVersion,
                                                      metadata.revision, {}, false, true, metadata.isAssembly, true);
        result.matchesLatest = !revisions.empty();
    } catch (...) {
        result.message = platform::currentErrorText("Revision lookup failed.");
    }
    return result;
}

std::string revisionLookupKey(const std::string& sourceFileId, const std::string& fileName, bool isPartFamily) {
    if (!isPartFamily || sourceFileId.empty()) return sourceFileId;
    const std::string stem = platform::fileStem(fileName);
    const std::string suffix = "_" + stem;
    return stem.empty() || sourceFileId.ends_with(suffix) ? sourceFileId : sourceFileId + suffix;
}

std::string revisionLookupKey(const ModelMetadata& metadata) {
    return revisionLookupKey(metadata.sourceFileId, metadata.fileName, metadata.isPartFamily);
}

}  // namespace pivra
