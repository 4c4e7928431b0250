// The host's window: the parts of its session, the application, a button that runs the plug-in, and a log of what
// happens.
#pragma once

#include "bitmap_win.h"
#include "replay_context.h"

#include <devkit/session.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

struct HFONT__;

namespace nxhost {

/// Host's thread. What the person does here is performed and noted as the step of a replay; addresses that the plug-in
/// opens go to the desktop's browser.
class HostWindow {
 public:
    HostWindow(std::string title, ReplayContext& context) : title_(std::move(title)), context_(context) {}
    ~HostWindow();
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    /// Shows the window until it is closed, which it cannot be while the plug-in runs. Throws std::runtime_error when
    /// it cannot be made.
    void use();
    /// Handles a message; called by the window procedure, which returns the result.
    std::intptr_t receive(HWND__* window, unsigned message, std::uintptr_t first, std::intptr_t second);

 private:
    // A control that moves or grows with the window, and where it stands at first.
    struct Anchored {
        int control;
        bool moves, wider, higher;
        int x = 0, y = 0, width = 0, height = 0;
    };

    void start();
    int openInBrowser(const std::string& address);
    void log(const Event& event);
    void addLine(const std::string& line);
    void makeParts();
    void showParts();
    void setCell(int row, int column, const std::string& text);
    void fitColumns(std::size_t first);
    void rememberPlaces();
    void placeControls();

    void act(int control, int notification);
    void run();
    void attempt(const std::function<void()>& action);
    void performStep(const Json& step);
    void followEvents();
    const devkit::PartData* selected() const;
    HWND__* control(int id) const;

    std::string title_;
    ReplayContext& context_;
    HWND__* window_ = nullptr;
    HFONT__* logFont_ = nullptr;
    Extent client_;  ///< at first
    Extent frame_;   ///< at first, and the smallest allowed
    std::vector<Anchored> anchored_;
};

}  // namespace nxhost
