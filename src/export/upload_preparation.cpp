#include "export/upload_preparation.h"

#include "export/assembly_checks.h"
#include "export/assembly_files.h"
#include "export/displayed_model_export.h"
#include "export/displayed_model_metadata.h"
#include "export/export_run.h"
#include "export/part_queries.h"
#include "logging/log.h"
#include "nx/session.h"
#include "platform/text.h"
#include "traceability/pivra_id_attribute.h"
#include "traceability/traceable_id.h"

#include <NXOpen/BasePart.hxx>

#include <stdexcept>

namespace pivra {

namespace {

using logging::flag;
using logging::LogInfo;
using logging::LogWarning;
using logging::number;
using logging::plain;
using logging::quoted;

constexpr const char* cachedExport = "cached_managed_export";

/// Reads again what may have changed since the record was made.
void refresh(NXOpen::BasePart& part, bool isDrawing, ModelMetadata& metadata, ExportRun& run) {
    metadata.sourcePath = run.names().fullPath(part);
    metadata.uploadBlockedReason.clear();
    metadata.isManaged = run.isManaged(&part);
    metadata.hasUnsavedChanges = hasUnsavedChanges(&part, isDrawing, run);
    metadata.hasUnsupportedFileTypes = !isDrawing && hasUnsupportedComponent(&part, run);
    clearTraceabilityFailureMessage();
    clearTraceabilitySavedPart();
}

void logStart(const std::string& label, bool isDrawing, const ModelMetadata& metadata) {
    LogInfo("Preparing NX upload files:", quoted("part", label), flag("drawing", isDrawing),
            flag("managed", metadata.isManaged), flag("unsaved", metadata.hasUnsavedChanges),
            quoted("cached_export", metadata.exportedFile), quoted("source", metadata.sourcePath));
}

void block(const std::string& label, ModelMetadata& metadata) {
    metadata.exportedFile.clear();
    metadata.files.clear();
    metadata.uploadBlockedReason = "Save the NX file before uploading to Pivra.";
    LogWarning("NX upload preparation stopped because the native model has no saved local source file:",
               quoted("part", label), quoted("source", metadata.sourcePath));
}

const char* exportReason(bool isDrawing, const ModelMetadata& metadata) {
    if (isDrawing) return "drawing";
    if (!metadata.isManaged) return "local_source";
    // An exported file that was deleted meanwhile counts as missing.
    if (!hasUsableLocalSource(metadata.exportedFile)) return "missing_cached_managed_export";
    if (traceabilitySavedPart() && traceabilityFailureMessage().empty()) return "traceability_changed";
    return cachedExport;
}

void runExport(NXOpen::BasePart& part, const std::string& label, const std::string& reason, ModelMetadata& metadata,
               ExportRun& run) {
    LogInfo("Running NX export before upload:", plain("reason", reason), quoted("part", label));
    metadata.exportedFile = exportDisplayedModel(&part, metadata.sourcePath, run);
    if (metadata.exportedFile.empty()) {
        LogWarning("NX export before upload produced no root file:", plain("reason", reason), quoted("part", label));
        return;
    }
    LogInfo("NX export before upload complete:", plain("reason", reason),
            quoted("exported_file", metadata.exportedFile));
}

void collectFiles(NXOpen::BasePart& part, bool isDrawing, ModelMetadata& metadata, ExportRun& run) {
    if (isDrawing || platform::hasExtension(metadata.exportedFile, ".pdf")) {
        metadata.files.clear();
        metadata.isAssembly = false;
        metadata.hasUnloadedComponents = false;
        return;
    }
    collectUploadFiles(&part, metadata, run);
    if (!metadata.files.empty()) metadata.fileSizeMb = totalSizeMb(metadata.files);
}

void logResult(bool isDrawing, const ModelMetadata& metadata) {
    LogInfo("Prepared NX upload files:", quoted("file_name", metadata.fileName),
            quoted("source_file_id", metadata.sourceFileId), flag("drawing", isDrawing),
            flag("managed", metadata.isManaged), flag("is_assembly", metadata.isAssembly),
            quoted("exported_file", metadata.exportedFile), number("files", metadata.files.size()),
            number("uploaded_files", uploadedFileCount(metadata.files)));
}

void prepare(NXOpen::BasePart& part, ModelMetadata& metadata) {
    ExportRun run(IdentifierForm::upload);
    const std::string label = run.names().logLabel(&part);
    const bool isDrawing = run.isDrawing();
    refresh(part, isDrawing, metadata, run);
    logStart(label, isDrawing, metadata);
    if (!metadata.isManaged && !isDrawing && !hasUsableLocalSource(metadata.sourcePath)) return block(label, metadata);
    run.setSessionKey(resolveTraceableId(&part, run.names()));
    const std::string reason = exportReason(isDrawing, metadata);
    if (reason == cachedExport) {
        LogInfo("Reusing cached managed NX export before upload:", quoted("exported_file", metadata.exportedFile));
    } else {
        runExport(part, label, reason, metadata, run);
    }
    metadata.sourceFileId = run.sessionKey();
    collectFiles(part, isDrawing, metadata, run);
    metadata.traceabilityError = traceabilityFailureMessage();
    logResult(isDrawing, metadata);
    if (!metadata.traceabilityError.empty()) throw std::runtime_error(metadata.traceabilityError);
}

}  // namespace

void prepareUploadFiles(const std::shared_ptr<ModelMetadata>& metadata) {
    if (NXOpen::BasePart* part = nx::displayedPart()) return prepare(*part, *metadata);
    LogWarning("NX upload preparation skipped because there is no displayed part.");
}

}  // namespace pivra
