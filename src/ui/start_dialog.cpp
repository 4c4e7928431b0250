#include "ui/start_dialog.h"

#include "platform/error_text.h"
#include "ui/block_dialog_window.h"
#include "ui/message_box.h"

#include <NXOpen/BlockStyler_Button.hxx>

namespace ui {
namespace {

using NXOpen::BlockStyler::Button;
using NXOpen::BlockStyler::UIBlock;

class StartDialogWindow final : public BlockDialogWindow {
 public:
    explicit StartDialogWindow(const std::function<void()>& signIn) : BlockDialogWindow("start.dlx"), signIn_(signIn) {}

 private:
    void initialize() override { signInButton_ = find<Button>("signInButton"); }

    void update(const UIBlock& changed) override {
        if (&changed != signInButton_) return;
        // Asked before the action, which shows boxes and dialogs of its own.
        const auto window = ownWindow();
        try {
            signIn_();
        } catch (...) {
            showFailureMessage(platform::currentErrorText("Failed to start the Pivra authentication flow."));
        }
        close(window);
    }

    const std::function<void()>& signIn_;
    Button* signInButton_ = nullptr;
};

}  // namespace

void showStartDialog(const std::function<void()>& signIn) noexcept {
    StartDialogWindow(signIn).show();
}

}  // namespace ui
