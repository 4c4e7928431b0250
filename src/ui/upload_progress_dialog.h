// The progress dialog: prepares the upload on the host's thread, uploads on a worker and shows the progress.
#pragma once

#include "export/model_metadata.h"
#include "service/upload_execution.h"

#include <cpp_piv/records.h>

#include <functional>
#include <memory>
#include <string>

namespace ui {

/// One accepted upload. Shared with the worker, which may outlive the dialog.
struct UploadProgressRequest {
    std::shared_ptr<pivra::ModelMetadata> metadata;
    cpp_piv::CppPivWorkspace workspace;
    std::string userEmail;
    std::function<void()> prepare;                                ///< host's thread; throws the text to show
    std::function<pivra::UploadExecutionResult()> executeUpload;  ///< worker thread
};

/// Shows "uploadProgress.dlx" modally, runs the upload meanwhile, and returns when it has closed: true when the user
/// asked to upload another file. Never waits for the worker. Host's thread. Throws nothing.
bool showUploadProgressDialog(const std::shared_ptr<UploadProgressRequest>& request) noexcept;

}  // namespace ui
