#include "service/upload_execution.h"

#include "platform/error_text.h"
#include "platform/text.h"

#include <algorithm>
#include <utility>

namespace pivra {
namespace {

using UploadFiles = std::vector<cpp_piv::CppPivUploadFile>;

constexpr const char* workspaceNotFound =
    "The selected Pivra workspace was not found in the workspace list loaded by NX. Refresh the Pivra dialog and "
    "select the workspace again.";
constexpr const char* noAssemblyFiles =
    "No exported NX assembly files are available for upload. The NX export step did not produce local files for the "
    "assembly root or members. If NX logging is enabled, check pivra-integration.log in the configured NX log "
    "directory for export details. Then try the upload again.";
constexpr const char* noFile =
    "No exported NX file is available for upload. The NX export step did not produce a local .prt, or .pdf file. If NX "
    "logging is enabled, check pivra-integration.log in the configured NX log directory for export details. Then try "
    "the upload again.";
constexpr const char* noToken =
    "No Pivra auth token is available for upload. Sign out, sign in again, and retry the upload.";
constexpr const char* notConfigured =
    "The Pivra upload client is not fully configured. NX could not create the root-directory or upload operation "
    "needed to send the exported files.";
constexpr const char* failedWithoutDetails =
    "Upload failed before Pivra returned details. If NX logging is enabled, check pivra-integration.log in the "
    "configured NX log directory for the preceding export and upload events. Then try again.";

std::optional<std::string> textIfAny(const std::string& text) {
    return text.empty() ? std::nullopt : std::optional(text);
}

bool hasLocalFile(const UploadFiles& files) {
    return std::any_of(files.begin(), files.end(), [](const auto& file) { return !file.path.empty(); });
}

/// Why the upload cannot be sent; empty when it can.
std::string reasonNotToSend(const ModelMetadata& metadata, const UploadFiles& files, const std::string& token,
                            const WorkspaceServiceCallbacks& callbacks) {
    if (!metadata.traceabilityError.empty()) return metadata.traceabilityError;
    if (!metadata.uploadBlockedReason.empty()) return metadata.uploadBlockedReason;
    if (!hasLocalFile(files)) return metadata.isAssembly ? noAssemblyFiles : noFile;
    if (token.empty()) return noToken;
    if (!callbacks.rootDirectory || !callbacks.upload) return notConfigured;
    return {};
}

std::optional<std::string> uploadFileName(const ModelMetadata& metadata, const UploadFiles& files) {
    if (metadata.uploadFileName && !metadata.uploadFileName->empty()) return metadata.uploadFileName;
    if (!metadata.isAssembly) return std::nullopt;
    if (!files.front().fileName.empty()) return files.front().fileName;
    return textIfAny(metadata.exportedFile.empty() ? metadata.fileName
                                                   : platform::lastPathComponent(metadata.exportedFile));
}

cpp_piv::CppPivUploadPayload makePayload(const UploadExecutionResult& target, const ModelMetadata& metadata,
                                         UploadFiles files) {
    cpp_piv::CppPivUploadPayload payload;
    payload.workspaceDirectories = {{target.workspaceId, target.rootDirectory}};
    payload.fileName = uploadFileName(metadata, files);
    payload.revision = textIfAny(metadata.revision);
    payload.lastModified = textIfAny(metadata.lastModifiedUtc);
    if (payload.revision) payload.sourceVersion.emplace(sourceVersion);
    payload.sourceRevision = payload.revision;
    payload.files = std::move(files);
    return payload;
}

void send(UploadExecutionResult& result, const ModelMetadata& metadata, UploadFiles files, const std::string& token,
          const WorkspaceServiceCallbacks& callbacks) {
    result.rootDirectory = callbacks.rootDirectory(token, result.workspaceId).id;
    auto response = callbacks.upload(token, makePayload(result, metadata, std::move(files)), false);
    result.responseEntries = std::move(response.entries);
    result.errors = std::move(response.errors);
    result.succeeded = result.errors.empty();
    if (!result.succeeded) result.message = result.errors.front();
}

}  // namespace

std::vector<cpp_piv::CppPivUploadFile> filesToSend(const ModelMetadata& metadata) {
    UploadFiles files;
    for (const ModelFileEntry& entry : metadata.files) {
        files.push_back({entry.uploadPath, entry.uploadFileName,
                         revisionLookupKey(entry.sourceFileId, entry.uploadFileName, entry.isPartFamily),
                         entry.revision});
    }
    if (files.empty() && !metadata.isAssembly) {
        files.push_back(
            {metadata.exportedFile, platform::lastPathComponent(metadata.exportedFile), {}, metadata.revision});
    }
    if (!files.empty()) files.front().fileId = revisionLookupKey(metadata);
    return files;
}

UploadExecutionResult executeUpload(std::int64_t workspaceId, const std::vector<cpp_piv::CppPivWorkspace>& workspaces,
                                    const auth::AuthSession& session, const ModelMetadata& metadata,
                                    const WorkspaceServiceCallbacks& callbacks) {
    UploadExecutionResult result;
    try {
        if (!findWorkspaceById(workspaces, workspaceId)) {
            result.message = workspaceNotFound;
            return result;
        }
        result.attempted = true;
        result.workspaceId = workspaceId;
        UploadFiles files = filesToSend(metadata);
        const std::string token = session.accessToken();
        result.message = reasonNotToSend(metadata, files, token, callbacks);
        if (result.message.empty()) send(result, metadata, std::move(files), token, callbacks);
    } catch (...) {
        result.message = platform::currentErrorText(failedWithoutDetails);
    }
    return result;
}

}  // namespace pivra
