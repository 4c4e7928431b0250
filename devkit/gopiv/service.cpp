#include "service.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <utility>

#include "text.h"

namespace gopiv {
namespace {

using devkit::encodeFields;
using nlohmann::json;

std::string lowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return text;
}

/// The one workspace that an upload names, and the directory it names there.
std::pair<std::int64_t, std::int64_t> destination(const json& payload) {
    const json& directories = payload.at("workspaceDirectories");
    if (directories.size() != 1) {
        throw Refusal("An upload must name exactly one workspace.");
    }
    return directories.front();
}

json filesToStore(const json& payload) {
    json files = json::array();
    for (const json& file : payload.at("files")) {
        if (!file.at("path").get<std::string>().empty()) {
            files.push_back(file);
        }
    }
    if (files.empty()) {
        throw Refusal("The upload has no files.");
    }
    return files;
}

/// The files of a revision that a lookup means, in the form of the lookup's answer.
void collectMatches(const json& revision, const json& request, json& matches) {
    const std::string fileName = request.value("fileName", "");
    for (const json& file : revision.at("files")) {
        if (file.at("fileId") == request.at("fileId") && (fileName.empty() || file.at("name") == fileName)) {
            matches.push_back({{"revisionId", revision.at("revisionId")},
                               {"fileId", file.at("fileId")},
                               {"fileName", file.at("name")},
                               {"revision", file.at("revision")},
                               {"createdAt", revision.at("createdAt")}});
        }
    }
}

}  // namespace

std::optional<ServiceAddress> parseServiceAddress(const std::string& serverUrl) {
    static constexpr std::string_view start = "http://127.0.0.1:";
    static constexpr std::string_view query = "/?data=";
    const std::size_t queryStart = serverUrl.find(query);
    if (serverUrl.rfind(start, 0) != 0 || queryStart == std::string::npos) {
        return std::nullopt;
    }
    ServiceAddress address;
    const char* const portEnd = serverUrl.data() + queryStart;
    const auto [end, error] = std::from_chars(serverUrl.data() + start.size(), portEnd, address.port);
    const auto folder = devkit::percentDecode(std::string_view(serverUrl).substr(queryStart + query.size()));
    if (error != std::errc{} || end != portEnd || !folder || folder->empty()) {
        return std::nullopt;
    }
    address.folder = pathFromUtf8(*folder);
    return address;
}

Service::Service(ServiceAddress address, std::string clientId, std::function<Json()> status,
                 std::function<void(const std::string&)> onPage)
    : address_(std::move(address)),
      clientId_(std::move(clientId)),
      store_(address_.folder),
      site_(address_.folder, clientId_, signIns_, std::move(status)),
      onPage_(std::move(onPage)) {}

json Service::authorize(const Json&, const Json& misbehaviour) {
    if (misbehaviour.value("emptyAddress", false)) {
        return "";
    }
    const std::string address = origin();
    const SignIns::Begun begun = signIns_.begin();
    return address + "/authorize?" +
           encodeFields({{"client_id", clientId_},
                         {"redirect_uri", address + "/callback"},
                         {"response_type", "code"},
                         {"state", begun.state},
                         {"code_challenge", begun.challenge}});
}

json Service::complete(const Json&, const Json& misbehaviour) {
    if (misbehaviour.value("emptyToken", false)) {
        return {{"accessToken", ""}, {"refreshToken", ""}, {"idToken", ""}};
    }
    const std::string token = randomSecret();
    const std::lock_guard lock(mutex_);
    tokens_.insert(token);
    return {{"accessToken", token}, {"refreshToken", randomSecret()}, {"idToken", randomSecret()}};
}

json Service::currentUser(const Json& request, const Json&) {
    requireToken(request);
    return data().user;
}

json Service::logout(const Json&, const Json&) {
    const bool withAddress = data().logoutAddress;
    {
        const std::lock_guard lock(mutex_);
        tokens_.clear();
    }
    return withAddress ? origin() + "/signed-out" : "";
}

json Service::listWorkspaces(const Json& request, const Json&) {
    requireToken(request);
    const std::string filter = lowerCase(request.value("filter", ""));
    const ServiceData known = data();
    json workspaces = json::array();
    for (const json& workspace : known.workspaces) {
        if (lowerCase(workspace.value("name", "")).find(filter) != std::string::npos) {
            workspaces.push_back(workspace);
        }
    }
    return workspaces;
}

json Service::findRevision(const Json& request, const Json&) {
    requireToken(request);
    const ServiceData known = data();
    const json& workspace = known.workspace(request.at("workspaceId"));
    json matches = json::array();
    for (const json& revision : allRevisions(known, store_)) {
        if (revision.at("workspaceId") == workspace["id"]) {
            collectMatches(revision, request, matches);
        }
    }
    if (request.value("latestOnly", false) && matches.size() > 1) {
        matches.erase(matches.begin(), matches.end() - 1);
    }
    const std::string revision = request.value("revision", "");
    json found = json::array();
    std::copy_if(matches.begin(), matches.end(), std::back_inserter(found),
                 [&](const json& match) { return revision.empty() || match["revision"] == revision; });
    return found;
}

json Service::rootDirectory(const Json& request, const Json&) {
    requireToken(request);
    const ServiceData known = data();
    const json& workspace = known.workspace(request.at("workspaceId"));
    return {{"id", rootDirectoryId(workspace)}, {"workspaceId", workspace["id"]}, {"name", ""}};
}

json Service::upload(const Json& request, const Json& misbehaviour) {
    requireToken(request);
    const json& payload = request.at("payload");
    const auto [workspaceId, directoryId] = destination(payload);
    if (directoryId != rootDirectoryId(data().workspace(workspaceId))) {
        throw Refusal("Workspace " + std::to_string(workspaceId) + " has no directory " + std::to_string(directoryId) +
                      ".");
    }
    const json files = filesToStore(payload);
    const std::int64_t id = store_.reserve();
    json revision = {{"workspaceId", workspaceId}, {"directoryId", directoryId}, {"revisionId", id}};
    for (const char* member : {"fileName", "revision", "lastModified", "sourceVersion", "sourceRevision"}) {
        revision[member] = payload.value(member, json());
    }
    revision["createdAt"] = utcNow();
    revision["files"] = storeFiles(id, files, misbehaviour);
    store_.commit(revision);
    return {{"entries", entriesFor(id, misbehaviour)}, {"errors", misbehaviour.value("errors", json::array())}};
}

json Service::storeFiles(std::int64_t revisionId, const Json& files, const Json& misbehaviour) const {
    json stored = json::array();
    for (const json& file : files) {
        if (misbehaviour.value("partial", files.size()) == stored.size()) {
            throw Refusal("The connection to the Pivra service was lost after " + std::to_string(stored.size()) +
                          " of " + std::to_string(files.size()) + " files.");
        }
        stored.push_back(store_.storeFile(revisionId, file));
    }
    return stored;
}

json Service::entriesFor(std::int64_t revisionId, const Json& misbehaviour) {
    json entries = {{"revisionId", std::to_string(revisionId)}};
    if (!misbehaviour.value("omitLink", false)) {
        const std::int64_t linked = misbehaviour.value("wrongLink", false) ? revisionId + 1 : revisionId;
        entries["url"] = origin() + "/models?revisionId=" + std::to_string(linked);
    }
    return entries;
}

/// The address of the service's pages, which are served from the first time that somebody needs one.
std::string Service::origin() {
    const std::lock_guard lock(mutex_);
    if (!server_) {
        server_ = std::make_unique<HttpServer>(address_.port, [this](const HttpRequest& request) {
            HttpResponse response = site_.answer(request);
            onPage_(request.method + " " + request.path + " " + std::to_string(response.status));
            return response;
        });
    }
    return "http://127.0.0.1:" + std::to_string(server_->port());
}

void Service::requireToken(const Json& request) const {
    const std::lock_guard lock(mutex_);
    if (tokens_.count(request.at("accessToken").get<std::string>()) == 0) {
        throw Refusal("The access token is not valid.");
    }
}

}  // namespace gopiv
