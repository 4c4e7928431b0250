#include "injected_fault.h"
#include "platform/files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <sstream>
#include <string>

namespace platform {
namespace fs = std::filesystem;

using devkit::injectedError;
namespace kinds = devkit::kinds;

namespace {

bool isFull(const std::error_code& error) {
    return error.value() == ENOSPC;
}

}  // namespace

bool appendToFile(const fs::path& file, std::string_view bytes) noexcept {
    const auto fault = injectedError("platform::appendToFile", kinds::write);
    if (isFull(fault)) bytes = bytes.substr(0, bytes.size() / 2);
    if (fault && !isFull(fault)) return false;
    const int descriptor = ::open(file.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666);
    if (descriptor < 0) return false;
    const bool written = ::write(descriptor, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
    ::close(descriptor);
    return written && !fault;
}

void copyFile(const fs::path& from, const fs::path& to) {
    std::error_code error = injectedError("platform::copyFile", kinds::copy, from);
    if (!error || isFull(error)) {
        std::error_code copyError;
        fs::copy_file(from, to, fs::copy_options::overwrite_existing, copyError);
        if (error) fs::resize_file(to, fs::file_size(to) / 2);
        if (!error) error = copyError;
    }
    if (error) throw fs::filesystem_error("copy_file", from, to, error);
    // CopyFileW keeps the write time.
    std::error_code ignored;
    const auto time = fs::last_write_time(from, ignored);
    if (!ignored) fs::last_write_time(to, time, ignored);
    fs::permissions(to, fs::perms::owner_write, fs::perm_options::add, ignored);
}

std::uintmax_t fileSizeBytes(const fs::path& file) {
    std::error_code error = injectedError("platform::fileSizeBytes", kinds::look, file);
    const auto size = error ? 0 : fs::file_size(file, error);
    if (error) throw fs::filesystem_error("file_size", file, error);
    return size;
}

FileTime lastWriteTime(const fs::path& file) {
    struct stat status {};
    std::error_code error = injectedError("platform::lastWriteTime", kinds::look, file);
    if (!error && ::stat(file.c_str(), &status) != 0) error = {errno, std::system_category()};
    if (error) throw fs::filesystem_error("last_write_time", file, error);
    const auto sinceEpoch =
        std::chrono::seconds(status.st_mtim.tv_sec) + std::chrono::nanoseconds(status.st_mtim.tv_nsec);
    return FileTime(std::chrono::duration_cast<FileTime::duration>(sinceEpoch));
}

bool isRegularFile(const fs::path& file) {
    std::error_code ignored;
    return !injectedError("platform::isRegularFile", kinds::look, file) &&
           fs::symlink_status(file, ignored).type() == fs::file_type::regular;
}

PathKind pathKind(const fs::path& path, std::error_code& error) {
    error = injectedError("platform::pathKind", kinds::look, path);
    if (error) return PathKind::missing;
    const auto status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found) error.clear();
    if (status.type() == fs::file_type::directory) return PathKind::directory;
    return fs::exists(status) ? PathKind::other : PathKind::missing;
}

bool createDirectory(const fs::path& directory, std::error_code& error) {
    error = injectedError("platform::createDirectory", kinds::create);
    if (error) return false;
    const bool made = ::mkdir(directory.c_str(), 0777) == 0;
    error = made || errno == EEXIST ? std::error_code() : std::error_code(errno, std::system_category());
    return made;
}

std::error_code createDirectories(const fs::path& directory) {
    std::error_code error = injectedError("platform::createDirectories", kinds::create);
    if (!error) fs::create_directories(directory, error);
    return error;
}

std::optional<std::string> readFile(const fs::path& file) {
    if (injectedError("platform::readFile", kinds::look, file)) return std::nullopt;
    const std::ifstream stream(file, std::ios::binary);
    std::ostringstream bytes;
    bytes << stream.rdbuf();
    return stream.is_open() && !bytes.bad() ? std::optional(bytes.str()) : std::nullopt;
}

void setLastWriteTime(const fs::path& file, FileTime time) {
    std::error_code error = injectedError("platform::setLastWriteTime", kinds::look, file);
    const auto sinceEpoch = time.time_since_epoch();
    const auto seconds = std::chrono::floor<std::chrono::seconds>(sinceEpoch);
    const timespec times[2] = {{0, UTIME_OMIT},
                               {seconds.count(), std::chrono::nanoseconds(sinceEpoch - seconds).count()}};
    if (!error && ::utimensat(AT_FDCWD, file.c_str(), times, 0) != 0) error = {errno, std::system_category()};
    if (error) throw fs::filesystem_error("set_last_write_time", file, error);
}

fs::path shortPath(const fs::path& path) {
    return path;
}

// A lock replaces the open handle; removeDirectory() respects it.
std::shared_ptr<void> holdDirectory(const fs::path& directory) {
    if (injectedError("platform::holdDirectory", kinds::access)) return nullptr;
    const int descriptor = ::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return nullptr;
    ::flock(descriptor, LOCK_SH);
    return {new int(descriptor), [](int* held) {
                ::close(*held);
                delete held;
            }};
}

}  // namespace platform
