#include "export/assembly_checks.h"

#include "export/component_walk.h"
#include "export/error_text.h"
#include "export/file_names.h"
#include "export/part_queries.h"
#include "logging/log.h"
#include "logging/log_line.h"
#include "nx/text.h"
#include "traceability/part_label.h"

#include <NXOpen/Part.hxx>

#include <functional>
#include <optional>
#include <unordered_set>

namespace pivra {

namespace {

using logging::LogLine;
using logging::LogWarning;

bool isUnsaved(NXOpen::Part& part) {
    if (!isPartModified(&part, "Assembly child modified-state check")) return false;
    LogWarning(LogLine("Assembly child has unsaved changes:").quoted("part", partLogLabel(&part)).text());
    return true;
}

bool isUnsupported(NXOpen::Part& part) {
    if (isManagedPart(&part)) return false;
    const std::string source = nx::utf8(part.FullPath());
    const std::string extension = fileExtension(source);
    if (source.empty()) {
        LogWarning(LogLine("Assembly child has unsupported loaded part source:")
                       .quoted("part", partLogLabel(&part))
                       .quoted("source", source)
                       .quoted("extension", extension)
                       .text());
        return true;
    }
    if (!hasExtension(source, ".prt")) {
        LogWarning(LogLine("Assembly child has unsupported backing file type:")
                       .quoted("backing_source", source)
                       .quoted("extension", extension)
                       .text());
        return true;
    }
    if (hasUsableLocalSource(source)) return false;
    LogWarning(LogLine("Assembly child backing .prt is not saved locally:").quoted("backing_source", source).text());
    return true;
}

void logError(const char* head, NXOpen::BasePart* part, const std::optional<std::string>& error) {
    if (error) LogWarning(LogLine(head).quoted("part", partLogLabel(part)).quoted("error", *error).text());
}

/// Whether `check` is true for a part below `part`.
bool anyComponent(NXOpen::BasePart* part, const std::function<bool(NXOpen::Part&)>& check) {
    bool hit = false;
    std::unordered_set<NXOpen::Part*> asked;
    const auto visit = [&](NXOpen::Part& member) {
        if (!asked.insert(&member).second) return true;
        logError("Assembly child check failed:", &member, errorOf([&] { hit = check(member); }));
        return !hit;
    };
    logError("Assembly child check failed while walking components:", part, errorOf([&] {
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
