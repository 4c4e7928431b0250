// Ties the dialogs to the session, the service and the exports.
#pragma once

#include "ui/main_dialog.h"
#include "ui/upload_progress_dialog.h"

#include <memory>

namespace entry {

ui::MainDialogActions mainDialogActions();

/// The upload that was accepted in `state`, whose `selectedWorkspaceId` is set.
std::shared_ptr<ui::UploadProgressRequest> uploadRequest(const ui::MainDialogState& state);

}  // namespace entry
