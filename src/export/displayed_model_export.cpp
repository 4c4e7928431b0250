#include "export/displayed_model_export.h"

#include "export/drawing_pdf_export.h"
#include "export/managed_clone_export.h"
#include "export/part_queries.h"
#include "logging/log.h"
#include "nx/session.h"
#include "platform/files.h"
#include "platform/text_encoding.h"

namespace pivra {

namespace fs = std::filesystem;

namespace {

using logging::LogDebug;
using logging::LogLevel;
using logging::LogWarning;
using logging::quoted;

bool isSameFile(const fs::path& left, const fs::path& right) {
    std::error_code error;
    // Tells two files apart at once; what it takes for one may have two names.
    if (!fs::equivalent(left, right, error)) return false;
    const fs::path canonicalLeft = fs::canonical(left, error);
    return !error && canonicalLeft == fs::canonical(right, error);
}

std::string reuse(const fs::path& file) {
    std::string path = platform::utf8FromPath(file);
    LogDebug("Local NX model export reused existing temp file:", quoted("path", path));
    return path;
}

std::string copy(const std::string& sourcePath, const fs::path& source, const fs::path& target) {
    std::string destination = platform::utf8FromPath(target);
    LogDebug("Copying local NX model for upload:", quoted("source", sourcePath), quoted("destination", destination));
    platform::copyFile(source, target);
    LogDebug("Local NX model export complete:", quoted("destination", destination));
    return destination;
}

}  // namespace

std::string exportDisplayedModel(NXOpen::BasePart* part, const std::string& sourcePath, ExportRun& run) {
    if (part == nullptr) {
        LogWarning("NX model export skipped because there is no displayed part.");
        return {};
    }
    const auto log = [&](LogLevel level, const char* head) {
        logging::Log(level, head, quoted("part", run.names().logLabel(part)), quoted("source", sourcePath));
    };
    if (run.isDrawing()) {
        log(LogLevel::info, "NX export selected drawing PDF path:");
        return exportDrawingPdf(part, sourcePath, run);
    }
    if (run.isManaged(part)) {
        log(LogLevel::info, "NX export selected managed clone path:");
        return exportManagedPart(part, run);
    }
    if (hasUsableLocalSource(sourcePath)) {
        log(LogLevel::debug, "NX export selected local source copy path:");
        return copyLocalModel(sourcePath, run);
    }
    log(LogLevel::warning, "NX export skipped because the local part has not been saved to disk:");
    return {};
}

std::string copyLocalModel(const std::string& sourcePath, ExportRun& run) {
    if (sourcePath.empty()) {
        LogWarning("Local NX model export skipped because the source path is empty.");
        return {};
    }
    if (const fs::path* copied = run.copyOf(sourcePath)) return platform::utf8FromPath(*copied);
    const fs::path source = platform::pathFromUtf8(sourcePath);
    const fs::path target = run.placeFor(sourcePath);
    std::string result = isSameFile(source, target) ? reuse(target) : copy(sourcePath, source, target);
    run.rememberCopy(sourcePath, target);
    return result;
}

}  // namespace pivra
