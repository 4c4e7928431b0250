#include "ui/block_dialog_window.h"

#include "logging/log.h"
#include "logging/log_line.h"
#include "ui/callback_guard.h"

#include <NXOpen/UI.hxx>

#include <stdexcept>
#include <string>

namespace ui {

void BlockDialogWindow::show() noexcept {
    guardRun([this] { showModally(); });
}

void BlockDialogWindow::showModally() {
    auto* host = NXOpen::UI::GetUI();
    if (host != nullptr) dialog_.reset(host->CreateDialog(layout_));
    if (!dialog_) throw std::runtime_error(std::string("NX could not create the dialog ") + layout_ + ".");

    struct Closing {
        ~Closing() {
            window.closed();
            window.helpContext_.pop();
            window.dialog_.reset();
        }
        BlockDialogWindow& window;
    } const closing{*this};

    dialog_->AddInitializeHandler(NXOpen::make_callback(this, &BlockDialogWindow::initialize_cb));
    dialog_->AddDialogShownHandler(NXOpen::make_callback(this, &BlockDialogWindow::dialogShown_cb));
    dialog_->AddUpdateHandler(NXOpen::make_callback(this, &BlockDialogWindow::update_cb));
    dialog_->Show();
}

void BlockDialogWindow::warnOfMissing(const char* blockId) const {
    logging::LogWarning(
        logging::LogLine("NX dialog lacks a block:").quoted("layout", layout_).quoted("block", blockId).text());
}

void BlockDialogWindow::initialize_cb() {
    guardCallback([this] { initialize(); });
}

void BlockDialogWindow::dialogShown_cb() {
    guardCallback([this] {
        helpContext_.push();
        shown();
    });
}

int BlockDialogWindow::update_cb(NXOpen::BlockStyler::UIBlock* changed) {
    if (changed != nullptr) guardCallback([&] { update(*changed); });
    return 0;
}

}  // namespace ui
