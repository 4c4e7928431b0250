// A block dialog as a window with real controls.
#pragma once

#include "bitmap_win.h"
#include "screen.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

struct HFONT__;

namespace nxhost {

using WindowHandle = HWND__*;

/// Handles all messages that wait for this thread.
void pumpMessages();
/// The same, but timers that are due stay due.
void pumpWithoutTimers();

/// Host's thread. The window is shown and active from construction to destruction; its owner is disabled meanwhile.
class DialogWindow : public Screen::Window {
 public:
    /// `onUpdate` is called for each action on a block, by a user's hand or by press() and choose(). Throws
    /// std::runtime_error when the window cannot be made.
    DialogWindow(devkit::DialogData& dialog, const std::vector<std::filesystem::path>& bitmapFolders,
                 WindowHandle owner, std::function<void(devkit::BlockData&)> onUpdate);
    ~DialogWindow() override;
    DialogWindow(const DialogWindow&) = delete;
    DialogWindow& operator=(const DialogWindow&) = delete;

    bool closed() override;
    WindowHandle handle() const { return window_; }

    /// Handles a request to close and the controls' notifications; called by the window procedure.
    void receive(unsigned message, std::uintptr_t first);

    /// Clicks a button; chooses an entry of a list. False when the control cannot be used.
    bool press(const devkit::BlockData& button);
    bool choose(const devkit::BlockData& list, int entry);

    /// The blocks' properties have changed: the next refresh() shows them.
    void invalidate() { stale_ = true; }
    /// Updates the window from the blocks' properties, when they have changed.
    void refresh();

 private:
    // The controls of one block: a group's frame, a label's picture and text, a list's text and field, and so on.
    struct Controls {
        WindowHandle picture = nullptr;
        WindowHandle text = nullptr;
        WindowHandle field = nullptr;
        HBITMAP__* bitmap = nullptr;
        std::string bitmapName;
        std::vector<std::string> members;
    };
    using Blocks = std::vector<const devkit::BlockData*>;

    void act(int number, int notification);

    void makeControls(devkit::BlockData& block);
    WindowHandle makeControl(const wchar_t* type, unsigned style);
    void sync(const devkit::BlockData& block, bool shown);
    void syncPicture(const devkit::BlockData& block, Controls& controls);
    void syncList(const devkit::BlockData& block, Controls& controls);
    void syncTooltip(const devkit::BlockData& block, const Controls& controls);

    Extent textSize(const std::string& text, int width) const;
    int naturalWidth(const devkit::BlockData& block) const;
    bool stretches(const devkit::BlockData& block) const;
    int place(const devkit::BlockData& block, int x, int y, int width);
    int placeLabel(const Controls& controls, const std::string& text, int x, int y, int width);
    int placeChildren(const devkit::BlockData& group, int x, int y, int width);
    int placeRow(const Blocks& row, int x, int y, int width);

    devkit::DialogData& dialog_;
    std::vector<std::filesystem::path> bitmapFolders_;
    WindowHandle owner_;
    std::function<void(devkit::BlockData&)> onUpdate_;
    WindowHandle window_ = nullptr;
    WindowHandle tooltips_ = nullptr;
    HFONT__* font_ = nullptr;
    std::vector<devkit::BlockData*> blocks_;  ///< by the id of their controls, less the first id
    std::map<const devkit::BlockData*, Controls> controls_;
    bool stale_ = true;
    bool closed_ = false;
};

}  // namespace nxhost
