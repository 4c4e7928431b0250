#include "records_json.h"

namespace cpp_piv {
namespace {

using nlohmann::json;

template <class Value>
void read(const json& object, const char* name, Value& value) {
    value = object.value(name, Value{});
}

template <class Value>
void read(const json& object, const char* name, std::optional<Value>& value) {
    if (const auto member = object.find(name); member != object.end() && !member->is_null()) {
        value = member->get<Value>();
    }
}

template <class Value>
void write(json& object, const char* name, const std::optional<Value>& value) {
    if (value) {
        object[name] = *value;
    }
}

}  // namespace

void from_json(const json& object, CppPivLocalAuthTokens& tokens) {
    read(object, "accessToken", tokens.accessToken);
    read(object, "refreshToken", tokens.refreshToken);
    read(object, "idToken", tokens.idToken);
}

void from_json(const json& object, CppPivUser& user) {
    read(object, "id", user.id);
    read(object, "organizationId", user.organizationId);
    read(object, "createdAt", user.createdAt);
    read(object, "email", user.email);
    read(object, "userName", user.userName);
    read(object, "givenName", user.givenName);
    read(object, "familyName", user.familyName);
    read(object, "pictureUrl", user.pictureUrl);
    read(object, "locale", user.locale);
    read(object, "role", user.role);
    read(object, "status", user.status);
}

void from_json(const json& object, CppPivWorkspace& workspace) {
    read(object, "id", workspace.id);
    read(object, "name", workspace.name);
    read(object, "description", workspace.description);
    read(object, "ownerId", workspace.ownerId);
    read(object, "organizationId", workspace.organizationId);
    read(object, "role", workspace.role);
    read(object, "visibility", workspace.visibility);
    read(object, "memberCount", workspace.memberCount);
    read(object, "createdAt", workspace.createdAt);
    read(object, "updatedAt", workspace.updatedAt);
    read(object, "thumbnailUrl", workspace.thumbnailUrl);
    read(object, "status", workspace.status);
}

void from_json(const json& object, CppPivDirectory& directory) {
    read(object, "id", directory.id);
    read(object, "workspaceId", directory.workspaceId);
    read(object, "name", directory.name);
}

void from_json(const json& object, CppPivFindRevisionResult& revision) {
    read(object, "revisionId", revision.revisionId);
    read(object, "fileId", revision.fileId);
    read(object, "fileName", revision.fileName);
    read(object, "revision", revision.revision);
    read(object, "createdAt", revision.createdAt);
}

void from_json(const json& object, CppPivUploadResult& result) {
    read(object, "entries", result.entries);
    read(object, "errors", result.errors);
}

void to_json(json& object, const CppPivInitializeOptions& options) {
    object = {{"clientVersions", options.clientVersions}};
    write(object, "logFile", options.logFile);
    write(object, "logLevel", options.logLevel);
    write(object, "logToConsole", options.logToConsole);
    write(object, "disableTelemetry", options.disableTelemetry);
    write(object, "disableCache", options.disableCache);
    write(object, "offline", options.offline);
    write(object, "requestTimeoutMs", options.requestTimeoutMs);
    write(object, "environment", options.environment);
}

static void to_json(json& object, const CppPivUploadFile& file) {
    object = {{"path", file.path}, {"fileName", file.fileName}, {"fileId", file.fileId}, {"revision", file.revision}};
}

void to_json(json& object, const CppPivUploadPayload& payload) {
    object = {{"workspaceDirectories", payload.workspaceDirectories},
              {"workspaceRevisions", payload.workspaceRevisions},
              {"files", payload.files}};
    write(object, "description", payload.description);
    write(object, "fileName", payload.fileName);
    write(object, "contentType", payload.contentType);
    write(object, "revision", payload.revision);
    write(object, "lastModified", payload.lastModified);
    write(object, "comment", payload.comment);
    write(object, "sourceVersion", payload.sourceVersion);
    write(object, "sourceRevision", payload.sourceRevision);
}

}  // namespace cpp_piv
