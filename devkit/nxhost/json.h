// Reading the JSON of a replay: what must be there, beside what JsonMembers reads when it is.
#pragma once

#include <json_members.h>

#include <stdexcept>
#include <string>

namespace nxhost {

using Json = nlohmann::json;
using devkit::JsonMembers;

/// The member `name`. Throws std::runtime_error that names its place when it is absent.
inline const Json& needed(JsonMembers& members, const std::string& name) {
    const auto* value = members.find(name);
    if (!value) members.fail(name, "is missing");
    return *value;
}

/// The text `name`. Fails as well for another type.
inline std::string neededText(JsonMembers& members, const std::string& name) {
    needed(members, name);
    std::string text;
    members.read(name, text);
    return text;
}

/// The object `name`, as a whole.
inline const Json& neededObject(JsonMembers& members, const std::string& name) {
    const auto& value = needed(members, name);
    if (!value.is_object()) members.fail(name, "expected an object");
    return value;
}

/// Calls `take(element, place)` for each element of the list `name`.
template <typename Take>
void forEachIn(JsonMembers& members, const std::string& name, Take take) {
    const auto& list = needed(members, name);
    if (!list.is_array()) members.fail(name, "expected a list");
    for (std::size_t index = 0; index < list.size(); ++index)
        take(list[index], members.pathOf(name) + "[" + std::to_string(index) + "]");
}

}  // namespace nxhost
