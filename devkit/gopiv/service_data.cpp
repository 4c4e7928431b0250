#include "service_data.h"

#include <algorithm>
#include <fstream>

#include "text.h"

namespace gopiv {

using nlohmann::json;

NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE_WITH_DEFAULT(Misbehaviour, call, error, emptyError, delayMs, disconnect,
                                                emptyAddress, address, emptyToken, errors, omitLink, wrongLink, partial)

static void from_json(const json& record, Workspace& workspace) {
    workspace.id = record.at("id");
    workspace.name = record.value("name", "");
    workspace.rootDirectoryId = record.value("rootDirectoryId", 1000 + workspace.id);
    workspace.record = record;
}

namespace {

void require(bool holds, const std::string& rule) {
    if (!holds) throw Refusal("service.json of the development service: " + rule);
}

json sampleData() {
    return json::parse(R"({
        "user": {"id": 1, "email": "sample.user@example.com", "userName": "sample.user",
                 "givenName": "Sample", "familyName": "User"},
        "workspaces": [{"id": 1, "name": "Sample workspace"}],
        "revisions": [],
        "logoutAddress": true,
        "misbehave": {}
    })");
}

/// The file's members over the sample's; one of another type than the sample's is an error.
json readFile(const std::filesystem::path& file) {
    json data = sampleData();
    std::ifstream stream(file, std::ios::binary);
    const json given = stream ? json::parse(stream) : json::object();
    require(given.is_object(), "the file must hold an object.");
    for (const auto& [name, value] : given.items()) {
        require(data.contains(name), "\"" + name + "\" is not known.");
        require(value.type() == data[name].type(),
                "\"" + name + "\" must be of the type " + data[name].type_name() + ".");
        data[name] = value;
    }
    return data;
}

void checkNames(const json& misbehave) {
    static const json known = Misbehaviour();
    static const std::vector<std::string> operations{"authorize",      "complete",     "currentUser",   "logout",
                                                     "listWorkspaces", "findRevision", "rootDirectory", "upload"};
    for (const auto& [operation, entries] : misbehave.items()) {
        require(std::count(operations.begin(), operations.end(), operation) == 1,
                "\"misbehave\" names no operation \"" + operation + "\".");
        for (const json& entry : entries) {
            for (const auto& [name, value] : entry.items()) {
                require(known.contains(name), "an entry of \"misbehave\" for \"" + operation + "\" has \"" + name +
                                                  "\", which means nothing there.");
            }
        }
    }
}

/// Revisions of service.json in the form that uploads leave, each with one file.
json storedRevisions(const json& given) {
    json revisions = json::array();
    for (const json& revision : given) {
        const std::string fileName = revision.value("fileName", "");
        const std::string letter = revision.value("revision", "");
        const json file = {
            {"name", fileName}, {"fileId", revision.at("fileId").get<std::string>()}, {"revision", letter}};
        revisions.push_back({{"revisionId", revisions.size() + 1},
                             {"workspaceId", revision.at("workspaceId").get<std::int64_t>()},
                             {"fileName", fileName},
                             {"revision", letter},
                             {"createdAt", "2000-01-01T00:00:00Z"},
                             {"files", json::array({file})}});
    }
    return revisions;
}

}  // namespace

Misbehaviour ServiceData::misbehaviour(const std::string& operation, int number) const {
    const auto entries = misbehave.find(operation);
    if (entries != misbehave.end()) {
        for (const Misbehaviour& entry : entries->second)
            if (entry.call == -1 || entry.call == number) return entry;
    }
    return {};
}

const Workspace& ServiceData::workspace(std::int64_t id) const {
    const auto found = std::find_if(workspaces.begin(), workspaces.end(),
                                    [&](const Workspace& candidate) { return candidate.id == id; });
    if (found == workspaces.end()) throw Refusal("There is no workspace " + std::to_string(id) + ".");
    return *found;
}

ServiceData readServiceData(const std::filesystem::path& folder) {
    try {
        const json data = readFile(folder / "service.json");
        checkNames(data["misbehave"]);
        return {data["user"], data["workspaces"].get<std::vector<Workspace>>(), storedRevisions(data["revisions"]),
                data["logoutAddress"], data["misbehave"].get<std::map<std::string, std::vector<Misbehaviour>>>()};
    } catch (const json::exception& error) {
        throw Refusal(std::string("service.json of the development service cannot be read: ") + error.what());
    }
}

}  // namespace gopiv
