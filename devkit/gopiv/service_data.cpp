#include "service_data.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <string_view>

#include "text.h"

namespace gopiv {
namespace {

using nlohmann::json;
using Type = json::value_t;

void require(bool holds, const std::string& rule) {
    if (!holds) {
        throw Refusal("service.json of the development service: " + rule);
    }
}

json sampleData() {
    return {{"user",
             {{"id", 1},
              {"email", "sample.user@example.com"},
              {"userName", "sample.user"},
              {"givenName", "Sample"},
              {"familyName", "User"}}},
            {"workspaces", json::array({{{"id", 1}, {"name", "Sample workspace"}}})},
            {"revisions", json::array()},
            {"logoutAddress", true},
            {"misbehave", json::object()}};
}

json readFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        return json::object();
    }
    try {
        return json::parse(stream);
    } catch (const json::exception& error) {
        throw Refusal(std::string("service.json of the development service cannot be read: ") + error.what());
    }
}

/// `given` over the sample; a member of another type than the sample's is an error.
json overSample(const json& given) {
    require(given.is_object(), "the file must hold an object.");
    json data = sampleData();
    for (const auto& [name, value] : given.items()) {
        require(data.contains(name), "\"" + name + "\" is not known.");
        require(value.type() == data[name].type(),
                "\"" + name + "\" must be of the type " + data[name].type_name() + ".");
        data[name] = value;
    }
    return data;
}

bool isCount(const json& value) {
    return value.is_number_integer() && value.get<std::int64_t>() >= 0;
}

bool isTextList(const json& value) {
    return value.is_array() &&
           std::all_of(value.begin(), value.end(), [](const json& text) { return text.is_string(); });
}

bool isText(const json& value) {
    return value.is_string();
}

bool isFlag(const json& value) {
    return value.is_boolean();
}

/// A member of a misbehaviour: what its value must be, and which operation alone knows it.
struct Member {
    std::string_view name;
    bool (*fits)(const json&);
    std::string_view operation;
};

constexpr std::array<Member, 11> members{{{"call", isCount, ""},
                                          {"error", isText, ""},
                                          {"emptyError", isFlag, ""},
                                          {"delayMs", isCount, ""},
                                          {"disconnect", isFlag, ""},
                                          {"emptyAddress", isFlag, "authorize"},
                                          {"emptyToken", isFlag, "complete"},
                                          {"errors", isTextList, "upload"},
                                          {"omitLink", isFlag, "upload"},
                                          {"wrongLink", isFlag, "upload"},
                                          {"partial", isCount, "upload"}}};

constexpr std::array<std::string_view, 8> operations{"authorize",      "complete",     "currentUser",   "logout",
                                                     "listWorkspaces", "findRevision", "rootDirectory", "upload"};

void checkMisbehaviour(const std::string& operation, const json& entry) {
    const std::string place = "an entry of \"misbehave\" for \"" + operation + "\" ";
    require(entry.is_object(), place + "must be an object.");
    for (const auto& [name, value] : entry.items()) {
        const auto member =
            std::find_if(members.begin(), members.end(), [&key = name, &operation](const Member& known) {
                return known.name == key && (known.operation.empty() || known.operation == operation);
            });
        require(member != members.end(), place + "has \"" + name + "\", which means nothing there.");
        require(member->fits(value), place + "has a wrong value for \"" + name + "\": " + value.dump() + ".");
    }
}

void checkMisbehaviours(const json& misbehave) {
    for (const auto& [operation, entries] : misbehave.items()) {
        require(std::find(operations.begin(), operations.end(), operation) != operations.end(),
                "\"misbehave\" names no operation \"" + operation + "\".");
        require(entries.is_array(), "\"misbehave\" must have an array for \"" + operation + "\".");
        for (const json& entry : entries) {
            checkMisbehaviour(operation, entry);
        }
    }
}

/// A revision of service.json in the form that an upload leaves, with one file.
json storedRevision(const json& given, std::int64_t id) {
    require(given.is_object(), "\"revisions\" must hold objects.");
    require(given.contains("workspaceId") && given["workspaceId"].is_number_integer() &&
                given.value("fileId", json()).is_string(),
            "each of \"revisions\" needs \"workspaceId\" and \"fileId\".");
    const json fileName = given.value("fileName", json(""));
    const json revision = given.value("revision", json(""));
    require(fileName.is_string() && revision.is_string(),
            "\"fileName\" and \"revision\" of a revision must be strings.");
    return {{"revisionId", id},
            {"workspaceId", given["workspaceId"]},
            {"fileName", fileName},
            {"revision", revision},
            {"createdAt", "2000-01-01T00:00:00Z"},
            {"files", json::array({{{"name", fileName}, {"fileId", given["fileId"]}, {"revision", revision}}})}};
}

json storedRevisions(const json& given) {
    json revisions = json::array();
    for (const json& revision : given) {
        revisions.push_back(storedRevision(revision, static_cast<std::int64_t>(revisions.size()) + 1));
    }
    return revisions;
}

}  // namespace

json ServiceData::misbehaviour(const std::string& operation, int number) const {
    for (const json& entry : misbehave.value(operation, json::array())) {
        if (entry.value("call", number) == number) {
            return entry;
        }
    }
    return json::object();
}

const json& ServiceData::workspace(std::int64_t id) const {
    const auto found = std::find_if(workspaces.begin(), workspaces.end(),
                                    [&](const json& candidate) { return candidate["id"] == id; });
    if (found == workspaces.end()) {
        throw Refusal("There is no workspace " + std::to_string(id) + ".");
    }
    return *found;
}

std::int64_t rootDirectoryId(const json& workspace) {
    return workspace.value("rootDirectoryId", 1000 + workspace["id"].get<std::int64_t>());
}

ServiceData readServiceData(const std::filesystem::path& folder) {
    const json data = overSample(readFile(folder / "service.json"));
    for (const json& workspace : data["workspaces"]) {
        require(workspace.is_object() && workspace.value("id", json()).is_number_integer(),
                "each workspace needs an integer \"id\".");
        require(workspace.value("name", json("")).is_string(), "the \"name\" of a workspace must be a string.");
        require(workspace.value("rootDirectoryId", json(0)).is_number_integer(),
                "the \"rootDirectoryId\" of a workspace must be an integer.");
    }
    checkMisbehaviours(data["misbehave"]);
    return {data["user"], data["workspaces"], storedRevisions(data["revisions"]), data["logoutAddress"],
            data["misbehave"]};
}

}  // namespace gopiv
