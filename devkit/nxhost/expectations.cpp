#include "expectations.h"

#include <algorithm>
#include <map>
#include <set>

namespace nxhost {

namespace {

using Position = std::vector<Event>::const_iterator;

Expectation readExpectation(const Json& value, const std::string& place) {
    static const std::map<std::string, Expectation::Kind> kinds{{"next", Expectation::Kind::next},
                                                                {"not", Expectation::Kind::absent}};
    JsonMembers whole(value, place);
    const auto kind = value.size() == 1 ? kinds.find(value.begin().key()) : kinds.end();
    const bool plain = kind == kinds.end();
    const auto& pattern = plain ? value : neededObject(whole, kind->first);
    JsonMembers members(pattern, plain ? place : whole.pathOf(kind->first));
    neededText(members, "event");
    checkPattern(pattern, place);
    return {place, plain ? Expectation::Kind::later : kind->second, pattern};
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

bool isAside(const Event& event) {
    static const std::set<std::string> aside{"log", "log-file", "step"};
    return aside.contains(event["event"].get<std::string>());
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
            case Expectation::Kind::absent:
                return unmetAbsence(expectation);
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
        const auto found = std::find_if_not(at_, events_.end(), isAside);
        if (found == events_.end() || !fits(expectation.pattern, *found))
            return accountOf(expectation, "the next event is another:") + before() + "  It is:\n    " +
                   (found == events_.end() ? "none" : shown(*found)) + "\n";
        at_ = found + 1;
        return "";
    }

    std::string unmetAbsence(const Expectation& expectation) const {
        const auto found = find(expectation.pattern, events_.begin());
        if (found == events_.end()) return "";
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
