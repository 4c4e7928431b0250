// The work behind the progress dialog, and the state in which the two threads meet.
#pragma once

#include "service/upload_execution.h"
#include "ui/progress_text.h"
#include "ui/upload_progress_dialog.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <string>

namespace ui {

/// How one upload goes. Shared by the host's thread and the worker, which may outlive the dialog. `mutex` guards every
/// other member but the atomic one.
struct ProgressState {
    std::mutex mutex;
    bool started = false;
    UploadStage stage = UploadStage::preparing;
    bool terminal = false;  ///< nothing will change any more
    bool finished = false;  ///< `result` is there
    std::atomic<int> completionClaimed{0};
    bool uploadAnother = false;
    std::string completionTime;
    pivra::UploadExecutionResult result;
};

/// Prepares on this thread, the host's, and then starts the upload on a detached one, which logs how the upload ended
/// before the state says so. Does nothing when it was called for this state before. A failed preparation ends the work:
/// nothing is uploaded.
void startUpload(const std::shared_ptr<const UploadProgressRequest>& request,
                 const std::shared_ptr<ProgressState>& state) noexcept;

/// What one look at the state finds.
struct Progress {
    bool completed = false;  ///< true once for each state: the work has finished and the caller handles its result
    UploadStage stage = UploadStage::preparing;
    bool terminal = false;
};

/// Looks at the state and claims its completion, in one step: a state seen as terminal has been claimed. Host's thread.
Progress lookAt(ProgressState& state);

}  // namespace ui
