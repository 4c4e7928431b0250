// File operations that the C++ library of one or another compiler gets wrong on Windows: copying over a file, write
// times below a second, names of over 260 characters, appending beside other writers.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string_view>

namespace platform {

/// Appends `bytes` as they are to `file`, creating it when missing; other processes may read and append meanwhile
/// (`CreateFileW` with `FILE_APPEND_DATA`, `FILE_SHARE_READ | FILE_SHARE_WRITE`, `OPEN_ALWAYS`). The file is open only
/// during the call. Returns false when it cannot be opened or written. Any thread; never throws.
bool appendToFile(const std::filesystem::path& file, std::string_view bytes) noexcept;

/// Copies `from` to `to`, replacing an existing file (`CopyFileW`). Any thread. Throws
/// std::filesystem::filesystem_error of the operation "copy_file" with both paths.
void copyFile(const std::filesystem::path& from, const std::filesystem::path& to);

/// Size of `file` in bytes. Any thread. Throws std::filesystem::filesystem_error of the operation "file_size".
std::uintmax_t fileSizeBytes(const std::filesystem::path& file);

/// A moment of the system clock, as fine as the file system keeps it (100 ns on NTFS).
using FileTime = std::chrono::system_clock::time_point;

/// Last write time of `file`. Any thread. Throws std::filesystem::filesystem_error of the operation "last_write_time".
FileTime lastWriteTime(const std::filesystem::path& file);

/// True for an ordinary file: it exists and is no directory, symbolic link, mount point or other reparse point. False
/// as well when its status cannot be read. Any thread; fails for lack of memory alone.
bool isRegularFile(const std::filesystem::path& file);

}  // namespace platform
