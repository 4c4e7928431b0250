// The progress dialog: prepares on the host's thread, uploads on a worker, shows how it goes.
#pragma once

#include "export/model_metadata.h"
#include "service/upload_execution.h"

#include <cpp_piv/records.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace ui {

/// One accepted upload. Shared with the worker, which may outlive the dialog.
struct UploadProgressRequest {
    std::shared_ptr<pivra::ModelMetadata> metadata;
    std::shared_ptr<const std::vector<cpp_piv::CppPivWorkspace>> workspaces;
    std::int64_t workspaceId = 0;
    std::string workspaceName;  ///< label of the workspace; empty when it is not in the list
    std::string userEmail;
    std::function<void()> prepare;                                ///< host's thread; throws the text to show
    std::function<pivra::UploadExecutionResult()> executeUpload;  ///< worker thread
};

/// Shows "uploadProgress.dlx" modally, runs the upload meanwhile, and returns when it has closed: true when the user
/// asked to upload another file. The worker is never waited for. Host's thread. Throws nothing.
bool showUploadProgressDialog(const std::shared_ptr<UploadProgressRequest>& request) noexcept;

}  // namespace ui
