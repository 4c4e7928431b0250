#include <platform/environment.h>
#include <platform/growing_buffer.h>

#include <windows.h>

namespace platform {

std::optional<std::filesystem::path> environmentPath(const char* name) {
    const std::wstring wideName(name, name + std::char_traits<char>::length(name));
    auto value = readMeasuringCall([&](wchar_t* buffer, std::size_t size) -> std::optional<std::size_t> {
        SetLastError(ERROR_SUCCESS);
        const DWORD length = GetEnvironmentVariableW(wideName.c_str(), buffer, static_cast<DWORD>(size));
        if (length == 0 && GetLastError() != ERROR_SUCCESS) return std::nullopt;
        return length;
    });
    if (!value) return std::nullopt;
    return std::move(*value);
}

}  // namespace platform
