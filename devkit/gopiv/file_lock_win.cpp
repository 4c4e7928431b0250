#include <windows.h>

#include <stdexcept>

#include "file_lock.h"
#include "text.h"

namespace gopiv {
namespace {

/// Shared with nobody: another holder makes the opening fail, for as long as it holds.
HANDLE openExclusively(const std::filesystem::path& file) {
    return CreateFileW(file.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL,
                       nullptr);
}

}  // namespace

FileLock::FileLock(const std::filesystem::path& file) {
    HANDLE handle = openExclusively(file);
    while (handle == INVALID_HANDLE_VALUE && GetLastError() == ERROR_SHARING_VIOLATION) {
        Sleep(5);
        handle = openExclusively(file);
    }
    if (handle == INVALID_HANDLE_VALUE) {
        throw std::runtime_error("The lock file " + utf8FromPath(file) + " cannot be opened.");
    }
    handle_ = reinterpret_cast<std::intptr_t>(handle);
}

FileLock::~FileLock() {
    CloseHandle(reinterpret_cast<HANDLE>(handle_));
}

}  // namespace gopiv
