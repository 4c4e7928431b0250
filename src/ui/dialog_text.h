// What the main dialog and the progress dialog say: texts made from data, without the host. All texts are UTF-8;
// lengths count characters.
#pragma once

#include "export/model_metadata.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace ui {

// The main dialog.

inline constexpr const char* legacyUploadDisabled =
    "Legacy file(s) detected. Upload is disabled because pivra_fix_legacy_id is off in pivra.properties. Enable "
    "pivra_fix_legacy_id and restart NX, or open a non-legacy NX file.";
inline constexpr const char* noWorkspaceSelected =
    "Select a Pivra workspace before uploading. If the workspace list is empty, sign in again or refresh the Pivra "
    "dialog.";
inline constexpr const char* noWorkspaces = "No Pivra workspaces were returned for the authenticated user.";
inline constexpr const char* signOutFailed = "Failed to sign out of Pivra.";

/// A name too long for its line is cut, and shown whole as the tooltip; otherwise the tooltip is empty.
struct FileNameLine {
    std::string text;
    std::string tooltip;
};

FileNameLine fileNameLine(const std::string& fileName);

/// "Size: 1.25 MB", for an assembly with its number of files; also a line of the progress dialog.
std::string sizeText(const pivra::ModelMetadata& metadata);
std::string sizeLine(const pivra::ModelMetadata& metadata);
const char* fileIcon(const pivra::ModelMetadata& metadata);
std::string lastModifiedLine(const pivra::ModelMetadata& metadata);

std::string greeting(const std::string& userName);
std::string versionText();

/// One warning: the label that carries its text, and the group that is shown or hidden.
struct Warning {
    const char* label;
    const char* group;
    const char* text;
    bool shown;
};

/// The warnings about the part itself. `legacyIdWillBeFixed`: nothing keeps the part from being repaired by an upload.
std::array<Warning, 6> partWarnings(const pivra::ModelMetadata& metadata, bool isDrawing, bool legacyIdWillBeFixed);

/// Why the part cannot be uploaded; empty when it can.
std::string blockingMessage(const pivra::ModelMetadata& metadata);

/// The chosen entry of the list `members`, given what the host says of the choice: `text`, the entry's number or its
/// name, and `number`. Absent without a choice. A name that reads as a number does not count as one.
std::optional<std::size_t> selectedIndex(const std::vector<std::string>& members, const std::string& text, int number);

// The progress dialog.

enum class UploadStage { preparing = 0, uploading = 1, uploaded = 2 };

inline constexpr const char* failedWithoutDetails =
    "Pivra upload failed before returning details. If NX logging is enabled, check pivra-integration.log in the "
    "configured NX log directory for the preceding upload events. Then try again.";
inline constexpr const char* failedAfterExport =
    "Upload failed unexpectedly after NX export completed. If NX logging is enabled, check pivra-integration.log in "
    "the configured NX log directory for the preceding upload details. Then try again.";
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

/// The text of the box for a failed upload. A name stands on one line, and one that is not known is empty and left out;
/// without `details` a fixed sentence stands for them.
std::string failureReport(const std::string& fileName, const std::string& workspaceName, const std::string& details);

}  // namespace ui
