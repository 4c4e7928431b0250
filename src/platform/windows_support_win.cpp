#include "platform/windows_support.h"

#include <windows.h>

namespace platform {
namespace {

/// The reparse tag of the file `name`; 0 when it cannot be read.
std::uint32_t reparseTag(const std::wstring& name) {
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW(name.c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return 0;
    FindClose(search);
    return (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 ? found.dwReserved0 : 0;
}

}  // namespace

std::error_code lastError() {
    return {static_cast<int>(GetLastError()), std::system_category()};
}

void HandleCloser::operator()(void* handle) const noexcept {
    CloseHandle(handle);
}

std::wstring extendedPath(const std::filesystem::path& path) {
    const std::wstring& text = path.native();
    if (text.starts_with(L"\\\\?\\")) return text;
    const auto full = readSizedText([&](wchar_t* buffer, std::size_t size) -> std::optional<std::size_t> {
        const DWORD length = GetFullPathNameW(text.c_str(), static_cast<DWORD>(size), buffer, nullptr);
        return length ? std::optional<std::size_t>(length) : std::nullopt;
    });
    if (!full) return text;
    return full->starts_with(L"\\\\") ? L"\\\\?\\UNC" + full->substr(1) : L"\\\\?\\" + *full;
}

bool isLink(std::uint32_t attributes, std::uint32_t tag) {
    return (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 && isLinkTag(tag);
}

bool isLink(std::uint32_t attributes, const std::wstring& name) {
    return (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 && isLinkTag(reparseTag(name));
}

}  // namespace platform
