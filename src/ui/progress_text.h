// What the progress dialog says: texts made from data, without the host. All texts are UTF-8; lengths count characters.
#pragma once

#include <cstddef>
#include <string>

namespace ui {

enum class UploadStage { preparing = 0, uploading = 1, uploaded = 2 };

inline constexpr const char* failedWithoutDetails =
    "Pivra upload failed before returning details. If NX logging is enabled, check pivra-integration.log in the "
    "configured NX log directory for the preceding upload events. Then try again.";
inline constexpr const char* failedAfterExport =
    "Upload failed unexpectedly after NX export completed. If NX logging is enabled, check pivra-integration.log in "
    "the "
    "configured NX log directory for the preceding upload details. Then try again.";
inline constexpr const char* failedPreparation =
    "Failed to prepare NX files for upload. The export step did not finish. If NX logging is enabled, check "
    "pivra-integration.log in the configured NX log directory for export details. Then try again.";
inline constexpr const char* openFailed = "Unable to open the uploaded model in Pivra.";
inline constexpr const char* noMatchingLink =
    "Unable to open the uploaded model in Pivra because the upload response did not include a matching link.";

/// Picture and text of the status.
struct StatusView {
    const char* bitmap;
    std::string text;
};

/// That of a stage; `completionTime` is part of the last one's.
StatusView stageView(UploadStage stage, const std::string& completionTime);
/// That of an upload that failed, at whatever stage.
StatusView failedView();

std::string modelWorkspaceText(const std::string& modelName, const std::string& workspaceName);

/// Blanks that centre a line of `length` characters in a row of the dialog. The right ones are the same for every line.
std::string leftBlanks(std::size_t length, std::size_t rowWidth);
inline constexpr const char* rightBlanks = "   ";

/// The text of the box for a failed upload. Names that are not known are empty and left out; without `details` a fixed
/// sentence stands for them.
std::string failureReport(const std::string& fileName, const std::string& workspaceName, const std::string& details);

}  // namespace ui
