// What is known of the displayed part: shown by the dialogs, refreshed before an upload, sent by the upload.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace pivra {

/// One file of an upload: the root part's or a member's. All texts are UTF-8.
struct ModelFileEntry {
    std::string uploadPath;      ///< local file to send; empty when there is nothing to send
    std::string sourcePath;      ///< the part's full path in the host
    std::string uploadFileName;  ///< name under which the file is sent
    std::string sourceFileId;    ///< the part's traceable identifier
    std::string revision;        ///< its configured revision, "1" for a native part
    bool isPartFamily = false;   ///< the part belongs to a part family
};

/// The displayed model. All texts are UTF-8. Built and refreshed on the host's thread; the upload worker reads it while
/// that thread leaves it alone.
struct ModelMetadata {
    std::string fileName;                       ///< name to show; "No displayed part" when there is none
    double fileSizeMb = 0;                      ///< MiB; for an assembly the sum over its files; 0 when unknown
    std::string lastModified;                   ///< local time for display, "Unknown", or empty for an unsaved part
    std::string lastModifiedUtc;                ///< the same moment as "YYYY-MM-DDTHH:MM:SSZ"
    std::optional<std::string> uploadFileName;  ///< `fileName` when a part is displayed and has a name
    std::string sourcePath;                     ///< the part's full path in the host
    std::string exportedFile;                   ///< local file that an export produced; empty when none did
    std::string sourceFileId;                   ///< the part's traceable identifier
    std::string revision;                       ///< configured revision of a managed part, otherwise "1"
    std::string traceabilityError;              ///< why the identifier could not be repaired; stops the upload
    std::string uploadBlockedReason;            ///< why the upload cannot go on
    bool isAssembly = false;
    bool isPartFamily = false;
    bool hasLegacyId = false;
    bool isManaged = false;
    bool hasUnsavedChanges = false;
    bool hasUnsupportedFileTypes = false;
    bool hasUnloadedComponents = false;
    std::vector<ModelFileEntry> files;  ///< what an upload of a part or an assembly sends, root first
};

/// Bytes to MiB.
inline constexpr double mebibytesPerByte = 9.5367431640625e-7;

}  // namespace pivra
