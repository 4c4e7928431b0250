#include "injected_fault.h"
#include "platform/files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/sendfile.h>
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

std::error_code lastError() {
    return {errno, std::system_category()};
}

/// A descriptor that is closed at the end.
struct Descriptor {
    explicit Descriptor(int opened) : number(opened) {}
    ~Descriptor() {
        if (number >= 0) ::close(number);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    const int number;
};

/// The system copies, and shares the blocks where the file system can.
std::error_code copyBytes(int from, int to, std::uintmax_t size) {
    while (size > 0) {
        auto count = ::copy_file_range(from, nullptr, to, nullptr, size, 0);
        if (count < 0 && errno == EXDEV) count = ::sendfile(to, from, nullptr, size);
        if (count < 0) return lastError();
        if (count == 0) break;
        size -= static_cast<std::uintmax_t>(count);
    }
    return {};
}

/// As CopyFileW: with the write time, and so that the copy can be written to.
std::error_code copyOfFile(const fs::path& from, const fs::path& to, bool half) {
    const Descriptor source(::open(from.c_str(), O_RDONLY | O_CLOEXEC));
    struct stat status {};
    if (source.number < 0 || ::fstat(source.number, &status) != 0) return lastError();
    const Descriptor target(
        ::open(to.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, (status.st_mode & 0777) | S_IWUSR));
    if (target.number < 0) return lastError();
    const auto size = static_cast<std::uintmax_t>(status.st_size);
    if (const auto error = copyBytes(source.number, target.number, half ? size / 2 : size)) return error;
    const struct timespec times[2] = {status.st_atim, status.st_mtim};
    ::futimens(target.number, times);
    return {};
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
    if (!error)
        error = copyOfFile(from, to, false);
    else if (isFull(error))
        copyOfFile(from, to, true);
    if (error) throw fs::filesystem_error("copy_file", from, to, error);
}

std::uintmax_t fileSizeBytes(const fs::path& file) {
    std::error_code error = injectedError("platform::fileSizeBytes", kinds::look, file);
    const auto size = error ? 0 : fs::file_size(file, error);
    if (error) throw fs::filesystem_error("file_size", file, error);
    return size;
}

std::optional<FileFacts> fileFacts(const fs::path& file) {
    if (injectedError("platform::fileFacts", kinds::look, file)) return std::nullopt;
    struct stat status {};
    if (::lstat(file.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    const auto sinceEpoch =
        std::chrono::seconds(status.st_mtim.tv_sec) + std::chrono::nanoseconds(status.st_mtim.tv_nsec);
    return FileFacts{static_cast<std::uintmax_t>(status.st_size),
                     FileTime(std::chrono::duration_cast<FileTime::duration>(sinceEpoch))};
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
    error = made || errno == EEXIST ? std::error_code() : lastError();
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
    if (!error && ::utimensat(AT_FDCWD, file.c_str(), times, 0) != 0) error = lastError();
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
