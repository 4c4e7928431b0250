#include "service.h"

#include <algorithm>
#include <boost/algorithm/string/predicate.hpp>
#include <cstdio>
#include <iterator>
#include <utility>

#include "text.h"

namespace gopiv {
namespace {

using devkit::encodeFields;
using nlohmann::json;

/// The files of an upload that have a local file.
json localFiles(const json& payload) {
    json files = json::array();
    std::copy_if(payload.at("files").begin(), payload.at("files").end(), std::back_inserter(files),
                 [](const json& file) { return file.at("path") != ""; });
    if (files.empty()) throw Refusal("The upload has no files.");
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
    unsigned port = 0;
    int dataStart = 0;
    std::sscanf(serverUrl.c_str(), "http://127.0.0.1:%5u/?data=%n", &port, &dataStart);
    const std::string folder = devkit::percentDecode(serverUrl.substr(static_cast<std::size_t>(dataStart)));
    if (dataStart == 0 || port > 65535 || folder.empty()) return std::nullopt;
    return ServiceAddress{static_cast<unsigned short>(port), pathOf(folder)};
}

Service::Service(ServiceAddress address, std::string clientId, std::function<Json()> status,
                 std::function<void(const std::string&)> onPage)
    : address_(std::move(address)),
      clientId_(std::move(clientId)),
      store_(address_.folder),
      status_(std::move(status)),
      onPage_(std::move(onPage)) {}

json Service::authorize(const Json&, const Misbehaviour& misbehaviour) {
    if (misbehaviour.emptyAddress || !misbehaviour.address.empty()) return misbehaviour.address;
    const std::string address = origin();
    return address + "/authorize?" +
           encodeFields({{"client_id", clientId_},
                         {"redirect_uri", address + "/callback"},
                         {"response_type", "code"},
                         {"state", signIns_.begin()},
                         {"code_challenge", randomSecret()}});
}

json Service::complete(const Json&, const Misbehaviour& misbehaviour) {
    if (misbehaviour.emptyToken) return {{"accessToken", ""}, {"refreshToken", ""}, {"idToken", ""}};
    const std::string token = randomSecret();
    const std::lock_guard lock(mutex_);
    tokens_.insert(token);
    return {{"accessToken", token}, {"refreshToken", randomSecret()}, {"idToken", randomSecret()}};
}

json Service::currentUser(const Json& request, const Misbehaviour&) {
    requireToken(request);
    return data().user;
}

json Service::logout(const Json&, const Misbehaviour& misbehaviour) {
    std::unique_lock lock(mutex_);
    tokens_.clear();
    lock.unlock();
    const std::string page = data().logoutAddress ? origin() + "/signed-out" : "";
    return misbehaviour.address.empty() ? page : misbehaviour.address;
}

json Service::listWorkspaces(const Json& request, const Misbehaviour&) {
    requireToken(request);
    const ServiceData known = data();
    json workspaces = json::array();
    for (const Workspace& workspace : known.workspaces)
        if (boost::icontains(workspace.name, request.value("filter", ""))) workspaces.push_back(workspace.record);
    return workspaces;
}

json Service::findRevision(const Json& request, const Misbehaviour&) {
    requireToken(request);
    const ServiceData known = data();
    const std::int64_t workspaceId = known.workspace(request.at("workspaceId")).id;
    json matches = json::array();
    for (const json& revision : store_.revisions(known.revisions))
        if (revision.at("workspaceId") == workspaceId) collectMatches(revision, request, matches);
    if (request.value("latestOnly", false) && matches.size() > 1) matches = json::array({matches.back()});
    const std::string revision = request.value("revision", "");
    json found = json::array();
    std::copy_if(matches.begin(), matches.end(), std::back_inserter(found),
                 [&](const json& match) { return revision.empty() || match["revision"] == revision; });
    return found;
}

json Service::rootDirectory(const Json& request, const Misbehaviour&) {
    requireToken(request);
    const ServiceData known = data();
    const Workspace& workspace = known.workspace(request.at("workspaceId"));
    return {{"id", workspace.rootDirectoryId}, {"workspaceId", workspace.id}, {"name", ""}};
}

json Service::upload(const Json& request, const Misbehaviour& misbehaviour) {
    requireToken(request);
    const json& payload = request.at("payload");
    // An upload goes to one workspace, and into its root directory.
    const std::pair<std::int64_t, std::int64_t> destination = payload.at("workspaceDirectories").at(0);
    const auto [workspaceId, directoryId] = destination;
    if (directoryId != data().workspace(workspaceId).rootDirectoryId) {
        throw Refusal("Workspace " + std::to_string(workspaceId) + " has no directory " + std::to_string(directoryId) +
                      ".");
    }
    const json files = localFiles(payload);
    const std::int64_t id = store_.reserve();
    json revision = {{"workspaceId", workspaceId}, {"directoryId", directoryId}, {"revisionId", id}};
    for (const char* member : {"fileName", "revision", "lastModified", "sourceVersion", "sourceRevision"})
        revision[member] = payload.value(member, json());
    revision["createdAt"] = utcNow();
    revision["files"] = storeFiles(id, files, misbehaviour);
    store_.commit(revision);
    return {{"entries", entriesFor(id, misbehaviour)}, {"errors", misbehaviour.errors}};
}

json Service::storeFiles(std::int64_t revisionId, const Json& files, const Misbehaviour& misbehaviour) const {
    json stored = json::array();
    for (const json& file : files) {
        if (stored.size() == misbehaviour.partial) {
            throw Refusal("The connection to the Pivra service was lost after " + std::to_string(stored.size()) +
                          " of " + std::to_string(files.size()) + " files.");
        }
        stored.push_back(store_.storeFile(revisionId, file));
    }
    return stored;
}

json Service::entriesFor(std::int64_t revisionId, const Misbehaviour& misbehaviour) {
    json entries = {{"revisionId", std::to_string(revisionId)}};
    if (!misbehaviour.omitLink) {
        const std::int64_t linked = misbehaviour.wrongLink ? revisionId + 1 : revisionId;
        const std::string given = misbehaviour.address;
        entries["url"] = given.empty() ? origin() + "/models?revisionId=" + std::to_string(linked) : given;
    }
    return entries;
}

/// The address of the service's pages, which are served from the first time that somebody needs one.
std::string Service::origin() {
    const std::lock_guard lock(mutex_);
    if (!server_) {
        server_ = std::make_unique<HttpServer>(address_.port, [this](HttpRequest request) {
            HttpResponse response = page(request);
            onPage_(request.method + " " + request.path + " " + std::to_string(response.status));
            return response;
        });
    }
    return "http://127.0.0.1:" + std::to_string(server_->port());
}

void Service::requireToken(const Json& request) const {
    const std::lock_guard lock(mutex_);
    if (tokens_.count(request.at("accessToken").get<std::string>()) == 0)
        throw Refusal("The access token is not valid.");
}

}  // namespace gopiv
