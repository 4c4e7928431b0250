// What the client library takes and gives. All texts are UTF-8. The order of the members is the library's.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace cpp_piv {

struct CppPivLocalAuthTokens {
    std::string accessToken;
    std::string refreshToken;
    std::string idToken;
};

struct CppPivUser {
    std::int64_t id = 0;
    std::int64_t organizationId = 0;
    std::int64_t createdAt = 0;  ///< seconds since 1970-01-01 UTC
    std::string email;
    std::string userName;
    std::string givenName;
    std::string familyName;
    std::string pictureUrl;
    std::string locale;
    std::string role;
    std::string status;
};

struct CppPivWorkspace {
    std::int64_t id = 0;
    std::string name;
    std::string description;
    std::int64_t ownerId = 0;
    std::int64_t organizationId = 0;
    std::string role;
    std::string visibility;
    std::int64_t memberCount = 0;
    std::int64_t createdAt = 0;  ///< seconds since 1970-01-01 UTC
    std::int64_t updatedAt = 0;  ///< seconds since 1970-01-01 UTC
    std::optional<std::string> thumbnailUrl;
    std::string status;
};

struct CppPivDirectory {
    std::int64_t id = 0;
    std::int64_t workspaceId = 0;
    std::string name;
};

struct CppPivFindRevisionResult {
    std::int64_t revisionId = 0;
    std::string fileId;
    std::string fileName;
    std::string revision;
    std::string createdAt;  ///< "YYYY-MM-DDTHH:MM:SSZ"
};

/// One file of an upload.
struct CppPivUploadFile {
    std::string path;  ///< local file
    std::string fileName;
    std::string fileId;
    std::string revision;
};

struct CppPivUploadPayload {
    std::map<std::int64_t, std::int64_t> workspaceDirectories;  ///< workspace id to the directory to upload into
    std::map<std::int64_t, std::int64_t> workspaceRevisions;    ///< workspace id to the revision to build on
    std::optional<std::string> description;
    std::optional<std::string> fileName;
    std::optional<std::string> contentType;
    std::optional<std::string> revision;
    std::optional<std::string> lastModified;  ///< "YYYY-MM-DDTHH:MM:SSZ"
    std::optional<std::string> comment;
    std::optional<std::string> sourceVersion;
    std::optional<std::string> sourceRevision;
    std::vector<CppPivUploadFile> files;
};

struct CppPivUploadResult {
    std::map<std::string, std::string> entries;
    std::vector<std::string> errors;
};

}  // namespace cpp_piv
