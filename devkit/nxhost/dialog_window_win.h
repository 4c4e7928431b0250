// A block dialog as a window with real controls.
#pragma once

#include "screen.h"

#include <windows.h>

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace nxhost {

/// Deals with all messages that wait for this thread.
void pumpMessages();

/// Host's thread. The window is shown and active from construction to destruction; its owner is disabled meanwhile.
class DialogWindow : public Screen::Window {
 public:
    /// `onUpdate` is called for each action on a block, by a user's hand or by press() and choose(). Throws
    /// std::runtime_error when the window cannot be made.
    DialogWindow(devkit::DialogData& dialog, const std::vector<std::filesystem::path>& bitmapFolders, HWND owner,
                 std::function<void(devkit::BlockData&)> onUpdate);
    ~DialogWindow() override;
    DialogWindow(const DialogWindow&) = delete;
    DialogWindow& operator=(const DialogWindow&) = delete;

    bool closed() override;
    HWND handle() const { return window_; }

    /// Clicks a button; chooses an entry of a list. False when the control cannot be used.
    bool press(const devkit::BlockData& button);
    bool choose(const devkit::BlockData& list, int entry);

    /// Shows the blocks' properties as they are now, the next time that the window is looked at.
    void invalidate() { stale_ = true; }
    /// Does so now.
    void refresh();

 private:
    // What shows one block: a group its frame, a label its picture and text, a list its text and field, and so on.
    struct Controls {
        HWND picture = nullptr;
        HWND text = nullptr;
        HWND field = nullptr;
        HBITMAP bitmap = nullptr;
        std::string bitmapName;
        std::vector<std::string> members;
    };
    using Blocks = std::vector<const devkit::BlockData*>;

    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM first, LPARAM second);
    LRESULT receive(UINT message, WPARAM first, LPARAM second);
    void act(int number, int notification);

    void makeControls(devkit::BlockData& block);
    HWND makeControl(const wchar_t* type, DWORD style);
    void sync(const devkit::BlockData& block, bool shown);
    void syncPicture(const devkit::BlockData& block, Controls& controls);
    void syncList(const devkit::BlockData& block, Controls& controls);
    void syncTooltip(const devkit::BlockData& block, const Controls& controls);

    SIZE textSize(const std::string& text, int width) const;
    int naturalWidth(const devkit::BlockData& block) const;
    bool stretches(const devkit::BlockData& block) const;
    int place(const devkit::BlockData& block, int x, int y, int width);
    int placeLabel(const Controls& controls, const std::string& text, int x, int y, int width);
    int placeChildren(const devkit::BlockData& group, int x, int y, int width);
    int placeRow(const Blocks& row, int x, int y, int width);

    devkit::DialogData& dialog_;
    std::vector<std::filesystem::path> bitmapFolders_;
    HWND owner_;
    std::function<void(devkit::BlockData&)> onUpdate_;
    HWND window_ = nullptr;
    HWND tooltips_ = nullptr;
    HFONT font_ = nullptr;
    std::vector<devkit::BlockData*> blocks_;  ///< by the number of their controls, less the first number
    std::map<const devkit::BlockData*, Controls> controls_;
    bool stale_ = true;
    bool closed_ = false;
};

}  // namespace nxhost
