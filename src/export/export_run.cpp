#include "export/export_run.h"

#include "config/properties.h"
#include "export/file_names.h"
#include "export/session_temp_directories.h"
#include "platform/files.h"
#include "platform/text_encoding.h"

namespace pivra {

namespace fs = std::filesystem;

namespace {

/// Equal for all names that the file system might take for one. Which letters beyond ASCII it does take for one is its
/// own affair, so they all count alike: a needless folder costs nothing, a file overwritten by another is a wrong
/// upload.
std::string foldedName(const std::string& name) {
    std::string folded;
    for (const char character : config::toLower(name)) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x80) folded += character;
        if (byte >= 0xC0) folded += '?';
    }
    return folded;
}

}  // namespace

fs::path ExportRun::directory() const {
    return sessionTempDirectory(sessionKey_);
}

fs::path ExportRun::placeFor(const std::string& source) {
    const std::string name = lastPathComponent(source);
    fs::path folder = directory();
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
