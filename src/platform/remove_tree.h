// Deletion of a directory tree that never leaves the tree: a link or junction is removed as a link.
#pragma once

#include <filesystem>
#include <functional>
#include <system_error>
#include <vector>

namespace platform {

/// What an entry of a directory is to the deletion.
enum class EntryKind { file, directory, fileLink, directoryLink };

struct DirectoryEntry {
    std::filesystem::path path;
    EntryKind kind;
};

/// The entries of a folder, whose paths may be in extended form; empty when it cannot be read. Any thread.
std::vector<DirectoryEntry> listDirectory(const std::filesystem::path& directory);

/// The system calls that a deletion consists of; errors are Windows error numbers in the system category.
struct TreeOperations {
    std::function<std::vector<DirectoryEntry>(const std::filesystem::path&)> list;  ///< listDirectory()
    std::function<std::error_code(const std::filesystem::path&)> removeFile;        ///< also a link to a file
    std::function<std::error_code(const std::filesystem::path&)> removeDirectory;   ///< empty ones and directory links
};

/// The operations of this system for the tree `root`. They remove nothing that is reached through a link in `root` or
/// below it, also when a folder is replaced by a link while its entries are removed: such an entry fails with error 5.
/// The folder that holds `root` is trusted, and links on the way to it are followed.
TreeOperations systemTreeOperations(const std::filesystem::path& root);

/// The error of removing a folder that another process holds (holdDirectory()).
inline constexpr int errorSharingViolation = 32;  // ERROR_SHARING_VIOLATION

/// Windows error numbers that make a deletion start over: another program may be letting go of a file just now.
inline constexpr int errorAccessDenied = 5;         // ERROR_ACCESS_DENIED
inline constexpr int errorDirectoryNotEmpty = 145;  // ERROR_DIR_NOT_EMPTY

/// Removes `directory` and everything in it. An entry that fails with error 145 or 5 is left with the folders above it,
/// and the pass is repeated, at most 10 passes in all; any other error ends the deletion. Returns the last pass's
/// error, empty on success and for a directory that does not exist. Any thread; never throws.
std::error_code removeTree(const std::filesystem::path& directory) noexcept;
/// The same with other operations.
std::error_code removeTree(const std::filesystem::path& directory, const TreeOperations& operations) noexcept;

}  // namespace platform
