#include "ui/upload_work.h"

#include "logging/log.h"
#include "platform/detached_thread.h"
#include "service/failure_message.h"
#include "ui/callback_guard.h"

#include <utility>

namespace ui {
namespace {

// One lock for all of it: nobody sees the last stage without its result.
void finish(ProgressState& state, pivra::UploadExecutionResult result) {
    const std::lock_guard lock(state.mutex);
    if (result.succeeded) state.stage = UploadStage::uploaded;
    state.result = std::move(result);
    state.terminal = true;
    state.finished = true;
}

void fail(ProgressState& state, const std::string& message) {
    pivra::UploadExecutionResult result;
    result.message = message;
    finish(state, std::move(result));
}

bool claimStart(ProgressState& state) {
    const std::lock_guard lock(state.mutex);
    return !std::exchange(state.started, true);
}

bool prepare(const UploadProgressRequest& request, ProgressState& state) {
    try {
        if (request.prepare) request.prepare();
    } catch (...) {
        const auto message = service::failureMessage(failedPreparation);
        logging::LogError("Upload preparation failed: " + message);
        fail(state, message);
        return false;
    }
    const std::lock_guard lock(state.mutex);
    state.stage = UploadStage::uploading;
    return true;
}

void failAfterExport(ProgressState& state) {
    logging::LogError("Upload failed after NX export completed: " + service::failureMessage(unknownError));
    fail(state, failedAfterExport);
}

void upload(const UploadProgressRequest& request, ProgressState& state) noexcept {
    try {
        finish(state, request.executeUpload());
    } catch (...) {
        failAfterExport(state);
    }
}

}  // namespace

void startUpload(const std::shared_ptr<const UploadProgressRequest>& request,
                 const std::shared_ptr<ProgressState>& state) noexcept {
    if (!claimStart(*state) || !prepare(*request, *state)) return;
    try {
        platform::runDetached([request, state] { upload(*request, *state); });
    } catch (...) {
        failAfterExport(*state);
    }
}

Progress lookAt(ProgressState& state) {
    const std::lock_guard lock(state.mutex);
    int unclaimed = 0;
    const bool completed = state.finished && state.completionClaimed.compare_exchange_strong(unclaimed, 1);
    return {completed, state.stage, state.terminal};
}

}  // namespace ui
