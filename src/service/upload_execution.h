// Sends a prepared model to a workspace.
#pragma once

#include "export/model_metadata.h"
#include "service/auth_session.h"
#include "service/workspaces.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace pivra {

/// Outcome of one upload.
struct UploadExecutionResult {
    bool attempted = false;  ///< the selected workspace was found
    bool succeeded = false;  ///< the service reported no error
    std::int64_t workspaceId = 0;
    std::int64_t rootDirectory = 0;
    std::map<std::string, std::string> responseEntries;
    std::vector<std::string> errors;
    std::string message;  ///< for the user, when the upload did not succeed
};

/// The files that an upload of `metadata` sends, in order. The collected files stand as they were collected, each under
/// its own revisionLookupKey(), the root under the one that the dialogs ask for; an entry's path may be empty. Without
/// them the exported file is sent alone and under its own name: a drawing is sent as its PDF. An assembly is never sent
/// without its collected files: its root alone would look like the whole.
std::vector<cpp_piv::CppPivUploadFile> filesToSend(const ModelMetadata& metadata);

/// Checks that everything is in place and uploads into the workspace's root directory. Worker thread: waits for the
/// service, touches nothing of the host. Never throws; nothing is asked of the service after a failed check.
UploadExecutionResult executeUpload(std::int64_t workspaceId, const std::vector<cpp_piv::CppPivWorkspace>& workspaces,
                                    const auth::AuthSession& session, const ModelMetadata& metadata,
                                    const WorkspaceServiceCallbacks& callbacks);

}  // namespace pivra
