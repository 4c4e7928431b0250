// The screen on which a replay plays: shows the host's dialogs and message boxes, and acts on them like a user.
//
// A dialog's modal loop asks `onIdle` for the next thing to do whenever it is idle; that may open a message box or
// another dialog inside it. Host's thread only.
#pragma once

#include "transcript.h"

#include <devkit/presenter.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace nxhost {

struct ReplayContext;

/// What a modal loop does next: go on at once, let time pass, or close because the replay is over or has failed. The
/// clock of advance() stands still while it goes on at once: no timer ticks between two steps that do not wait.
enum class Idle { stepped, waiting, ended };

class Screen : public devkit::Presenter {
 public:
    explicit Screen(Transcript& transcript) : transcript_(transcript) {}

    /// A dialog's window: it exists and is active from after its shown handler until after it has closed.
    class Window {
     public:
        virtual ~Window() = default;
        /// Handles what is due now, except timers; true when the window has been asked to close.
        virtual bool closed() = 0;
    };

    /// Not set: a person uses the dialogs, which stay open until that person or the plug-in closes them.
    std::function<Idle()> onIdle;
    /// The window of the host that a person uses: dialogs and boxes belong to it, and boxes stay until they are
    /// answered. Null where there is none.
    void* hostWindow = nullptr;

    /// Shows the frame of a host that nobody uses by hand: the window that is active while no dialog is open. The
    /// plug-in must not close it.
    virtual void showFrame() = 0;
    /// Shows the window of a host that a person uses, until they close it. Addresses that the plug-in opens go to the
    /// desktop's browser. Throws std::runtime_error where there are no windows.
    virtual void useByHand(const std::string& title, ReplayContext& context) = 0;

    void show(devkit::DialogData& dialog) final;
    int messageBox(const std::string& title, devkit::BoxKind kind, const std::string& message) final;

    /// The open dialog that the user can reach, or null.
    devkit::DialogData* dialog() const { return open_.empty() ? nullptr : open_.back().first; }

    // The user's actions on the open dialog. The block is visible and enabled.
    virtual void press(devkit::BlockData& button) = 0;
    virtual void choose(devkit::BlockData& list, int entry) = 0;
    virtual void close() = 0;
    /// Saves a picture of the open dialog's window, where there are windows.
    virtual void savePicture(const std::filesystem::path& file) = 0;

    /// Lets a little time pass: timers tick and windows get their messages.
    virtual void advance() = 0;
    /// The clock of advance().
    virtual std::chrono::milliseconds now() const = 0;
    /// No more dialogs and boxes: those that the plug-in still opens end at once.
    void shut() { shut_ = true; }
    void reopen() { shut_ = false; }
    /// Whether a timer still runs; false where that cannot be seen.
    virtual bool hasTimers() const { return false; }

 protected:
    /// The window of an open dialog, or null.
    Window* windowOf(const devkit::DialogData* dialog) const;

    virtual std::unique_ptr<Window> open(devkit::DialogData& dialog) = 0;
    /// Whether the host's frame was asked to close while a dialog was open.
    virtual bool frameAskedToClose() = 0;
    /// Shows a box for `boxTime` on the clock of advance(), so that timers tick beneath it, or until a person answers
    /// it.
    virtual void showBox(const std::string& title, devkit::BoxKind kind, const std::string& message) = 0;

    static constexpr std::chrono::milliseconds boxTime{500};

    void update(devkit::BlockData& block);
    void violation(const std::string& text);

 private:
    void loop(Window& window);

    Transcript& transcript_;
    std::vector<std::pair<devkit::DialogData*, Window*>> open_;
    bool shut_ = false;
};

/// The screen of this system: real windows where there are some, otherwise only the transcript. Throws
/// std::runtime_error when windows cannot be shown.
std::unique_ptr<Screen> makeScreen(Transcript& transcript, const std::vector<std::filesystem::path>& bitmapFolders);

/// The block as the user sees it: {"id", "type", "label", "show", "enable", …}. A block inside a hidden or disabled
/// group counts as hidden or disabled.
Event lookOf(const devkit::BlockData& block);

/// {"event": `kind`, "dialog", "title", "blocks"} of every block of the dialog in layout order.
Event dialogEvent(const std::string& kind, const devkit::DialogData& dialog);

}  // namespace nxhost
