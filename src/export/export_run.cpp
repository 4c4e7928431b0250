#include "export/export_run.h"

#include "export/session_temp_directories.h"
#include "platform/files.h"
#include "platform/text.h"
#include "platform/text_encoding.h"

namespace pivra {

namespace fs = std::filesystem;

namespace {

/// The same text for all names that the file system might treat as equal. Which letters beyond ASCII it treats as equal
/// is not known, so all of them do here: a needless folder is harmless, but an overwritten file is a wrong upload.
std::string foldedName(const std::string& name) {
    std::string folded;
    for (const char character : platform::toLower(name)) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x80) folded += character;
        if (byte >= 0xC0) folded += '?';
    }
    return folded;
}

}  // namespace

const AssemblyComponents& ExportRun::components(NXOpen::BasePart* part) {
    const auto found = components_.find(part);
    return found != components_.end() ? found->second : components_.emplace(part, readComponents(part)).first->second;
}

std::optional<ManagedPartName> ExportRun::managedName(NXOpen::BasePart* part) {
    const auto found = managedNames_.find(part);
    if (found != managedNames_.end()) return found->second;
    std::optional<ManagedPartName> name;
    if (askManagedPartName(part, name)) managedNames_.emplace(part, name);
    return name;
}

bool ExportRun::isDrawing() {
    if (!isDrawing_) isDrawing_ = askDrawingContext();
    return isDrawing_.value_or(false);
}

std::string ExportRun::fileOf(NXOpen::Assemblies::Component& component) {
    const auto found = componentFiles_.find(&component);
    if (found != componentFiles_.end()) return found->second;
    const auto file = fileOfComponent(component);
    if (file) componentFiles_.emplace(&component, *file);
    return file.value_or("");
}

fs::path ExportRun::directory() const {
    return sessionTempDirectory(sessionKey_);
}

fs::path ExportRun::placeFor(const std::string& source) {
    const std::string name = platform::lastPathComponent(source);
    if (folder_.empty()) folder_ = directory();
    fs::path folder = folder_;
    const std::size_t use = ++uses_[foldedName(name)];
    if (use > 1) {
        folder /= std::to_string(use);
        std::error_code reportedByTheCopy;
        platform::createDirectory(folder, reportedByTheCopy);
    }
    return folder / platform::pathFromUtf8(name);
}

const fs::path* ExportRun::copyOf(const std::string& source) const {
    const auto found = copies_.find(source);
    return found == copies_.end() ? nullptr : &found->second;
}

}  // namespace pivra
