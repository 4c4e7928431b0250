#include "expectations.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

namespace nxhost {

namespace {

using Position = std::vector<Event>::const_iterator;

// The pattern of events to count stands in "event", or is made of the members beside "times".
Event countedPattern(Event expectation) {
    if (expectation["event"].is_object()) return expectation["event"];
    expectation.erase("times");
    return expectation;
}

// How many members of the pattern the event has, its blocks counted one by one.
std::size_t likeness(const Event& pattern, const Event& event) {
    std::size_t count = 0;
    for (const auto& [name, wanted] : pattern.items()) {
        if (!event.contains(name)) continue;
        const auto& value = event[name];
        if (matches(wanted, value)) count += 2;
        if (!wanted.is_array()) continue;
        for (const auto& part : wanted)
            if (matches(Event::array({part}), value)) ++count;
    }
    return count;
}

std::string shown(const Event& event) {
    return event.dump(-1, ' ', false, Event::error_handler_t::replace);
}

// The three most alike, in their order.
std::string nearest(const Event& pattern, Position from, Position to) {
    std::vector<Position> alike;
    for (auto at = from; at != to; ++at)
        if (matches(pattern["event"], at->value("event", ""))) alike.push_back(at);
    if (alike.empty()) return "  There is no event of that kind.\n";
    std::stable_sort(alike.begin(), alike.end(),
                     [&](Position a, Position b) { return likeness(pattern, *a) > likeness(pattern, *b); });
    alike.resize(std::min<std::size_t>(alike.size(), 3));
    std::sort(alike.begin(), alike.end());
    std::string text = "  Nearest:\n";
    for (const auto at : alike) text += "    " + shown(*at) + "\n";
    return text;
}

bool isSkipped(const Event& event, bool withLogs) {
    const auto& kind = event["event"];
    return kind == "step" || kind == "log-file" || (kind == "log" && !withLogs);
}

// Goes through the events, one expectation after the other.
class Search {
 public:
    explicit Search(const std::vector<Event>& events) : events_(events), at_(events.begin()) {}

    std::string unmet(const Event& expectation) {
        if (expectation.contains("next")) {
            const auto& pattern = expectation["next"];
            return unmetNext(pattern, expectation.value("logs", pattern["event"] == "log"));
        }
        if (expectation.contains("not")) return unmetCount(expectation["not"], 0);
        if (expectation.contains("times")) return unmetCount(countedPattern(expectation), expectation["times"]);
        if (expectation.contains("none")) return unmetStretch(expectation);
        return unmetLater(expectation);
    }

 private:
    Position find(const Event& pattern, Position from) const {
        return std::find_if(from, events_.end(), [&](const Event& event) { return matches(pattern, event); });
    }

    std::string unmetLater(const Event& pattern) {
        const auto found = find(pattern, at_);
        if (found == events_.end())
            return account("no such event after the one expected before it:", pattern) + before() +
                   nearest(pattern, at_, events_.end());
        at_ = found + 1;
        return "";
    }

    std::string unmetNext(const Event& pattern, bool withLogs) {
        const auto found =
            std::find_if_not(at_, events_.end(), [&](const Event& event) { return isSkipped(event, withLogs); });
        if (found == events_.end() || !matches(pattern, *found))
            return account("the next event is another:", pattern) + before() + "  It is:\n    " +
                   (found == events_.end() ? "none" : shown(*found)) + "\n";
        at_ = found + 1;
        return "";
    }

    std::string unmetCount(const Event& pattern, int times) const {
        const auto found =
            std::count_if(events_.begin(), events_.end(), [&](const Event& event) { return matches(pattern, event); });
        if (found == times) return "";
        if (times == 0) return unwanted(pattern, find(pattern, events_.begin()));
        return account("expected " + std::to_string(times) + " such events, found " + std::to_string(found) + ":",
                       pattern) +
               nearest(pattern, events_.begin(), events_.end());
    }

    std::string unmetStretch(const Event& expectation) const {
        const auto& pattern = expectation["none"];
        auto stretch = nextStretch(expectation, events_.begin());
        if (!stretch) return account("there is no stretch from \"after\" to \"until\" to hold this against:", pattern);
        for (; stretch; stretch = nextStretch(expectation, stretch->second)) {
            const auto found = std::find_if(stretch->first, stretch->second,
                                            [&](const Event& event) { return matches(pattern, event); });
            if (found != stretch->second) return unwanted(pattern, found);
            if (!expectation.contains("after")) break;
        }
        return "";
    }

    // Where the next stretch begins and ends.
    std::optional<std::pair<Position, Position>> nextStretch(const Event& expectation, Position from) const {
        if (expectation.contains("after")) {
            from = find(expectation["after"], from);
            if (from == events_.end()) return std::nullopt;
            ++from;
        }
        if (!expectation.contains("until")) return std::pair(from, events_.end());
        const auto to = find(expectation["until"], from);
        return to == events_.end() ? std::nullopt : std::optional(std::pair(from, to));
    }

    static std::string account(const std::string& fault, const Event& pattern) {
        return fault + "\n    " + shown(pattern) + "\n";
    }

    static std::string unwanted(const Event& pattern, Position found) {
        return account("an event that must not be there:", pattern) + "  Found:\n    " + shown(*found) + "\n";
    }

    std::string before() const {
        return at_ == events_.begin() ? "" : "  The one before:\n    " + shown(*std::prev(at_)) + "\n";
    }

    const std::vector<Event>& events_;
    Position at_;
};

}  // namespace

std::string unmet(const Event& expectations, const std::vector<Event>& events) {
    Search search(events);
    for (std::size_t index = 0; index < expectations.size(); ++index)
        if (const auto account = search.unmet(expectations[index]); !account.empty())
            return "replay.expect[" + std::to_string(index) + "]: " + account;
    return "";
}

bool nameTemporaryFiles(const Event& expectations) {
    return std::any_of(expectations.begin(), expectations.end(), [](const Event& expectation) {
        if (expectation.contains("next")) return expectation["next"].contains("temporaryFiles");
        if (expectation.contains("times"))
            return expectation["times"] > 0 && countedPattern(expectation).contains("temporaryFiles");
        return expectation.contains("temporaryFiles");
    });
}

}  // namespace nxhost
