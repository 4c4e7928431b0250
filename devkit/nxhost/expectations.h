// What a replay expects of its transcript.
#pragma once

#include "json.h"
#include "pattern.h"

#include <string>
#include <vector>

namespace nxhost {

struct Expectation {
    /// An event after the one expected before it; the very next one, steps and, unless `withLogs`, log lines left
    /// aside; exactly `times` of them in the whole transcript; none in each stretch from an event that fits `after` to
    /// the next one that fits `until`, of which there must be one.
    enum class Kind { later, next, counted, absentBetween };

    std::string place;
    Kind kind = Kind::later;
    Event pattern;
    bool withLogs = false;
    int times = 0;
    Event after;  ///< null: the transcript's beginning
    Event until;  ///< null: its end
};

/// Reads the list of expectations `name`. Throws std::runtime_error that names the place of what is wrong with it.
std::vector<Expectation> readExpectations(JsonMembers& members, const std::string& name);

/// Holds `events` against the expectations in their order. Returns "" or an account of the first that is not met, with
/// the events that come nearest.
std::string unmet(const std::vector<Expectation>& expectations, const std::vector<Event>& events);

}  // namespace nxhost
