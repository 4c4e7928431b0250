#include "members.h"

namespace nxhost {

namespace {

const Json& checked(const Json& value, bool fits, const std::string& place, const char* wanted) {
    if (!fits) throw ReplayError(place, std::string("must be ") + wanted + ", not " + value.dump() + ".");
    return value;
}

}  // namespace

std::string asText(const Json& value, const std::string& place) {
    return checked(value, value.is_string(), place, "a text").get<std::string>();
}

int asNumber(const Json& value, const std::string& place) {
    return checked(value, value.is_number_integer(), place, "a whole number").get<int>();
}

bool asFlag(const Json& value, const std::string& place) {
    return checked(value, value.is_boolean(), place, "true or false").get<bool>();
}

const Json& asObject(const Json& value, const std::string& place) {
    return checked(value, value.is_object(), place, "an object");
}

const Json& asList(const Json& value, const std::string& place) {
    return checked(value, value.is_array(), place, "a list");
}

const Json* Members::find(const std::string& name) {
    known_.insert(name);
    const auto at = object_.find(name);
    return at == object_.end() ? nullptr : &*at;
}

const Json& Members::need(const std::string& name) {
    if (const auto* value = find(name)) return *value;
    throw ReplayError(place(name), "is missing.");
}

std::string Members::text(const std::string& name, const std::string& fallback) {
    const auto* value = find(name);
    return value ? asText(*value, place(name)) : fallback;
}

int Members::number(const std::string& name, int fallback) {
    const auto* value = find(name);
    return value ? asNumber(*value, place(name)) : fallback;
}

bool Members::flag(const std::string& name, bool fallback) {
    const auto* value = find(name);
    return value ? asFlag(*value, place(name)) : fallback;
}

void Members::done() const {
    for (const auto& [name, value] : object_.items())
        if (!known_.contains(name)) throw ReplayError(place(name), "is unknown.");
}

}  // namespace nxhost
