#include "platform/remove_tree.h"

#include "platform/windows_support.h"

#include <windows.h>

#include <memory>
#include <string_view>

namespace platform {
namespace fs = std::filesystem;

namespace {

/// Runs `remove`, and a second time without the read-only attribute if that was in the way.
std::error_code removeWith(BOOL(WINAPI* remove)(const wchar_t*), const fs::path& path) {
    const auto name = extendedPath(path);
    if (remove(name.c_str())) return {};
    const auto error = lastError();
    const DWORD attributes = GetFileAttributesW(name.c_str());
    const bool readOnly = attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
    if (error.value() != errorAccessDenied || !readOnly) return error;
    SetFileAttributesW(name.c_str(), attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY));
    return remove(name.c_str()) ? std::error_code() : lastError();
}

std::error_code removeFile(const fs::path& file) {
    return removeWith(&DeleteFileW, file);
}

std::error_code removeDirectory(const fs::path& directory) {
    return removeWith(&RemoveDirectoryW, directory);
}

EntryKind kindOf(DWORD attributes, bool link) {
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return link ? EntryKind::directoryLink : EntryKind::directory;
    return link ? EntryKind::fileLink : EntryKind::file;
}

struct SearchCloser {
    using pointer = HANDLE;
    void operator()(HANDLE search) const { FindClose(search); }
};

std::vector<DirectoryEntry> list(const fs::path& directory) {
    const auto name = extendedPath(directory);
    const DWORD attributes = GetFileAttributesW(name.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return {};
    if (kindOf(attributes, isLink(attributes, name)) != EntryKind::directory) return {};
    WIN32_FIND_DATAW found{};
    const HANDLE handle = FindFirstFileExW((name + L"\\*").c_str(), FindExInfoBasic, &found, FindExSearchNameMatch,
                                           nullptr, FIND_FIRST_EX_LARGE_FETCH);
    if (handle == INVALID_HANDLE_VALUE) return {};
    const std::unique_ptr<HANDLE, SearchCloser> search(handle);
    std::vector<DirectoryEntry> entries;
    do {
        const std::wstring_view entryName = found.cFileName;
        if (entryName == L"." || entryName == L"..") continue;
        const bool link = isLink(found.dwFileAttributes, found.dwReserved0);
        entries.push_back({name + L'\\' + found.cFileName, kindOf(found.dwFileAttributes, link)});
    } while (FindNextFileW(search.get(), &found));
    return entries;
}

}  // namespace

TreeOperations systemTreeOperations() {
    return {list, removeFile, removeDirectory};
}

}  // namespace platform
