// What a replay acts on and how far it is.
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

struct ReplayContext;

/// A step that waits.
struct Wait {
    std::function<bool(const ReplayContext&)> over;
    std::chrono::steady_clock::time_point limit;
    std::string what;  ///< for the message that it did not come
};

struct ReplayContext {
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
    std::size_t violations = 0;  ///< number of broken rules in the transcript
    Json calls{};                ///< of the plug-in to its neighbours while the steps were played
};

/// The open dialog. Throws std::runtime_error when there is none.
devkit::DialogData& openDialog(ReplayContext& context);

/// One run of the plug-in, with what the host checks after it.
void runPlugin(ReplayContext& context);

/// Writes new broken rules to the transcript, and returns them.
std::vector<std::string> noteViolations(ReplayContext& context);

/// Ends the host's session: the plug-in is asked how it unloads and cleans up; what it leaves is noted. Once.
void unloadPlugin(ReplayContext& context);

}  // namespace nxhost
