// File operations that the C++ library of one or another compiler gets wrong on Windows: copying over a file, write
// times below a second, names of over 260 characters, appending beside other writers.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace platform {

/// Appends `bytes` as they are to `file`, creating it when missing; other processes may read and append meanwhile
/// (`CreateFileW` with `FILE_APPEND_DATA`, `FILE_SHARE_READ | FILE_SHARE_WRITE`, `OPEN_ALWAYS`), and those that append
/// by this function take turns. The file is open only during the call. Returns false when it cannot be opened or
/// written. Any thread; never throws.
bool appendToFile(const std::filesystem::path& file, std::string_view bytes) noexcept;

/// Copies `from` to `to`, replacing an existing file (`CopyFileW`). The copy can be written to, also when `from`
/// cannot. Any thread. Throws std::filesystem::filesystem_error of the operation "copy_file" with both paths.
void copyFile(const std::filesystem::path& from, const std::filesystem::path& to);

/// Size of `file` in bytes. Any thread. Throws std::filesystem::filesystem_error of the operation "file_size".
std::uintmax_t fileSizeBytes(const std::filesystem::path& file);

/// A moment of the system clock, as fine as the file system keeps it (100 ns on NTFS).
using FileTime = std::chrono::system_clock::time_point;

/// True for an ordinary file: it exists and is no directory, symbolic link or mount point. False as well when its
/// status cannot be read. Any thread; throws only when memory runs out.
bool isRegularFile(const std::filesystem::path& file);

/// Sets the last write time of `file`. Any thread. Throws std::filesystem::filesystem_error of the operation
/// "set_last_write_time".
void setLastWriteTime(const std::filesystem::path& file, FileTime time);

/// All bytes of `file`, while others may read, write and delete it; absent when it cannot be opened or read to its end.
/// Any thread; throws only when memory runs out.
std::optional<std::string> readFile(const std::filesystem::path& file);

/// Size and write time of a file.
struct FileFacts {
    std::uintmax_t size = 0;  ///< bytes
    FileTime written;
};

/// The facts of the ordinary file `file`, by one call of the system; absent when there is none, and when the system
/// does not tell. Any thread; throws only when memory runs out.
std::optional<FileFacts> fileFacts(const std::filesystem::path& file);

/// What there is of a name, links followed.
enum class PathKind { missing, directory, other };

/// What `path` names; `error` is set, and the answer means nothing, when the system does not tell. Any thread.
PathKind pathKind(const std::filesystem::path& path, std::error_code& error);

/// Makes the folder `directory`, whose parent exists. Returns whether it was made; false without an error when there is
/// a folder or a file of that name already. Any thread.
bool createDirectory(const std::filesystem::path& directory, std::error_code& error);

/// Makes the folder `directory` and those above it that are missing. No error when it is there already. Any thread.
std::error_code createDirectories(const std::filesystem::path& directory);

/// The short form of the existing `path`, in plain letters; `path` itself where the file system keeps none. Any thread.
std::filesystem::path shortPath(const std::filesystem::path& path);

/// Keeps the folder `directory` from being deleted or renamed, by this process as well, until the result is destroyed.
/// Null when it cannot be opened. Any thread.
std::shared_ptr<void> holdDirectory(const std::filesystem::path& directory);

}  // namespace platform
