// Strict reading of a JSON document: every fault names its place.
#pragma once

#include <nlohmann/json.hpp>

#include <set>
#include <stdexcept>
#include <string>

namespace nxhost {

using Json = nlohmann::json;

/// A replay that cannot be played as it is written: what is wrong, and where ("steps[3].choose.entry").
class ReplayError : public std::runtime_error {
 public:
    ReplayError(const std::string& place, const std::string& fault) : std::runtime_error(place + ": " + fault) {}
};

/// The text, number, flag of `value`, which stands at `place`. Throw ReplayError for another type.
std::string asText(const Json& value, const std::string& place);
int asNumber(const Json& value, const std::string& place);
bool asFlag(const Json& value, const std::string& place);
const Json& asObject(const Json& value, const std::string& place);
const Json& asList(const Json& value, const std::string& place);

/// The members of one object. Those that were asked for are known; done() complains about the others.
class Members {
 public:
    Members(const Json& object, std::string place) : object_(asObject(object, place)), place_(std::move(place)) {}

    /// The member, or null when it is absent.
    const Json* find(const std::string& name);
    /// The member. Throws ReplayError when it is absent.
    const Json& need(const std::string& name);

    std::string text(const std::string& name) { return asText(need(name), place(name)); }
    std::string text(const std::string& name, const std::string& fallback);
    int number(const std::string& name, int fallback);
    bool flag(const std::string& name, bool fallback);

    /// Throws ReplayError for a member that nobody asked for.
    void done() const;
    std::string place(const std::string& name) const { return place_.empty() ? name : place_ + "." + name; }

 private:
    const Json& object_;
    std::string place_;
    std::set<std::string> known_;
};

}  // namespace nxhost
