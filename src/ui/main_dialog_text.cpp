#include "ui/main_dialog_text.h"

#include "service/version.h"
#include "ui/characters.h"

#include <algorithm>
#include <charconv>

namespace ui {
namespace {

constexpr const char* indent = "     ";
constexpr std::size_t longestFileName = 60;
constexpr std::size_t cutFileName = 57;

// Neither the C library's printing nor a stream's: the host may have set a locale with a decimal comma.
std::string twoDecimals(double value) {
    std::array<char, 400> digits{};
    const auto [end, error] =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed, 2);
    return {digits.data(), end};
}

std::string fileCount(std::size_t count) {
    return " (" + std::to_string(count) + (count == 1 ? " file)" : " files)");
}

/// The number that the whole of `text` stands for, or -1.
int wholeNumber(const std::string& text) {
    int number = -1;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end ? number : -1;
}

}  // namespace

FileNameLine fileNameLine(const std::string& fileName) {
    if (fileName.empty()) return {std::string(indent) + "Unknown", ""};
    if (characterCount(fileName) <= longestFileName) return {indent + fileName, ""};
    return {indent + std::string(firstCharacters(fileName, cutFileName)) + "...", fileName};
}

std::string sizeText(const pivra::ModelMetadata& metadata) {
    auto text = metadata.fileSizeMb > 0 ? "Size: " + twoDecimals(metadata.fileSizeMb) + " MB" : "Size: Unknown";
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
    return std::string("Version ") + service::version;
}

std::array<Warning, 5> partWarnings(const pivra::ModelMetadata& metadata, bool isDrawing, bool legacyIdWillBeFixed) {
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
          metadata.hasUnloadedComponents}}};
}

std::string blockingMessage(const pivra::ModelMetadata& metadata) {
    return metadata.traceabilityError.empty() ? metadata.uploadBlockedReason : metadata.traceabilityError;
}

std::optional<std::size_t> selectedIndex(const std::vector<std::string>& members, const std::string& text, int number) {
    const bool isName = std::find(members.begin(), members.end(), text) != members.end();
    int index = isName ? -1 : wholeNumber(text);
    if (index < 0) index = number;
    if (index < 0 || static_cast<std::size_t>(index) >= members.size()) return std::nullopt;
    return static_cast<std::size_t>(index);
}

}  // namespace ui
