// The steps of a replay: what the user does, and what changes around the plug-in.
#pragma once

#include "json.h"
#include "replay_context.h"

namespace nxhost {

/// Throws std::runtime_error that names the first step of the replay that has no known name. What is no list of steps
/// is left to the schema.
void checkStepNames(const Json& replay);

/// Whether the step is one that waits.
bool isWait(const Json& step);

/// Performs a step that has passed the schema. Host's thread. Throws std::runtime_error when the host's state does not
/// allow it, and what the context's parts throw.
void perform(ReplayContext& context, const Json& step);

}  // namespace nxhost
