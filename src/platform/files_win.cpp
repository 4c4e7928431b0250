#include <platform/extended_path_win.h>
#include <platform/files.h>
#include <platform/last_error.h>
#include <platform/windows_ticks.h>

#include <windows.h>

namespace platform {
namespace fs = std::filesystem;

namespace {

WIN32_FILE_ATTRIBUTE_DATA attributesOf(const fs::path& file, const char* operation) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(extendedPath(file).c_str(), GetFileExInfoStandard, &data)) {
        throw fs::filesystem_error(operation, file, lastError());
    }
    return data;
}

}  // namespace

bool appendToFile(const fs::path& file, std::string_view bytes) noexcept {
    const HANDLE handle = CreateFileW(file.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                      OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return false;
    DWORD written = 0;
    const bool succeeded = WriteFile(handle, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) != 0;
    CloseHandle(handle);
    return succeeded && written == bytes.size();
}

void copyFile(const fs::path& from, const fs::path& to) {
    if (!CopyFileW(extendedPath(from).c_str(), extendedPath(to).c_str(), FALSE)) {
        throw fs::filesystem_error("copy_file", from, to, lastError());
    }
}

std::uintmax_t fileSizeBytes(const fs::path& file) {
    const auto data = attributesOf(file, "file_size");
    return (static_cast<std::uintmax_t>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
}

FileTime lastWriteTime(const fs::path& file) {
    const auto data = attributesOf(file, "last_write_time");
    const auto ticks = joinTicks(data.ftLastWriteTime.dwHighDateTime, data.ftLastWriteTime.dwLowDateTime);
    return FileTime(std::chrono::duration_cast<FileTime::duration>(ticks - from1601To1970));
}

bool isRegularFile(const fs::path& file) {
    const DWORD attributes = GetFileAttributesW(extendedPath(file).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES &&
           (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT)) == 0;
}

}  // namespace platform
