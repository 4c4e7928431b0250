#include "expectations.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

namespace nxhost {

namespace {

using Position = std::vector<Event>::const_iterator;

// A pattern for events, whose kind it names.
Event readPattern(const Json& value, const std::string& place) {
    JsonMembers members(value, place);
    neededText(members, "event");
    checkPattern(value, place);
    return value;
}

Event patternIn(JsonMembers& members, const std::string& name) {
    return readPattern(neededObject(members, name), members.pathOf(name));
}

void readNext(JsonMembers& members, Expectation& expectation) {
    expectation.kind = Expectation::Kind::next;
    expectation.pattern = patternIn(members, "next");
    expectation.withLogs = expectation.pattern["event"] == "log";
    members.read("logs", expectation.withLogs);
}

// The events to count are told by a pattern of their own, or by the members beside the number.
void readCount(JsonMembers& members, const Json& value, Expectation& expectation) {
    expectation.kind = Expectation::Kind::counted;
    members.read("times", expectation.times);
    if (expectation.times < 0) members.fail("times", "expected a number from 0");
    if (needed(members, "event").is_object()) {
        expectation.pattern = patternIn(members, "event");
        return;
    }
    auto pattern = value;
    pattern.erase("times");
    expectation.pattern = readPattern(pattern, expectation.place);
    for (const auto& member : value.items()) members.find(member.key());
}

void readStretch(JsonMembers& members, Expectation& expectation) {
    expectation.kind = Expectation::Kind::absentBetween;
    expectation.pattern = patternIn(members, "none");
    if (members.find("after")) expectation.after = patternIn(members, "after");
    if (members.find("until")) expectation.until = patternIn(members, "until");
}

Expectation readExpectation(const Json& value, const std::string& place) {
    JsonMembers members(value, place);
    Expectation expectation;
    expectation.place = place;
    if (value.contains("next")) {
        readNext(members, expectation);
    } else if (value.contains("not")) {
        expectation.kind = Expectation::Kind::counted;
        expectation.pattern = patternIn(members, "not");
    } else if (value.contains("times")) {
        readCount(members, value, expectation);
    } else if (value.contains("none")) {
        readStretch(members, expectation);
    } else {
        expectation.pattern = readPattern(value, place);
        return expectation;
    }
    members.finish();
    return expectation;
}

// How many members of the pattern, its blocks counted one by one, the event has.
std::size_t likeness(const Event& pattern, const Event& event) {
    std::size_t count = 0;
    for (const auto& [name, wanted] : pattern.items()) {
        if (!event.contains(name)) continue;
        const auto& value = event[name];
        if (fits(wanted, value)) count += 2;
        if (!wanted.is_array()) continue;
        for (const auto& part : wanted)
            if (fits(Event::array({part}), value)) ++count;
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
        if (fits(pattern["event"], at->value("event", ""))) alike.push_back(at);
    if (alike.empty()) return "  There is no event of that kind.\n";
    std::stable_sort(alike.begin(), alike.end(),
                     [&](Position a, Position b) { return likeness(pattern, *a) > likeness(pattern, *b); });
    alike.resize(std::min<std::size_t>(alike.size(), 3));
    std::sort(alike.begin(), alike.end());
    std::string text = "  Nearest:\n";
    for (const auto at : alike) text += "    " + shown(*at) + "\n";
    return text;
}

std::string accountOf(const Expectation& expectation, const std::string& fault) {
    return expectation.place + ": " + fault + "\n    " + shown(expectation.pattern) + "\n";
}

bool isAside(const Event& event, bool withLogs) {
    const auto& kind = event["event"];
    return kind == "step" || kind == "log-file" || (kind == "log" && !withLogs);
}

// Goes through the events, one expectation after the other.
class Search {
 public:
    explicit Search(const std::vector<Event>& events) : events_(events), at_(events.begin()) {}

    std::string unmet(const Expectation& expectation) {
        switch (expectation.kind) {
            case Expectation::Kind::later:
                return unmetLater(expectation);
            case Expectation::Kind::next:
                return unmetNext(expectation);
            case Expectation::Kind::counted:
                return unmetCount(expectation);
            case Expectation::Kind::absentBetween:
                return unmetStretch(expectation);
        }
        return "";
    }

 private:
    Position find(const Event& pattern, Position from) const {
        return std::find_if(from, events_.end(), [&](const Event& event) { return fits(pattern, event); });
    }

    std::string unmetLater(const Expectation& expectation) {
        const auto found = find(expectation.pattern, at_);
        if (found == events_.end())
            return accountOf(expectation, "no such event after the one expected before it:") + before() +
                   nearest(expectation.pattern, at_, events_.end());
        at_ = found + 1;
        return "";
    }

    std::string unmetNext(const Expectation& expectation) {
        const auto found = std::find_if_not(at_, events_.end(),
                                            [&](const Event& event) { return isAside(event, expectation.withLogs); });
        if (found == events_.end() || !fits(expectation.pattern, *found))
            return accountOf(expectation, "the next event is another:") + before() + "  It is:\n    " +
                   (found == events_.end() ? "none" : shown(*found)) + "\n";
        at_ = found + 1;
        return "";
    }

    std::string unmetCount(const Expectation& expectation) const {
        const auto found = std::count_if(events_.begin(), events_.end(),
                                         [&](const Event& event) { return fits(expectation.pattern, event); });
        if (found == expectation.times) return "";
        if (expectation.times == 0) return unwanted(expectation, find(expectation.pattern, events_.begin()));
        return accountOf(expectation, "expected " + std::to_string(expectation.times) + " such events, found " +
                                          std::to_string(found) + ":") +
               nearest(expectation.pattern, events_.begin(), events_.end());
    }

    std::string unmetStretch(const Expectation& expectation) const {
        auto stretch = nextStretch(expectation, events_.begin());
        if (!stretch)
            return accountOf(expectation, "there is no stretch from \"after\" to \"until\" to hold this against:");
        for (; stretch; stretch = nextStretch(expectation, stretch->second)) {
            const auto found = std::find_if(stretch->first, stretch->second,
                                            [&](const Event& event) { return fits(expectation.pattern, event); });
            if (found != stretch->second) return unwanted(expectation, found);
            if (expectation.after.is_null()) break;
        }
        return "";
    }

    // Where the next stretch begins and ends.
    std::optional<std::pair<Position, Position>> nextStretch(const Expectation& expectation, Position from) const {
        if (!expectation.after.is_null()) {
            from = find(expectation.after, from);
            if (from == events_.end()) return std::nullopt;
            ++from;
        }
        if (expectation.until.is_null()) return std::pair(from, events_.end());
        const auto to = find(expectation.until, from);
        return to == events_.end() ? std::nullopt : std::optional(std::pair(from, to));
    }

    static std::string unwanted(const Expectation& expectation, Position found) {
        return accountOf(expectation, "an event that must not be there:") + "  Found:\n    " + shown(*found) + "\n";
    }

    std::string before() const {
        return at_ == events_.begin() ? "" : "  The one before:\n    " + shown(*std::prev(at_)) + "\n";
    }

    const std::vector<Event>& events_;
    Position at_;
};

}  // namespace

std::vector<Expectation> readExpectations(JsonMembers& members, const std::string& name) {
    std::vector<Expectation> expectations;
    forEachIn(members, name, [&](const Json& value, const std::string& place) {
        expectations.push_back(readExpectation(value, place));
    });
    return expectations;
}

std::string unmet(const std::vector<Expectation>& expectations, const std::vector<Event>& events) {
    Search search(events);
    for (const auto& expectation : expectations)
        if (auto account = search.unmet(expectation); !account.empty()) return account;
    return "";
}

}  // namespace nxhost
