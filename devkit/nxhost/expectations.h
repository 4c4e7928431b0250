// Patterns over events, and what a replay expects of its transcript.
#pragma once

#include "json.h"

#include <string>
#include <vector>

namespace nxhost {

/// Whether `value` matches `pattern`: an object when each member of the pattern matches the value's; a list when its
/// elements match elements of the value's in the same order, with others allowed between them, and an empty list only
/// an empty one; a text "/…/" when the ECMAScript regular expression is found in the value; anything else when it is
/// equal.
bool matches(const Event& pattern, const Event& value);

/// Throws std::runtime_error for a text "/…/" that is no regular expression. `place` is where the pattern stands.
void checkPattern(const Event& pattern, const std::string& place);

/// Checks `events` against the expectations in their order. Returns "" or an account of the first that is not met, with
/// the events that come nearest.
std::string unmet(const Event& expectations, const std::vector<Event>& events);

/// Whether an event that must be there names `temporaryFiles`: then it says what may be left.
bool nameTemporaryFiles(const Event& expectations);

}  // namespace nxhost
