// What the three dialogs have in common: creation from a layout file, callbacks that let no exception out, the blocks
// and their properties, the help context, closing and deletion.
#pragma once

#include "platform/desktop.h"
#include "ui/help_context.h"

#include <NXOpen/BlockStyler_BlockDialog.hxx>
#include <NXOpen/BlockStyler_PropertyList.hxx>
#include <NXOpen/BlockStyler_UIBlock.hxx>

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>

namespace ui {

/// The chosen member of an enumeration: its text as the host gives it, and its number.
struct EnumerationValue {
    std::string text;
    int number = -1;
};

/// One dialog, shown once. Host's thread. The callbacks below may throw: it is shown in a box titled "Pivra". Texts are
/// UTF-8.
class BlockDialogWindow {
 public:
    BlockDialogWindow(const BlockDialogWindow&) = delete;
    BlockDialogWindow& operator=(const BlockDialogWindow&) = delete;

    /// Creates the dialog, shows it modally and deletes it. An exception is shown in a box titled "Block Styler", after
    /// the dialog is deleted.
    void show() noexcept;

 protected:
    /// `layout` is the name of the layout file. The host looks for it in its registered folders; failing that, the file
    /// beside the plug-in is taken.
    explicit BlockDialogWindow(const char* layout) : layout_(layout) {}
    ~BlockDialogWindow() = default;

    /// Before the dialog appears: to find the blocks.
    virtual void initialize() = 0;
    /// Just before its window is on the screen, with the help context pushed: to fill it.
    virtual void shown() {}
    /// `changed` was pressed or has a new value.
    virtual void update(const NXOpen::BlockStyler::UIBlock& changed) = 0;
    /// The dialog has closed, in whatever way, and is about to be deleted.
    virtual void closed() noexcept {}

    // From initialize() to closed() only. A block that the layout lacks is passed over, with one warning in the log:
    // the layout is not the one that was shipped. Host exceptions pass through.

    /// The block of that id and type, or null.
    template <typename Block>
    Block* find(const char* blockId) {
        auto* block = dynamic_cast<Block*>(findBlock(blockId));
        if (block == nullptr) warnOfMissing(blockId);
        return block;
    }

    void setLabel(const char* blockId, const std::string& text);
    /// `file` is the name of a bitmap in the plug-in's application folder.
    void setBitmap(const char* blockId, const std::string& file);
    void setTooltip(const char* blockId, const std::string& text);
    void setVisible(const char* blockId, bool visible);
    /// Absent when the layout lacks the block.
    std::optional<EnumerationValue> enumerationValue(const char* blockId);

    /// The active window, which is this dialog's while the user acts on it. Null when it is the one that was active
    /// before the dialog was shown, as in shown(): that one is not ours to close.
    platform::WindowHandle ownWindow() const;
    /// The same in shown(), where the host's window may have become active: null as well when none was before.
    platform::WindowHandle ownWindowWhenShown() const { return windowBefore_ != nullptr ? ownWindow() : nullptr; }
    /// Asks `window`, which ownWindow() gave earlier, to close. When it is null the dialog stays open, and the log says
    /// so.
    void close(platform::WindowHandle window) const;

 private:
    using PropertyList = NXOpen::BlockStyler::PropertyList;

    void showModally();
    void create();
    NXOpen::BlockStyler::UIBlock* findBlock(const char* blockId);
    std::unique_ptr<PropertyList> propertiesOf(const char* blockId);
    void setText(const char* blockId, const char* property, const std::string& text);
    void warnOfMissing(const char* blockId);
    void initialize_cb();
    void dialogShown_cb();
    int update_cb(NXOpen::BlockStyler::UIBlock* changed);

    const char* layout_;
    std::unique_ptr<NXOpen::BlockStyler::BlockDialog> dialog_;
    platform::WindowHandle windowBefore_ = nullptr;
    std::set<std::string> missingBlocks_;
    HelpContext helpContext_;
};

}  // namespace ui
