#include "ui/upload_progress_dialog.h"

#include "export/displayed_model_metadata.h"
#include "logging/log.h"
#include "platform/desktop.h"
#include "platform/error_text.h"
#include "platform/text.h"
#include "platform/timer.h"
#include "service/system_browser.h"
#include "ui/block_dialog_window.h"
#include "ui/dialog_text.h"
#include "ui/message_box.h"
#include "ui/upload_link.h"
#include "ui/upload_work.h"

#include <NXOpen/BlockStyler_Button.hxx>

#include <chrono>
#include <optional>
#include <stdexcept>

namespace ui {
namespace {

using namespace std::chrono_literals;
using NXOpen::BlockStyler::Button;
using NXOpen::BlockStyler::UIBlock;

// The status row is centred as if its text had this length, whatever it says: its bitmap takes room, too.
constexpr std::size_t statusLength = 40;

/// The two labels of blanks that centre the text of one row.
struct Row {
    const char* left;
    const char* right;
    std::size_t width;
};

constexpr Row statusRow{"leftLabel1", "rightLabel1", 75};
constexpr Row modelRow{"leftLabel2", "rightLabel2", 72};
constexpr Row sizeRow{"leftLabel3", "rightLabel3", 82};

class UploadProgressWindow;

/// The window that is on the screen, or null.
UploadProgressWindow* liveWindow = nullptr;

class UploadProgressWindow final : public BlockDialogWindow {
 public:
    explicit UploadProgressWindow(const std::shared_ptr<const UploadProgressRequest>& request)
        : BlockDialogWindow("uploadProgress.dlx"), request_(request) {}

    bool uploadAnother() {
        const std::lock_guard lock(state_->mutex);
        return state_->uploadAnother;
    }

 private:
    void initialize() override {
        openInPivraButton_ = find<Button>("openInPivraButton");
        uploadAnotherButton_ = find<Button>("uploadAnotherButton");
    }

    void shown() override {
        liveWindow = this;
        window_ = ownWindowWhenShown();
        showRequest();
        render(renderedStage_.value_or(UploadStage::preparing));
        startTimers();
    }

    void closed() noexcept override {
        pollTimer_.stop();
        startTimer_.stop();
        liveWindow = nullptr;
    }

    void update(const UIBlock& changed) override {
        if (&changed == openInPivraButton_) openInPivra();
        if (&changed == uploadAnotherButton_) closeForAnother();
    }

    void showRequest() {
        if (!request_->userEmail.empty()) setLabel("emailLabel", request_->userEmail);
        setLabel("versionLabel", versionText());
        const auto text = modelWorkspaceText(request_->metadata->fileName, workspaceName_);
        setLabel("modelWorkspaceLabel", text);
        setTooltip("modelWorkspaceLabel", text);
        centre(statusRow, statusLength);
        centre(modelRow, platform::characterCount(text));
    }

    void centre(const Row& row, std::size_t length) {
        setLabel(row.left, leftBlanks(length, row.width));
        setLabel(row.right, rightBlanks);
    }

    void startTimers() {
        const bool polls = pollTimer_.start(400ms, [] { onTick(&UploadProgressWindow::poll); });
        const bool starts = startTimer_.start(50ms, [] { onTick(&UploadProgressWindow::startWork); });
        if (!polls || !starts) throw std::runtime_error(failedWithoutDetails);
    }

    static void onTick(void (UploadProgressWindow::*action)()) {
        if (liveWindow != nullptr) guardCallback([action] { (liveWindow->*action)(); });
    }

    void startWork() {
        startTimer_.stop();
        startUpload(request_, state_);
    }

    // While a message box is open the timers go on: their ticks find the completion claimed and stop the timer.
    void poll() {
        const auto progress = pollProgress(*state_);
        if (progress.completed) {
            complete();
        } else if (renderedStage_ != progress.stage) {
            render(progress.stage);
        }
        if (progress.terminal) pollTimer_.stop();
    }

    void render(UploadStage stage) {
        if (!state_->completionClaimed) draw(stage, "");
    }

    void draw(UploadStage stage, const std::string& completionTime) {
        renderedStage_ = stage;
        showStatus(stageView(stage, completionTime));
        const auto size = sizeText(*request_->metadata);
        setLabel("sizeSecondaryLabel", size);
        centre(sizeRow, platform::characterCount(size) - 2);
    }

    void showStatus(const StatusView& view) {
        setBitmap("primaryStatus", view.bitmap);
        setLabel("primaryStatus", view.text);
    }

    void complete() {
        const auto completionTime = pivra::formatDisplayTime(std::chrono::system_clock::now());
        {
            const std::lock_guard lock(state_->mutex);
            result_ = state_->result;
        }
        if (!result_.succeeded) return reportFailure();
        draw(UploadStage::uploaded, completionTime);
        setBitmap("spinner", "pivra_upload_complete.bmp");
        setVisible("actionGroup", true);
    }

    void reportFailure() {
        showStatus(failedView());
        setVisible("spinner", false);
        const auto report = failureReport(request_->metadata->fileName, workspaceName_, result_.message);
        try {
            ShowErrorMessage(report);
        } catch (...) {
            logging::LogError("Pivra upload failure message could not be displayed.");
        }
    }

    void openInPivra() {
        const auto link = uploadLink(result_.responseEntries);
        if (!link) return ShowErrorMessage(noMatchingLink);
        try {
            auth::openInBrowser(*link);
        } catch (...) {
            logging::LogError("The uploaded model could not be opened: " + platform::currentErrorText(unknownError));
            ShowErrorMessage(openFailed);
        }
    }

    void closeForAnother() {
        {
            const std::lock_guard lock(state_->mutex);
            state_->uploadAnother = true;
        }
        close(window_ != nullptr ? window_ : ownWindow());
    }

    const std::shared_ptr<const UploadProgressRequest> request_;
    const std::string workspaceName_ = pivra::workspaceLabel(request_->workspace.name);
    const std::shared_ptr<ProgressState> state_ = std::make_shared<ProgressState>();
    platform::WindowHandle window_ = nullptr;
    platform::ThreadTimer pollTimer_;
    platform::ThreadTimer startTimer_;
    std::optional<UploadStage> renderedStage_;
    pivra::UploadExecutionResult result_;
    Button* openInPivraButton_ = nullptr;
    Button* uploadAnotherButton_ = nullptr;
};

}  // namespace

bool showUploadProgressDialog(const std::shared_ptr<UploadProgressRequest>& request) noexcept {
    UploadProgressWindow window(request);
    window.show();
    return window.uploadAnother();
}

}  // namespace ui
