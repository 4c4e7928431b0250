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
            return {errorDirectoryNotEmpty, std::system_category()};
        case EACCES:
        case EPERM:
        case ENOTDIR:  // also a link where a folder was
            return {errorAccessDenied, std::system_category()};
        case EBUSY:
            return {errorSharingViolation, std::system_category()};
        default:
            return {number, std::system_category()};
    }
}

/// Whether somebody holds the folder, this process as well.
bool isHeld(int parent, const char* name) {
    const int descriptor = ::openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (descriptor < 0) return false;
    const bool held = ::flock(descriptor, LOCK_EX | LOCK_NB) != 0;
    ::close(descriptor);
    return held;
}

std::error_code removeFileIn(int parent, const char* name) {
    return ::unlinkat(parent, name, 0) == 0 ? std::error_code() : windowsError(errno);
}

std::error_code removeDirectoryIn(int parent, const char* name) {
    char target = 0;
    if (::readlinkat(parent, name, &target, 1) >= 0) return removeFileIn(parent, name);
    if (isHeld(parent, name)) return {errorSharingViolation, std::system_category()};
    return ::unlinkat(parent, name, AT_REMOVEDIR) == 0 ? std::error_code() : windowsError(errno);
}

/// Calls `remove` with the open folder that `path`, in the tree `root`, stands in, and its name there. From the folder
/// that holds `root` on, no link is followed.
std::error_code removeIn(const fs::path& root, const fs::path& path, std::error_code (*remove)(int, const char*)) {
    if (const auto fault = injectedError("platform::remove", kinds::remove)) return windowsError(fault.value());
    constexpr int flags = O_PATH | O_DIRECTORY | O_CLOEXEC;
    const auto base = root.parent_path();
    const auto name = base.empty() ? path : path.lexically_relative(base);
    int folder = ::open(base.empty() ? "." : base.c_str(), flags);
    for (const auto& step : name.parent_path()) {
        if (folder < 0) break;
        const int next = ::openat(folder, step.c_str(), flags | O_NOFOLLOW);
        ::close(folder);
        folder = next;
    }
    if (folder < 0) return windowsError(errno);
    const auto result = remove(folder, name.filename().c_str());
    ::close(folder);
    return result;
}

EntryKind kindOf(const fs::directory_entry& entry) {
    std::error_code ignored;
    const bool leadsToDirectory = entry.is_directory(ignored);
    if (entry.is_symlink(ignored)) return leadsToDirectory ? EntryKind::directoryLink : EntryKind::fileLink;
    return leadsToDirectory ? EntryKind::directory : EntryKind::file;
}

}  // namespace

// Goes by names alone: what a listing that was led elsewhere names cannot be removed.
std::vector<DirectoryEntry> listDirectory(const fs::path& directory) {
    std::vector<DirectoryEntry> entries;
    std::error_code error = injectedError("platform::listDirectory", kinds::access);
    if (error) return entries;
    for (fs::directory_iterator it(directory, error), end; !error && it != end; it.increment(error))
        entries.push_back({it->path(), kindOf(*it)});
    return entries;
}

TreeOperations systemTreeOperations(const fs::path& root) {
    return {listDirectory, [root](const fs::path& file) { return removeIn(root, file, removeFileIn); },
            [root](const fs::path& directory) { return removeIn(root, directory, removeDirectoryIn); }};
}

}  // namespace platform
