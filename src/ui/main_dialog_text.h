// What the main dialog says: texts made from data, without the host. All texts are UTF-8; lengths count characters.
#pragma once

#include "export/model_metadata.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace ui {

inline constexpr const char* matchesLatestWarning =
    "This file matches the latest revision in the workspace. Uploading again will create a new revision.";
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
std::array<Warning, 5> partWarnings(const pivra::ModelMetadata& metadata, bool isDrawing, bool legacyIdWillBeFixed);

/// Why the part cannot be uploaded; empty when it can.
std::string blockingMessage(const pivra::ModelMetadata& metadata);

/// The chosen entry of the list `members`, given what the host says of the choice: `text`, the entry's number or its
/// name, and `number`. Absent without a choice. A name that reads as a number does not count as one.
std::optional<std::size_t> selectedIndex(const std::vector<std::string>& members, const std::string& text, int number);

}  // namespace ui
