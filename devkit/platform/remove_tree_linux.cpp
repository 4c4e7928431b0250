#include "injected_fault.h"
#include "platform/remove_tree.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

namespace platform {
namespace fs = std::filesystem;
using devkit::injectedError;
namespace kinds = devkit::kinds;

namespace {

std::error_code windowsError(int number) {
    switch (number) {
        case ENOTEMPTY:
        case EEXIST:
            number = errorDirectoryNotEmpty;
            break;
        case EACCES:
        case EPERM:
            number = errorAccessDenied;
            break;
        case EBUSY:
            number = errorSharingViolation;
            break;
        default:
            break;
    }
    return {number, std::system_category()};
}

bool isLink(const fs::path& path) {
    std::error_code ignored;
    return fs::is_symlink(fs::symlink_status(path, ignored));
}

std::error_code removeFile(const fs::path& file) {
    if (const auto fault = injectedError("platform::removeFile", kinds::remove)) return windowsError(fault.value());
    return ::unlink(file.c_str()) == 0 ? std::error_code() : windowsError(errno);
}

/// Whether somebody holds the folder, this process as well.
bool isHeld(const fs::path& directory) {
    const int descriptor = ::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (descriptor < 0) return false;
    const bool held = ::flock(descriptor, LOCK_EX | LOCK_NB) != 0;
    ::close(descriptor);
    return held;
}

std::error_code removeDirectory(const fs::path& directory) {
    if (const auto fault = injectedError("platform::removeDirectory", kinds::remove)) {
        return windowsError(fault.value());
    }
    if (isLink(directory)) return removeFile(directory);
    if (isHeld(directory)) return {errorSharingViolation, std::system_category()};
    return ::rmdir(directory.c_str()) == 0 ? std::error_code() : windowsError(errno);
}

EntryKind kindOf(const fs::directory_entry& entry) {
    std::error_code ignored;
    const bool leadsToDirectory = entry.is_directory(ignored);
    if (entry.is_symlink(ignored)) return leadsToDirectory ? EntryKind::directoryLink : EntryKind::fileLink;
    return leadsToDirectory ? EntryKind::directory : EntryKind::file;
}

std::vector<DirectoryEntry> list(const fs::path& directory) {
    std::vector<DirectoryEntry> entries;
    std::error_code error = injectedError("platform::listDirectory", kinds::access);
    if (error) return entries;
    for (fs::directory_iterator it(directory, error), end; !error && it != end; it.increment(error)) {
        entries.push_back({it->path(), kindOf(*it)});
    }
    return entries;
}

}  // namespace

TreeOperations systemTreeOperations() {
    return {list, removeFile, removeDirectory};
}

}  // namespace platform
