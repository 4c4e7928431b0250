#include "platform/environment.h"

#include "platform/windows_support.h"

#include <windows.h>

#include <array>

namespace platform {

std::optional<std::filesystem::path> environmentPath(const char* name) {
    const std::wstring wideName(name, name + std::char_traits<char>::length(name));
    auto value = readSizedText([&](wchar_t* buffer, std::size_t size) -> std::optional<std::size_t> {
        SetLastError(ERROR_SUCCESS);
        const DWORD length = GetEnvironmentVariableW(wideName.c_str(), buffer, static_cast<DWORD>(size));
        if (length == 0 && GetLastError() != ERROR_SUCCESS) return std::nullopt;
        return length;
    });
    if (!value) return std::nullopt;
    return std::move(*value);
}

std::optional<std::filesystem::path> userTempDirectory() {
    std::array<wchar_t, MAX_PATH + 1> buffer{};
    const DWORD length = GetTempPathW(static_cast<DWORD>(buffer.size()), buffer.data());
    if (length == 0 || length >= buffer.size()) return std::nullopt;
    return std::filesystem::path(buffer.data(), buffer.data() + length);
}

}  // namespace platform
