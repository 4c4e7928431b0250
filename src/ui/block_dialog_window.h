// What the three dialogs have in common: creation from a layout file, callbacks that let no exception out, the help
// context, deletion.
#pragma once

#include "ui/block_properties.h"
#include "ui/help_context.h"

#include <NXOpen/BlockStyler_BlockDialog.hxx>
#include <NXOpen/BlockStyler_UIBlock.hxx>

#include <memory>

namespace ui {

/// One dialog, shown once. Host's thread. The callbacks below may throw: it is shown in a box titled "Pivra".
class BlockDialogWindow {
 public:
    BlockDialogWindow(const BlockDialogWindow&) = delete;
    BlockDialogWindow& operator=(const BlockDialogWindow&) = delete;

    /// Creates the dialog, shows it modally and deletes it. What that throws is shown in a box titled "Block Styler",
    /// when nothing of the dialog is left.
    void show() noexcept;

 protected:
    /// `layout` is the name of the layout file, which the host finds.
    explicit BlockDialogWindow(const char* layout) : layout_(layout) {}
    ~BlockDialogWindow() = default;

    /// Before the dialog appears: to find the blocks.
    virtual void initialize() = 0;
    /// When it appears, with the help context pushed: to fill it.
    virtual void shown() {}
    /// `changed` was pressed or has a new value.
    virtual void update(const NXOpen::BlockStyler::UIBlock& changed) = 0;
    /// The dialog has closed, in whatever way, and is about to be deleted.
    virtual void closed() noexcept {}

    /// From initialize() to closed() only.
    NXOpen::BlockStyler::BlockDialog& dialog() { return *dialog_; }

    /// The block of that id and type, or null with a warning in the log: the layout is not the one that was shipped.
    template <typename Block>
    Block* find(const char* blockId) {
        auto* block = dynamic_cast<Block*>(findBlock(*dialog_, blockId));
        if (block == nullptr) warnOfMissing(blockId);
        return block;
    }

 private:
    void warnOfMissing(const char* blockId) const;
    void showModally();
    void initialize_cb();
    void dialogShown_cb();
    int update_cb(NXOpen::BlockStyler::UIBlock* changed);

    const char* layout_;
    std::unique_ptr<NXOpen::BlockStyler::BlockDialog> dialog_;
    HelpContext helpContext_;
};

}  // namespace ui
