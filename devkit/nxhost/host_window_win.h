// The host's window: the parts of its session, the application, a button that runs the plug-in, and a log of what
// happens.
#pragma once

#include "bitmap_win.h"
#include "stage.h"

#include <devkit/session.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

struct HFONT__;

namespace nxhost {

/// Host's thread. What the person does here is done, and noted, as the step of a replay.
class HostWindow {
 public:
    HostWindow(std::string title, Stage& stage) : title_(std::move(title)), stage_(stage) {}
    ~HostWindow();
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    /// Shows the window until it is closed, which it cannot be while the plug-in runs. Throws std::runtime_error when
    /// it cannot be made.
    void use();
    /// Adds a line to the log.
    void say(const std::string& line);

    /// Takes a message; for the window's procedure, and with its result.
    std::intptr_t receive(HWND__* window, unsigned message, std::uintptr_t first, std::intptr_t second);

 private:
    // A control that moves and grows with the window: by how many thirds of what is added, and where it first stands.
    struct Anchored {
        int control;
        int right, wider, down, higher;
        int x = 0, y = 0, width = 0, height = 0;
    };

    void start();
    void makeParts();
    void showParts();
    void setCell(int row, int column, const std::string& text);
    void fitColumns(std::size_t first);
    void rememberPlaces();
    void place();

    void act(int control, int notification);
    void run();
    void attempt(const std::function<void()>& action);
    void perform(const Json& step);
    void followEvents();
    const devkit::PartData* selected() const;
    HWND__* control(int id) const;

    std::string title_;
    Stage& stage_;
    HWND__* window_ = nullptr;
    HFONT__* logFont_ = nullptr;
    Extent client_;  ///< at first
    Extent frame_;   ///< at first, which is the least
    std::vector<Anchored> anchored_;
};

}  // namespace nxhost
