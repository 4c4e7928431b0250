// What the steps of a replay act on.
#pragma once

#include "browser.h"
#include "plugin.h"
#include "sandbox.h"
#include "screen.h"
#include "transcript.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace nxhost {

struct Stage;

/// What a wait waits for.
struct Wait {
    std::function<bool(const Stage&)> over;
    std::chrono::steady_clock::time_point limit;
    std::string what;  ///< for the sentence that says that it did not come
};

struct Stage {
    Sandbox& sandbox;
    Transcript& transcript;
    Screen& screen;
    Plugin& plugin;
    Browser& browser;
    std::filesystem::path pictures;  ///< where pictures go; empty takes none

    bool running = false;   ///< the plug-in is in a run
    bool unloaded = false;  ///< the host's session has ended
    /// Number of events when the latest step that is no wait began.
    std::size_t mark = 0;
    std::optional<Wait> wait{};
    std::size_t violations = 0;  ///< number of broken rules that the transcript holds
};

/// The open dialog. Throws StepError when there is none.
devkit::DialogData& openDialog(Stage& stage);

/// One run of the plug-in, with what the host checks after it.
void runPlugin(Stage& stage);

/// Writes the broken rules that are new to the transcript, and returns them.
std::vector<std::string> noteViolations(Stage& stage);

/// Ends the host's session: the plug-in is asked how it unloads, cleans up, and what it leaves is noted. Once.
void unloadPlugin(Stage& stage);

}  // namespace nxhost
