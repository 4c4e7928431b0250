#include <platform/files.h>
#include <platform/last_error.h>
#include <platform/windows_ticks.h>

#include <windows.h>

namespace platform {
namespace fs = std::filesystem;

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
    if (!CopyFileW(from.c_str(), to.c_str(), FALSE)) throw fs::filesystem_error("copy_file", from, to, lastError());
}

FileTime lastWriteTime(const fs::path& file) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(file.c_str(), GetFileExInfoStandard, &data)) {
        throw fs::filesystem_error("last_write_time", file, lastError());
    }
    const auto ticks = joinTicks(data.ftLastWriteTime.dwHighDateTime, data.ftLastWriteTime.dwLowDateTime);
    return FileTime(std::chrono::duration_cast<FileTime::duration>(ticks - from1601To1970));
}

bool isRegularFile(const fs::path& file) noexcept {
    const DWORD attributes = GetFileAttributesW(file.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES &&
           (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT)) == 0;
}

}  // namespace platform
