// Mutual exclusion between all programs, and all clients of a program, that share a folder.
#pragma once

#include <cstdint>
#include <filesystem>

namespace gopiv {

/// Holds the lock file `file`, which is created when missing, from construction to destruction; waits for another
/// holder. The system lets go of it when a holder dies. Throws std::runtime_error when the file cannot be opened.
class FileLock {
 public:
    explicit FileLock(const std::filesystem::path& file);
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

 private:
    std::intptr_t handle_;
};

}  // namespace gopiv
