#include "ui/block_dialog_window.h"

#include "logging/log.h"
#include "nx/text.h"
#include "platform/error_text.h"
#include "platform/module.h"
#include "platform/text.h"
#include "platform/text_encoding.h"
#include "ui/message_box.h"

#include <NXOpen/BlockStyler_CompositeBlock.hxx>
#include <NXOpen/UI.hxx>

#include <stdexcept>

namespace ui {

void BlockDialogWindow::show() noexcept {
    guardRun([this] { showModally(); });
}

void BlockDialogWindow::create() {
    if (auto* host = NXOpen::UI::GetUI()) {
        const auto error = platform::errorOf([&] { dialog_.reset(host->CreateDialog(layout_)); });
        if (dialog_) return;
        logging::LogWarning("NX did not find a layout by its name; the one beside the plug-in is taken:",
                            logging::quoted("layout", layout_), logging::quoted("error", error.value_or("")));
        const auto file = platform::utf8FromPath(platform::moduleDirectory() / layout_);
        dialog_.reset(host->CreateDialog(nx::toHost(file)));
    }
    if (!dialog_) throw std::runtime_error(std::string("NX could not create the dialog ") + layout_ + ".");
}

void BlockDialogWindow::showModally() {
    create();

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
    windowBefore_ = platform::activeWindow();
    dialog_->Show();
}

NXOpen::BlockStyler::UIBlock* BlockDialogWindow::findBlock(const char* blockId) {
    auto* top = dialog_->TopBlock();
    return top != nullptr ? top->FindBlock(blockId) : nullptr;
}

std::unique_ptr<NXOpen::BlockStyler::PropertyList> BlockDialogWindow::propertiesOf(const char* blockId) {
    const bool isThere = findBlock(blockId) != nullptr;
    std::unique_ptr<PropertyList> properties(isThere ? dialog_->GetBlockProperties(blockId) : nullptr);
    if (!properties) warnOfMissing(blockId);
    return properties;
}

void BlockDialogWindow::setText(const char* blockId, const char* property, const std::string& text) {
    if (const auto properties = propertiesOf(blockId))
        properties->SetString(property, nx::toHost(platform::oneLine(text)));
}

void BlockDialogWindow::setLabel(const char* blockId, const std::string& text) {
    setText(blockId, "Label", text);
}

void BlockDialogWindow::setBitmap(const char* blockId, const std::string& file) {
    setText(blockId, "Bitmap", file);
}

void BlockDialogWindow::setTooltip(const char* blockId, const std::string& text) {
    setText(blockId, "BalloonTooltipText", text);
}

void BlockDialogWindow::setVisible(const char* blockId, bool visible) {
    if (const auto properties = propertiesOf(blockId)) properties->SetLogical("Show", visible);
}

std::optional<EnumerationValue> BlockDialogWindow::enumerationValue(const char* blockId) {
    const auto properties = propertiesOf(blockId);
    if (!properties) return std::nullopt;
    return EnumerationValue{nx::utf8(properties->GetEnumAsString("Value")), properties->GetEnum("Value")};
}

platform::WindowHandle BlockDialogWindow::ownWindow() const {
    const auto window = platform::activeWindow();
    return window == windowBefore_ ? nullptr : window;
}

void BlockDialogWindow::close(platform::WindowHandle window) const {
    if (window == nullptr) {
        logging::LogWarning("NX dialog stays open because it has no active window:",
                            logging::quoted("layout", layout_));
    }
    platform::postClose(window);
}

void BlockDialogWindow::warnOfMissing(const char* blockId) {
    if (!missingBlocks_.insert(blockId).second) return;
    logging::LogWarning("NX dialog lacks a block:", logging::quoted("layout", layout_),
                        logging::quoted("block", blockId));
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
