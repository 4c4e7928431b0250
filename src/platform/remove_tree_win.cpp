#include "platform/remove_tree.h"

#include "platform/windows_support.h"

#include <windows.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace platform {
namespace fs = std::filesystem;

namespace {

/// Opens the file, folder or link `name` itself; null on failure.
Handle open(const std::wstring& name, DWORD access) {
    const HANDLE handle =
        CreateFileW(name.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                    OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    return Handle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

/// Where the file that `handle` is open for really is: its volume and its path there, links on the way resolved. Empty
/// when the system does not tell.
std::wstring placeOf(HANDLE handle) {
    constexpr std::size_t longestPath = 32'767;
    std::vector<wchar_t> buffer(longestPath + sizeof(FILE_NAME_INFO) / sizeof(wchar_t));
    auto* path = reinterpret_cast<FILE_NAME_INFO*>(buffer.data());
    const auto size = static_cast<DWORD>(buffer.size() * sizeof(wchar_t));
    BY_HANDLE_FILE_INFORMATION facts{};
    if (!GetFileInformationByHandle(handle, &facts)) return {};
    if (!GetFileInformationByHandleEx(handle, FileNameInfo, path, size)) return {};
    return std::to_wstring(facts.dwVolumeSerialNumber).append(path->FileName, path->FileNameLength / sizeof(wchar_t));
}

DWORD attributesOf(HANDLE handle) {
    FILE_BASIC_INFO facts{};
    return GetFileInformationByHandleEx(handle, FileBasicInfo, &facts, sizeof facts) ? facts.FileAttributes : 0;
}

/// Deletes what `handle` is open for: at once, as DeleteFileW does where the file system can, or when the last program
/// closes it.
std::error_code remove(HANDLE handle) {
    // FileDispositionInfoEx with its flags for deleting and for POSIX semantics, which the headers name only for later
    // releases of Windows.
    constexpr auto dispositionEx = static_cast<FILE_INFO_BY_HANDLE_CLASS>(21);
    DWORD atOnce = 1 | 2;
    if (SetFileInformationByHandle(handle, dispositionEx, &atOnce, sizeof atOnce)) return {};
    FILE_DISPOSITION_INFO disposition{TRUE};
    const bool done = SetFileInformationByHandle(handle, FileDispositionInfo, &disposition, sizeof disposition) != 0;
    return done ? std::error_code() : lastError();
}

/// Removes entries by their handles: what has been opened stays the same, whatever is put in its place, and the
/// system tells where it is.
class Tree {
 public:
    explicit Tree(const fs::path& root) {
        if (const auto handle = open(extendedPath(root), FILE_READ_ATTRIBUTES)) place_ = placeOf(handle.get());
    }

    std::error_code removeFile(const fs::path& file) const { return removeEntry(file, 0, errorAccessDenied); }
    std::error_code removeDirectory(const fs::path& directory) const {
        return removeEntry(directory, FILE_ATTRIBUTE_DIRECTORY, ERROR_DIRECTORY);
    }

 private:
    /// An entry that is not of this kind fails with `otherKind`.
    std::error_code removeEntry(const fs::path& path, DWORD kind, int otherKind) const {
        const auto name = extendedPath(path);
        const auto handle = open(name, DELETE | FILE_READ_ATTRIBUTES);
        if (!handle) return lastError();
        const DWORD attributes = attributesOf(handle.get());
        if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != kind) return {otherKind, std::system_category()};
        if (!isInside(handle.get())) return {errorAccessDenied, std::system_category()};
        const auto error = remove(handle.get());
        const bool readOnly = (attributes & FILE_ATTRIBUTE_READONLY) != 0;
        if (error.value() != errorAccessDenied || !readOnly) return error;
        makeWritable(name);
        return remove(handle.get());
    }

    void makeWritable(const std::wstring& name) const {
        const auto handle = open(name, FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES);
        if (!handle || !isInside(handle.get())) return;
        FILE_BASIC_INFO facts{};  // zero leaves a time as it is
        facts.FileAttributes = (attributesOf(handle.get()) & ~FILE_ATTRIBUTE_READONLY) | FILE_ATTRIBUTE_NORMAL;
        SetFileInformationByHandle(handle.get(), FileBasicInfo, &facts, sizeof facts);
    }

    /// Whether what was opened is the tree's folder as it was found at first, or in it.
    bool isInside(HANDLE handle) const {
        const auto place = placeOf(handle);
        return !place_.empty() && (place == place_ || place.starts_with(place_ + L'\\'));
    }

    std::wstring place_;
};

EntryKind kindOf(DWORD attributes, bool link) {
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return link ? EntryKind::directoryLink : EntryKind::directory;
    return link ? EntryKind::fileLink : EntryKind::file;
}

struct SearchCloser {
    using pointer = HANDLE;
    void operator()(HANDLE search) const { FindClose(search); }
};

}  // namespace

// Goes by names alone: what a listing that was led elsewhere names cannot be removed.
std::vector<DirectoryEntry> listDirectory(const fs::path& directory) {
    auto head = extendedPath(directory);
    if (!head.ends_with(L'\\')) head += L'\\';  // as the folder for temporary files does
    WIN32_FIND_DATAW found{};
    const HANDLE handle = FindFirstFileExW((head + L'*').c_str(), FindExInfoBasic, &found, FindExSearchNameMatch,
                                           nullptr, FIND_FIRST_EX_LARGE_FETCH);
    if (handle == INVALID_HANDLE_VALUE) return {};
    const std::unique_ptr<HANDLE, SearchCloser> search(handle);
    std::vector<DirectoryEntry> entries;
    do {
        const std::wstring_view entryName = found.cFileName;
        if (entryName == L"." || entryName == L"..") continue;
        const bool link = isLink(found.dwFileAttributes, found.dwReserved0);
        entries.push_back({head + found.cFileName, kindOf(found.dwFileAttributes, link)});
    } while (FindNextFileW(search.get(), &found));
    return entries;
}

TreeOperations systemTreeOperations(const fs::path& root) {
    const auto tree = std::make_shared<const Tree>(root);
    return {listDirectory, [tree](const fs::path& file) { return tree->removeFile(file); },
            [tree](const fs::path& directory) { return tree->removeDirectory(directory); }};
}

}  // namespace platform
