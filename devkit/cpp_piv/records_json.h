// The client library's records as JSON: one member a field, under the field's name. An unset option is null; a missing
// member leaves its field at the default.
#pragma once

#include <cpp_piv/initialize_options.h>
#include <cpp_piv/records.h>

#include <nlohmann/json.hpp>
#include <optional>

template <class Value>
struct nlohmann::adl_serializer<std::optional<Value>> {
    static void to_json(json& object, const std::optional<Value>& value) { object = value ? json(*value) : json(); }
    static void from_json(const json& object, std::optional<Value>& value) {
        value = object.is_null() ? std::nullopt : std::optional(object.get<Value>());
    }
};

namespace cpp_piv {

NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE_WITH_DEFAULT(CppPivLocalAuthTokens, accessToken, refreshToken, idToken)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE_WITH_DEFAULT(CppPivUser, id, organizationId, createdAt, email, userName, givenName,
                                                familyName, pictureUrl, locale, role, status)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE_WITH_DEFAULT(CppPivWorkspace, id, name, description, ownerId, organizationId, role,
                                                visibility, memberCount, createdAt, updatedAt, thumbnailUrl, status)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE_WITH_DEFAULT(CppPivDirectory, id, workspaceId, name)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE_WITH_DEFAULT(CppPivFindRevisionResult, revisionId, fileId, fileName, revision,
                                                createdAt)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE_WITH_DEFAULT(CppPivUploadFile, path, fileName, fileId, revision)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE_WITH_DEFAULT(CppPivUploadPayload, workspaceDirectories, workspaceRevisions,
                                                description, fileName, contentType, revision, lastModified, comment,
                                                sourceVersion, sourceRevision, files)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE_WITH_DEFAULT(CppPivUploadResult, entries, errors)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE_WITH_DEFAULT(CppPivInitializeOptions, logFile, logLevel, logToConsole,
                                                disableTelemetry, disableCache, offline, requestTimeoutMs, environment,
                                                clientVersions)

}  // namespace cpp_piv
