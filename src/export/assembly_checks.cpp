#include "export/assembly_checks.h"

#include "export/component_walk.h"
#include "export/file_names.h"
#include "export/part_queries.h"
#include "logging/log.h"
#include "logging/log_line.h"
#include "nx/text.h"
#include "platform/error_text.h"
#include "traceability/part_label.h"

#include <NXOpen/Part.hxx>

#include <functional>
#include <optional>
#include <unordered_set>

namespace pivra {

namespace {

using logging::LogLine;
using logging::LogWarning;

bool isUnsaved(const Placement& placed) {
    if (placed.part == nullptr || !isPartModified(placed.part, "Assembly child modified-state check")) return false;
    LogWarning(LogLine("Assembly child has unsaved changes:").quoted("part", partLogLabel(placed.part)).text());
    return true;
}

bool isUnsupportedFile(const std::string& file) {
    if (!hasExtension(file, ".prt")) {
        LogWarning(LogLine("Assembly child has unsupported backing file type:")
                       .quoted("backing_source", file)
                       .quoted("extension", fileExtension(file))
                       .text());
        return true;
    }
    if (hasUsableLocalSource(file)) return false;
    LogWarning(LogLine("Assembly child backing .prt is not saved locally:").quoted("backing_source", file).text());
    return true;
}

bool isUnsupported(const Placement& placed) {
    if (placed.part != nullptr && isManagedPart(placed.part)) return false;
    // Of a loaded part the C++ interface gives the name in full, whatever the host's code page.
    const std::string file =
        placed.part != nullptr ? nx::utf8(placed.part->FullPath()) : fileOfComponent(*placed.component);
    if (!file.empty()) return isUnsupportedFile(file);
    if (placed.part == nullptr) return false;
    LogWarning(LogLine("Assembly child has unsupported loaded part source:")
                   .quoted("part", partLogLabel(placed.part))
                   .quoted("source", "")
                   .quoted("extension", "")
                   .text());
    return true;
}

void logError(const char* head, NXOpen::BasePart* part, const std::optional<std::string>& error) {
    if (error) LogWarning(LogLine(head).quoted("part", partLogLabel(part)).quoted("error", *error).text());
}

/// Whether `check` is true for a component below `part`. The places of one part are asked once.
bool anyComponent(NXOpen::BasePart* part, const std::function<bool(const Placement&)>& check) {
    bool hit = false;
    std::unordered_set<NXOpen::Part*> asked;
    const auto visit = [&](const Placement& placed) {
        if (placed.part != nullptr && !asked.insert(placed.part).second) return true;
        logError("Assembly child check failed:", placed.part, platform::errorOf([&] { hit = check(placed); }));
        return !hit;
    };
    logError("Assembly child check failed while walking components:", part, platform::errorOf([&] {
                 if (auto* root = rootComponent(part)) walkComponents(*part, *root, visit);
             }));
    return hit;
}

}  // namespace

bool hasUnsavedComponent(NXOpen::BasePart* part) {
    return anyComponent(part, isUnsaved);
}

bool hasUnsupportedComponent(NXOpen::BasePart* part) {
    return anyComponent(part, isUnsupported);
}

bool hasUnsavedChanges(NXOpen::BasePart* part, bool isDrawing) {
    return isPartModified(part) || (!isDrawing && hasUnsavedComponent(part));
}

}  // namespace pivra
