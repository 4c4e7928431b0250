#include "export/assembly_checks.h"

#include "export/assembly_components.h"
#include "export/export_run.h"
#include "export/part_queries.h"
#include "logging/log.h"
#include "nx/session.h"
#include "platform/error_text.h"
#include "platform/text.h"

#include <NXOpen/Part.hxx>

#include <optional>
#include <string>

namespace pivra {

namespace {

using logging::LogWarning;
using logging::quoted;

bool isUnsaved(const Placement& placed, ExportRun& run) {
    if (placed.part == nullptr || !isPartModified(placed.part, "Assembly child modified-state check")) return false;
    LogWarning("Assembly child has unsaved changes:", quoted("part", run.names().logLabel(placed.part)));
    return true;
}

bool isUnsupportedFile(const std::string& file) {
    if (!platform::hasExtension(file, ".prt")) {
        LogWarning("Assembly child has unsupported backing file type:", quoted("backing_source", file),
                   quoted("extension", platform::fileExtension(file)));
        return true;
    }
    if (hasUsableLocalSource(file)) return false;
    LogWarning("Assembly child backing .prt is not saved locally:", quoted("backing_source", file));
    return true;
}

bool isUnsupported(const Placement& placed, ExportRun& run) {
    if (placed.part != nullptr && run.isManaged(placed.part)) return false;
    // The C++ interface gives the whole name of a loaded part, whatever the host's code page.
    const std::string file =
        placed.part != nullptr ? run.names().fullPath(*placed.part) : run.fileOf(*placed.component);
    if (!file.empty()) return isUnsupportedFile(file);
    if (placed.part == nullptr) return false;
    LogWarning("Assembly child has unsupported loaded part source:", quoted("part", run.names().logLabel(placed.part)),
               quoted("source", ""), quoted("extension", ""));
    return true;
}

void logError(const char* head, NXOpen::BasePart* part, const std::optional<std::string>& error) {
    if (error) LogWarning(head, quoted("part", nx::partLogLabel(part)), quoted("error", *error));
}

/// Whether `check` is true for a component below `part`. A part is checked once, however often it is placed.
bool anyComponent(NXOpen::BasePart* part, ExportRun& run, bool (*check)(const Placement&, ExportRun&)) {
    const auto& components = run.components(part);
    for (const Placement& placed : components.placements) {
        if (!placed.isFirst) continue;
        bool hit = false;
        logError("Assembly child check failed:", placed.part, platform::errorOf([&] { hit = check(placed, run); }));
        if (hit) return true;
    }
    logError("Assembly child check failed while walking components:", part, components.error);
    return false;
}

}  // namespace

bool hasUnsavedComponent(NXOpen::BasePart* part, ExportRun& run) {
    return anyComponent(part, run, isUnsaved);
}

bool hasUnsupportedComponent(NXOpen::BasePart* part, ExportRun& run) {
    return anyComponent(part, run, isUnsupported);
}

bool hasUnsavedChanges(NXOpen::BasePart* part, bool isDrawing, ExportRun& run) {
    return isPartModified(part) || (!isDrawing && hasUnsavedComponent(part, run));
}

}  // namespace pivra
