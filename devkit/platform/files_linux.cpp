#include "platform/files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace platform {
namespace fs = std::filesystem;

bool appendToFile(const fs::path& file, std::string_view bytes) noexcept {
    const int descriptor = ::open(file.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666);
    if (descriptor < 0) return false;
    const bool written = ::write(descriptor, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
    ::close(descriptor);
    return written;
}

void copyFile(const fs::path& from, const fs::path& to) {
    std::error_code error;
    fs::copy_file(from, to, fs::copy_options::overwrite_existing, error);
    if (error) throw fs::filesystem_error("copy_file", from, to, error);
    // CopyFileW keeps the write time.
    std::error_code ignored;
    const auto time = fs::last_write_time(from, ignored);
    if (!ignored) fs::last_write_time(to, time, ignored);
    fs::permissions(to, fs::perms::owner_write, fs::perm_options::add, ignored);
}

std::uintmax_t fileSizeBytes(const fs::path& file) {
    std::error_code error;
    const auto size = fs::file_size(file, error);
    if (error) throw fs::filesystem_error("file_size", file, error);
    return size;
}

FileTime lastWriteTime(const fs::path& file) {
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0) {
        throw fs::filesystem_error("last_write_time", file, std::error_code(errno, std::system_category()));
    }
    const auto sinceEpoch =
        std::chrono::seconds(status.st_mtim.tv_sec) + std::chrono::nanoseconds(status.st_mtim.tv_nsec);
    return FileTime(std::chrono::duration_cast<FileTime::duration>(sinceEpoch));
}

bool isRegularFile(const fs::path& file) {
    std::error_code ignored;
    return fs::symlink_status(file, ignored).type() == fs::file_type::regular;
}

PathKind pathKind(const fs::path& path, std::error_code& error) {
    const auto status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found) error.clear();
    if (status.type() == fs::file_type::directory) return PathKind::directory;
    return fs::exists(status) ? PathKind::other : PathKind::missing;
}

bool createDirectory(const fs::path& directory, std::error_code& error) {
    const bool made = ::mkdir(directory.c_str(), 0777) == 0;
    error = made || errno == EEXIST ? std::error_code() : std::error_code(errno, std::system_category());
    return made;
}

std::error_code createDirectories(const fs::path& directory) {
    std::error_code error;
    fs::create_directories(directory, error);
    return error;
}

fs::path shortPath(const fs::path& path) {
    return path;
}

// A lock replaces the open handle; removeDirectory() respects it.
std::shared_ptr<void> holdDirectory(const fs::path& directory) {
    const int descriptor = ::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return nullptr;
    ::flock(descriptor, LOCK_SH);
    return {new int(descriptor), [](int* held) {
                ::close(*held);
                delete held;
            }};
}

}  // namespace platform
