#include "ui/dialog_text.h"

#include "platform/text.h"
#include "service/service_client_provider.h"

#include <algorithm>
#include <charconv>

namespace ui {
namespace {

constexpr const char* indent = "     ";
constexpr std::size_t longestFileName = 60;
constexpr std::size_t cutFileName = 57;

std::string fileCount(std::size_t count) {
    return " (" + std::to_string(count) + (count == 1 ? " file)" : " files)");
}

/// The number that `text` is as a whole; -1 for any other text.
int wholeNumber(const std::string& text) {
    int number = -1;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end ? number : -1;
}

}  // namespace

FileNameLine fileNameLine(const std::string& fileName) {
    if (fileName.empty()) return {std::string(indent) + "Unknown", ""};
    if (platform::characterCount(fileName) <= longestFileName) return {indent + fileName, ""};
    return {indent + std::string(platform::firstCharacters(fileName, cutFileName)) + "...", fileName};
}

std::string sizeText(const pivra::ModelMetadata& metadata) {
    auto text =
        metadata.fileSizeMb > 0 ? "Size: " + platform::decimalText(metadata.fileSizeMb, 2) + " MB" : "Size: Unknown";
    if (metadata.isAssembly && !metadata.files.empty()) text += fileCount(metadata.files.size());
    return text;
}

std::string sizeLine(const pivra::ModelMetadata& metadata) {
    return indent + sizeText(metadata);
}

const char* fileIcon(const pivra::ModelMetadata& metadata) {
    return metadata.isAssembly ? "pivra_file_upload_asm_icon.bmp" : "pivra_file_upload_single_icon.bmp";
}

std::string lastModifiedLine(const pivra::ModelMetadata& metadata) {
    return std::string(indent) +
           "Last modified: " + (metadata.lastModified.empty() ? "Unknown" : metadata.lastModified);
}

std::string greeting(const std::string& userName) {
    return "Welcome back, " + userName + "!";
}

std::string versionText() {
    return std::string("Version ") + pivra::clientVersion;
}

std::array<Warning, 6> partWarnings(const pivra::ModelMetadata& metadata, bool isDrawing, bool legacyIdWillBeFixed) {
    return {
        {{"idWarning", "idWarningGroup",
          legacyIdWillBeFixed ? "Legacy file(s) detected. PIVRA_ID attribute will be added to maintain traceability."
                              : "Legacy file(s) detected. Unable to upload.",
          metadata.hasLegacyId},
         {"drwWarning", "drwWarningGroup", "NX drawings are automatically converted to PDF when uploaded to Pivra.",
          isDrawing},
         {"unsavedWarning", "unsavedWarningGroup",
          "This model has unsaved changes. Please save the model before uploading it.", metadata.hasUnsavedChanges},
         {"unsupportedWarning", "unsupportedWarningGroup",
          "Non-PRT files are not supported for upload to Pivra. Pivra supports only PRT file uploads.",
          metadata.hasUnsupportedFileTypes},
         {"unloadedWarning", "unloadedWarningGroup",
          "Some components are not loaded and will not be uploaded. Load them to upload the whole assembly.",
          metadata.hasUnloadedComponents},
         {"targetWarning", "targetWarningGroup",
          "This file matches the latest revision in the workspace. Uploading again will create a new revision.",
          false}}};  // shown once the chosen workspace is known to hold the revision
}

std::string blockingMessage(const pivra::ModelMetadata& metadata) {
    return metadata.traceabilityError.empty() ? metadata.uploadBlockedReason : metadata.traceabilityError;
}

std::optional<std::size_t> selectedIndex(const std::vector<std::string>& members, const std::string& text, int number) {
    const bool isName = std::find(members.begin(), members.end(), text) != members.end();
    int index = isName ? -1 : wholeNumber(text);
    if (index < 0) index = number;
    // A negative index becomes one beyond every list.
    const auto position = static_cast<std::size_t>(index);
    return position < members.size() ? std::optional(position) : std::nullopt;
}

StatusView stageView(UploadStage stage, const std::string& completionTime) {
    switch (stage) {
        case UploadStage::preparing:
            return {"pivra_upload_preparing.bmp", "Exporting your data for upload..."};
        case UploadStage::uploading:
            return {"pivra_upload_uploading.bmp", "Transferring file to Pivra..."};
        case UploadStage::uploaded:
            break;
    }
    return {"pivra_upload_uploaded.bmp", "Uploaded " + completionTime};
}

StatusView failedView() {
    return {"pivra_warning.bmp", "Upload failed"};
}

std::string modelWorkspaceText(const std::string& modelName, const std::string& workspaceName) {
    return modelName + " -> " + workspaceName;
}

std::string leftBlanks(std::size_t length, std::size_t rowWidth) {
    return std::string(length + 6 < rowWidth ? rowWidth - length - 3 : 3, ' ');
}

std::string failureReport(const std::string& fileName, const std::string& workspaceName, const std::string& details) {
    std::string text = "Pivra upload failed.";
    if (!fileName.empty()) text += "\n\nFile: " + platform::oneLine(fileName);
    if (!workspaceName.empty()) text += "\nWorkspace: " + workspaceName;
    return text + "\n\nDetails: " + (details.empty() ? failedWithoutDetails : details);
}

}  // namespace ui
