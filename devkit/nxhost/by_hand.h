// The host as a person uses it: a window with the session's parts, in which the plug-in is run by hand.
#pragma once

#include "replay.h"
#include "stage.h"

#include <string>
#include <vector>

namespace nxhost {

/// Shows the host's window until the person closes it, and ends the host's session. The replay's steps and expectations
/// are left out. Addresses that the plug-in opens go to the desktop's browser. Returns the faults found: broken rules,
/// temporary files and secrets left behind. Host's thread; throws std::runtime_error where there are no windows.
std::vector<std::string> useByHand(const Replay& replay, Stage& stage);

}  // namespace nxhost
