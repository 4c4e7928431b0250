#include <platform/extended_path_win.h>
#include <platform/growing_buffer.h>

#include <windows.h>

namespace platform {
namespace fs = std::filesystem;

std::wstring extendedPath(const fs::path& path) {
    const std::wstring& text = path.native();
    if (text.starts_with(L"\\\\?\\")) return text;
    const auto full = readMeasuringCall([&](wchar_t* buffer, std::size_t size) -> std::optional<std::size_t> {
        const DWORD length = GetFullPathNameW(text.c_str(), static_cast<DWORD>(size), buffer, nullptr);
        return length ? std::optional<std::size_t>(length) : std::nullopt;
    });
    if (!full) return text;
    return full->starts_with(L"\\\\") ? L"\\\\?\\UNC" + full->substr(1) : L"\\\\?\\" + *full;
}

}  // namespace platform
