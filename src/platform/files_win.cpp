#include "platform/files.h"

#include "platform/windows_support.h"

#include <windows.h>

#include <array>

namespace platform {
namespace fs = std::filesystem;

namespace {

bool isOrdinary(DWORD attributes, const std::wstring& name) {
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0 && !isLink(attributes, name);
}

std::uintmax_t sizeOf(const WIN32_FILE_ATTRIBUTE_DATA& file) {
    return (static_cast<std::uintmax_t>(file.nFileSizeHigh) << 32) | file.nFileSizeLow;
}

/// Opens an existing file or folder and lets others use it as `sharing` says; null when that fails.
Handle openExisting(const fs::path& path, DWORD access, DWORD sharing) {
    const HANDLE handle = CreateFileW(extendedPath(path).c_str(), access, sharing, nullptr, OPEN_EXISTING,
                                      FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    return Handle(handle != INVALID_HANDLE_VALUE ? handle : nullptr);
}

constexpr DWORD shareWithAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

HANDLE openForAppending(const std::wstring& name, DWORD furtherAccess) {
    return CreateFileW(name.c_str(), FILE_APPEND_DATA | furtherAccess, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                       OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
}

/// Waits until no other writer is at work, a second at most, and keeps others out until `file` is closed: each writer
/// first locks the same place far behind the end. Not every file system appends in one step.
void lockForWriting(HANDLE file) {
    constexpr DWORD flags = LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY;
    const auto limit = GetTickCount64() + 1'000;
    OVERLAPPED place{};
    place.OffsetHigh = 0x7FFFFFFF;
    while (!LockFileEx(file, flags, 0, 1, 0, &place)) {
        if (GetLastError() != ERROR_LOCK_VIOLATION || GetTickCount64() > limit) return;
        Sleep(1);
    }
}

}  // namespace

bool appendToFile(const fs::path& file, std::string_view bytes) noexcept try {
    const auto name = extendedPath(file);
    HANDLE handle = openForAppending(name, FILE_READ_DATA);  // which the lock needs
    if (handle == INVALID_HANDLE_VALUE) handle = openForAppending(name, 0);
    if (handle == INVALID_HANDLE_VALUE) return false;
    lockForWriting(handle);
    DWORD written = 0;
    const bool succeeded = WriteFile(handle, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) != 0;
    CloseHandle(handle);
    return succeeded && written == bytes.size();
} catch (...) {
    return false;  // out of memory
}

void copyFile(const fs::path& from, const fs::path& to) {
    if (!CopyFileW(extendedPath(from).c_str(), extendedPath(to).c_str(), FALSE)) {
        throw fs::filesystem_error("copy_file", from, to, lastError());
    }
    const auto copy = extendedPath(to);
    const DWORD attributes = GetFileAttributesW(copy.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        SetFileAttributesW(copy.c_str(), attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY));
    }
}

std::uintmax_t fileSizeBytes(const fs::path& file) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (GetFileAttributesExW(extendedPath(file).c_str(), GetFileExInfoStandard, &data)) return sizeOf(data);
    throw fs::filesystem_error("file_size", file, lastError());
}

std::optional<FileFacts> fileFacts(const fs::path& file) {
    const auto name = extendedPath(file);
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(name.c_str(), GetFileExInfoStandard, &data)) return std::nullopt;
    if (!isOrdinary(data.dwFileAttributes, name)) return std::nullopt;
    const auto ticks = joinTicks(data.ftLastWriteTime.dwHighDateTime, data.ftLastWriteTime.dwLowDateTime);
    return FileFacts{sizeOf(data), FileTime(std::chrono::duration_cast<FileTime::duration>(ticks - from1601To1970))};
}

void setLastWriteTime(const fs::path& file, FileTime time) {
    const auto sinceEpoch = std::chrono::duration_cast<WindowsTicks>(time.time_since_epoch());
    const auto ticks = static_cast<std::uint64_t>((sinceEpoch + from1601To1970).count());
    const FILETIME fileTime{static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
    const auto handle = openExisting(file, FILE_WRITE_ATTRIBUTES, shareWithAll);
    if (!handle || !SetFileTime(handle.get(), nullptr, nullptr, &fileTime)) {
        throw fs::filesystem_error("set_last_write_time", file, lastError());
    }
}

std::optional<std::string> readFile(const fs::path& file) {
    const auto handle = openExisting(file, GENERIC_READ, shareWithAll);
    if (!handle) return std::nullopt;
    std::string bytes;
    std::array<char, 4096> piece{};
    for (DWORD count = 0; ReadFile(handle.get(), piece.data(), static_cast<DWORD>(piece.size()), &count, nullptr);) {
        if (count == 0) return bytes;
        bytes.append(piece.data(), count);
    }
    return std::nullopt;
}

bool isRegularFile(const fs::path& file) {
    const auto name = extendedPath(file);
    const DWORD attributes = GetFileAttributesW(name.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && isOrdinary(attributes, name);
}

PathKind pathKind(const fs::path& path, std::error_code& error) {
    error.clear();
    const DWORD attributes = GetFileAttributesW(extendedPath(path).c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES) {
        return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? PathKind::directory : PathKind::other;
    }
    error = lastError();
    if (error.value() == ERROR_FILE_NOT_FOUND || error.value() == ERROR_PATH_NOT_FOUND) error.clear();
    return PathKind::missing;
}

bool createDirectory(const fs::path& directory, std::error_code& error) {
    error.clear();
    if (CreateDirectoryW(extendedPath(directory).c_str(), nullptr)) return true;
    if (GetLastError() != ERROR_ALREADY_EXISTS) error = lastError();
    return false;
}

std::error_code createDirectories(const fs::path& directory) {
    std::error_code error;
    if (createDirectory(directory, error)) return {};
    if (error.value() == ERROR_PATH_NOT_FOUND && directory.has_relative_path()) {
        error = createDirectories(directory.parent_path());
        if (!error) createDirectory(directory, error);
    }
    if (!error && pathKind(directory, error) == PathKind::other) {
        error = std::error_code(ERROR_ALREADY_EXISTS, std::system_category());
    }
    return error;
}

fs::path shortPath(const fs::path& path) {
    const auto& name = path.native();
    const auto form = readSizedText([&](wchar_t* buffer, std::size_t size) -> std::optional<std::size_t> {
        const DWORD length = GetShortPathNameW(name.c_str(), buffer, static_cast<DWORD>(size));
        return length != 0 ? std::optional<std::size_t>(length) : std::nullopt;
    });
    return form ? fs::path(*form) : path;
}

std::shared_ptr<void> holdDirectory(const fs::path& directory) {
    // Without FILE_SHARE_DELETE: others may use the folder, but not delete it.
    return openExisting(directory, FILE_LIST_DIRECTORY, FILE_SHARE_READ | FILE_SHARE_WRITE);
}

}  // namespace platform
