#include "export/displayed_model_metadata.h"

#include "export/assembly_checks.h"
#include "export/assembly_files.h"
#include "export/export_run.h"
#include "export/managed_clone_export.h"
#include "export/part_queries.h"
#include "logging/log.h"
#include "nx/session.h"
#include "platform/calendar.h"
#include "platform/error_text.h"
#include "platform/text.h"
#include "platform/text_encoding.h"
#include "traceability/pivra_id_attribute.h"
#include "traceability/traceable_id.h"

#include <NXOpen/BasePart.hxx>

#include <array>
#include <cstdio>
#include <optional>
#include <utility>

namespace pivra {

namespace fs = std::filesystem;

namespace {

using logging::flag;
using logging::LogDebug;
using logging::LogInfo;
using logging::LogWarning;
using logging::number;
using logging::quoted;

constexpr const char* unknownTime = "Unknown";

constexpr std::array<const char*, 12> monthNames{"January", "February", "March",     "April",   "May",      "June",
                                                 "July",    "August",   "September", "October", "November", "December"};

void setTimes(ModelMetadata& metadata, platform::FileTime written) {
    metadata.lastModified = formatDisplayTime(written);
    metadata.lastModifiedUtc = formatUtcTime(written);
}

/// False when there is no such file.
bool setFileFacts(ModelMetadata& metadata, const std::string& file) {
    const auto facts = platform::fileFacts(platform::pathFromUtf8(file));
    if (!facts) return false;
    metadata.fileSizeMb = static_cast<double>(facts->size) * mebibytesPerByte;
    setTimes(metadata, facts->written);
    return true;
}

/// Why the size of a file cannot be read; empty when there is no such file.
std::string statusError(const fs::path& file) {
    try {
        platform::fileSizeBytes(file);
        return {};
    } catch (const fs::filesystem_error& error) {
        const bool isMissing = error.code() == std::errc::no_such_file_or_directory;
        return isMissing ? std::string() : platform::errorText(error.code());
    }
}

/// One reading of the displayed part.
class Reading {
 public:
    Reading(NXOpen::BasePart& part, ModelMetadata& metadata, ExportRun& run)
        : part_(part),
          metadata_(metadata),
          run_(run),
          label_(run.names().logLabel(&part)),
          isDrawing_(run.isDrawing()) {}

    void classify();
    /// Logs that the file is about to be read.
    void logStart() const;
    void readFileFacts();
    void readFiles();
    void logResult() const;

 private:
    void readLocalFacts();
    void readManagedFacts();
    void readExportedFacts();
    void readAssemblyFacts();

    logging::Field part() const { return quoted("part", label_); }
    logging::Field fileName() const { return quoted("file_name", metadata_.fileName); }
    logging::Field sourceFileId() const { return quoted("source_file_id", metadata_.sourceFileId); }

    NXOpen::BasePart& part_;
    ModelMetadata& metadata_;
    ExportRun& run_;
    std::string label_;
    bool isDrawing_;
};

void Reading::classify() {
    metadata_.hasUnsavedChanges = hasUnsavedChanges(&part_, isDrawing_, run_);
    metadata_.isManaged = run_.isManaged(&part_);
    metadata_.sourcePath = run_.names().fullPath(part_);
    if (metadata_.isManaged || hasUsableLocalSource(metadata_.sourcePath)) return;
    LogDebug(
        "NX part has no usable local source and did not decode as Teamcenter-managed; treating as local unsaved part:",
        part(), quoted("source", metadata_.sourcePath));
}

void Reading::logStart() const {
    LogInfo("Reading NX display metadata:", part(), flag("drawing", isDrawing_), flag("managed", metadata_.isManaged),
            quoted("source", metadata_.sourcePath));
}

void Reading::readFileFacts() {
    run_.setSessionKey(resolveDisplayTraceableId(&part_, run_.names()));
    metadata_.sourceFileId = run_.sessionKey();
    if (metadata_.isManaged) {
        readManagedFacts();
    } else {
        readLocalFacts();
    }
}

void Reading::readLocalFacts() {
    metadata_.fileName = platform::lastPathComponent(metadata_.sourcePath);
    if (metadata_.fileName.empty()) metadata_.fileName = run_.names().leaf(part_);
    if (!setFileFacts(metadata_, metadata_.sourcePath)) {
        LogWarning("NX display metadata found a local part without a saved source file:", part(), sourceFileId(),
                   quoted("source", metadata_.sourcePath));
        return;
    }
    LogDebug("NX display metadata read from local source:", fileName(), sourceFileId(),
             logging::decimal("size_mb", metadata_.fileSizeMb));
}

void Reading::readManagedFacts() {
    metadata_.exportedFile = exportManagedPart(&part_, run_);
    metadata_.fileName = platform::lastPathComponent(metadata_.exportedFile);
    if (metadata_.fileName.empty()) metadata_.fileName = run_.names().leaf(part_);
    if (metadata_.exportedFile.empty()) {
        LogWarning("Managed NX display metadata export produced no local clone:", part(), sourceFileId());
        return;
    }
    readExportedFacts();
}

void Reading::readExportedFacts() {
    if (!setFileFacts(metadata_, metadata_.exportedFile)) {
        metadata_.lastModified = unknownTime;
        LogWarning("NX display metadata could not read managed export file stats:", part(),
                   quoted("exported_file", metadata_.exportedFile),
                   quoted("error", statusError(platform::pathFromUtf8(metadata_.exportedFile))));
        return;
    }
    LogDebug("NX display metadata read from managed export:", fileName(), sourceFileId(),
             quoted("exported_file", metadata_.exportedFile), logging::decimal("size_mb", metadata_.fileSizeMb));
}

void Reading::readFiles() {
    metadata_.isPartFamily = !isDrawing_ && isPartFamilyMember(&part_);
    metadata_.revision = configuredRevisionId(run_.managedName(&part_));
    if (!metadata_.fileName.empty()) metadata_.uploadFileName = metadata_.fileName;
    if (isDrawing_) return;
    collectUploadFiles(&part_, metadata_, run_);
    metadata_.hasUnsupportedFileTypes = hasUnsupportedComponent(&part_, run_);
    if (metadata_.isAssembly) readAssemblyFacts();
}

std::optional<platform::FileTime> newestWriteTime(const std::vector<ModelFileEntry>& files) {
    std::optional<platform::FileTime> newest;
    for (const auto& entry : files) {
        const auto facts = platform::fileFacts(platform::pathFromUtf8(entry.uploadPath));
        if (facts && (!newest || facts->written > *newest)) newest = facts->written;
    }
    return newest;
}

void Reading::readAssemblyFacts() {
    if (const double total = totalSizeMb(metadata_.files); total > 0) metadata_.fileSizeMb = total;
    if (!metadata_.isManaged) return;
    if (const auto newest = newestWriteTime(metadata_.files)) setTimes(metadata_, *newest);
}

void Reading::logResult() const {
    LogInfo("NX display metadata ready:", fileName(), sourceFileId(), flag("drawing", isDrawing_),
            flag("managed", metadata_.isManaged), flag("unsaved", metadata_.hasUnsavedChanges),
            flag("is_assembly", metadata_.isAssembly),
            flag("unsupported_file_types", metadata_.hasUnsupportedFileTypes), number("files", metadata_.files.size()),
            number("uploaded_files", uploadedFileCount(metadata_.files)),
            quoted("exported_file", metadata_.exportedFile));
}

void readPart(NXOpen::BasePart& part, ModelMetadata& metadata) {
    ExportRun run(IdentifierForm::display);
    metadata.hasLegacyId = legacyIdWarningNeeded(&part, run.names());
    // Logs the setting, which decides what happens to a legacy part.
    fixLegacyIdEnabled();
    Reading reading(part, metadata, run);
    reading.classify();
    reading.logStart();
    reading.readFileFacts();
    reading.readFiles();
    metadata.traceabilityError = traceabilityFailureMessage();
    reading.logResult();
}

}  // namespace

std::shared_ptr<ModelMetadata> readDisplayedModelMetadata() {
    ModelMetadata metadata;
    clearTraceabilityFailureMessage();
    clearTraceabilitySavedPart();
    if (NXOpen::BasePart* part = nx::displayedPart()) {
        readPart(*part, metadata);
    } else {
        metadata.fileName = "No displayed part";
        metadata.lastModified = unknownTime;
        LogWarning("NX metadata read found no displayed part.");
    }
    return std::make_shared<ModelMetadata>(std::move(metadata));
}

std::string formatDisplayTime(platform::FileTime time) {
    const std::tm local = platform::localCalendarTime(time).fields;
    const int hour = local.tm_hour % 12 == 0 ? 12 : local.tm_hour % 12;
    char text[64];
    std::snprintf(text, sizeof text, "%s %02d, %d - %02d:%02d %s", monthNames[static_cast<std::size_t>(local.tm_mon)],
                  local.tm_mday, local.tm_year + 1900, hour, local.tm_min, local.tm_hour < 12 ? "AM" : "PM");
    return text;
}

std::string formatUtcTime(platform::FileTime time) {
    const std::tm utc = platform::utcCalendarTime(time).fields;
    char text[64];
    std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02dZ", utc.tm_year + 1900, utc.tm_mon + 1, utc.tm_mday,
                  utc.tm_hour, utc.tm_min, utc.tm_sec);
    return text;
}

double totalSizeMb(const std::vector<ModelFileEntry>& files) {
    std::uint64_t total = 0;
    for (const auto& entry : files) {
        const std::string& path = entry.uploadPath.empty() ? entry.sourcePath : entry.uploadPath;
        if (const auto facts = platform::fileFacts(platform::pathFromUtf8(path))) total += facts->size;
    }
    return static_cast<double>(total) * mebibytesPerByte;
}

}  // namespace pivra
