// What a user does after a failure.
#pragma once

#include "replay_context.h"

namespace nxhost {

/// Runs the plug-in again, signs in if necessary, and uploads what is displayed. Returns whether it was uploaded.
bool uploadOnceMore(ReplayContext& context);

}  // namespace nxhost
