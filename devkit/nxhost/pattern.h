// Patterns over events.
#pragma once

#include "scrub.h"

#include <string>

namespace nxhost {

/// Whether `value` fits `pattern`: an object fits when each member of the pattern fits the value's; a list when its
/// elements fit elements of the value's in the same order, others between them allowed, and an empty list only an empty
/// one; a text "/…/" when the ECMAScript regular expression is found in the value; everything else when it is equal.
bool fits(const Event& pattern, const Event& value);

/// Throws std::runtime_error for a regular expression that is none. `place` is where the pattern stands.
void checkPattern(const Event& pattern, const std::string& place);

}  // namespace nxhost
