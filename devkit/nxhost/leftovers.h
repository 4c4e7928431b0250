// What a replay must not leave behind.
#pragma once

#include "replay.h"
#include "stage.h"

#include <string>
#include <vector>

namespace nxhost {

/// Sentences about temporary files that the replay does not expect, and about secrets of a sign-in in a log.
std::vector<std::string> leftovers(const Replay& replay, const Stage& stage);

}  // namespace nxhost
