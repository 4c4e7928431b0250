// What a replay expects of its transcript.
#pragma once

#include "json.h"
#include "pattern.h"

#include <string>
#include <vector>

namespace nxhost {

struct Expectation {
    /// An event after the one expected before it; the very next one, log lines and steps left aside; none in the whole
    /// transcript.
    enum class Kind { later, next, absent };

    std::string place;
    Kind kind = Kind::later;
    Event pattern;
};

/// Reads the list of expectations `name`. Throws std::runtime_error that names the place of what is wrong with it.
std::vector<Expectation> readExpectations(JsonMembers& members, const std::string& name);

/// Holds `events` against the expectations in their order. Returns "" or an account of the first that is not met, with
/// the events that come nearest.
std::string unmet(const std::vector<Expectation>& expectations, const std::vector<Event>& events);

}  // namespace nxhost
