#include "ui/upload_work.h"

#include "logging/log.h"
#include "platform/error_text.h"
#include "platform/thread.h"
#include "ui/message_box.h"

#include <utility>

namespace ui {
namespace {

// Under one lock, so that nobody sees the last stage without its result.
void finish(ProgressState& state, pivra::UploadExecutionResult result) {
    const std::lock_guard lock(state.mutex);
    if (result.succeeded) state.stage = UploadStage::uploaded;
    state.result = std::move(result);
    state.terminal = true;
    state.finished = true;
}

/// Ends the work with the text that `message` returns. When memory runs out, the dialog shows its fixed sentence.
template <typename Message>
void fail(ProgressState& state, Message message) noexcept {
    pivra::UploadExecutionResult result;
    try {
        result.message = message();
    } catch (...) {
        // Out of memory: the message stays empty.
    }
    finish(state, std::move(result));
}

bool claimStart(ProgressState& state) {
    const std::lock_guard lock(state.mutex);
    return !std::exchange(state.started, true);
}

bool prepare(const UploadProgressRequest& request, ProgressState& state) noexcept {
    try {
        if (request.prepare) request.prepare();
    } catch (...) {
        fail(state, [] {
            auto message = platform::currentErrorText(failedPreparation);
            logging::LogError("Upload preparation failed: " + message);
            return message;
        });
        return false;
    }
    const std::lock_guard lock(state.mutex);
    state.stage = UploadStage::uploading;
    return true;
}

/// Ends the work after an exception that came after the export. Call it inside a catch block only.
void failAfterExport(ProgressState& state) noexcept {
    fail(state, [] {
        logging::LogError("Upload failed after NX export completed: " + platform::currentErrorText(unknownError));
        return failedAfterExport;
    });
}

void logOutcome(const UploadProgressRequest& request, const pivra::UploadExecutionResult& result) noexcept try {
    if (!result.succeeded) return logging::LogError("Pivra upload failed: " + result.message);
    logging::LogInfo("Pivra upload complete:", logging::quoted("file_name", request.metadata->fileName),
                     logging::quoted("workspace", pivra::workspaceLabel(request.workspace.name)));
} catch (...) {
    // Out of memory: the line is lost.
}

void upload(const UploadProgressRequest& request, ProgressState& state) noexcept {
    try {
        auto result = request.executeUpload();
        logOutcome(request, result);
        finish(state, std::move(result));
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

ProgressSnapshot pollProgress(ProgressState& state) {
    const std::lock_guard lock(state.mutex);
    bool claimed = false;
    const bool completed = state.finished && state.completionClaimed.compare_exchange_strong(claimed, true);
    return {completed, state.stage, state.terminal};
}

}  // namespace ui
