// The work behind the progress dialog, and the state in which the two threads meet.
#pragma once

#include "service/upload_execution.h"
#include "ui/dialog_text.h"
#include "ui/upload_progress_dialog.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <string>

namespace ui {

/// The progress of one upload. Shared by the host's thread and the worker, which may outlive the dialog. `mutex` guards
/// every other member but the atomic one.
struct ProgressState {
    std::mutex mutex;
    bool started = false;
    UploadStage stage = UploadStage::preparing;
    bool terminal = false;  ///< nothing will change any more
    bool finished = false;  ///< `result` is there
    std::atomic<bool> completionClaimed{false};
    bool uploadAnother = false;
    pivra::UploadExecutionResult result;
};

/// Prepares on this thread, the host's, and then starts the upload on a detached one, which logs how the upload ended
/// before the state says so. Does nothing when it was called for this state before. A failed preparation ends the work:
/// nothing is uploaded.
void startUpload(const std::shared_ptr<const UploadProgressRequest>& request,
                 const std::shared_ptr<ProgressState>& state) noexcept;

/// The state at one poll.
struct ProgressSnapshot {
    bool completed = false;  ///< true once for each state: the work has finished and the caller handles its result
    UploadStage stage = UploadStage::preparing;
    bool terminal = false;
};

/// Reads the state and claims its completion in one step: a state read as terminal has been claimed. Host's thread.
ProgressSnapshot pollProgress(ProgressState& state);

}  // namespace ui
